#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <iostream>
#include <limits>
#include <random>
#include <vector>

#include "color/lut_row_kernels.h"
#include "color/lut_sample_kernel.h"
#include "color/lut_sampling.h"

namespace vl1 {
namespace {

constexpr rgba_depth all_depths[] = {rgba_depth::u8, rgba_depth::u16, rgba_depth::f32};

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
        if (depth == rgba_depth::u8) {
            const auto v = static_cast<uint8_t>(c < 256 * 4 ? c / 4 : rng() & 0xFF);
            std::memcpy(&row[c], &v, 1);
        } else if (depth == rgba_depth::u16) {
            const auto v = static_cast<uint16_t>(rng() % 3 == 0 ? 32760 + rng() % 16 : rng() & 0xFFFF);
            std::memcpy(&row[c * 2], &v, 2);
        } else {
            const float v = rng() % 4 == 0 ? specials[rng() % std::size(specials)]
                                            : std::uniform_real_distribution<float>(-0.2f, 1.2f)(rng);
            std::memcpy(&row[c * 4], &v, 4);
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

// The kernels this CPU runs; the test names the ones it had to leave out.
std::vector<row_kernel_path> runnable_kernels()
{
    std::vector<row_kernel_path> paths;
    for (const row_kernel_path path : all_row_kernel_paths) {
        if (row_kernel_available(path))
            paths.push_back(path);
        else
            std::cout << "[ note ] this CPU lacks the " << row_kernel_name(path) << " kernel\n";
    }
    return paths;
}

TEST(ApplyLutRow, EveryKernelGivesThePerPixelBitsForEveryPairOfDepthsAndLengthAlsoInPlace)
{
    EXPECT_TRUE(row_kernel_available(row_kernel_path::sse2)) << "every x86-64 CPU has SSE2";
    EXPECT_TRUE(row_kernel_available(chosen_row_kernel_path()));
    const std::vector<row_kernel_path> paths = runnable_kernels();
    std::mt19937 rng(2024);
    for (const lut_argb<32>& lut : test_tables())
        for (const rgba_depth in_depth : all_depths)
            for (const rgba_depth out_depth : all_depths)
                // Odd lengths: the vector loops take pixels in groups and leave a tail.
                for (const std::size_t count : {1, 2, 3, 5, 7, 8, 9, 64, 67, 4095}) {
                    const std::vector<std::byte> in = test_row(in_depth, count, rng);
                    const std::vector<std::byte> expected = per_pixel_reference(lut, in_depth, in, out_depth, count);
                    for (const row_kernel_path path : paths) {
                        SCOPED_TRACE(testing::Message() << "in " << static_cast<int>(in_depth) << " out "
                                                        << static_cast<int>(out_depth) << ", " << count << " pixels, "
                                                        << row_kernel_name(path));
                        std::vector<std::byte> out(expected.size(), std::byte{0xAB});
                        apply_lut_row(lut, in_depth, in.data(), out_depth, out.data(), count, path);
                        ASSERT_EQ(std::memcmp(out.data(), expected.data(), out.size()), 0);
                        if (in_depth == out_depth) {
                            std::vector<std::byte> row = in;
                            apply_lut_row(lut, in_depth, row.data(), out_depth, row.data(), count, path);
                            ASSERT_EQ(row, expected) << "in place";
                        }
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

TEST(ApplyLutRow, KernelNamesAndATableOfWrongSize)
{
    for (const row_kernel_path path : all_row_kernel_paths)
        EXPECT_EQ(row_kernel_from_name(row_kernel_name(path)), path);
    EXPECT_FALSE(row_kernel_from_name("avx"));
    EXPECT_FALSE(row_kernel_from_name(""));

    lut_argb<32> lut;
    lut.data.resize(10);
    float px[4] = {0.5f, 0.5f, 0.5f, 1.0f};
    EXPECT_THROW(apply_lut_row(lut, rgba_depth::f32, px, rgba_depth::f32, px, 1), std::out_of_range);
    EXPECT_EQ(px[0], 0.5f) << "refused before any pixel";
}

}  // namespace
}  // namespace vl1
