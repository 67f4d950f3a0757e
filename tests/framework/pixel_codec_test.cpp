// The pixel codec's scalar rule; its vector forms are held to it by the row kernels' tests.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "framework/io/pixel_codec.h"

namespace vl1 {
namespace {

bool same(const argb_float& x, const argb_float& y)
{
    return std::bit_cast<uint32_t>(x.a) == std::bit_cast<uint32_t>(y.a) &&
           std::bit_cast<uint32_t>(x.r) == std::bit_cast<uint32_t>(y.r) &&
           std::bit_cast<uint32_t>(x.g) == std::bit_cast<uint32_t>(y.g) &&
           std::bit_cast<uint32_t>(x.b) == std::bit_cast<uint32_t>(y.b);
}

TEST(PixelCodec, ReadingScalesEachDepthIntoTheUnitRange)
{
    const uint8_t bytes[4] = {255, 128, 0, 77};
    EXPECT_TRUE(same(read_rgba_pixel(rgba_depth::u8, bytes), {77.0f / 255.0f, 1.0f, 128.0f / 255.0f, 0.0f}));

    // The 16-bit scale is 32767: anything above saturates.
    const uint16_t words[4] = {32767, 65535, 16384, 0};
    EXPECT_TRUE(same(read_rgba_pixel(rgba_depth::u16, words), {0.0f, 1.0f, 1.0f, 16384.0f / 32767.0f}));

    // NaN becomes +0.0, -0.0 stays, infinities and HDR values clip.
    const float inf = std::numeric_limits<float>::infinity();
    const float floats[4] = {std::nanf(""), -0.0f, 7.5f, -inf};
    EXPECT_TRUE(same(read_rgba_pixel(rgba_depth::f32, floats), {0.0f, 0.0f, -0.0f, 1.0f}));
    const float more[4] = {inf, 0.25f, -2.0f, 0.5f};
    EXPECT_TRUE(same(read_rgba_pixel(rgba_depth::f32, more), {0.5f, 1.0f, 0.25f, 0.0f}));
}

TEST(PixelCodec, WritingRoundsHalfAwayFromZeroSaturatesAndStoresNaNAsZero)
{
    uint8_t bytes[4];
    write_rgba_pixel(rgba_depth::u8, bytes, {0.5f, 1.0f, 2.0f, -0.1f});
    EXPECT_EQ(bytes[0], 255);
    EXPECT_EQ(bytes[1], 255);
    EXPECT_EQ(bytes[2], 0);
    EXPECT_EQ(bytes[3], 128) << "127.5 rounds up";

    uint16_t words[4];
    write_rgba_pixel(rgba_depth::u16, words, {std::nanf(""), 1.0f, 0.5f, 3.0f});
    EXPECT_EQ(words[0], 32767);
    EXPECT_EQ(words[1], 16384) << "16383.5 rounds up";
    EXPECT_EQ(words[2], 65535) << "saturated to the storage range, not to white";
    EXPECT_EQ(words[3], 0) << "NaN";

    float floats[4];
    write_rgba_pixel(rgba_depth::f32, floats, {-1.0f, 1.5f, 0.25f, -0.5f});
    EXPECT_EQ(floats[0], 1.5f) << "floats are written as they are";
    EXPECT_EQ(floats[2], -0.5f);
    EXPECT_EQ(floats[3], -1.0f);
}

TEST(PixelCodec, OnlyEightSixteenAndThirtyTwoBitsAreDepths)
{
    EXPECT_EQ(rgba_depth_from_bits(16), rgba_depth::u16);
    EXPECT_EQ(rgba_pixel_bytes(*rgba_depth_from_bits(32)), 16u);
    for (const int bits : {0, 12, 24, 64})
        EXPECT_FALSE(rgba_depth_from_bits(bits)) << bits;
}

}  // namespace
}  // namespace vl1
