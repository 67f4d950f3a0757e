// The theme state record: the current theme as it travels inside the host's project, so
// that a project opens with its look on a machine that lacks the theme. Unlike a theme file
// it has one fixed size and leaves out the theme version and the background image.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "color/hueloom_theme_v1.h"
#include "themes/theme_lut_entry_v1.h"

namespace vl1 {

inline constexpr uint32_t theme_state_magic = 0x686C7331;  // "1slh" in memory
inline constexpr uint32_t theme_state_format_version = 3;
/// Room for the post-processing slot and 10 wheel LUTs.
inline constexpr std::size_t theme_state_slot_capacity = 11;
inline constexpr std::size_t theme_state_max_wheel_luts = theme_state_slot_capacity - 1;
/// The name field holds at most this many bytes and then a zero byte.
inline constexpr std::size_t theme_state_name_max_bytes = 100;

/// Byte image of the record (little-endian, 4325580 bytes). Slots beyond slot_count are
/// present and unused; slot 0 is the post-processing slot (angle 1.0 with a LUT, -1.0
/// without), wheel LUTs follow from slot 1. The edge length field of a slot is not written.
struct theme_state_entry_v1 {
    uint32_t magic;
    uint32_t format_version;
    uint32_t uid;
    /// Zero-ended.
    char name[102];
    /// Wheel LUTs + 1.
    uint16_t slot_count;
    theme_lut_entry_v1 slots[theme_state_slot_capacity];
};

static_assert(sizeof(theme_state_entry_v1) == 4325580);

inline constexpr std::size_t theme_state_entry_bytes = sizeof(theme_state_entry_v1);

/// Stateless reader and writer of theme state records.
class hueloom_theme_state_serializer_v1 {
public:
    /// Writes the record of `theme` into `record`: magic, format 3, uid, the name cut to 100
    /// bytes, the post-processing slot and the wheel LUTs. Slots beyond the count keep their
    /// bytes. False, writing nothing, for a null record, a theme of more than 10 wheel LUTs
    /// (the record has no room for them) or a LUT with fewer than 32768 cells.
    static bool serialize(const hueloom_theme_v1& theme, theme_state_entry_v1* record);

    /// Replaces name (up to its zero byte, at most 100 bytes) and uid of `theme`, sets its
    /// version to 0, appends the wheel LUTs and sets the post-processing LUT if slot 0's angle
    /// is above 0.0 (format 3 and up). The background stays as it was. False, the theme untouched,
    /// for a null record or a slot count above 11.
    static bool deserialize(hueloom_theme_v1& theme, const theme_state_entry_v1* record);

    /// Sizes `blob` to exactly offset + 4325580 bytes (growing with zeros or cutting) and
    /// writes the record at `offset`. False, the vector untouched, where serialize refuses.
    static bool write_theme_to_vector(const hueloom_theme_v1& theme, std::vector<uint8_t>& blob, unsigned long offset);

    /// Reads the record at `offset`. False, the theme untouched, if fewer than 4325580 bytes
    /// remain there (also for an offset past the end), for a wrong magic, format version 0
    /// or a slot count above 11.
    static bool read_theme_from_vector(hueloom_theme_v1& theme, const std::vector<uint8_t>& blob, unsigned long offset);
};

}  // namespace vl1
