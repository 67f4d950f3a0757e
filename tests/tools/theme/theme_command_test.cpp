// hueloom-theme, run as a subprocess with a HOME of its own, as a theme author runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>

#include "framework/string_helpers.h"
#include "tests/support/test_paths.h"
#include "tests/tools/run_process.h"
#include "tests/tools/theme/theme_folder_maker.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_vault.h"

namespace vl1 {
namespace {

namespace fs = std::filesystem;
using hueloom_test::contains;
using hueloom_test::folder_names;
using hueloom_test::make_theme_folder;
using hueloom_test::process_result;
using hueloom_test::theme_folder_options;

// "Label:   value" lines of `info`, by label.
std::map<std::string, std::string> labelled_lines(const std::string& text)
{
    std::map<std::string, std::string> fields;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(':');
        if (colon != std::string::npos && line[0] != ' ')
            fields[line.substr(0, colon)] = trim_copy(line.substr(colon + 1));
    }
    return fields;
}

class ThemeCommand : public testing::Test {
protected:
    fs::path home = hueloom_test::make_temp_dir("home");

    process_result run(const std::vector<std::string>& arguments) const
    {
        return hueloom_test::run_process(HUELOOM_THEME_TOOL, arguments, home);
    }
    fs::path appdata() const { return home / "Varnlight" / "Hueloom"; }

    hueloom_theme_v1 read_theme(const fs::path& path) const
    {
        hueloom_theme_v1 theme;
        std::string problem;
        EXPECT_TRUE(hueloom_theme_file_serializer_v1::read_theme_from_file(theme, path.string(), problem)) << problem;
        return theme;
    }
};

TEST_F(ThemeCommand, HelpSucceedsAndWrongUsageExitsWithTwoAndSaysWhy)
{
    const process_result help = run({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    EXPECT_TRUE(contains(help.out, "pack FOLDER OUT.hlt"));
    const process_result pack_help = run({"pack", "--help"});
    EXPECT_EQ(pack_help.exit_code, 0);
    EXPECT_TRUE(contains(pack_help.out, "Usage: hueloom-theme pack FOLDER OUT.hlt"));
    EXPECT_TRUE(contains(pack_help.out, "docs/authoring.md")) << "where theme.json is written down";
    EXPECT_EQ(run({"help", "info"}).out, run({"info", "-h"}).out);

    // Each mistake names itself or shows the usage ("usage" or "Usage").
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{}, "Usage"}, {{"frob"}, "unknown command 'frob'"}, {{"import"}, "sage"}, {{"import", "a", "b"}, "sage"},
        {{"pack", "x"}, "sage"}, {{"info"}, "sage"}, {{"list", "extra"}, "sage"},
        {{"info", "--verbose", "x"}, "unknown option '--verbose'"}};
    for (const auto& [arguments, message] : cases) {
        const process_result result = run(arguments);
        EXPECT_EQ(result.exit_code, 2) << message;
        EXPECT_TRUE(contains(result.err, message)) << result.err;
        EXPECT_TRUE(result.out.empty()) << result.out;
    }
}

TEST_F(ThemeCommand, ImportStoresTheThemeUnderItsUidAndANewVersionReplacesIt)
{
    const fs::path folder = make_theme_folder({.name = "Dusk", .uid = "00abcdef"});
    const process_result result = run({"import", folder.string()});
    ASSERT_EQ(result.exit_code, 0) << result.err;

    const fs::path stored = appdata() / "theme_00abcdef.hlt";
    EXPECT_TRUE(contains(result.out, "\"Dusk\"")) << result.out;
    EXPECT_TRUE(contains(result.out, stored.string())) << result.out;
    hueloom_theme_v1 theme = read_theme(stored);
    EXPECT_EQ(theme.uid, 0x00abcdefu);
    ASSERT_EQ(theme.luts.size(), 2u);
    EXPECT_EQ(theme.luts[0].rotation, 30.0f);
    EXPECT_EQ(theme.luts[1].rotation, 200.0f);

    const process_result second = run({"import", make_theme_folder({.name = "Dusk II", .version = 2}).string()});
    ASSERT_EQ(second.exit_code, 0) << second.err;
    EXPECT_TRUE(contains(second.out, "replaces \"Dusk\" version 1")) << second.out;
    ASSERT_EQ(folder_names(appdata()).size(), 1u);
    theme = read_theme(stored);
    EXPECT_EQ(theme.name, "Dusk II");
    EXPECT_EQ(theme.version, 2u);
}

TEST_F(ThemeCommand, ImportFailuresGiveThePluginsMessageAndStoreNothing)
{
    // Each message of the plug-in is shown by the folder import's own tests; behind its bare
    // "Unexpected error." the author gets the cause.
    const fs::path missing = hueloom_test::make_temp_dir("empty");
    const fs::path broken_lut = make_theme_folder();
    hueloom_test::write_file(broken_lut / "a.cube", "LUT_3D_SIZE 2\n0 0 0\n");
    const std::vector<std::pair<fs::path, std::vector<std::string>>> cases{
        {missing, {"Failed to open or read file '" + (missing / "theme.json").string() + "'"}},
        {broken_lut, {"Unexpected error.", "a.cube"}},
    };
    for (const auto& [folder, messages] : cases) {
        const process_result result = run({"import", folder.string()});
        EXPECT_EQ(result.exit_code, 1) << folder;
        for (const std::string& message : messages)
            EXPECT_TRUE(contains(result.err, message)) << result.err;
    }
    EXPECT_TRUE(folder_names(appdata()).empty());
}

TEST_F(ThemeCommand, PackWritesWhatTheFolderImportReads)
{
    const fs::path folder = make_theme_folder({.post_processing = true});
    const fs::path output = hueloom_test::make_temp_dir("packed") / "out.hlt";
    const process_result result = run({"pack", folder.string(), output.string()});
    ASSERT_EQ(result.exit_code, 0) << result.err;
    EXPECT_TRUE(contains(result.out, output.string()));

    hueloom_vault vault;
    std::string english;
    std::string german;
    const auto imported = vault.import_theme_from_folder(folder.string(), english, german);
    ASSERT_TRUE(imported) << english;
    hueloom_test::expect_same_theme(read_theme(output), *imported);
    EXPECT_TRUE(imported->post_processing_lut);
    EXPECT_FALSE(fs::exists(appdata()));
}

TEST_F(ThemeCommand, PackFailuresLeaveNoThemeFile)
{
    const fs::path target_folder = hueloom_test::make_temp_dir("packed");
    const std::string folder = make_theme_folder().string();
    const std::string no_parent = (target_folder / "no" / "x.hlt").string();
    // A full disk, as /dev/full plays it: named, and never reported as packed.
    const fs::path full = hueloom_test::make_temp_dir("full") / "full.hlt";
    fs::create_symlink("/dev/full", full);
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{hueloom_test::make_temp_dir("empty").string(), (target_folder / "out.hlt").string()},
         "Failed to open or read file"},
        {{folder, target_folder.string()}, "is a folder"},
        {{folder, no_parent}, "cannot write '" + no_parent + "'"},
        {{folder, full.string()}, "cannot write '" + full.string() + "': writing failed"},
    };
    for (const auto& [operands, message] : cases) {
        const process_result result = run({"pack", operands[0], operands[1]});
        EXPECT_EQ(result.exit_code, 1) << message;
        EXPECT_TRUE(contains(result.err, message)) << result.err;
        EXPECT_FALSE(contains(result.out, "Packed")) << result.out;
    }
    EXPECT_TRUE(folder_names(target_folder).empty());
}

