#include <gtest/gtest.h>

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

int count_of(const std::array<float, lut_masks::mask_entry_count>& mask, float value)
{
    int n = 0;
    for (const float v : mask)
        n += v == value;
    return n;
}

TEST(LutMasks, EveryValueIsAWhole255thWithinTheUnitRange)
{
    for (const named_mask& m : masks) {
        for (std::size_t i = 0; i < m.values.size(); ++i) {
            const float v = m.values[i];
            ASSERT_GE(v, 0.0f) << m.name << " entry " << i;
            ASSERT_LE(v, 1.0f) << m.name << " entry " << i;
            const long steps = std::lround(v * 255.0f);
            ASSERT_EQ(v, static_cast<float>(steps) / 255.0f) << m.name << " entry " << i;
        }
    }
}

TEST(LutMasks, SkinTonesReadZeroAndFarColoursOne)
{
    for (const named_mask& m : masks) {
        for (std::size_t b = 0; b <= 8; ++b)
            EXPECT_EQ(m.values[mask_index(12, 8, b)], 0.0f) << m.name << " at (12, 8, " << b << ")";
        for (std::size_t b = 0; b <= 16; ++b)
            EXPECT_EQ(m.values[mask_index(0, 16, b)], 1.0f) << m.name << " at (0, 16, " << b << ")";
        EXPECT_EQ(count_of(m.values, 0.0f), 643) << m.name;
        EXPECT_EQ(count_of(m.values, 1.0f), m.ones) << m.name;
        EXPECT_EQ(m.values[mask_index(0, 0, 0)], static_cast<float>(m.black_255) / 255.0f) << m.name;
    }
    EXPECT_NE(lut_masks::select_skintones, lut_masks::select_skintones_extreme);
}

TEST(LutMasks, ZeroOnlyWhereRedLeadsGreenAndGreenLeadsBlue)
{
    for (const named_mask& m : masks)
        for (std::size_t r = 0; r < 17; ++r)
            for (std::size_t g = 0; g < 17; ++g)
                for (std::size_t b = 0; b < 17; ++b) {
                    if (m.values[mask_index(r, g, b)] != 0.0f)
                        continue;
                    ASSERT_TRUE(r >= g && g >= b && r > b) << m.name << " at (" << r << ", " << g << ", " << b << ")";
                }
}

TEST(LutMasks, TheTransitionHasNoJumpBetweenNeighbours)
{
    // Between a skin tone and a far colour the values ramp: no two neighbouring grid points
    // (one step along one axis) go from 0.0 straight to 1.0, or anywhere near.
    for (const named_mask& m : masks) {
        float steepest = 0.0f;
        for (std::size_t r = 0; r < 17; ++r)
            for (std::size_t g = 0; g < 17; ++g)
                for (std::size_t b = 0; b < 17; ++b) {
                    const float here = m.values[mask_index(r, g, b)];
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
