#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "color/lut_masks.h"

namespace vl1 {
namespace {

using lut_masks::mask_index;

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

TEST(LutMasks, SkinTonesReadZeroAndFarColoursOne)
{
    for (const named_mask& m : masks) {
        for (std::size_t b = 0; b <= 8; ++b)
            EXPECT_EQ(m.values[mask_index(12, 8, b)], 0.0f) << m.name << " at (12, 8, " << b << ")";
        for (std::size_t b = 0; b <= 16; ++b)
            EXPECT_EQ(m.values[mask_index(0, 16, b)], 1.0f) << m.name << " at (0, 16, " << b << ")";
        EXPECT_EQ(std::count(m.values.begin(), m.values.end(), 0.0f), 643) << m.name;
        EXPECT_EQ(std::count(m.values.begin(), m.values.end(), 1.0f), m.ones) << m.name;
        EXPECT_EQ(m.values[mask_index(0, 0, 0)], static_cast<float>(m.black_255) / 255.0f) << m.name;
    }
    EXPECT_NE(lut_masks::select_skintones, lut_masks::select_skintones_extreme);
}

TEST(LutMasks, WholeStepsZeroOnlyForWarmColoursAndNoJumpBetweenNeighbours)
{
    // Every value is a whole 255th in 0..1; zero only where red leads green and green leads
    // blue; and between a skin tone and a far colour the values ramp: no two neighbouring
    // grid points (one step along one axis) go from 0.0 straight to 1.0, or anywhere near.
    for (const named_mask& m : masks) {
        float steepest = 0.0f;
        for (std::size_t r = 0; r < 17; ++r)
            for (std::size_t g = 0; g < 17; ++g)
                for (std::size_t b = 0; b < 17; ++b) {
                    const float here = m.values[mask_index(r, g, b)];
                    ASSERT_TRUE(here >= 0.0f && here <= 1.0f) << m.name << " at " << r << g << b;
                    ASSERT_EQ(here, static_cast<float>(std::lround(here * 255.0f)) / 255.0f) << m.name;
                    if (here == 0.0f) {
                        ASSERT_TRUE(r >= g && g >= b && r > b) << m.name << " at (" << r << ", " << g << ", " << b << ")";
                    }
                    if (r + 1 < 17)
                        steepest = std::max(steepest, std::fabs(here - m.values[mask_index(r + 1, g, b)]));
                    if (g + 1 < 17)
                        steepest = std::max(steepest, std::fabs(here - m.values[mask_index(r, g + 1, b)]));
                    if (b + 1 < 17)
                        steepest = std::max(steepest, std::fabs(here - m.values[mask_index(r, g, b + 1)]));
                }
        EXPECT_LT(steepest, 0.5f) << m.name;
        EXPECT_GT(steepest, 0.0f) << m.name;
    }
}

}  // namespace
}  // namespace vl1
