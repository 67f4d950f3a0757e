#include "themes/web/theme_addresses.h"

#include <charconv>

#include <fmt/format.h>

namespace vl1 {

bool parse_theme_uid(std::string_view text, uint32_t& uid)
{
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
        text.remove_prefix(2);
    if (text.empty() || text.size() > 8)
        return false;
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (error != std::errc() || end != text.data() + text.size() || value == 0)
        return false;
    uid = value;
    return true;
}

std::string theme_uid_hex(uint32_t uid)
{
    return fmt::format("{:08x}", uid);
}

std::string constructThemeURL(const std::string& server_url, uint32_t uid)
{
    const std::string hex = theme_uid_hex(uid);
    return fmt::format("{}/{}/{}/{}.hlt", server_url, hex.substr(0, 2), hex.substr(2, 2), hex.substr(4));
}

std::string constructLocalPathTemp(const std::string& local_path, uint32_t uid)
{
    return fmt::format("{}/{}{}", local_path, theme_uid_hex(uid), theme_temp_suffix);
}

std::string constructLocalPathFinal(const std::string& local_path, uint32_t uid)
{
    return fmt::format("{}/theme_{}.hlt", local_path, theme_uid_hex(uid));
}

}  // namespace vl1
