// The theme library explains its failures in the log only; a command-line tool shows them to
// its user instead. While a scoped_log_capture lives, every log line is kept in `lines`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/log.h"

namespace vl1::theme_tool {

class scoped_log_capture {
public:
    explicit scoped_log_capture(std::vector<std::string>& lines)
    {
        set_log_capture([&lines](std::string_view line) { lines.emplace_back(line); });
    }
    ~scoped_log_capture() { set_log_capture(nullptr); }
    scoped_log_capture(const scoped_log_capture&) = delete;
    scoped_log_capture& operator=(const scoped_log_capture&) = delete;
};

}  // namespace vl1::theme_tool
