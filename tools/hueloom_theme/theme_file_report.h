// Reading a theme file for a person: whether it reads, and if so what it holds.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "color/hueloom_theme_v1.h"

namespace vl1::theme_tool {

struct theme_file_reading {
    bool readable = false;
    /// Why the file doesn't read; empty when it does.
    std::string problem;
    hueloom_theme_v1 theme;
    /// From the file's header; the theme object doesn't keep it.
    uint32_t format_version = 0;
};

/// Reads `path` with the theme file reader the plug-in uses.
theme_file_reading read_theme_file(const std::string& path);

/// The theme's uid as the plug-in writes it: 8 lower-case hexadecimal digits.
std::string uid_text(uint32_t uid);

/// What a LUT makes of display grey 0.5, as "#rrggbb": tells looks apart at a glance.
std::string mid_grey_through(const lut_argb<32>& lut);

/// Everything `info` shows of a readable file.
void print_theme_details(const theme_file_reading& reading, std::ostream& out);

}  // namespace vl1::theme_tool
