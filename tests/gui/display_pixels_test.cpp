// The preview picture's conversion to the words the editor draws, against the plain rule:
// clamp to 0..1 (NaN as 0), times 255, truncated; with a reduction, the mean of each box.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "gui/display_pixels.h"

namespace vl1::gui {
namespace {

TEST(DisplayPixels, WordsFollowTheRuleAtFullSizeAndAsBoxMeans)
{
    // Seven columns: one group of four and a tail of three; values inside and outside 0..1.
    const float values[] = {0.0f, 0.2f, 0.5f, 0.999f, 1.0f, 1.5f, -0.25f, std::numeric_limits<float>::quiet_NaN()};
    image picture(7, 3, pixel_format::rgba_f32, true);
    const auto at = [&](uint64_t x, uint64_t y, int c) { return values[(x * 3 + y * 5 + c) % 8]; };
    for (uint64_t y = 0; y < 3; ++y)
        for (uint64_t x = 0; x < 7; ++x) {
            auto* p = reinterpret_cast<float*>(picture.row(y)) + 4 * x;
            for (int c = 0; c < 4; ++c)
                p[c] = at(x, y, c);
        }
    const auto byte = [](float v) {
        return std::isnan(v) ? 0u : unsigned(std::fmin(std::fmax(v, 0.0f), 1.0f) * 255.0f);
    };
    const auto word = [&](float r, float g, float b) { return 0xff000000u | byte(r) << 16 | byte(g) << 8 | byte(b); };

    std::vector<uint32_t> out;
    const display_size full = convert_to_display(picture, out);
    ASSERT_EQ(full.width, 7u);
    ASSERT_EQ(full.height, 3u);
    for (uint64_t y = 0; y < 3; ++y)
        for (uint64_t x = 0; x < 7; ++x)
            EXPECT_EQ(out[y * 7 + x], word(at(x, y, 0), at(x, y, 1), at(x, y, 2))) << x << ", " << y;

    // Boxes of 2 x 2, smaller at the right and bottom edges.
    const display_size half = convert_to_display(picture, out, 2);
    ASSERT_EQ(half.width, 4u);
    ASSERT_EQ(half.height, 2u);
    for (uint64_t oy = 0; oy < 2; ++oy)
        for (uint64_t ox = 0; ox < 4; ++ox) {
            float sum[3] = {0, 0, 0}, n = 0;
            for (uint64_t y = 2 * oy; y < std::min<uint64_t>(2 * oy + 2, 3); ++y)
                for (uint64_t x = 2 * ox; x < std::min<uint64_t>(2 * ox + 2, 7); ++x, ++n)
                    for (int c = 0; c < 3; ++c)
                        sum[c] += at(x, y, c);
            EXPECT_EQ(out[oy * 4 + ox], word(sum[0] / n, sum[1] / n, sum[2] / n)) << ox << ", " << oy;
        }
}

}  // namespace
}  // namespace vl1::gui
