#include <gtest/gtest.h>

#include <filesystem>

#include "presets/preset_json.h"
#include "presets/preset_manager.h"
#include "tests/presets/preset_fixtures.h"
#include "tests/support/test_paths.h"

namespace vl1 {
namespace {

namespace fs = std::filesystem;
using hueloom_test::folder_names;
using presettest::make_rig;
using hueloom_test::read_file;

rapidjson::Document parse(const std::string& text)
{
    rapidjson::Document doc;
    doc.Parse(text.c_str());
    EXPECT_FALSE(doc.HasParseError()) << "offset " << doc.GetErrorOffset();
    return doc;
}

TEST(PresetSaveLoad, RestoresEveryParameterAndTheComponentsOwnStateFromAFolderUnderTheHome)
{
    auto r = make_rig();
    preset_manager manager(r.component);
    const fs::path folder = hueloom_test::home_dir() / "Varnlight" / "Plugin Presets" / r.component->name;
    EXPECT_EQ(manager.preset_folder(), folder.string());
    EXPECT_EQ(manager.preset_path("Look"), (folder / "Look.json").string());
    r.component->gain->set_value(2.5f, false);
    r.component->steps->set_value(-3, false);
    r.component->invert->set_value(true, false);
    r.component->tint->set_value({0.5f, 0.25f, 0.125f, 1.0f}, false);
    r.component->theme = "Ocean";
    const std::vector<uint8_t> saved = r.component->get_state();
    ASSERT_EQ(manager.save_preset("Look", false), preset_saved);

    r.component->gain->set_value(9.0f, false);
    r.component->steps->set_value(4, false);
    r.component->invert->set_value(false, false);
    r.component->tint->set_value({0.0f, 0.0f, 0.0f, 0.0f}, false);
    r.component->theme = "Desert";
    ASSERT_NE(r.component->get_state(), saved);

    // Every parameter's value and the theme behind the base blob come back bit for bit.
    ASSERT_TRUE(manager.load_preset(manager.preset_path("Look")));
    EXPECT_EQ(r.component->get_state(), saved);
    EXPECT_EQ(r.component->theme, "Ocean");
}

TEST(PresetSaveLoad, ExistingNameNeedsOverwriteAndAFailedSaveLeavesNoLitter)
{
    auto r = make_rig();
    preset_manager manager(r.component);
    r.component->steps->set_value(1, false);
    ASSERT_EQ(manager.save_preset("Same", false), preset_saved);
    const std::string first = read_file(manager.preset_path("Same"));

    r.component->steps->set_value(2, false);
    EXPECT_EQ(manager.save_preset("Same", false), preset_exists);
    EXPECT_EQ(read_file(manager.preset_path("Same")), first);

    EXPECT_EQ(manager.save_preset("Same", true), preset_saved);
    EXPECT_NE(read_file(manager.preset_path("Same")), first);
    r.component->steps->set_value(0, false);
    ASSERT_TRUE(manager.load_preset(manager.preset_path("Same")));
    EXPECT_EQ(r.component->steps->get_value(), 2);
    // Nothing but the preset itself is left in the folder.
    EXPECT_EQ(folder_names(manager.preset_folder()), std::set<std::string>{"Same.json"});

    // A folder in place of the file: the finished text can't be moved there, and no
    // temporary file stays behind.
    fs::create_directory(manager.preset_path("Blocked"));
    std::string reason;
    EXPECT_EQ(manager.save_preset("Blocked", true, reason), preset_save_failed);
    EXPECT_NE(reason.find("{en:"), std::string::npos);
    EXPECT_TRUE(fs::is_directory(manager.preset_path("Blocked")));
    EXPECT_EQ(folder_names(manager.preset_folder()), (std::set<std::string>{"Blocked.json", "Same.json"}));
}

TEST(PresetFileText, HasTheFixedLayout)
{
    auto r = make_rig();
    preset_manager manager(r.component);
    r.component->gain->set_value(2.5f, false);
    r.component->steps->set_value(-3, false);
    ASSERT_EQ(manager.save_preset("Layout", false), preset_saved);
    const std::string text = read_file(manager.preset_path("Layout"));

    const std::string head = "{\n\t\"plugin_name\":\"" + r.component->name +
                             "\",\n\t\"plugin_version\":\"1.3.0\",\n\t\"parameter_count\":4,\n\t\"parameters\":[\n";
    EXPECT_EQ(text.substr(0, head.size()), head);
    EXPECT_NE(text.find("\t{\n\t\t\"param_name\":\"Gain\",\n\t\t\"param_id\":" + std::to_string(uid("Gain").value) +
                        ",\n\t\t\"param_type\":\"continuous\",\n\t\t\"param_value\":2.500000\n\t},\n"),
              std::string::npos);
    EXPECT_NE(text.find("\"param_type\":\"integral\",\n\t\t\"param_value\":-3\n"), std::string::npos);
    EXPECT_NE(text.find("\"param_type\":\"boolean\",\n\t\t\"param_value\":false\n"), std::string::npos);
    EXPECT_NE(text.find("\"param_value\":[1.000000, 0.500000, 0.250000, 0.000000]\n\t}\n\t],\n"), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 3), "]\n}");

