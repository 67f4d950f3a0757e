// Conversion between OFX pixels and the working colour at the render path's border.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "ofx/ofx_pixel_io.h"

namespace vl1 {
namespace {

TEST(PixelIo, SixteenBitUsesTheScaleOf32767AndSaturates)
{
    const uint16_t in[4] = {32767, 65535, 16384, 0};
    const argb_float c = read_pixel(16, reinterpret_cast<const uint8_t*>(in));
    EXPECT_EQ(c.r, 1.0f);
    EXPECT_EQ(c.g, 1.0f);
    EXPECT_EQ(c.b, static_cast<float>(16384 / 32767.0));
    EXPECT_EQ(c.a, 0.0f);

    uint16_t out[4];
    write_pixel(16, reinterpret_cast<uint8_t*>(out), argb_float{0.5f, 1.0f, 0.0f, 2.0f});
    EXPECT_EQ(out[0], 32767);
    EXPECT_EQ(out[1], 0);
    EXPECT_EQ(out[2], 65534) << "2.0 * 32767, still within 16 bits";
    EXPECT_EQ(out[3], 16384) << "half away from zero: 16383.5 rounds up";
}

TEST(PixelIo, FloatInputIsClampedAndNaNBecomesZeroButOutputIsWrittenAsItIs)
{
    const float in[4] = {1.5f, -0.5f, std::numeric_limits<float>::quiet_NaN(), 0.25f};
    const argb_float c = read_pixel(32, reinterpret_cast<const uint8_t*>(in));
    EXPECT_EQ(c.r, 1.0f);
    EXPECT_EQ(c.g, 0.0f);
    EXPECT_EQ(c.b, 0.0f);
    EXPECT_EQ(c.a, 0.25f);

    float out[4];
    write_pixel(32, reinterpret_cast<uint8_t*>(out), argb_float{0.25f, 1.5f, -0.5f, 0.125f});
    EXPECT_EQ(out[0], 1.5f);
    EXPECT_EQ(out[1], -0.5f);
    EXPECT_EQ(out[2], 0.125f);
    EXPECT_EQ(out[3], 0.25f);
}

TEST(PixelIo, EightBitRoundsHalfAwayFromZeroAndNeverWraps)
{
    const uint8_t in[4] = {255, 0, 128, 64};
    const argb_float c = read_pixel(8, in);
    EXPECT_EQ(c.r, 1.0f);
    EXPECT_EQ(c.b, static_cast<float>(128 / 255.0));

    uint8_t out[4];
    write_pixel(8, out, argb_float{std::numeric_limits<float>::quiet_NaN(), 2.0f, -1.0f, 0.5f});
    EXPECT_EQ(out[0], 255);
    EXPECT_EQ(out[1], 0);
    EXPECT_EQ(out[2], 128) << "127.5 rounds up";
    EXPECT_EQ(out[3], 0) << "NaN stores 0";
}

TEST(PixelIo, UnknownDepthsConvertAndWriteNothing)
{
    uint8_t pixel[16];
    std::memset(pixel, 0xab, sizeof pixel);
    write_pixel(12, pixel, argb_float{1, 1, 1, 1});
    for (uint8_t b : pixel)
        EXPECT_EQ(b, 0xab);
}

}  // namespace
}  // namespace vl1
