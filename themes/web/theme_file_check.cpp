#include "themes/web/theme_file_check.h"

#include <memory>

#include <fmt/format.h>

#include "color/hueloom_theme_v1.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/web/hueloom_web_client_v1.h"

namespace vl1 {

bool is_theme_file_of_uid(std::span<const uint8_t> bytes, uint32_t uid, std::string& problem)
{
    hueloom_theme_v1 theme;
    if (!hueloom_theme_file_serializer_v1::read_theme_from_bytes(theme, bytes, problem))
        return false;
    if (theme.uid != uid) {
        problem = fmt::format("the file holds theme {:08x}", theme.uid);
        return false;
    }
    return true;
}

theme_download_client_factory make_web_client_factory()
{
    return []() -> std::unique_ptr<theme_download_client> { return std::make_unique<hueloom_web_client_v1>(); };
}

}  // namespace vl1