    const auto doc = parse(text);
    const auto state = r.component->get_state();
    ASSERT_TRUE(doc["plugin_state"].IsArray());
    EXPECT_EQ(doc["plugin_state_size"].GetUint64(), state.size());
    ASSERT_EQ(doc["plugin_state"].Size(), state.size());
    for (rapidjson::SizeType i = 0; i < state.size(); ++i)
        ASSERT_EQ(doc["plugin_state"][i].GetUint(), state[i]) << "byte " << i;
    EXPECT_FALSE(doc.HasMember("lut_points"));
}

TEST(PresetFileText, RecordsTheExportedTableInLinearOrder)
{
    auto r = make_rig(true);
    preset_manager manager(r.component);
    ASSERT_EQ(manager.save_preset("Table", false), preset_saved);
    const auto doc = parse(read_file(manager.preset_path("Table")));
    EXPECT_EQ(doc["lut_edge_length"].GetInt(), 2);
    const auto& points = doc["lut_points"];
    ASSERT_EQ(points.Size(), 24u);
    for (rapidjson::SizeType cell = 0; cell < 8; ++cell) {
        EXPECT_DOUBLE_EQ(points[3 * cell].GetDouble(), cell);
        EXPECT_DOUBLE_EQ(points[3 * cell + 1].GetDouble(), cell + 0.5);
        EXPECT_DOUBLE_EQ(points[3 * cell + 2].GetDouble(), -static_cast<double>(cell));
    }
    // The table is written but never read: the preset still loads.
    EXPECT_TRUE(manager.load_preset(manager.preset_path("Table")));
}

TEST(PresetFileText, NamesWithQuotesStillGiveReadableFiles)
{
    auto r = make_rig();
    r.component->name = "Quote \"q\" \\ Back";
    preset_manager manager(r.component);
    r.component->steps->set_value(5, false);
    ASSERT_EQ(manager.save_preset("Quoted", false), preset_saved);
    const auto doc = parse(read_file(manager.preset_path("Quoted")));
    EXPECT_STREQ(doc["plugin_name"].GetString(), "Quote \"q\" \\ Back");
    r.component->steps->set_value(0, false);
    EXPECT_TRUE(manager.load_preset(manager.preset_path("Quoted")));
    EXPECT_EQ(r.component->steps->get_value(), 5);
}

TEST(PresetSaveLoad, ComponentThatIsGoneChangesNothing)
{
    auto r = make_rig();
    preset_manager manager(r.component);
    ASSERT_EQ(manager.save_preset("Kept", false), preset_saved);
    const std::string path = manager.preset_path("Kept");
    const std::string before = read_file(path);

    preset_manager orphan(std::weak_ptr<icomponent_v1>{});
    EXPECT_EQ(orphan.preset_folder(), "");
    EXPECT_EQ(orphan.save_preset("Kept", true), preset_save_failed);
    EXPECT_FALSE(orphan.load_preset(path));
    std::string reason;
    EXPECT_FALSE(orphan.is_preset_rejected(path, reason));

    r.component->terminate();
    r = {};
    EXPECT_EQ(manager.save_preset("Kept", true), preset_save_failed);
    EXPECT_EQ(read_file(path), before);
}

}  // namespace
}  // namespace vl1
