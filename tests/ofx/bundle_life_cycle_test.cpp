// The life cycles real hosts put the bundle through within one process: a scan at start-up
// (load, describe, unload) and a second load when the effect is first applied; describing
// and describing in context twice; the bundle found under two plug-in paths; instances made
// again after an unload and a reload. Every time the host must see one set of parameters.
#include "tests/ofx/bundle_look.h"
#include "tests/ofx/bundle_test_support.h"
#include "tests/support/test_paths.h"

#include "host/catalogue.h"

namespace {

using namespace bundle_test;
namespace fs = std::filesystem;

const std::vector<std::string> one_set_of_parameters = {"Open GUI", "binaryStateParam", "editorRequest", "Global Bypass", "Angle",
                                                         "Strength", "Hue",              "Chroma",        "Luminance"};

std::vector<std::string> parameter_names(vl1::ofxhost::plugin& p)
{
    std::vector<std::string> names;
    if (vl1::ofxhost::effect* d = p.context_descriptor(kOfxImageEffectContextFilter))
        for (const auto& param : d->params().params())
            names.push_back(param->name());
    return names;
}

class bundle_life_cycle : public bundle_fixture {
protected:
    const look values{60, 100};

    /// Load, Describe twice, DescribeInContext twice, as hosts that ask again do.
    void use(vl1::ofxhost::plugin& p)
    {
        ASSERT_EQ(p.load(), kOfxStatOK);
        ASSERT_EQ(p.describe(), kOfxStatOK);
        ASSERT_EQ(p.describe(), kOfxStatOK);
        for (int twice = 0; twice < 2; ++twice) {
            ASSERT_EQ(p.describe_in_context(kOfxImageEffectContextFilter), kOfxStatOK);
            EXPECT_EQ(parameter_names(p), one_set_of_parameters);
        }
    }

    /// An instance that grades as the colour engine does, destroyed again.
    void expect_instance_grades(vl1::ofxhost::plugin& p)
    {
        vl1::ofxhost::instance inst = p.create_instance(kOfxImageEffectContextFilter,
                                                   {{"Angle", double(values.angle)}, {"Strength", double(values.strength)}});
        auto source = gradient_image({0, 0, 16, 8});
        EXPECT_EQ(max_difference(*render(inst, source), *graded(*source, table_for(*builtin_theme(), values))), 0.0);
        EXPECT_EQ(inst.destroy(), kOfxStatOK);
    }
};

TEST_F(bundle_life_cycle, ScanThenUseAgainAndAgain)
{
    const vl1::ofxhost::catalogue found = vl1::ofxhost::scan_plugins(h, {hueloom_test::plugin_dir()});
    EXPECT_TRUE(found.problems.empty());
    const vl1::ofxhost::catalogue_entry* entry = vl1::ofxhost::find_plugin(found, "com.varnlight.hueloomofx");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->info.label, "Hueloom");
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(testing::Message() << "use " << round);
        vl1::ofxhost::plugin p = h.load_plugin(entry->bundle, entry->index);
        use(p);
        expect_instance_grades(p);
        expect_instance_grades(p);
        EXPECT_EQ(p.unload(), kOfxStatOK);
        EXPECT_EQ(p.describe(), kOfxStatErrMissingHostFeature) << "after Unload the host's suites are gone";
    }
}

TEST_F(bundle_life_cycle, TwoPluginPathsHoldingTheSameBundle)
{
    // One folder twice on the path, a link to the bundle, and a copy of it.
    const fs::path linked = hueloom_test::make_temp_dir("linked");
    fs::create_directory_symlink(bundle_path(), linked / "Hueloom.ofx.bundle");
    const fs::path copied = hueloom_test::make_temp_dir("copied");
    fs::copy(bundle_path(), copied / "Hueloom.ofx.bundle", fs::copy_options::recursive);
    const fs::path first = hueloom_test::plugin_dir();

    const vl1::ofxhost::catalogue found = vl1::ofxhost::scan_plugins(h, {first, linked, copied, first});
    EXPECT_TRUE(found.problems.empty());
    ASSERT_EQ(found.plugins.size(), 1u) << "a host offers the plug-in once";
    EXPECT_EQ(found.plugins[0].bundle, first / "Hueloom.ofx.bundle");

    // A host that loads both copies side by side gets two working plug-ins.
    vl1::ofxhost::plugin original = h.load_plugin(first / "Hueloom.ofx.bundle");
    vl1::ofxhost::plugin copy = h.load_plugin(copied / "Hueloom.ofx.bundle");
    use(original);
    use(copy);
    expect_instance_grades(copy);
    expect_instance_grades(original);
}

}  // namespace