TEST_F(ThemeCommand, InfoDescribesTheThemeFileAndRefusesWhatIsNone)
{
    const std::string background = hueloom_test::png_header(64, 48);
    const fs::path output = hueloom_test::make_temp_dir("packed") / "t.hlt";
    ASSERT_EQ(run({"pack", make_theme_folder({.background = background, .post_processing = true}).string(),
                   output.string()})
                  .exit_code,
              0);
    const process_result result = run({"info", output.string()});
    ASSERT_EQ(result.exit_code, 0) << result.err;
    const auto fields = labelled_lines(result.out);
    EXPECT_EQ(fields.at("Name"), "\"Test Theme\"");
    EXPECT_EQ(fields.at("UID"), "00abcdef");
    EXPECT_EQ(fields.at("Theme version"), "1");
    EXPECT_EQ(fields.at("Format version"), "3");
    EXPECT_EQ(fields.at("Background"), "PNG, 64 x 48 px, " + std::to_string(background.size()) + " bytes");
    EXPECT_EQ(fields.at("Wheel LUTs"), "2");
    // Mid grey's red goes to 0.5 + shift / 2: 0.55 (140) for a.cube, 0.6 (153) for b.cube, 0.525 (134) for p.cube.
    EXPECT_EQ(fields.at("Post-processing"), "yes, mid grey becomes #868080");
    EXPECT_TRUE(contains(result.out, "30.00  #8c8080")) << result.out;
    EXPECT_TRUE(contains(result.out, "200.00  #998080")) << result.out;

    const fs::path folder = output.parent_path();
    const fs::path cut = folder / "cut.hlt";
    fs::copy_file(output, cut);
    fs::resize_file(cut, fs::file_size(output) / 2);
    hueloom_test::write_file(folder / "text.hlt", "this is not a theme");
    for (const fs::path& path : {folder / "missing.hlt", cut, folder / "text.hlt"}) {
        const process_result refused = run({"info", path.string()});
        EXPECT_EQ(refused.exit_code, 1) << path;
        EXPECT_TRUE(contains(refused.err, "cannot read '" + path.string() + "': ")) << refused.err;
        EXPECT_TRUE(refused.out.empty());
    }
    EXPECT_TRUE(contains(run({"info", (folder / "text.hlt").string()}).err, "magic"));
}

