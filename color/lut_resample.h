// Bringing a table of one edge to another by trilinear interpolation of all four channels.
#pragma once

#include "color/lut_argb.h"

namespace vl1 {

/// The table of edge 32 that a LUT file becomes on loading. A source of edge 32 is copied;
/// any other edge is interpolated with the step (e - 1) / 31.0 per target index.
/// Throws std::invalid_argument for an edge below 2 (no grid cell to interpolate in) and
/// std::out_of_range if `source.data` doesn't hold edge³ entries.
lut_argb<32> resample_lut_to_32(const lut_argb_variable& source);

/// The table of edge 17 that the LUT writers put into a file. A source of edge 17 is copied;
/// any other edge is interpolated with the step (e - 1) * 0.0625 per target index.
/// Fails as resample_lut_to_32 does.
lut_argb_variable resample_lut_to_17(const lut_argb_variable& source);

}  // namespace vl1
