// Reading a colour out of a table, and passing one table through another.
#pragma once

#include "color/lut_argb.h"

namespace vl1 {

/// The trilinear value of `table` at the colour `in`. Each of r, g, b is scaled by 31,
/// clamped to the grid and truncated to a grid index; interpolation runs along red, then
/// green, then blue, each step (high - low) * f + low. The result keeps the alpha of `in`
/// and is not clamped; inputs outside 0..1 read the edge of the table.
/// Allocation-free. Throws std::out_of_range("vector") if `table` lost its 32768 entries.
argb_float sample_lut(const lut_argb<32>& table, const argb_float& in);

/// Replaces every entry of `target` by sample_lut(map, entry), so each entry keeps its own
/// alpha. Each entry is computed from its old value only; a table mapped through itself is
/// mapped from a copy (one 512 KiB allocation), any other in place without allocating.
void map_lut_through(lut_argb<32>& target, const lut_argb<32>& map);

}  // namespace vl1