TEST_F(ThemeCommand, InfoTellsTheBackgroundTypeFromItsFirstBytes)
{
    using namespace std::string_literals;
    const std::string jpeg = "\xff\xd8\xff\xe0\x00\x04\x4a\x46"s + "\xff\xc0\x00\x11\x08\x01\x02\x03\x04\x03"s;
    const std::string gif = "GIF89a\x0a\x00\x14\x00\x00"s;
    std::string bmp = "BM"s + std::string(16, '\0') + "\x2c\x01\x00\x00"s + "\x38\xff\xff\xff"s + std::string(8, '\0');
    const std::string webp = "RIFF\x20\x00\x00\x00WEBPVP8L\x10\x00\x00\x00\x2f"s + "\x04\x80\x01\x00"s + std::string(8, '\0');
    const std::vector<std::pair<std::string, std::string>> cases{
        {jpeg, "JPEG, 772 x 258 px"},
        {gif, "GIF, 10 x 20 px"},
        {bmp, "BMP, 300 x 200 px"},
        {webp, "WebP, 5 x 7 px"},
        {"abcdefgh", "unknown format (starts 61 62 63 64), 8 bytes"},
    };
    for (const auto& [bytes, expected] : cases) {
        const fs::path output = hueloom_test::make_temp_dir("packed") / "t.hlt";
        ASSERT_EQ(run({"pack", make_theme_folder({.background = bytes}).string(), output.string()}).exit_code, 0);
        const process_result result = run({"info", output.string()});
        ASSERT_EQ(result.exit_code, 0) << result.err;
        EXPECT_TRUE(labelled_lines(result.out).at("Background").starts_with(expected)) << result.out;
    }
}

TEST_F(ThemeCommand, ListTellsThemesUnreadableFilesAndIgnoredOnes)
{
    const process_result empty = run({"list"});
    EXPECT_EQ(empty.exit_code, 0);
    EXPECT_TRUE(contains(empty.out, "No themes yet")) << empty.out;

    ASSERT_EQ(run({"import", make_theme_folder({.name = "Dusk"}).string()}).exit_code, 0);
    ASSERT_EQ(run({"import", make_theme_folder({.name = "Dawn", .uid = "00000042"}).string()}).exit_code, 0);
    const process_result good = run({"list"});
    EXPECT_EQ(good.exit_code, 0) << good.out;
    EXPECT_TRUE(contains(good.out, "2 themes, 0 unreadable")) << good.out;

    hueloom_test::write_file(appdata() / "theme_00000009.hlt", "junk");
    hueloom_test::write_file(appdata() / "notes.txt", "x");
    fs::copy_file(appdata() / "theme_00000042.hlt", appdata() / "theme_00000007.hlt");
    const process_result mixed = run({"list"});
    EXPECT_EQ(mixed.exit_code, 1);
    std::map<std::string, std::string> line_of;
    std::istringstream lines(mixed.out);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("  ") && line[2] != ' ')
            line_of[line.substr(2, line.find(' ', 2) - 2)] = line;
    EXPECT_TRUE(contains(line_of["theme_00abcdef.hlt"], "\"Dusk\""));
    EXPECT_TRUE(contains(line_of["theme_00000042.hlt"], "uid 00000042"));
    EXPECT_TRUE(contains(line_of["theme_00000009.hlt"], "cannot be read: "));
    EXPECT_TRUE(contains(line_of["notes.txt"], "ignored"));
    EXPECT_TRUE(contains(mixed.out, "whose file would be theme_00000042.hlt")) << mixed.out;
    EXPECT_TRUE(contains(mixed.out, "3 themes, 1 unreadable")) << mixed.out;
}

}  // namespace
}  // namespace vl1
