#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "color/argb_float_ops.h"
#include "color/lut_difference.h"
#include "tests/color/float_edge_values.h"
#include "tests/color/lut_test_support.h"

namespace vl1 {
namespace {

TEST(AddLutDifference, AddsTheScaledDeviationFromTheQuotientIdentityClamped)
{
    // Red 0.25 off the quotient identity everywhere: entry 0 (identity 0.0) gets half of it;
    // doubled, 0.5 lifts the middle of the red axis to 1.0, and -1.0 three times takes the
    // top to 0.0.
    const auto offset_red = [](float offset) {
        return test::make_lut_32([offset](float r, float g, float b) {
            return argb_float{1.0f, r / 31.0f + offset, g / 31.0f, b / 31.0f};
        });
    };
    lut_argb<32> lut;
    add_lut_difference(lut, offset_red(0.25f), 0.5f);
    EXPECT_EQ(lut.data[0], (argb_float{1.0f, 0.125f, 0.0f, 0.0f}));
    add_lut_difference(lut, offset_red(0.5f), 2.0f);
    EXPECT_EQ(lut.data[lut_index(32, 16, 0, 0)].r, 1.0f);
    add_lut_difference(lut, offset_red(-1.0f), 3.0f);
    EXPECT_EQ(lut.data[lut_index(32, 31, 0, 0)].r, 0.0f);
}

TEST(AddLutDifference, EveryEntryGetsTheBitsOfTheRuleWhateverItHolds)
{
    test::edge_float_source values(41);
    lut_argb<32> start;
    lut_argb<32> source;
    for (std::size_t i = 0; i < start.data.size(); ++i) {
        start.data[i] = values.colour();
        source.data[i] = values.colour();
    }
    const auto clamp = [](float v) { return std::min(1.0f, std::max(0.0f, v)); };
    for (const float weight : {0.0f, -0.0f, 0.3f, 1.0f, -2.5f, 1e20f, std::nanf("")}) {
        lut_argb<32> lut = start;
        add_lut_difference(lut, source, weight);
        for (std::size_t r = 0; r < 32; ++r)
            for (std::size_t g = 0; g < 32; ++g)
                for (std::size_t b = 0; b < 32; ++b) {
                    const std::size_t i = lut_index(32, r, g, b);
                    const argb_float identity{1.0f, static_cast<float>(r) / 31.0f, static_cast<float>(g) / 31.0f,
                                              static_cast<float>(b) / 31.0f};
                    const argb_float v = start.data[i] + (source.data[i] - identity) * weight;
                    const argb_float expected{clamp(v.a), clamp(v.r), clamp(v.g), clamp(v.b)};
                    ASSERT_TRUE(test::same_bits(lut.data[i], expected)) << "entry " << i << ", weight " << weight;
                }
        // Two sources in one pass: the bits of one call after the other.
        add_lut_difference(lut, start, 0.7f);
        lut_argb<32> fused = start;
        add_lut_differences(fused, source, weight, start, 0.7f);
        ASSERT_EQ(std::memcmp(fused.data.data(), lut.data.data(), lut.data.size() * sizeof(argb_float)), 0);
    }
}

}  // namespace
}  // namespace vl1
