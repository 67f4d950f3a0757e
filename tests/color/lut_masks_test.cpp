#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "color/lut_masks.h"

namespace vl1 {
namespace {

using lut_masks::mask_index;

TEST(LutMasks, ZeroOnTheSkinZoneOneFarFromItAndARampOfWhole255thsBetween)
{
    struct named_mask {
        const char* name;
        const std::array<float, lut_masks::mask_entry_count>& values;
        int ones;       // entries of exactly 1.0
        int black_255;  // the value at (0, 0, 0), in 255ths
    };
    const named_mask masks[] = {
        {"select_skintones", lut_masks::select_skintones, 2087, 227},
        {"select_skintones_extreme", lut_masks::select_skintones_extreme, 2038, 240},
    };
    for (const named_mask& m : masks) {
        SCOPED_TRACE(m.name);
        EXPECT_EQ(std::count(m.values.begin(), m.values.end(), 0.0f), 643);
        EXPECT_EQ(std::count(m.values.begin(), m.values.end(), 1.0f), m.ones);
        EXPECT_EQ(m.values[mask_index(0, 0, 0)], static_cast<float>(m.black_255) / 255.0f);
        EXPECT_EQ(m.values[mask_index(12, 8, 4)], 0.0f);
        EXPECT_EQ(m.values[mask_index(0, 16, 8)], 1.0f);
        // Zero only where red leads green and green leads blue; no two neighbouring grid
        // points (one step along one axis) go from 0.0 to 1.0, or anywhere near.
        float steepest = 0.0f;
        for (std::size_t r = 0; r < 17; ++r)
            for (std::size_t g = 0; g < 17; ++g)
                for (std::size_t b = 0; b < 17; ++b) {
                    const float here = m.values[mask_index(r, g, b)];
                    ASSERT_TRUE(here >= 0.0f && here <= 1.0f && here == std::round(here * 255.0f) / 255.0f)
                        << here << " at " << r << ", " << g << ", " << b;
                    ASSERT_TRUE(here != 0.0f || (r >= g && g >= b && r > b)) << r << ", " << g << ", " << b;
                    if (r + 1 < 17)
                        steepest = std::max(steepest, std::fabs(here - m.values[mask_index(r + 1, g, b)]));
                    if (g + 1 < 17)
                        steepest = std::max(steepest, std::fabs(here - m.values[mask_index(r, g + 1, b)]));
                    if (b + 1 < 17)
                        steepest = std::max(steepest, std::fabs(here - m.values[mask_index(r, g, b + 1)]));
                }
        EXPECT_LT(steepest, 0.5f);
        EXPECT_GT(steepest, 0.0f);
    }
}

}  // namespace
}  // namespace vl1
