#include <gtest/gtest.h>

#include <cstring>

#include "framework/image.h"

namespace vl1 {
namespace {

void fill_float_pattern(image& img)
{
    for (uint64_t y = 0; y < img.height; ++y) {
        for (uint64_t x = 0; x < img.width; ++x) {
            const argb_float p{1.0f, float(x), float(y), 0.5f};
            std::memcpy(img.row(y) + x * 16, &p, 16);
        }
    }
}

TEST(Image, CopyAllocatesCompactStorageAndKeepsLogicalRows)
{
    // A source with padding behind each row and flipped storage.
    std::vector<uint8_t> storage(3 * 64, 0xcc);
    image src = image::wrap(storage.data(), 3, 3, 64, pixel_format::argb_f32, true);
    fill_float_pattern(src);

    image dst;
    dst.copy_from(src);
    EXPECT_TRUE(dst.owns_data);
    EXPECT_EQ(dst.stride, 3u * 16u);
    EXPECT_EQ(dst.flipped, 1u);
    EXPECT_EQ(dst.format, pixel_format::argb_f32);
    for (uint64_t y = 0; y < 3; ++y) {
        for (uint64_t x = 0; x < 3; ++x) {
            const argb_float p = dst.read_pixel(x, y);
            EXPECT_EQ(p.r, float(x));
            EXPECT_EQ(p.g, float(y));
        }
    }
    // Logical row 0 of a flipped image is the last storage row.
    float g_of_storage_row0 = 0.0f;
    std::memcpy(&g_of_storage_row0, dst.data + 8, 4);
    EXPECT_EQ(g_of_storage_row0, 2.0f);
}

TEST(Image, CopyReusesMatchingStorageOnlyAndMovingHandsOverOwnership)
{
    image src(4, 2, pixel_format::argb8, false);
    src.row(1)[3] = 200;
    image dst(4, 2, pixel_format::argb8, true);
    uint8_t* before = dst.data;
    dst.copy_from(src);
    EXPECT_EQ(dst.data, before);
    EXPECT_EQ(dst.flipped, 0u);
    EXPECT_EQ(dst.row(1)[3], 200);

    image other(5, 2, pixel_format::argb8, false);
    other.copy_from(src);
    EXPECT_EQ(other.width, 4u);
    EXPECT_EQ(other.stride, 16u);
    const uint8_t* storage = other.data;
    image moved(std::move(other));
    EXPECT_EQ(moved.data, storage);
    EXPECT_TRUE(moved.owns_data);
    EXPECT_EQ(moved.row(1)[3], 200);
    EXPECT_EQ(other.data, nullptr);
    EXPECT_FALSE(other.owns_data);
    EXPECT_EQ(other.format, pixel_format::empty);
}

TEST(Image, ReadersOfEachFormat)
{
    image bytes(1, 1, pixel_format::argb8, false);
    const uint8_t b[4] = {255, 0, 51, 102};
    std::memcpy(bytes.data, b, 4);
    const argb_float p0 = bytes.read_pixel(0, 0);
    EXPECT_EQ(p0.a, 1.0f);
    EXPECT_FLOAT_EQ(p0.g, 0.2f);

    bytes.format = pixel_format::rgba8;  // same storage read as r, g, b, a, undivided
    const argb_float p4 = bytes.read_pixel(0, 0);
    EXPECT_EQ(p4.a, 102.0f);
    EXPECT_EQ(p4.r, 255.0f);
    EXPECT_EQ(p4.b, 51.0f);

    image shorts(1, 1, pixel_format::argb16, false);
    const uint16_t s[4] = {32767, 0, 0, 65534};
    std::memcpy(shorts.data, s, 8);
    EXPECT_EQ(shorts.read_pixel(0, 0).a, 1.0f);
    EXPECT_EQ(shorts.read_pixel(0, 0).b, 2.0f);

    image floats(1, 1, pixel_format::rgba_f32, false);
    const float f[4] = {0.1f, 0.2f, 0.3f, 0.4f};
    std::memcpy(floats.data, f, 16);
    const argb_float p6 = floats.read_pixel(0, 0);
    EXPECT_EQ(p6.a, 0.4f);
    EXPECT_EQ(p6.r, 0.1f);
    EXPECT_EQ(p6.b, 0.3f);
}

}  // namespace
}  // namespace vl1
