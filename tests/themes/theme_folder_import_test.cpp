#include <gtest/gtest.h>

#include <filesystem>
#include <mutex>

#include "framework/log.h"
#include "framework/uid.h"
#include "tests/support/test_paths.h"
#include "tests/themes/theme_test_support.h"
#include "themes/ctime_text.h"
#include "themes/theme_folder_import.h"

namespace vl1 {
namespace {

namespace fs = std::filesystem;

const std::string valid_json = R"({"name": "Dusk", "version": 1, "uid": "0000abcd",
  "wheel": {"background": "wheel.png"},
  "luts": [{"name": "a.cube", "rotation": 30}, {"name": "b.cube", "rotation": 200.5}],
  "post_processing": {"enabled": true, "lut": "c.cube"}})";

// A folder ready for import: background, LUTs and a broken LUT beside the theme.json of each test.
class ThemeFolderImport : public testing::Test {
protected:
    void SetUp() override
    {
        hueloom_test::write_file(folder / "wheel.png", "\x89PNG picture");
        hueloom_test::write_file(folder / "empty.png", "");
        hueloom_test::write_file(folder / "a.cube", test::cube_text(0.1f));
        hueloom_test::write_file(folder / "b.cube", test::cube_text(0.2f));
        hueloom_test::write_file(folder / "c.cube", test::cube_text(0.3f));
        hueloom_test::write_file(folder / "broken.cube", "LUT_3D_SIZE 2\n0.1 0.2\n");
        set_log_capture([this](std::string_view line) {
            std::lock_guard guard(log_mutex);
            log_lines.emplace_back(line);
        });
    }
    void TearDown() override { set_log_capture(nullptr); }

    void clear_log()
    {
        std::lock_guard guard(log_mutex);
        log_lines.clear();
    }

    std::shared_ptr<hueloom_theme_v1> import_json(const std::string& json)
    {
        hueloom_test::write_file(folder / "theme.json", json);
        return import_theme_folder(folder.string(), english, german);
    }

    std::string logged()
    {
        std::lock_guard guard(log_mutex);
        std::string all;
        for (const auto& line : log_lines)
            all += line + "\n";
        return all;
    }

    const fs::path folder = hueloom_test::make_temp_dir("import");
    std::string english;
    std::string german;
    std::mutex log_mutex;
    std::vector<std::string> log_lines;
};

TEST_F(ThemeFolderImport, ReadsEverythingInTheOrderOfThemeJson)
{
    const auto theme = import_json("\xEF\xBB\xBF" + valid_json);  // behind a byte order mark
    ASSERT_NE(theme, nullptr) << english;
    EXPECT_EQ(english, "");
    EXPECT_EQ(theme->name, "Dusk");
    EXPECT_EQ(theme->version, 1u);
    EXPECT_EQ(theme->uid, 0xabcdu);
    EXPECT_EQ(theme->background_data, hueloom_test::read_bytes(folder / "wheel.png"));
    ASSERT_EQ(theme->luts.size(), 2u);
    EXPECT_EQ(theme->luts[0].rotation, 30.0f);
    EXPECT_EQ(theme->luts[1].rotation, 200.5f);
    EXPECT_FLOAT_EQ(theme->luts[0].lut->data.back().r, 0.1f);
    EXPECT_FLOAT_EQ(theme->luts[1].lut->data.back().r, 0.2f);
    ASSERT_NE(theme->post_processing_lut, nullptr);
    EXPECT_FLOAT_EQ(theme->post_processing_lut->data.front().r, 0.3f);
}

TEST_F(ThemeFolderImport, NewThemeGetsTheHashOfNameAndImportTimeAndUidTextThatIsNoHexReadsAsZero)
{
    const std::string rest = R"("wheel": {"background": "wheel.png"},
        "luts": [{"name": "a.cube", "rotation": 10}, {"name": "b.cube", "rotation": 10.5}]})";
    const std::time_t before = std::time(nullptr);
    const auto theme = import_json(R"({"name": "Dusk", "version": 1, )" + rest);
    const std::time_t after = std::time(nullptr);
    ASSERT_NE(theme, nullptr) << english;
    bool matches = false;
    for (std::time_t t = before; t <= after; ++t)
        matches = matches || theme->uid == fnv1a_32("Dusk" + ctime_text(t));
    EXPECT_TRUE(matches);

    const auto unreadable_uid = import_json(R"({"name": "D", "version": 3, "uid": "zz", )" + rest);
    ASSERT_NE(unreadable_uid, nullptr) << english;
    EXPECT_EQ(unreadable_uid->uid, 0u);
}

