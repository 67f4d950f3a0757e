#include "framework/io/json_checked.h"

#include "themes/web/theme_manifest.h"

#include <rapidjson/error/en.h>

#include <fmt/format.h>

#include "themes/web/theme_addresses.h"

namespace vl1 {

namespace {

// Keeps the quoted text of a bad name or value short and on one line.
std::string excerpt(std::string_view text)
{
    std::string out;
    for (const char c : text.substr(0, 40))
        out += (static_cast<unsigned char>(c) < 0x20) ? '?' : c;
    return text.size() > 40 ? out + "..." : out;
}

bool read_members(const rapidjson::Value& root, theme_versions& out, std::string& problem)
{
    for (const auto& member : root.GetObject()) {
        const std::string_view name(member.name.GetString(), member.name.GetStringLength());
        uint32_t uid = 0;
        if (!parse_theme_uid(name, uid)) {
            problem = fmt::format("manifest key \"{}\" is not a theme uid (1 to 8 hexadecimal digits, not 0)",
                                  excerpt(name));
            return false;
        }
        if (!member.value.IsInt() || member.value.GetInt() < 0) {
            problem = fmt::format("manifest version of theme {} is not an integer from 0 to 2147483647",
                                  theme_uid_hex(uid));
            return false;
        }
        if (!out.emplace(uid, member.value.GetInt()).second) {
            problem = fmt::format("manifest lists theme {} twice", theme_uid_hex(uid));
            return false;
        }
    }
    return true;
}

}  // namespace

bool parse_theme_manifest(std::string_view body, theme_versions& versions, std::string& problem)
{
    try {
        rapidjson::Document document;
        document.Parse<rapidjson::kParseIterativeFlag>(body.data(), body.size());
        if (document.HasParseError()) {
            problem = fmt::format("manifest is not JSON (byte {}: {})", document.GetErrorOffset(),
                                  rapidjson::GetParseError_En(document.GetParseError()));
            return false;
        }
        if (!document.IsObject()) {
            problem = "manifest root is not a JSON object";
            return false;
        }
        theme_versions parsed;
        if (!read_members(document, parsed, problem))
            return false;
        versions = std::move(parsed);
        return true;
    } catch (const std::exception& e) {
        problem = fmt::format("manifest could not be read: {}", e.what());
    } catch (...) {
        problem = "manifest could not be read";
    }
    return false;
}

}  // namespace vl1
