// The building block of theme blending.
#pragma once

#include "color/lut_argb.h"

namespace vl1 {

/// Adds the deviation of `source` from the identity to `lut`, scaled by `weight`, and clamps
/// each channel to 0..1 right after the addition. The identity here is the plain quotient
/// (1.0, r / 31.0, g / 31.0, b / 31.0) in single precision, not the fill of lut_argb<32>.
/// Throws std::out_of_range("vector") if either table lost its 32768 entries.
void add_lut_difference(lut_argb<32>& lut, const lut_argb<32>& source, float weight);

/// add_lut_difference with `first`, then with `second`, in one pass over the tables: each
/// entry takes both steps, clamps included, in that order, so the bits are those of the two
/// calls. Throws as add_lut_difference does, before changing anything.
void add_lut_differences(lut_argb<32>& lut, const lut_argb<32>& first, float first_weight, const lut_argb<32>& second,
                         float second_weight);

}  // namespace vl1
