// The host-side image: where bottom-up rows lie, that a frame on its own mapping starts zeroed
// and copies deeply, and what it refuses. Padded rows are shown
// by the render tests, whose plug-in reads them by their row bytes.
#include "host/image.h"
#include "host/status.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using vl1::ofxhost::image;
using vl1::ofxhost::pixel_depth;

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

TEST(image, AFrameOnLargePagesStartsZeroedAndCopiesAreIndependent)
{
    image frame(pixel_depth::real, {0, 0, 1024, 1024});  // 16 MiB, above the heap's limit
    const auto start = reinterpret_cast<std::uintptr_t>(frame.data());
    EXPECT_EQ(start % (std::uintptr_t{2} << 20), 0u);
    EXPECT_EQ(frame.pixel(1023, 1023), (std::array<double, 4>{0, 0, 0, 0}));
    frame.set_pixel(1023, 1023, {1, 2, 3, 4});
    image copy = frame;
    frame.fill({0, 0, 0, 0});
    EXPECT_EQ(copy.pixel(1023, 1023), (std::array<double, 4>{1, 2, 3, 4}));
    EXPECT_EQ(copy.pixel(0, 0), (std::array<double, 4>{0, 0, 0, 0}));
    copy = std::move(frame);
    EXPECT_EQ(copy.pixel(1023, 1023), (std::array<double, 4>{0, 0, 0, 0}));
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
