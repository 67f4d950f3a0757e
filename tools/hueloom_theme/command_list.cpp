// hueloom-theme list
#include <algorithm>
#include <filesystem>
#include <map>

#include <fmt/format.h>

#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_vault.h"
#include "tools/hueloom_theme/theme_command.h"
#include "tools/hueloom_theme/theme_file_report.h"

namespace vl1::theme_tool {

namespace {

namespace fs = std::filesystem;

// Why the plug-in passes over a file that isn't a theme file.
std::string reason_ignored(const fs::directory_entry& entry)
{
    std::error_code ignored;
    if (entry.is_directory(ignored))
        return "ignored (a folder)";
    const std::string name = entry.path().filename().string();
    if (name.ends_with(".hlt~"))
        return "ignored (an unfinished download)";
    if (name.ends_with(".tmp"))
        return "ignored (a temporary file)";
    return "ignored (not a .hlt file)";
}

std::vector<fs::directory_entry> sorted_entries(const fs::path& folder, std::error_code& error)
{
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        entries.push_back(*it);
    std::sort(entries.begin(), entries.end(),
              [](const auto& a, const auto& b) { return a.path().filename() < b.path().filename(); });
    return entries;
}

}  // namespace

int run_list_command(const std::vector<std::string>& arguments, command_io& io)
{
    if (const int code = check_operands("list", arguments, 0, io); code != exit_ok)
        return code;
    hueloom_vault vault;
    const std::string folder = vault.get_hueloom_appdata_folder_path();
    if (folder.empty()) {
        io.err << "hueloom-theme list: there is no home directory\n";
        return exit_failure;
    }
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        io.out << "No themes yet: " << folder << " does not exist.\n";
        return exit_ok;
    }
    const std::vector<fs::directory_entry> entries = sorted_entries(folder, error);
    if (error) {
        io.err << "hueloom-theme list: cannot read " << folder << ": " << error.message() << "\n";
        return exit_failure;
    }

    io.out << folder << ":\n";
    std::size_t themes = 0;
    std::size_t unreadable = 0;
    std::map<uint32_t, std::string> file_of_uid;
    for (const fs::directory_entry& entry : entries) {
        const std::string name = entry.path().filename().string();
        std::error_code ignored;
        if (entry.path().extension() != ".hlt" || entry.is_directory(ignored)) {
            io.out << fmt::format("  {:<24} {}\n", name, reason_ignored(entry));
            continue;
        }
        const theme_file_reading reading = read_theme_file(entry.path().string());
        if (!reading.readable) {
            ++unreadable;
            io.out << fmt::format("  {:<24} cannot be read: {}\n", name, reading.problem);
            continue;
        }
        ++themes;
        const hueloom_theme_v1& theme = reading.theme;
        io.out << fmt::format("  {:<24} uid {}  version {}  {} wheel LUTs{}  \"{}\"\n", name, uid_text(theme.uid),
                              theme.version, theme.luts.size(), theme.post_processing_lut ? " + post" : "", theme.name);
        const std::string expected = hueloom_theme_file_serializer_v1::unsignedIntToHexWithPrefixAndSuffix(theme.uid, "theme_", ".hlt");
        if (name != expected)
            io.out << fmt::format("  {:<24} note: the plug-in takes it as uid {}, whose file would be {}\n", "",
                                  uid_text(theme.uid), expected);
        if (const auto [it, fresh] = file_of_uid.emplace(theme.uid, name); !fresh)
            io.out << fmt::format("  {:<24} note: {} holds the same uid; which one the plug-in keeps depends on the "
                                  "order the folder lists them\n",
                                  "", it->second);
    }
    io.out << fmt::format("{} theme{}, {} unreadable\n", themes, themes == 1 ? "" : "s", unreadable);
    return unreadable == 0 ? exit_ok : exit_failure;
}

}  // namespace vl1::theme_tool
