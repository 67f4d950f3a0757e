// Two skin-tone selection masks on the 17-point grid: a documented constant resource that no
// operation of the plug-in reads (no part of any result table depends on a mask).
//
// Index (r * 17 + g) * 17 + b, grid step 1/16 per axis, red slowest. Every value is k / 255
// for an integer k in 0..255: 0.0 on skin-like colours, 1.0 far from them, a ramp between.
//
// Skin-like grid colours (the zone), in grid steps: red at or above green, green at or above
// blue, red above blue by at least 1 and above green by at most 8, red at least 7 and green
// at least 6. These are 643 of the 4913 grid points; both masks read exactly 0.0 there.
//
// Away from the zone a mask follows d, the root of the summed squares of how far the colour
// falls short of each condition (in grid steps), the two level conditions (red >= 7,
// green >= 6) weighted by w:
//   d² = (g - r)+² + (b - g)+² + (1 - (r - b))+² + ((r - g) - 8)+² + w * ((7 - r)+² + (6 - g)+²)
// where v+ is max(v, 0); with x = min(1, d / reach) the value is round(255 * ease(x)) / 255.
//   select_skintones          w = 0.47, reach = 8.04, ease(x) = √x: leaves the zone
//                             steeply; 2087 points read 1.0, black reads 227/255.
//   select_skintones_extreme  w = 0.48, reach = 8.537, ease(x) = 1 - (1 - x)²: rises more
//                             gently out of the zone and reaches 1.0 farther away; 2038
//                             points read 1.0, black reads 240/255.
#pragma once

#include <array>
#include <cstddef>

namespace vl1::lut_masks {

inline constexpr std::size_t mask_edge = 17;
inline constexpr std::size_t mask_entry_count = mask_edge * mask_edge * mask_edge;

/// Index of grid point (r, g, b), each 0..16.
constexpr std::size_t mask_index(std::size_t r, std::size_t g, std::size_t b)
{
    return (r * mask_edge + g) * mask_edge + b;
}

extern const std::array<float, mask_entry_count> select_skintones;
extern const std::array<float, mask_entry_count> select_skintones_extreme;

}  // namespace vl1::lut_masks
