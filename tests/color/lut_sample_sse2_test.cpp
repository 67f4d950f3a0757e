// The SSE2 sampling step against the scalar one, through the public sample_lut and
// map_lut_through, which use it on every x86-64 build.
#include <fmt/core.h>
#include <gtest/gtest.h>

#include <vector>

#include "color/lut_sample_kernel.h"
#include "color/lut_sample_sse2.h"
#include "color/lut_sampling.h"
#include "tests/color/float_edge_values.h"

namespace vl1 {
namespace {

// The identity, and tables whose entries hold edge values, so that the interpolation itself
// meets NaN, infinities and signed zeros, not only the clamped grid position.
std::vector<lut_argb<32>> tables()
{
    test::edge_float_source values(11);
    lut_argb<32> wild;
    for (argb_float& e : wild.data)
        e = values.colour(-0.5f, 1.5f);
    lut_argb<32> tame;
    for (argb_float& e : tame.data)
        e = values.colour(0.0f, 1.0f);
    for (std::size_t i = 0; i < tame.data.size(); i += 97)
        tame.data[i].g = -0.0f;
    return {lut_argb<32>(), wild, tame};
}

std::string describe(const argb_float& c)
{
    return fmt::format("({}, {}, {}, {})", c.a, c.r, c.g, c.b);
}

TEST(SampleLutSse2, EveryColourAndEveryCellBorderGivesTheScalarBits)
{
    ASSERT_TRUE(detail::sse2_sampling_available) << "this build has no SSE2 sampling";
    const std::vector<lut_argb<32>> all = tables();
    test::edge_float_source colours(5);
    for (const lut_argb<32>& table : all) {
        for (int i = 0; i < 200000; ++i) {
            const argb_float in = colours.colour();
            const argb_float scalar = detail::sample_lut_32(table.data.data(), in);
            const argb_float simd = sample_lut(table, in);
            ASSERT_TRUE(test::same_result(scalar, simd)) << "input " << describe(in) << ": scalar " << describe(scalar)
                                                       << ", SSE2 " << describe(simd);
        }
    }
    // Every combination of grid points, the points just beside them and the unit range's
    // ends, on each axis: where truncation and the top-of-range rule decide the cell.
    std::vector<float> axis;
    for (int k = 0; k <= 31; ++k) {
        const float c = static_cast<float>(k) / 31.0f;
        axis.insert(axis.end(), {c, std::nextafter(c, -1.0f), std::nextafter(c, 2.0f)});
    }
    for (float r : axis)
        for (float g : {0.0f, 0.5f, 1.0f, std::nextafter(1.0f, 0.0f)})
            for (float b : axis) {
                const argb_float in{0.25f, r, g, b};
                ASSERT_TRUE(test::same_result(detail::sample_lut_32(all[1].data.data(), in), sample_lut(all[1], in)))
                    << describe(in);
            }
}

TEST(MapLutThroughSse2, GivesTheScalarBitsInPlaceAndThroughItself)
{
    const std::vector<lut_argb<32>> all = tables();
    for (const lut_argb<32>& map : all) {
        for (const lut_argb<32>& start : all) {
            lut_argb<32> target = start;
            map_lut_through(target, map);
            for (std::size_t i = 0; i < target.data.size(); ++i)
                ASSERT_TRUE(test::same_result(target.data[i], detail::sample_lut_32(map.data.data(), start.data[i])))
                    << "entry " << i;
        }
        // A table mapped through itself is mapped from its old entries.
        lut_argb<32> self = map;
        map_lut_through(self, self);
        for (std::size_t i = 0; i < self.data.size(); ++i)
            ASSERT_TRUE(test::same_result(self.data[i], detail::sample_lut_32(map.data.data(), map.data[i])))
                << "entry " << i;
    }
}

}  // namespace
}  // namespace vl1
