#include <gtest/gtest.h>

#include <filesystem>

#include "presets/preset_manager.h"
#include "presets/preset_names.h"
#include "tests/presets/preset_fixtures.h"

namespace vl1 {
namespace {

namespace fs = std::filesystem;
using hueloom_test::folder_names;
using presettest::make_rig;
using hueloom_test::write_file;

TEST(PresetNames, RefusesNamesThatCouldLeaveTheFolderOrHideThemselves)
{
    // One name for each rule: blank, a separator of either kind, "..", a control character
    // (a zero byte too), ".json" and a name too long for a file name with its extension.
    for (const std::string& name :
         {std::string("   "), std::string("a/b"), std::string("back\\slash"), std::string("a..b"),
          std::string("tab\tname"), std::string("a\0b", 3), std::string(".json.x"), std::string(251, 'x')}) {
        std::string reason;
        EXPECT_FALSE(is_acceptable_preset_name(name, reason)) << name;
        EXPECT_EQ(reason.rfind("{en:", 0), 0u) << name;
        EXPECT_NE(reason.find("{de:"), std::string::npos) << name;
    }
    for (const std::string& name :
         {std::string("Grün & Blau"), std::string("v1.2"), std::string(".hidden"), std::string(250, 'x')}) {
        std::string reason = "stale";
        EXPECT_TRUE(is_acceptable_preset_name(name, reason)) << name;
        EXPECT_EQ(reason, "");
    }
}

TEST(PresetList, ShowsEveryPresetOnceAndMarksBrokenFiles)
{
    auto r = make_rig();
    preset_manager manager(r.component);
    ASSERT_EQ(manager.save_preset("a", false), preset_saved);
    ASSERT_EQ(manager.save_preset("B", false), preset_saved);
    const fs::path folder = manager.preset_folder();
    fs::copy_file(folder / "a.json", folder / "a.json.bak");
    write_file(folder / "broken.json", "{\"parameter_count\":");
    write_file(folder / "list.json", "[1,2]");
    write_file(folder / "notes.txt", "{}");
    write_file(folder / ".json", "{}");  // names nothing
    fs::create_directory(folder / "dir.json");

    std::vector<preset_entry> entries;
    ASSERT_TRUE(manager.list_presets(entries));
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_EQ(entries[0].name, "B");
    EXPECT_EQ(entries[1].name, "a");
    EXPECT_EQ(entries[1].path, (folder / "a.json").string());
    EXPECT_TRUE(entries[0].readable);
    EXPECT_TRUE(entries[1].readable);
    EXPECT_EQ(entries[0].problem, "");
    EXPECT_EQ(entries[2].name, "broken");
    EXPECT_FALSE(entries[2].readable);
    EXPECT_NE(entries[2].problem.find("broken.json"), std::string::npos);
    EXPECT_EQ(entries[3].name, "list");
    EXPECT_FALSE(entries[3].readable);
    EXPECT_NE(entries[3].problem.find("object"), std::string::npos);
}

TEST(PresetManagerNames, NamesLeadingOutOfTheFolderNeitherSaveNorDelete)
{
    auto r = make_rig();
    preset_manager manager(r.component);
    const fs::path folder = manager.preset_folder();
    const fs::path outside = folder.parent_path() / "Keep.json";
    for (const std::string& name : {std::string("../Keep"), std::string("sub/dir"), std::string("..")}) {
        std::string reason;
        EXPECT_EQ(manager.save_preset(name, true, reason), preset_save_failed) << name;
        EXPECT_FALSE(reason.empty());
    }
    EXPECT_TRUE(folder_names(folder).empty());
    EXPECT_FALSE(fs::exists(outside));

    ASSERT_EQ(manager.save_preset("Keep", false), preset_saved);
    ASSERT_EQ(manager.save_preset("Drop", false), preset_saved);
    write_file(outside, "{}");
    for (const char* name : {"Drop", "../Keep", "", "Never saved"})
        manager.delete_preset(name);
    EXPECT_EQ(folder_names(folder), std::set<std::string>{"Keep.json"});
    EXPECT_TRUE(fs::exists(outside));
    fs::remove(outside);
}

TEST(PresetRejection, PresetWhoseThemeIsMissingIsRefusedWithItsName)
{
    auto r = make_rig();
    preset_manager manager(r.component);
    r.component->available_themes = {"Ocean"};
    r.component->theme = "Ocean";
    ASSERT_EQ(manager.save_preset("Sea", false), preset_saved);
    const std::string path = manager.preset_path("Sea");

    std::string reason = "stale";
    EXPECT_FALSE(manager.is_preset_rejected(path, reason));
    EXPECT_EQ(reason, "");

    r.component->available_themes.clear();
    r.component->theme = "Desert";
    r.component->steps->set_value(3, false);
    EXPECT_TRUE(manager.is_preset_rejected(path, reason));
    EXPECT_EQ(reason, "Saved data contains theme \"Ocean\", which is not available.");
    // Asking changes nothing.
    EXPECT_EQ(r.component->theme, "Desert");
    EXPECT_EQ(r.component->steps->get_value(), 3);
}

}  // namespace
}  // namespace vl1
