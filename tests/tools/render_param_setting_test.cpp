// Settings applied to an instance of the host's fixture plug-in, through the host library:
// how names are found, how each type's values read and are checked, and how keys are set
// for the host to interpolate.
#include "tools/hueloom_render/param_setting.h"

#include "host/host.h"
#include "ofx/api/ofx_image_effect.h"
#include "ofx/api/ofx_param.h"
#include "tests/tools/render_test_support.h"
#include "tools/hueloom_render/render_error.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using vl1::render_tool::apply_setting;
using vl1::render_tool::render_error;

class param_setting : public ::testing::Test {
protected:
    vl1::ofxhost::host h;
    std::optional<vl1::ofxhost::plugin> plugin;
    std::optional<vl1::ofxhost::instance> inst;

    void SetUp() override
    {
        const auto bundle = render_test::fixture_dir() / "HostFixture.ofx.bundle";
        if (!std::filesystem::exists(bundle)) GTEST_SKIP() << "the host's fixture bundle isn't built";
        plugin.emplace(h.load_plugin(bundle, 0));
        ASSERT_EQ(plugin->load(), kOfxStatOK);
        inst.emplace(plugin->create_instance(kOfxImageEffectContextFilter));
    }
    void TearDown() override
    {
        inst.reset();
        plugin.reset();
    }

    vl1::ofxhost::param& param(const std::string& name) { return inst->param(name); }

    // The message of the render_error a setting raises; "" if it raises none.
    std::string refusal(const std::string& setting)
    {
        try {
            apply_setting(*inst, setting);
        } catch (const render_error& e) {
            EXPECT_EQ(e.code(), vl1::render_tool::exit_code::usage);
            return e.what();
        }
        return {};
    }
};

TEST_F(param_setting, NamesMatchExactlyThenInAnyCaseThenByScriptName)
{
    apply_setting(*inst, "Gain=2.5");
    EXPECT_DOUBLE_EQ(param("Gain").get_double(), 2.5);
    apply_setting(*inst, "gAIN=0.5");
    EXPECT_DOUBLE_EQ(param("Gain").get_double(), 0.5);
    apply_setting(*inst, " count =7");
    EXPECT_EQ(param("Count").get_int(), 7);

    const std::string unknown = refusal("Brightness=1");
    EXPECT_NE(unknown.find("unknown parameter \"Brightness\""), std::string::npos) << unknown;
    EXPECT_NE(unknown.find("the plug-in has: Invert, Gain, Count, Tint, Mode, Note, Offset"), std::string::npos)
        << unknown;
    EXPECT_NE(refusal("binaryStateParam=QUJD").find("--state-in"), std::string::npos);
    EXPECT_NE(refusal("Write Key=1").find("holds no value"), std::string::npos);
    EXPECT_NE(refusal("=3").find("NAME=VALUE"), std::string::npos);
    EXPECT_NE(refusal("Gain").find("NAME=VALUE"), std::string::npos);
}

TEST_F(param_setting, ValuesReadByTypeAndStayInRange)
{
    apply_setting(*inst, "Invert=off");
    EXPECT_FALSE(param("Invert").get_bool());
    apply_setting(*inst, "Invert=YES");
    EXPECT_TRUE(param("Invert").get_bool());
    apply_setting(*inst, "Mode=plain");
    EXPECT_EQ(param("Mode").get_int(), 0);
    apply_setting(*inst, "Mode=1");
    EXPECT_EQ(param("Mode").get_int(), 1);
    apply_setting(*inst, "Tint=0.1:0.2:0.3:0.4");
    EXPECT_EQ(param("Tint").get_rgba(), (std::array<double, 4>{0.1, 0.2, 0.3, 0.4}));
    apply_setting(*inst, "Offset=-1.5,+2");
    EXPECT_EQ(param("Offset").value().numbers[1], 2.0);
    apply_setting(*inst, "Note=a, b @ c");
    EXPECT_EQ(param("Note").get_string(), "a, b @ c");

    EXPECT_NE(refusal("Gain=4.01").find("4.01 is out of range 0 .. 4"), std::string::npos);
    EXPECT_NE(refusal("Gain=-0.1").find("out of range"), std::string::npos);
    EXPECT_NE(refusal("Count=11").find("11 is out of range 0 .. 10"), std::string::npos);
    EXPECT_NE(refusal("Count=2.5").find("not a whole number"), std::string::npos);
    EXPECT_NE(refusal("Gain=nan").find("not a number"), std::string::npos);
    EXPECT_NE(refusal("Gain=1e999").find("not a number"), std::string::npos);
    EXPECT_NE(refusal("Invert=maybe").find("no boolean"), std::string::npos);
    EXPECT_NE(refusal("Mode=Weird").find("none of the options of \"Mode\": Plain, Fancy"), std::string::npos);
    EXPECT_NE(refusal("Mode=2").find("out of range 0 .. 1"), std::string::npos);
    EXPECT_NE(refusal("Tint=1:1:1").find("needs 4 numbers"), std::string::npos);
    // A refused setting changes nothing.
    EXPECT_DOUBLE_EQ(param("Gain").get_double(), 1.0);
    EXPECT_EQ(param("Count").get_int(), 3);
}

