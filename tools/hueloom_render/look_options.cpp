#include "tools/hueloom_render/look_options.h"

#include "framework/uid.h"
#include "presets/preset_document.h"
#include "presets/preset_reader.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_theme_state_serializer_v1.h"
#include "tools/hueloom_render/file_checks.h"
#include "tools/hueloom_render/plugin_session.h"
#include "tools/hueloom_render/render_error.h"
#include "tools/hueloom_render/state_blob.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <map>

namespace fs = std::filesystem;

namespace vl1::render_tool {

namespace {

std::string lower(std::string s)
{
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return s;
}

/// "1", "0000000a" or "0x1A2B" as a uid; false for anything else.
bool parse_uid(const std::string& text, uint32_t& uid)
{
    std::string digits = lower(text);
    if (digits.rfind("0x", 0) == 0)
        digits = digits.substr(2);
    if (digits.empty() || digits.size() > 8 || !std::all_of(digits.begin(), digits.end(), ::isxdigit))
        return false;
    uid = static_cast<uint32_t>(std::stoul(digits, nullptr, 16));
    return true;
}

struct known_theme {
    vl1::hueloom_theme_v1 theme;
    fs::path file;
};

/// Every readable theme of the app-data folder and of the bundle's resources.
std::vector<known_theme> installed_themes(const fs::path& bundle)
{
    std::vector<fs::path> folders{bundle / "Contents" / "Resources"};
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        folders.push_back(fs::path(home) / "Varnlight" / "Hueloom");
    std::vector<known_theme> found;
    for (const auto& folder : folders) {
        std::error_code ec;
        for (const auto& entry : fs::directory_iterator(folder, ec)) {
            if (entry.path().extension() != ".hlt")
                continue;
            known_theme t;
            if (vl1::hueloom_theme_file_serializer_v1::read_theme_from_file(t.theme, entry.path().string())) {
                t.file = entry.path();
                found.push_back(std::move(t));
            }
        }
    }
    return found;
}

vl1::hueloom_theme_v1 find_theme(const std::string& wanted, const fs::path& bundle)
{
    if (lower(fs::path(wanted).extension().string()) == ".hlt" || fs::is_regular_file(wanted)) {
        require_regular_input(wanted, fmt::format("--theme {}", wanted));
        vl1::hueloom_theme_v1 theme;
        std::string problem;
        if (!vl1::hueloom_theme_file_serializer_v1::read_theme_from_file(theme, wanted, problem))
            throw render_error(exit_code::input, fmt::format("--theme {}: not a readable theme file ({})", wanted, problem));
        return theme;
    }
    const auto themes = installed_themes(bundle);
    uint32_t uid = 0;
    const bool by_uid = parse_uid(wanted, uid);
    for (const auto& t : themes) {
        if ((by_uid && t.theme.uid == uid) || lower(t.theme.name) == lower(wanted))
            return t.theme;
    }
    std::vector<std::string> names;
    for (const auto& t : themes) names.push_back(fmt::format("{:08x} \"{}\"", t.theme.uid, t.theme.name));
    throw render_error(exit_code::usage, fmt::format("--theme {}: no such theme; installed: {}", wanted,
                                                     names.empty() ? "none" : fmt::format("{}", fmt::join(names, ", "))));
}

}  // namespace

std::string state_text_with_theme(const std::string& state_text, const std::string& theme,
                                  const std::vector<std::string>& param_names, const fs::path& bundle)
{
    const vl1::hueloom_theme_v1 chosen = find_theme(theme, bundle);
    std::vector<uint8_t> blob = base_part_of_state(state_text, component_parameter_count(param_names));
    blob.push_back(1);
    if (!vl1::hueloom_theme_state_serializer_v1::write_theme_to_vector(chosen, blob, blob.size()))
        throw render_error(exit_code::usage,
                           fmt::format("--theme {}: \"{}\" has more wheel LUTs than a saved state can carry", theme,
                                       chosen.name));
    return encode_state(blob);
}

start_look read_preset_option(const std::string& file, const std::vector<std::string>& param_names)
{
    rapidjson::Document document;
    std::string problem;
    std::vector<uint8_t> blob;
    require_regular_input(file, fmt::format("--preset {}", file));
    try {
        if (!vl1::read_preset_document(file, document, problem))
            throw render_error(exit_code::input, fmt::format("--preset {}: {}", file, problem));
        if (!vl1::read_preset_state(document, blob))
            throw render_error(exit_code::input, fmt::format("--preset {}: the file holds no plug-in state", file));
    } catch (const std::bad_alloc&) {
        throw render_error(exit_code::input, fmt::format("--preset {}: too large to read", file));
    }
    start_look look{encode_state(blob), {}};
    // The host's values win over the state's, so the preset's values become host values too.
    std::map<uint32_t, std::string> names_by_uid;
    for (const auto& name : param_names)
        names_by_uid[vl1::fnv1a_32(name)] = name;
    for (const auto& [uid, value] : parameter_values_of_state(blob)) {
        if (auto it = names_by_uid.find(uid); it != names_by_uid.end())
            look.settings.push_back(fmt::format("{}={}", it->second, value));
    }
    return look;
}

}  // namespace vl1::render_tool
