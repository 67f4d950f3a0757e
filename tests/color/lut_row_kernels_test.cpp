#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "color/lut_row_kernels.h"
#include "color/lut_sample_kernel.h"
#include "color/lut_sampling.h"
#include "tests/color/lut_test_tables.h"

namespace vl1 {
namespace {

constexpr rgba_depth all_depths[] = {rgba_depth::u8, rgba_depth::u16, rgba_depth::f32};

TEST(RgbaPixelRead, EachDepthScalesToTheUnitRange)
{
    const uint8_t bytes[4] = {255, 128, 0, 77};
    EXPECT_EQ(read_rgba_pixel(rgba_depth::u8, bytes), (argb_float{77.0f / 255.0f, 1.0f, 128.0f / 255.0f, 0.0f}));

    // The 16-bit scale is 32767: anything above saturates.
    const uint16_t words[4] = {32767, 65535, 16384, 0};
    EXPECT_EQ(read_rgba_pixel(rgba_depth::u16, words), (argb_float{0.0f, 1.0f, 1.0f, 16384.0f / 32767.0f}));

    const float floats[4] = {1.5f, -0.5f, std::numeric_limits<float>::quiet_NaN(), 0.25f};
    EXPECT_EQ(read_rgba_pixel(rgba_depth::f32, floats), (argb_float{0.25f, 1.0f, 0.0f, 0.0f}));
}

TEST(RgbaPixelWrite, IntegersRoundHalfAwayFromZeroAndSaturate)
{
    uint8_t bytes[4];
    write_rgba_pixel(rgba_depth::u8, bytes, {0.5f, 1.0f, 2.0f, -0.1f});
    EXPECT_EQ(bytes[0], 255);  // r
    EXPECT_EQ(bytes[1], 255);  // g, saturated
    EXPECT_EQ(bytes[2], 0);    // b, saturated
    EXPECT_EQ(bytes[3], 128);  // a: 127.5 rounds up

    uint16_t words[4];
    write_rgba_pixel(rgba_depth::u16, words, {std::nanf(""), 1.0f, 0.5f, 3.0f});
    EXPECT_EQ(words[0], 32767);
    EXPECT_EQ(words[1], 16384);  // 16383.5 rounds up
    EXPECT_EQ(words[2], 65535);  // storage range
    EXPECT_EQ(words[3], 0);      // NaN

    float floats[4];
    write_rgba_pixel(rgba_depth::f32, floats, {-1.0f, 1.5f, 0.25f, -0.5f});
    EXPECT_EQ(floats[0], 1.5f);
    EXPECT_EQ(floats[2], -0.5f);
    EXPECT_EQ(floats[3], -1.0f);
}

// Pixel bytes of every kind a host can hand over: all byte values, 16-bit values around
// the scale's white, and floats with NaN, infinities, -0.0, values near grid points and
// outside 0..1.
std::vector<std::byte> test_row(rgba_depth depth, std::size_t count, std::mt19937& rng)
{
    std::vector<std::byte> row(count * rgba_pixel_bytes(depth));
    const float specials[] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                              -std::numeric_limits<float>::infinity(), -0.0f, 0.0f, 1.0f, 1.0f + 1e-7f,
                              -1e-30f, 2.5f, 15.5f / 31.0f, 1.0f / 31.0f, std::nextafter(1.0f, 0.0f)};
    for (std::size_t c = 0; c < count * 4; ++c) {
        switch (depth) {
        case rgba_depth::u8: {
            const auto v = static_cast<uint8_t>(c < 256 * 4 ? c / 4 : rng() & 0xFF);
            std::memcpy(&row[c], &v, 1);
            break;
        }
        case rgba_depth::u16: {
            const auto v = static_cast<uint16_t>(rng() % 3 == 0 ? 32760 + rng() % 16 : rng() & 0xFFFF);
            std::memcpy(&row[c * 2], &v, 2);
            break;
        }
        case rgba_depth::f32: {
            const float v = rng() % 4 == 0 ? specials[rng() % std::size(specials)]
                                            : std::uniform_real_distribution<float>(-0.2f, 1.2f)(rng);
            std::memcpy(&row[c * 4], &v, 4);
            break;
        }
        }
    }
    return row;
}

// Tables the kernels must agree on: the identity, and one with values far outside 0..1,
// NaN and -0.0 in its entries, so that saturation and NaN handling on output are exercised.
std::vector<lut_argb<32>> test_tables()
{
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> wide(-0.5f, 1.5f);
    lut_argb<32> wild;
    for (argb_float& e : wild.data)
        e = {wide(rng), wide(rng), wide(rng), wide(rng)};
    wild.data[0].r = std::numeric_limits<float>::quiet_NaN();
    wild.data[32767].g = -0.0f;
    return {lut_argb<32>(), wild};
}

// Pixel by pixel with the scalar sampling step: the reference every row path must match.
std::vector<std::byte> per_pixel_reference(const lut_argb<32>& lut, rgba_depth in_depth, const std::vector<std::byte>& in,
                                           rgba_depth out_depth, std::size_t count)
{
    std::vector<std::byte> out(count * rgba_pixel_bytes(out_depth));
    for (std::size_t i = 0; i < count; ++i)
        write_rgba_pixel(out_depth, &out[i * rgba_pixel_bytes(out_depth)],
                         detail::sample_lut_32(lut.data.data(), read_rgba_pixel(in_depth, &in[i * rgba_pixel_bytes(in_depth)])));
    return out;
}

TEST(ApplyLutRow, ScalarSimdAndPerPixelSamplingGiveIdenticalBits)
{
    EXPECT_EQ(best_row_kernel_path(), row_kernel_path::sse2) << "this build has no SSE2 path";
    // An odd count: the SIMD loop takes pixels in pairs and the last one alone.
    constexpr std::size_t count = 4095;
    std::mt19937 rng(2024);
    for (const lut_argb<32>& lut : test_tables()) {
        for (const rgba_depth in_depth : all_depths) {
            const std::vector<std::byte> in = test_row(in_depth, count, rng);
            for (const rgba_depth out_depth : all_depths) {
                const std::vector<std::byte> expected = per_pixel_reference(lut, in_depth, in, out_depth, count);
                for (const row_kernel_path path : {row_kernel_path::scalar, row_kernel_path::sse2}) {
                    std::vector<std::byte> out(expected.size(), std::byte{0xAB});
                    apply_lut_row(lut, in_depth, in.data(), out_depth, out.data(), count, path);
                    ASSERT_EQ(std::memcmp(out.data(), expected.data(), out.size()), 0)
                        << "in " << static_cast<int>(in_depth) << " out " << static_cast<int>(out_depth) << " path "
                        << static_cast<int>(path);
                }
            }
        }
    }
}

TEST(ApplyLutRow, WorksInPlaceAndKeepsAlpha)
{
    std::vector<uint8_t> row = {10, 20, 30, 77, 255, 255, 255, 0};
    const lut_argb<32> identity;
    apply_lut_row(identity, rgba_depth::u8, row.data(), rgba_depth::u8, row.data(), 2);
    EXPECT_EQ(row, (std::vector<uint8_t>{10, 20, 30, 77, 255, 255, 255, 0}));
}

TEST(ApplyLutRow, InPlaceRowsOfEveryLengthGiveThePerPixelBits)
{
    std::mt19937 rng(99);
    const lut_argb<32> lut = test_tables()[1];
    for (const rgba_depth depth : all_depths) {
        for (const std::size_t count : {std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{64}, std::size_t{65}}) {
            std::vector<std::byte> row = test_row(depth, count, rng);
            const std::vector<std::byte> expected = per_pixel_reference(lut, depth, row, depth, count);
            apply_lut_row(lut, depth, row.data(), depth, row.data(), count);
            ASSERT_EQ(std::memcmp(row.data(), expected.data(), row.size()), 0)
                << "depth " << static_cast<int>(depth) << ", " << count << " pixels";
        }
    }
}

TEST(ApplyLutRowBits, TakesTheThreeDepthsInBitsAndDeclinesAnythingElse)
{
    const lut_argb<32> lut = test_tables()[1];
    std::mt19937 rng(5);
    const std::vector<std::byte> in = test_row(rgba_depth::u16, 9, rng);
    const std::vector<std::byte> expected = per_pixel_reference(lut, rgba_depth::u16, in, rgba_depth::u8, 9);
    std::vector<std::byte> out(9 * 4, std::byte{0x5A});
    ASSERT_TRUE(apply_lut_row_bits(lut, 16, in.data(), 8, out.data(), 9));
    EXPECT_EQ(out, expected);

    const std::vector<std::byte> untouched(9 * 16, std::byte{0x5A});
    std::vector<std::byte> wide = untouched;
    EXPECT_FALSE(apply_lut_row_bits(lut, 16, in.data(), 0, wide.data(), 9));
    EXPECT_FALSE(apply_lut_row_bits(lut, 24, in.data(), 32, wide.data(), 9));
    EXPECT_FALSE(apply_lut_row_bits(lut, 16, in.data(), 32, wide.data(), -1));
    EXPECT_EQ(wide, untouched);
}

TEST(ApplyLutRow, TableOfWrongSizeIsRefusedBeforeAnyPixel)
{
    lut_argb<32> lut;
    lut.data.resize(10);
    float px[4] = {0.5f, 0.5f, 0.5f, 1.0f};
    EXPECT_THROW(apply_lut_row(lut, rgba_depth::f32, px, rgba_depth::f32, px, 1), std::out_of_range);
    EXPECT_EQ(px[0], 0.5f);
}

}  // namespace
}  // namespace vl1
