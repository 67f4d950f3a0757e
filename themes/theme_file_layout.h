// Inside the theme library: a theme file checked against its own length, as views into the
// bytes that hold it, and the one way such a view becomes a theme.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "color/hueloom_theme_v1.h"

namespace vl1::theme_file_layout {

/// Format versions from which a file has the theme version field, and the post-processing slot.
inline constexpr uint32_t first_version_with_theme_version = 2;
inline constexpr uint32_t first_version_with_post_processing_slot = 3;

struct file_view {
    uint32_t format_version = 0;
    uint32_t theme_version = 1;
    uint32_t uid = 0;
    std::span<const uint8_t> background;
    std::string_view name;
    uint16_t slot_count = 0;
    /// slot_count * 393224 bytes.
    std::span<const uint8_t> slots;
};

/// Checks `bytes` as a theme file and fills `view`. False, with the reason in `problem`
/// (byte offsets, the size claimed and what is there), for a wrong magic, format version 0
/// and any field or array that runs past the end of `bytes`.
bool parse(std::span<const uint8_t> bytes, file_view& view, std::string& problem);

/// Builds every table first, then changes `theme`: name, uid, version and background are
/// replaced, wheel LUTs appended, the post-processing LUT set if slot 0 (format 3 and up)
/// has an angle above 0.0.
void apply(const file_view& view, hueloom_theme_v1& theme);

}  // namespace vl1::theme_file_layout
