// One LUT slot as theme files and theme state records store it: the angle, an edge length
// field and the red, green and blue of the 32 x 32 x 32 cells of a lut_argb<32>.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "color/lut_argb.h"

namespace vl1 {

/// Byte image of one slot (393224 bytes, little-endian, no padding between fields).
struct theme_lut_entry_v1 {
    /// Wheel angle in degrees; in slot 0 of format 3 and above the post-processing marker.
    float angle;
    /// 32 in theme files; not written in state records. No reader checks it.
    uint16_t edge_length;
    uint16_t padding;
    /// Red, green, blue of each cell, cells in lut_argb<32> order (blue fastest).
    float table[32 * 32 * 32 * 3];
};

static_assert(sizeof(theme_lut_entry_v1) == 393224);

inline constexpr std::size_t theme_lut_entry_bytes = sizeof(theme_lut_entry_v1);
inline constexpr std::size_t theme_lut_edge = 32;

/// Slot 0 angles: a post-processing LUT is present (anything above 0.0 reads as present).
inline constexpr float post_processing_marker_present = 1.0f;
inline constexpr float post_processing_marker_absent = -1.0f;

/// The table of a slot holds red, green and blue of every cell of this LUT: false if the
/// LUT has fewer than 32768 cells (its data vector is public and could have been resized).
bool fits_lut_slot(const lut_argb<32>& lut);

/// Writes the angle and the table of a slot at `slot` (393224 bytes). A null `lut` leaves
/// the table zero. With `write_edge_length` the edge field is 32 and the padding zero;
/// without, both keep the bytes that stand there. `lut` must fit (fits_lut_slot).
void store_lut_slot(uint8_t* slot, float angle, const lut_argb<32>* lut, bool write_edge_length);

float load_lut_slot_angle(const uint8_t* slot);

/// A new table from the slot at `slot`: stored red, green, blue, alpha 1.0 in every cell.
std::shared_ptr<lut_argb<32>> load_lut_slot_table(const uint8_t* slot);

}  // namespace vl1
