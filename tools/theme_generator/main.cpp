// hueloom-theme-gen: makes a theme from a recipe of looks, as a folder that the folder
// import reads and, at will, packed into a theme file. The build runs it on
// builtin_theme.json to make the plug-in's built-in theme.
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "themes/hueloom_theme_file_serializer_v1.h"
#include "tools/theme_generator/theme_folder.h"
#include "tools/theme_generator/theme_pack.h"
#include "tools/theme_generator/theme_recipe.h"

namespace {

constexpr int exit_ok = 0;
constexpr int exit_failure = 1;
constexpr int exit_usage = 2;

constexpr std::string_view usage_text =
    "Usage: hueloom-theme-gen RECIPE.json OUT_FOLDER [OUT_THEME.hlt]\n"
    "\n"
    "Generates the looks of RECIPE.json as 32-point .cube files, renders the wheel picture\n"
    "and writes theme.json into OUT_FOLDER. With OUT_THEME.hlt, also imports that folder\n"
    "as a user's theme folder is imported and writes the theme file.\n";

int run(int argc, char** argv)
{
    if (argc == 2 && (std::string_view(argv[1]) == "--help" || std::string_view(argv[1]) == "-h")) {
        fmt::print("{}", usage_text);
        return exit_ok;
    }
    if (argc < 3 || argc > 4) {
        fmt::print(stderr, "{}", usage_text);
        return exit_usage;
    }
    const std::string recipe_path = argv[1];
    const std::string folder = argv[2];

    std::string error;
    vl1::themegen::theme_recipe recipe;
    if (!vl1::themegen::read_theme_recipe(recipe_path, recipe, error) ||
        !vl1::themegen::write_theme_folder(recipe, folder, error)) {
        fmt::print(stderr, "hueloom-theme-gen: {}\n", error);
        return exit_failure;
    }
    fmt::print("Wrote \"{}\" with {} looks to {}\n", recipe.name, recipe.looks.size(), folder);
    if (argc == 3)
        return exit_ok;

    const std::string theme_path = argv[3];
    const auto theme = vl1::themegen::pack_theme_folder(folder, theme_path, error);
    if (!theme) {
        fmt::print(stderr, "hueloom-theme-gen: {}\n", error);
        return exit_failure;
    }
    fmt::print("Packed uid {} into {}\n", vl1::unsignedIntToHex(theme->uid), theme_path);
    return exit_ok;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "hueloom-theme-gen: %s\n", e.what());
    } catch (...) {
        std::fprintf(stderr, "hueloom-theme-gen: unexpected failure\n");
    }
    return exit_failure;
}
