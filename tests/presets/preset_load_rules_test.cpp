#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "presets/preset_manager.h"
#include "presets/preset_reader.h"
#include "tests/presets/preset_fixtures.h"

namespace vl1 {
namespace {

using presettest::make_rig;
using hueloom_test::write_file;

// A base blob of 8 bytes ("s1vc" and no records): it names no parameter, so what a test
// sees comes from the parameter list alone.
const char* const header_only_state = "\"plugin_state_size\":8,\"plugin_state\":[115,49,118,99,0,0,0,0]";

std::string element(const std::string& name, uint32_t id, const std::string& type, const std::string& value)
{
    return "{\"param_name\":\"" + name + "\",\"param_id\":" + std::to_string(id) + ",\"param_type\":\"" + type +
           "\",\"param_value\":" + value + "}";
}

std::string element(const std::string& name, const std::string& type, const std::string& value)
{
    return element(name, uid(name).value, type, value);
}

std::string preset_text(const std::vector<std::string>& elements, const std::string& state = header_only_state,
                        const std::string& head = "")
{
    std::string list;
    for (const auto& e : elements)
        list += (list.empty() ? "" : ",") + e;
    return "{" + head + "\"parameter_count\":" + std::to_string(elements.size()) + ",\"parameters\":[" + list +
           "]," + state + "}";
}

class PresetLoadRules : public ::testing::Test {
protected:
    void SetUp() override
    {
        r = make_rig();
        manager = std::make_unique<preset_manager>(r.component);
        path = manager->preset_path("Handmade");
        // Away from the defaults, so that a reset shows.
        r.component->gain->set_value(7.0f, false);
        r.component->steps->set_value(4, false);
        r.component->invert->set_value(true, false);
    }

    bool load(const std::string& text)
    {
        write_file(path, text);
        return manager->load_preset(path);
    }

    void expect_untouched()
    {
        EXPECT_FLOAT_EQ(r.component->gain->get_value(), 7.0f);
        EXPECT_EQ(r.component->steps->get_value(), 4);
        EXPECT_TRUE(r.component->invert->get_value());
    }