std::string with_folder(std::string text, const fs::path& folder)
{
    const std::string mark = "{folder}";
    if (const auto at = text.find(mark); at != std::string::npos)
        text.replace(at, mark.size(), folder.string());
    return text;
}

// The broken theme.json files of tests/data/themes/json with the texts the user reads, in
// English (with {folder} for the import folder) and German.
struct failure_case {
    std::vector<const char*> corpus_files;
    const char* english;
    const char* german;
};

const failure_case corpus[] = {
    {{"root_array", "root_string", "empty_object", "name_number"},
     "Need to specify theme name (\"name\": \"myname\") in theme.json root.",
     "Der Name der Theme muss als \"name\": \"myname\" in der Datei theme.json in der obersten JSON-Ebene stehen."},
    {{"version_fraction", "version_string", "version_beyond_int"},
     "Need to specify theme version (\"version\": N) in theme.json root.",
     "Die Version der Theme muss als \"version\": N (ganze Zah) in der Datei theme.json in der obersten JSON-Ebene "
     "stehen."},
    {{"version_zero"}, "Theme version must be greater equal 1.", "Die Version der Theme muss größer oder gleich 1 sein."},
    {{"version_two_without_uid"},
     "If theme version is greater then 1, need to specify the \"uid\" of an existing theme that is to be modified.",
     "Wenn die Version der Theme größer als 1 sein soll, muss auch die \"uid\" einer vorhandenen Theme angegeben "
     "sein."},
    {{"uid_number"}, "Cannot understand specified \"uid\" ('12') as hexidecimal.",
     "Die \"uid\" muss hexidezimal sein (es wurde 12 angegeben)."},
    {{"uid_object"}, "Cannot understand specified \"uid\" ('{\"a\":1}') as hexidecimal.", nullptr},
    {{"syntax_trailing_comma"}, "The file 'theme.json' file may have formatting errors (code 4).",
     "Die Datei 'theme.json' ist eventuell nicht korrekt formatiert (Fehlercode 4)."},
    {{"syntax_no_braces"}, "The file 'theme.json' file may have formatting errors (code 2).", nullptr},
    {{"background_empty_file"}, "Failed to open or read file '{folder}/empty.png'.",
     "Die Datei '{folder}/empty.png' konnte nicht gefunden, nicht geöffnet oder nicht gelesen werden."},
    {{"lut_file_missing", "post_processing_lut_missing"}, "Failed to load LUT from file or resource 'gone.cube'.",
     "Fehler beim Laden einer LUT aus der Datei oder Ressource'gone.cube'."},
    // Names that lead outside the theme folder are refused by name, whether the file exists.
    {{"lut_outside_folder"},
     "The file '../import/b.cube' named in theme.json lies outside the theme folder; name a file inside it.",
     "Die Datei '../import/b.cube' aus theme.json liegt außerhalb des Theme-Ordners; bitte eine Datei darin angeben."},
    {{"lut_absolute_path"},
     "The file '/etc/a.cube' named in theme.json lies outside the theme folder; name a file inside it.", nullptr},
    {{"background_outside_folder"},
     "The file '../../wheel.png' named in theme.json lies outside the theme folder; name a file inside it.", nullptr},
    {{"one_lut"}, "Theme is not self-consistent. Please check the angle values.",
     "Die Theme ist nicht schlüssig. Überprüfen Sie bitte die Winkelzahlen."},
    // Shapes that no text of the table names, a background that doesn't exist and a LUT
    // that doesn't parse.
    {{"wheel_missing", "wheel_not_object", "background_not_string", "background_missing_file", "luts_missing",
      "luts_object", "lut_element_number", "lut_without_rotation", "lut_rotation_string", "lut_rotation_beyond_float",
      "lut_name_number", "lut_file_broken", "post_processing_not_object", "post_processing_enabled_string",
      "post_processing_without_lut"},
     "Unexpected error.", "Unerwarteter Fehler."},
};

