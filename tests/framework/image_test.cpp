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

}  // namespace
}  // namespace vl1