TEST_F(param_setting, KeysAreSetForTheHostToInterpolate)
{
    // How the host interpolates between the keys is the host's own test.
    apply_setting(*inst, "Gain=0@1,4@5");
    EXPECT_EQ(param("Gain").key_times(), (std::vector<double>{1, 5}));
    EXPECT_DOUBLE_EQ(param("Gain").value_at(3).numbers[0], 2.0);
    apply_setting(*inst, "Tint=0:0:0:1@10,1:0.5:0:1@20");
    EXPECT_EQ(param("Tint").value_at(20).numbers, (std::array<double, 4>{1, 0.5, 0, 1}));
    apply_setting(*inst, "Note=first@1,second@3");
    EXPECT_EQ(param("Note").value_at(3).text, "second");

    // A constant replaces the keys.
    apply_setting(*inst, "Gain=3");
    EXPECT_TRUE(param("Gain").key_times().empty());
    EXPECT_DOUBLE_EQ(param("Gain").value_at(1).numbers[0], 3.0);

    EXPECT_NE(refusal("Gain=1@2,2@2").find("frame 2 has two keys"), std::string::npos);
    EXPECT_NE(refusal("Gain=1@2,2").find("VALUE@FRAME"), std::string::npos);
    EXPECT_NE(refusal("Gain=1@x").find("VALUE@FRAME"), std::string::npos);
    EXPECT_NE(refusal("Gain=1@1,9@2").find("9 is out of range"), std::string::npos);
    EXPECT_DOUBLE_EQ(param("Gain").value_at(1).numbers[0], 3.0) << "a refused key list changes nothing";

    param("Gain").properties().set_int(kOfxParamPropAnimates, 0);
    EXPECT_NE(refusal("Gain=1@1,2@2").find("can't be animated"), std::string::npos);
}

TEST_F(param_setting, FormattedSettingsGiveTheSameValuesAndKeysBack)
{
    for (const char* s : {"Gain=0.125@1,3.5@7", "Invert=false", "Mode=Plain", "Tint=0.1:0.2:0.3:0.4", "Count=2@1,9@4",
                          "Offset=-3:0.75", "Note=some text"}) {
        apply_setting(*inst, s);
    }
    std::vector<std::string> formatted;
    for (const auto& p : inst->fx().params().params()) {
        if (auto f = vl1::render_tool::format_setting(*p); !f.empty()) formatted.push_back(f);
    }
    vl1::ofxhost::instance other = plugin->create_instance(kOfxImageEffectContextFilter);
    for (const auto& f : formatted) apply_setting(other, f);
    for (const char* name : {"Gain", "Invert", "Mode", "Tint", "Count", "Offset", "Note"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(other.param(name).key_times(), param(name).key_times());
        for (double t : {0.0, 1.0, 2.0, 4.0, 7.0}) EXPECT_EQ(other.param(name).value_at(t), param(name).value_at(t));
    }
    EXPECT_EQ(vl1::render_tool::format_setting(param("binaryStateParam")), "");
}

}  // namespace
