// The effect's row-wise face: found through query_interface and, row for row, the bytes of
// process_pixel with the render path's conversions.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "color/lut_row_kernels.h"
#include "framework/irow_processor.h"
#include "tests/effect/effect_test_support.h"

namespace vl1 {
namespace {

TEST(HueloomRows, RowsGiveTheBytesOfProcessPixelForTheCurrentTableAndDeclineOtherDepths)
{
    const auto fx = effect_test::make_component(effect_test::make_theme(0x5eed0001u, "Rows", true));
    effect_test::set_param(*fx, "Angle", 300.0f);
    effect_test::set_param(*fx, "Strength", 80.0f);
    effect_test::set_param(*fx, "Hue", 150.0f);
    fx->notify(event(event_render_setup));

    iobject* face = nullptr;
    ASSERT_TRUE(fx->query_interface("irow_processor_v1", &face));
    auto* rows = static_cast<irow_processor_v1*>(face);

    std::mt19937 rng(4);
    std::uniform_real_distribution<float> unit(-0.1f, 1.1f);
    constexpr int count = 257;
    std::vector<float> in(count * 4);
    for (float& v : in)
        v = unit(rng);
    std::vector<uint16_t> out(count * 4, 0xABCD);
    ASSERT_TRUE(rows->process_row(0, 0, 32, reinterpret_cast<const uint8_t*>(in.data()), 16,
                                  reinterpret_cast<uint8_t*>(out.data()), count));

    for (int i = 0; i < count; ++i) {
        const float* p = &in[i * 4];
        const auto unit_clamp = [](float v) { return v < 0.0f ? 0.0f : (v > 1.0f ? 1.0f : v); };
        const argb_float pixel{unit_clamp(p[3]), unit_clamp(p[0]), unit_clamp(p[1]), unit_clamp(p[2])};
        argb_float graded{};
        fx->process_pixel(i, 0, pixel, &graded);
        uint16_t expected[4];
        write_rgba_pixel(rgba_depth::u16, expected, graded);
        ASSERT_EQ(std::memcmp(expected, &out[i * 4], sizeof expected), 0) << "pixel " << i;
    }
    EXPECT_NE(out[0], 0xABCD);

    // Depths other than 8, 16 and 32 bits are declined, the output untouched.
    std::vector<uint8_t> bytes(64, 9);
    EXPECT_FALSE(rows->process_row(0, 0, 12, bytes.data(), 8, bytes.data(), 4));
    EXPECT_FALSE(rows->process_row(0, 0, 8, bytes.data(), 0, bytes.data(), 4));
    EXPECT_EQ(bytes, std::vector<uint8_t>(64, 9));
}

}  // namespace
}  // namespace vl1
