#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "color/lut_masks.h"

namespace vl1 {
namespace {

using lut_masks::mask_index;

TEST(LutMasks, ZeroOnTheSkinZoneOneFarFromItAndTheDocumentedCounts)
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
        // Between the zone and far colours the values ramp: no two neighbouring grid points
        // (one step along one axis) go from 0.0 to 1.0, or anywhere near.
        for (std::size_t i = 0; i < 17 * 17 * 17; ++i)
            for (const std::size_t step : {1u, 17u, 289u})
                if (i % (step * 17) / step < 16) {
                    ASSERT_LT(std::abs(m.values[i] - m.values[i + step]), 0.5f) << i << " and " << i + step;
                }
    }
}

}  // namespace
}  // namespace vl1
