// Time stamps in the C library's ctime form.
#pragma once

#include <ctime>
#include <string>

namespace vl1 {

/// `time` in local time as ctime writes it, without its newline: "Sat Nov 14 13:52:24 2026",
/// the day of the month padded with a space to two places. English names whatever the
/// locale; empty if the time can't be broken down.
std::string ctime_text(std::time_t time);

}  // namespace vl1