    presettest::rig r;
    std::unique_ptr<preset_manager> manager;
    std::string path;
};

TEST_F(PresetLoadRules, ListTakesValuesByTypeAndSkipsStrangers)
{
    const bool loaded = load(preset_text({
        element("Steps", "integral", "-2"),
        element("Invert", "boolean", "false"),
        element("Tint", "color", "[0.5, 0.25, 0.75, 1.0]"),
        element("Gain", 12345u, "continuos", "3.0"),  // unknown id
        element("Renamed", uid("Steps").value, "integral", "5"),  // id of Steps, other name
    }));
    EXPECT_TRUE(loaded);
    EXPECT_EQ(r.component->steps->get_value(), -2);
    EXPECT_FALSE(r.component->invert->get_value());
    EXPECT_FLOAT_EQ(r.component->tint->get_value().g, 0.75f);
    EXPECT_FLOAT_EQ(r.component->gain->get_value(), 1.0f);  // reset to default, never set

    // Continuous values are read only under the reader's own spelling.
    EXPECT_TRUE(load(preset_text({element("Gain", "continuous", "3.0")})));
    EXPECT_FLOAT_EQ(r.component->gain->get_value(), 1.0f);
    EXPECT_TRUE(load(preset_text({element("Gain", "continuos", "3.0")})));
    EXPECT_FLOAT_EQ(r.component->gain->get_value(), 3.0f);
}

TEST_F(PresetLoadRules, ValuesOfTheWrongShapeAreNotTakenOver)
{
    EXPECT_TRUE(load(preset_text({
        element("Tint", "color", "[0.5, 0.25, 0.75]"),
        element("Steps", "integral", "2.5"),
        element("Invert", "boolean", "1"),
        element("Gain", "continuos", "\"3\""),
        element("Gain", "integral", "3"),
        "{\"param_name\":\"Steps\",\"param_id\":\"x\",\"param_type\":\"integral\",\"param_value\":3}",
        "{\"param_name\":7,\"param_id\":-1}",
        "[1,2]",
        "null",
    })));
    const param_argb tint = r.component->tint->get_value();
    EXPECT_FLOAT_EQ(tint.a, 1.0f);
    EXPECT_FLOAT_EQ(tint.r, 0.5f);
    EXPECT_EQ(r.component->steps->get_value(), 0);
    EXPECT_FALSE(r.component->invert->get_value());
    EXPECT_FLOAT_EQ(r.component->gain->get_value(), 1.0f);
}

TEST_F(PresetLoadRules, NameCheckPassesWithoutNameAndFailsOnAnother)
{
    const std::string list = "\"parameter_count\":1,\"parameters\":[" + element("Steps", "integral", "-1") + "],";
    EXPECT_FALSE(load("{\"plugin_name\":\"Other\"," + list + header_only_state + "}"));
    expect_untouched();
    EXPECT_FALSE(load("{\"plugin_name\":42," + list + header_only_state + "}"));
    expect_untouched();
    EXPECT_TRUE(load("{\"plugin_name\":\"" + r.component->name + "\"," + list + header_only_state + "}"));
    EXPECT_EQ(r.component->steps->get_value(), -1);
    r.component->steps->set_value(4, false);
    EXPECT_TRUE(load("{" + list + header_only_state + "}"));
    EXPECT_EQ(r.component->steps->get_value(), -1);
}

TEST_F(PresetLoadRules, BadParameterListFailsBeforeAnythingChanges)
{
    const std::string one = element("Steps", "integral", "-1");
    for (const std::string& head : {
             std::string("\"parameter_count\":0,\"parameters\":[],"),
             "\"parameter_count\":2,\"parameters\":[" + one + "],",
             "\"parameter_count\":\"1\",\"parameters\":[" + one + "],",
             std::string("\"parameter_count\":1,\"parameters\":{\"a\":1},"),
             "\"parameters\":[" + one + "],",
         }) {
        EXPECT_FALSE(load("{" + head + header_only_state + "}")) << head;
        expect_untouched();
    }
}

TEST_F(PresetLoadRules, BadStateFailsAfterTheParametersWereReset)
{
    const std::string list = element("Steps", "integral", "-1");
    for (const std::string& state : {
             std::string("\"plugin_state_size\":8,\"plugin_state\":[115,49,118,99,0,0,0,256]"),
             std::string("\"plugin_state_size\":8,\"plugin_state\":[115,49,118,99,0,0,0,-1]"),
             std::string("\"plugin_state_size\":9,\"plugin_state\":[115,49,118,99,0,0,0,0]"),
             std::string("\"plugin_state_size\":0,\"plugin_state\":[]"),
             std::string("\"plugin_state_size\":8,\"plugin_state\":\"s1vc\""),
             std::string("\"plugin_state\":[115,49,118,99,0,0,0,0]"),
         }) {
        r.component->gain->set_value(7.0f, false);
        EXPECT_FALSE(load(preset_text({list}, state))) << state;
        EXPECT_FLOAT_EQ(r.component->gain->get_value(), 1.0f) << state;
        EXPECT_EQ(r.component->steps->get_value(), -1) << state;
        std::string reason;
        EXPECT_FALSE(manager->is_preset_rejected(path, reason)) << state;
    }
}

TEST_F(PresetLoadRules, BrokenFilesFailWithoutEndingTheProcess)
{
    const std::string deep(200000, '[');
    for (const std::string& text : {
             std::string(),
             std::string("[1,2,3]"),
             std::string("{\"parameter_count\":1,\"parameters\":["),
             std::string("{\"plugin_name\":\"x\\ud800\"}"),
             std::string("{\"a\":") + deep,
             std::string("{\t\t// NOTE: comment\n\"parameter_count\":1}"),
             std::string("{\"parameter_count\":99999999999999999999,\"parameters\":[]}"),
         }) {
        EXPECT_FALSE(load(text)) << text.substr(0, 60);
        expect_untouched();
        std::string reason = "stale";
        EXPECT_FALSE(manager->is_preset_rejected(path, reason));
        EXPECT_EQ(reason, "");
    }
    // Refused by its size before anything is read (a sparse file: nothing is written).
    write_file(path, "{}");
    std::filesystem::resize_file(path, preset_file_size_limit + 1);
    EXPECT_FALSE(manager->load_preset(path));
    std::string problem;
    EXPECT_FALSE(check_preset_file(path, problem));
    EXPECT_NE(problem.find("more than"), std::string::npos);

    EXPECT_FALSE(manager->load_preset(manager->preset_path("Missing")));
    std::filesystem::create_directory(manager->preset_path("Folder"));
    EXPECT_FALSE(manager->load_preset(manager->preset_path("Folder")));
}

}  // namespace
}  // namespace vl1
