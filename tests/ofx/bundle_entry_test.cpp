// What a host sees of the bundle before any instance exists: the exported symbols, the plug-in
// record, the describing actions and the answers of the action table.
#include "tests/ofx/bundle_test_support.h"
#include "tests/support/test_files.h"

#include "host/status.h"

#include <dlfcn.h>

#include <cstdio>

namespace {

using bundle_test::bundle_binary;
using bundle_test::bundle_fixture;
using bundle_test::bundle_path;
using bundle_test::log_capture;

class bundle_entry : public bundle_fixture {};

/// What a binutils tool prints about the bundle's binary, its last argument.
std::string binutils_listing(const std::string& tool)
{
    std::string out;
    if (FILE* pipe = popen((tool + " '" + bundle_binary().string() + "'").c_str(), "r")) {
        char buffer[512];
        while (std::fgets(buffer, sizeof buffer, pipe) != nullptr)
            out += buffer;
        pclose(pipe);
    }
    return out;
}

TEST(bundle_symbols, OnlyTheTwoEntryPointsAreExportedAndNoCxxRuntimeIsNeeded)
{
    EXPECT_EQ(binutils_listing("nm -D --defined-only --format=just-symbols"), "OfxGetNumberOfPlugins\nOfxGetPlugin\n");
    // The bundle carries its own C++ runtime, so a host with another libstdc++ can't clash.
    const std::string dynamic = binutils_listing("readelf -d");
    EXPECT_TRUE(hueloom_test::contains(dynamic, "(NEEDED)")) << dynamic;
    EXPECT_FALSE(hueloom_test::contains(dynamic, "libstdc++")) << dynamic;
    EXPECT_FALSE(hueloom_test::contains(dynamic, "libgcc_s")) << dynamic;

    // Asked directly, as a host that counts past the number of plug-ins might.
    void* lib = dlopen(bundle_binary().c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    ASSERT_NE(lib, nullptr) << dlerror();
    auto get_plugin = reinterpret_cast<OfxPlugin* (*)(int)>(dlsym(lib, "OfxGetPlugin"));
    ASSERT_NE(get_plugin, nullptr);
    EXPECT_EQ(get_plugin(1), nullptr);
    EXPECT_EQ(get_plugin(-1), nullptr);
    OfxPlugin* first = get_plugin(0);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(get_plugin(0)->pluginIdentifier, first->pluginIdentifier) << "the identifier text is made once";
    dlclose(lib);
}

TEST_F(bundle_entry, RecordNamesThePluginAndItsVersion)
{
    EXPECT_EQ(h.plugin_count(bundle_path()), 1);
    vl1::ofxhost::plugin p = load_plugin();
    EXPECT_EQ(p.identifier(), "com.varnlight.hueloomofx");
    EXPECT_EQ(p.version_major(), 1u);
    EXPECT_EQ(p.version_minor(), 3u);
    EXPECT_EQ(std::string(p.record()->pluginApi), kOfxImageEffectPluginApi);
    EXPECT_EQ(p.record()->apiVersion, 1);
    EXPECT_THROW(h.load_plugin(bundle_path(), 1), vl1::ofxhost::host_error);
}

TEST_F(bundle_entry, LoadNeedsTheEffectPropertyAndParameterSuitesOnly)
{
    for (const char* optional : {kOfxMessageSuite, kOfxMemorySuite, kOfxMultiThreadSuite, kOfxInteractSuite}) {
        vl1::ofxhost::host partial;
        partial.omit_suite(optional);
        EXPECT_EQ(partial.load_plugin(bundle_path(), 0).load(), kOfxStatOK) << optional;
    }
    for (const char* required : {kOfxImageEffectSuite, kOfxPropertySuite, kOfxParameterSuite}) {
        vl1::ofxhost::host partial;
        partial.omit_suite(required);
        vl1::ofxhost::plugin p = partial.load_plugin(bundle_path(), 0);
        EXPECT_EQ(p.load(), kOfxStatErrMissingHostFeature) << required;
        // Without the suites every further action is refused rather than run through null.
        EXPECT_EQ(p.describe(), kOfxStatErrMissingHostFeature) << required;
    }
}

TEST_F(bundle_entry, DescribeDeclaresOneFilterContextInFloatRgba)
{
    vl1::ofxhost::plugin p = ready_plugin();
    const vl1::ofxhost::plugin_info info = p.info();
    EXPECT_EQ(info.label, "Hueloom");
    EXPECT_EQ(info.grouping, "Varnlight");
    EXPECT_EQ(info.contexts, std::vector<std::string>{kOfxImageEffectContextFilter});
    EXPECT_EQ(info.pixel_depths, std::vector<std::string>{kOfxBitDepthFloat});
    ASSERT_EQ(info.per_context.size(), 1u);
    const auto& clips = info.per_context[0].clips;
    ASSERT_EQ(clips.size(), 2u);
    EXPECT_EQ(clips[0].name, kOfxImageEffectOutputClipName);
    EXPECT_EQ(clips[1].name, kOfxImageEffectSimpleSourceClipName);
    for (const auto& clip : clips) {
        EXPECT_EQ(clip.components, std::vector<std::string>{kOfxImageComponentRGBA});
        EXPECT_FALSE(clip.optional);
    }
    EXPECT_EQ(p.descriptor()->properties().get_int(kOfxImageEffectPropSupportsMultipleClipDepths), 1);
}

TEST_F(bundle_entry, TheAdaptersParametersComeFirstThenTheEffectsWithTheirRanges)
{
    vl1::ofxhost::plugin p = ready_plugin();
    const auto params = p.info().per_context.at(0).params;
    struct expected {
        const char* name;
        const char* type;
        bool secret;
        const char* def;  // nullptr: not checked
        const char* min;
        const char* max;
    };
    const expected table[] = {
        {"Open GUI", "PushButton", false, nullptr, "", ""},
        {"binaryStateParam", "Custom", true, nullptr, "", ""},
        {"editorRequest", "Integer", true, nullptr, "", ""},
        {"Global Bypass", "Boolean", true, "0", "", ""},
        {"Angle", "Double", false, "0", "0", "360"},
        {"Strength", "Double", false, "0", "0", "100"},
        {"Hue", "Double", false, "100", "0", "200"},
        {"Chroma", "Double", false, "100", "0", "200"},
        {"Luminance", "Double", false, "100", "0", "200"},
    };
    ASSERT_EQ(params.size(), std::size(table));
    for (std::size_t i = 0; i < std::size(table); ++i) {
        const auto& actual = params[i];
        SCOPED_TRACE(table[i].name);
        EXPECT_EQ(actual.name, table[i].name);
        EXPECT_EQ(actual.type, table[i].type);
        EXPECT_EQ(actual.secret, table[i].secret);
        if (table[i].def == nullptr)
            continue;
        EXPECT_EQ(actual.label, table[i].name);
        EXPECT_EQ(actual.script_name, table[i].name);
        EXPECT_EQ(actual.default_value, table[i].def);
        if (*table[i].min != '\0') {
            EXPECT_EQ(actual.min, table[i].min);
            EXPECT_EQ(actual.max, table[i].max);
            EXPECT_EQ(actual.display_min, table[i].min);
            EXPECT_EQ(actual.display_max, table[i].max);
        }
    }
}

TEST_F(bundle_entry, UnknownActionsLeaveTheHostsDefaultsAndNoEffectHandleIsRefused)
{
    vl1::ofxhost::plugin p = ready_plugin();
    log_capture log;
    EXPECT_EQ(p.call_action("OfxActionNobodyKnows", nullptr, nullptr, nullptr), kOfxStatReplyDefault);
    EXPECT_EQ(p.call_action(kOfxImageEffectActionGetRegionOfDefinition, nullptr, nullptr, nullptr),
              kOfxStatReplyDefault);
    EXPECT_EQ(p.call_action(nullptr, nullptr, nullptr, nullptr), kOfxStatErrBadHandle);
    EXPECT_TRUE(log.contains("OFX action received: OfxActionNobodyKnows"));
    for (const char* action : {kOfxActionDescribe, kOfxActionCreateInstance, kOfxImageEffectActionRender,
                               kOfxActionInstanceChanged, kOfxActionDestroyInstance}) {
        EXPECT_EQ(p.call_action(action, nullptr, nullptr, nullptr), kOfxStatErrBadHandle) << action;
    }
}

}  // namespace
