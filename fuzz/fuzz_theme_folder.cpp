// theme.json is written by the user who prepares a theme folder. Import never throws; a
// failure gives the English and the German text; a theme that imports is a sound theme that
// the vault can store as a theme file and read back.
//
// The input is the theme.json of a folder that also holds small valid LUT files, a broken
// one, a picture, an empty picture, and a folder and a named pipe named like LUT files (a
// pipe that the import opened would block it for good).
#include <cstdint>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

#include <fmt/format.h>
#include <sys/stat.h>

#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/fuzz_process.h"
#include "fuzz/harness/scratch_dir.h"
#include "fuzz/harness/theme_compare.h"
#include "fuzz/property_check.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_vault.h"
#include "themes/theme_folder_import.h"

namespace vl1::fuzz {

namespace {

constexpr const char* target = "theme_folder";

// Writing an imported theme back costs 393 KB per LUT; beyond a few the round trip adds
// nothing but time.
constexpr std::size_t largest_theme_for_round_trip = 4;

void put_text(const std::filesystem::path& path, const std::string& text)
{
    write_scratch_file(path, reinterpret_cast<const uint8_t*>(text.data()), text.size());
}

std::string cube_of_edge_2(float red)
{
    std::string text = "TITLE \"fuzz\"\nLUT_3D_SIZE 2\n";
    for (int i = 0; i < 8; ++i)
        text += fmt::format("{} {} {}\n", (i & 1) != 0 ? red : 0.0f, (i >> 1) & 1, (i >> 2) & 1);
    return text;
}

const std::filesystem::path& import_folder()
{
    static const std::filesystem::path folder = [] {
        const std::filesystem::path dir = scratch_dir() / "import";
        std::filesystem::create_directories(dir / "folder.cube");
        if (mkfifo((dir / "pipe.cube").c_str(), 0600) != 0)
            throw std::runtime_error("cannot make a named pipe in " + dir.string());
        put_text(dir / "a.cube", cube_of_edge_2(0.9f));
        put_text(dir / "b.cube", cube_of_edge_2(0.6f));
        put_text(dir / "c.cube", cube_of_edge_2(0.3f));
        put_text(dir / "broken.cube", "LUT_3D_SIZE 2\n0 0 0\n");
        put_text(dir / "d.3dl", "0 1023\n0 0 0\n0 0 1023\n0 1023 0\n0 1023 1023\n1023 0 0\n1023 0 1023\n"
                                "1023 1023 0\n1023 1023 1023\n");
        put_text(dir / "wheel.png", "\x89PNG\r\n\x1a\nfuzz");
        put_text(dir / "empty.png", "");
        return dir;
    }();
    return folder;
}

void check_imported_theme(const hueloom_theme_v1& theme)
{
    FUZZ_REQUIRE(target, theme.is_self_consistent(), "an imported theme is not self-consistent");
    FUZZ_REQUIRE(target, theme.version >= 1, fmt::format("an imported theme of version {}", theme.version));
    FUZZ_REQUIRE(target, !theme.background_data.empty(), "an imported theme has no background");
    FUZZ_REQUIRE(target, theme.luts.size() <= most_imported_wheel_luts,
                 fmt::format("{} wheel LUTs were imported", theme.luts.size()));
    for (const theme_lut_slot& slot : theme.luts)
        FUZZ_REQUIRE(target, slot.lut != nullptr, "an imported wheel LUT has no table");
    if (theme.luts.size() > largest_theme_for_round_trip)
        return;

    std::ostringstream out(std::ios::binary);
    FUZZ_REQUIRE(target, hueloom_theme_file_serializer_v1::write_theme_to_stream(theme, out),
                 "an imported theme can't be written as a theme file");
    std::istringstream in(out.str(), std::ios::binary);
    hueloom_theme_v1 stored;
    FUZZ_REQUIRE(target, hueloom_theme_file_serializer_v1::read_theme_from_stream(stored, in),
                 "the theme file of an imported theme is refused");
    hueloom_theme_v1 expected = theme;
    if (expected.name.size() > UINT16_MAX)
        expected.name.resize(UINT16_MAX);  // what a theme file can hold
    const std::string difference = first_theme_difference(stored, expected, {.compare_alpha = false});
    FUZZ_REQUIRE(target, difference.empty(), "an imported theme reads back differently from its file: " + difference);
}

}  // namespace

int fuzz_theme_folder(const uint8_t* data, std::size_t size)
{
    prepare_process();
    static hueloom_vault vault;
    const std::filesystem::path& folder = import_folder();
    write_scratch_file(folder / "theme.json", data, size);

    std::string english = "stale";
    std::string german = "veraltet";
    const auto theme = vault.import_theme_from_folder(folder.string(), english, german);
    if (!theme) {
        FUZZ_REQUIRE(target, !english.empty() && !german.empty(),
                     fmt::format("a failed import gives the texts '{}' and '{}'", english, german));
        FUZZ_REQUIRE(target, english != "stale" && german != "veraltet", "a failed import left the texts as they were");
        return 0;
    }
    FUZZ_REQUIRE(target, english.empty() && german.empty(),
                 fmt::format("a successful import gives the texts '{}' and '{}'", english, german));
    check_imported_theme(*theme);
    return 0;
}

}  // namespace vl1::fuzz
