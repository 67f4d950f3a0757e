#include "presets/preset_names.h"

#include <algorithm>
#include <cstring>

namespace vl1 {

namespace {

bool has_control_character(const std::string& name)
{
    return std::any_of(name.begin(), name.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7f;
    });
}

bool is_blank(const std::string& name)
{
    return std::all_of(name.begin(), name.end(), [](char c) { return c == ' ' || c == '\t'; });
}

}  // namespace

bool is_acceptable_preset_name(const std::string& name, std::string& reason)
{
    reason.clear();
    if (name.empty() || is_blank(name)) {
        reason = "{en:Please enter a name for the preset.}"
                 "{de:Bitte geben Sie einen Namen für das Preset ein.}";
    } else if (name.find('/') != std::string::npos || name.find('\\') != std::string::npos) {
        reason = "{en:A preset name must not contain \"/\" or \"\\\".}"
                 "{de:Ein Preset-Name darf weder \"/\" noch \"\\\" enthalten.}";
    } else if (name.find("..") != std::string::npos) {
        reason = "{en:A preset name must not contain \"..\".}"
                 "{de:Ein Preset-Name darf \"..\" nicht enthalten.}";
    } else if (has_control_character(name)) {
        reason = "{en:A preset name must not contain control characters.}"
                 "{de:Ein Preset-Name darf keine Steuerzeichen enthalten.}";
    } else if (name.find(preset_extension) != std::string::npos) {
        reason = "{en:A preset name must not contain \".json\".}"
                 "{de:Ein Preset-Name darf \".json\" nicht enthalten.}";
    } else if (name.size() + std::strlen(preset_extension) > preset_file_name_limit) {
        reason = "{en:The preset name is too long.}{de:Der Preset-Name ist zu lang.}";
    }
    return reason.empty();
}

std::string preset_name_from_file_name(const std::string& file_name)
{
    const std::size_t at = file_name.find(preset_extension);
    if (at == std::string::npos)
        return {};
    return file_name.substr(0, at);
}

std::vector<std::string> preset_names_from_file_names(const std::vector<std::string>& file_names)
{
    std::vector<std::string> names;
    for (const auto& file : file_names) {
        std::string name = preset_name_from_file_name(file);
        if (!name.empty())
            names.push_back(std::move(name));
    }
    // std::string compares its characters as unsigned char: byte order, upper case first.
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

}  // namespace vl1
