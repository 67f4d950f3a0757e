#include "themes/ctime_text.h"

#include <fmt/format.h>

namespace vl1 {

std::string ctime_text(std::time_t time)
{
    static constexpr const char* days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static constexpr const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::tm local{};
    if (localtime_r(&time, &local) == nullptr || local.tm_wday < 0 || local.tm_wday > 6 || local.tm_mon < 0 ||
        local.tm_mon > 11)
        return {};
    // Formatted here rather than by ctime/asctime, whose fixed buffer overflows past year 9999.
    return fmt::format("{} {} {:2} {:02}:{:02}:{:02} {}", days[local.tm_wday], months[local.tm_mon], local.tm_mday,
                       local.tm_hour, local.tm_min, local.tm_sec, 1900LL + local.tm_year);
}

}  // namespace vl1