TEST_F(ThemeFolderImport, EveryBrokenDocumentOfTheCorpusGivesItsMessage)
{
    std::size_t files = 0, expected_files = 0;
    for (const auto& entry : fs::directory_iterator(hueloom_test::data_dir() / "themes" / "json"))
        files += entry.path().stem() != "post_processing_disabled_without_lut";
    for (const failure_case& c : corpus)
        expected_files += c.corpus_files.size();
    EXPECT_EQ(files, expected_files) << "every corpus file has its expected outcome here";

    for (const failure_case& c : corpus) {
        for (const char* corpus_file : c.corpus_files) {
            SCOPED_TRACE(corpus_file);
            clear_log();
            fs::copy_file(hueloom_test::data_dir() / "themes" / "json" / (std::string(corpus_file) + ".json"),
                          folder / "theme.json", fs::copy_options::overwrite_existing);
            EXPECT_EQ(import_theme_folder(folder.string(), english, german), nullptr);
            EXPECT_EQ(english, with_folder(c.english, folder));
            if (c.german != nullptr) {
                EXPECT_EQ(german, with_folder(c.german, folder));
            }
            EXPECT_FALSE(german.empty());
            // The English text is logged; for an unexpected error, its cause.
            const std::string line =
                english == "Unexpected error." ? "Theme import from '" + folder.string() + "' failed: " : english;
            EXPECT_NE(logged().find(line), std::string::npos) << logged();
        }
    }
    // The one file of the corpus that imports: disabled post-processing needs no LUT.
    fs::copy_file(hueloom_test::data_dir() / "themes" / "json" / "post_processing_disabled_without_lut.json",
                  folder / "theme.json", fs::copy_options::overwrite_existing);
    const auto theme = import_theme_folder(folder.string(), english, german);
    ASSERT_NE(theme, nullptr) << english;
    EXPECT_EQ(theme->post_processing_lut, nullptr);
}

TEST_F(ThemeFolderImport, ThemeJsonThatIsMissingEmptyOrTooLarge)
{
    const std::string json_path = (folder / "theme.json").string();
    EXPECT_EQ(import_theme_folder(folder.string(), english, german), nullptr);
    EXPECT_EQ(english, "Failed to open or read file '" + json_path + "'");
    EXPECT_EQ(german, "Fehler beim Öffnen oder beim Lesen der Datei '" + json_path + "'");

    EXPECT_EQ(import_json(""), nullptr);
    EXPECT_EQ(english, "Failed to open or read file '" + json_path + "'");

    import_json(valid_json);
    fs::resize_file(folder / "theme.json", largest_theme_json_bytes + 1);  // sparse: costs no disk
    EXPECT_EQ(import_theme_folder(folder.string(), english, german), nullptr);
    EXPECT_EQ(english, "Failed to open or read file '" + folder.string() + "'\n");
    EXPECT_EQ(german, "Die Datei '" + folder.string() +
                          "' konnte nicht gefunden, nicht geöffnet oder nicht gelesen werden.\n");
}

TEST_F(ThemeFolderImport, BracesInLoggedTextsAreLoggedAsText)
{
    EXPECT_EQ(import_json(R"({"name": "Dusk {0} {", "version": 1,})"), nullptr);
    EXPECT_EQ(english, "The file 'theme.json' file may have formatting errors (code 4).");
    EXPECT_NE(logged().find(english + R"({"name": "Dusk {0} {", "version": 1,})"), std::string::npos);

    EXPECT_EQ(import_json(R"({"name": "D", "version": 1, "wheel": {"background": "wheel.png"},
        "luts": [{"name": "{0}{x}.cube", "rotation": 10}, {"name": "b.cube", "rotation": 20}]})"),
              nullptr);
    EXPECT_EQ(english, "Failed to load LUT from file or resource '{0}{x}.cube'.");
}

TEST_F(ThemeFolderImport, HostileDocumentsEndWithoutEndingTheProcess)
{
    EXPECT_EQ(import_json(std::string(200000, '[') + std::string(200000, ']')), nullptr);
    EXPECT_EQ(english, "Need to specify theme name (\"name\": \"myname\") in theme.json root.");

    std::string many_luts = R"({"name": "D", "version": 1, "wheel": {"background": "wheel.png"}, "luts": [)";
    for (std::size_t i = 0; i <= most_imported_wheel_luts; ++i)
        many_luts += (i ? ", " : "") + std::string(R"({"name": "a.cube", "rotation": 1})");
    EXPECT_EQ(import_json(many_luts + "]}"), nullptr);
    EXPECT_EQ(english, "Unexpected error.");

    import_json(valid_json);
    fs::resize_file(folder / "wheel.png", largest_background_bytes + 1);
    EXPECT_EQ(import_theme_folder(folder.string(), english, german), nullptr);
    EXPECT_EQ(english, "Failed to open or read file '" + (folder / "wheel.png").string() + "'.");
}

}  // namespace
}  // namespace vl1
