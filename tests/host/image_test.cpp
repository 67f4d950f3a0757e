// The host-side image: layouts with padded and bottom-up rows, and its accessors.
#include "host/image.h"
#include "host/status.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using vl1::ofxhost::image;
using vl1::ofxhost::pixel_depth;

TEST(image, PaddedRowsStartEveryRowAtTheStride)
{
    image img(pixel_depth::short_int, {10, 20, 13, 22}, {.row_padding_bytes = 6});
    EXPECT_EQ(img.row_bytes(), 3 * 8 + 6);
    auto* base = static_cast<std::uint8_t*>(img.data());
    EXPECT_EQ(img.pixel_address(10, 20), base);
    EXPECT_EQ(img.pixel_address(12, 21), base + 30 + 16);
    img.set_pixel(12, 21, {1, 2, 65535, 4});
    EXPECT_EQ(img.pixel(12, 21), (std::array<double, 4>{1, 2, 65535, 4}));
    EXPECT_EQ(img.padding_bytes(), std::vector<std::uint8_t>(12, 0));
}

TEST(image, BottomUpRowsGoDownwardsInMemoryFromTheFirstRow)
{
    image img(pixel_depth::real, {0, 0, 2, 3}, {.row_padding_bytes = 4, .bottom_up = true});
    EXPECT_EQ(img.row_bytes(), -(2 * 16 + 4));
    auto* first = static_cast<std::uint8_t*>(img.data());
    EXPECT_EQ(img.pixel_address(0, 1), first - 36);
    EXPECT_EQ(img.pixel_address(1, 2), first - 72 + 16);
    img.fill_bytes(0);
    img.set_pixel(1, 0, {0.5f, 0.25f, 1.0f, 1.0f});
    EXPECT_EQ(img.channel(1, 0, 1), 0.25);
    EXPECT_EQ(img.pixel(0, 2), (std::array<double, 4>{0, 0, 0, 0}));
}

TEST(image, RejectsEmptyBoundsAndPixelsOutside)
{
    EXPECT_THROW(image(pixel_depth::byte, {0, 0, 0, 4}), vl1::ofxhost::host_error);
    EXPECT_THROW(image(pixel_depth::byte, {0, 0, 1, 1}, {.row_padding_bytes = -1}), vl1::ofxhost::host_error);
    image img(pixel_depth::byte, {-2, -2, 2, 2});
    EXPECT_NO_THROW(img.pixel(-2, -2));
    EXPECT_THROW(img.pixel(2, 0), vl1::ofxhost::host_error);
}

}  // namespace
