#include "fuzz/harness/fuzz_themes.h"

#include <algorithm>

namespace vl1::fuzz {

std::shared_ptr<const lut_argb<32>> shifted_lut(float shift)
{
    auto lut = std::make_shared<lut_argb<32>>();
    for (argb_float& cell : lut->data) {
        cell.r = std::clamp(cell.r + shift, 0.0f, 1.0f);
        cell.b = std::clamp(cell.b - shift, 0.0f, 1.0f);
    }
    return lut;
}

hueloom_theme_v1 sample_theme(uint32_t uid, const std::string& name, std::size_t wheel_luts, bool post_processing)
{
    hueloom_theme_v1 theme;
    theme.uid = uid;
    theme.name = name;
    theme.version = 3;
    theme.background_data = {0x89, 'P', 'N', 'G', 0x0d, 0x0a, 0x1a, 0x0a};
    for (std::size_t i = 0; i < wheel_luts; ++i)
        theme.luts.push_back({shifted_lut(0.05f * static_cast<float>(i + 1)),
                              360.0f * static_cast<float>(i) / static_cast<float>(wheel_luts)});
    if (post_processing)
        theme.post_processing_lut = shifted_lut(-0.03f);
    return theme;
}

const hueloom_theme_v1& theme_held_before_read()
{
    static const hueloom_theme_v1 theme = sample_theme(0x5eed5eed, "held before the read", 2, true);
    return theme;
}

}  // namespace vl1::fuzz
