// What kind of picture a theme's background bytes hold, told from their first bytes: the
// theme file keeps the picture undecoded, and the editor decodes it only when it shows it.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vl1::theme_tool {

struct image_kind {
    /// "PNG", "JPEG", "GIF", "BMP", "WebP", "TIFF"; empty if not recognised.
    std::string type;
    /// Pixels; 0 when the header doesn't say or is cut short.
    uint32_t width = 0;
    uint32_t height = 0;
};

image_kind sniff_image(std::span<const uint8_t> bytes);

/// "PNG, 900 x 900 px, 173899 bytes", "no picture", "unknown format (starts 00 01 02 03), 12 bytes".
std::string describe_image(std::span<const uint8_t> bytes);

}  // namespace vl1::theme_tool
