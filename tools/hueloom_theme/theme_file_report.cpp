#include "tools/hueloom_theme/theme_file_report.h"

#include <algorithm>
#include <cmath>
#include <fstream>

#include <fmt/format.h>

#include "color/lut_sampling.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "tools/hueloom_theme/image_sniff.h"

namespace vl1::theme_tool {

namespace {

uint32_t format_version_of(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    uint8_t header[8] = {};
    if (!file.read(reinterpret_cast<char*>(header), sizeof(header)))
        return 0;
    return static_cast<uint32_t>(header[4]) | static_cast<uint32_t>(header[5]) << 8 |
           static_cast<uint32_t>(header[6]) << 16 | static_cast<uint32_t>(header[7]) << 24;
}

int to_byte(float value) { return static_cast<int>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f)); }

}  // namespace

theme_file_reading read_theme_file(const std::string& path)
{
    theme_file_reading reading;
    reading.readable = hueloom_theme_file_serializer_v1::read_theme_from_file(reading.theme, path, reading.problem);
    if (reading.readable) {
        reading.problem.clear();
        reading.format_version = format_version_of(path);
    } else if (reading.problem.empty()) {
        reading.problem = "not a readable theme file";
    }
    return reading;
}

std::string uid_text(uint32_t uid) { return unsignedIntToHex(uid); }

std::string mid_grey_through(const lut_argb<32>& lut)
{
    const argb_float out = sample_lut(lut, {1.0f, 0.5f, 0.5f, 0.5f});
    return fmt::format("#{:02x}{:02x}{:02x}", to_byte(out.r), to_byte(out.g), to_byte(out.b));
}

void print_theme_details(const theme_file_reading& reading, std::ostream& out)
{
    const hueloom_theme_v1& theme = reading.theme;
    out << fmt::format("Name:             \"{}\"\n", theme.name);
    out << fmt::format("UID:              {}\n", uid_text(theme.uid));
    out << fmt::format("Theme version:    {}\n", theme.version);
    out << fmt::format("Format version:   {}\n", reading.format_version);
    out << fmt::format("Background:       {}\n", describe_image(theme.background_data));
    out << fmt::format("Post-processing:  {}\n", theme.post_processing_lut
                                                     ? "yes, mid grey becomes " + mid_grey_through(*theme.post_processing_lut)
                                                     : std::string("none"));
    out << fmt::format("Wheel LUTs:       {}{}\n", theme.luts.size(),
                       theme.is_self_consistent() ? ""
                                                  : " (not self-consistent: the plug-in grades nothing with this theme;"
                                                    " it needs 2 LUTs or more, the second at least 2 degrees after the first)");
    if (theme.luts.empty())
        return;
    out << "  slot    angle  mid grey becomes\n";
    for (std::size_t i = 0; i < theme.luts.size(); ++i) {
        const theme_lut_slot& slot = theme.luts[i];
        out << fmt::format("  {:>4}  {:>7.2f}  {}\n", i + 1, slot.rotation, slot.lut ? mid_grey_through(*slot.lut) : "-");
    }
}

}  // namespace vl1::theme_tool
