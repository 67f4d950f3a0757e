#include "tests/support/theme_looks.h"

#include "tests/support/test_paths.h"
#include "themes/hueloom_theme_file_serializer_v1.h"

#include <algorithm>
#include <stdexcept>

namespace hueloom_test {

std::shared_ptr<const vl1::hueloom_theme_v1> builtin_theme()
{
    auto theme = std::make_shared<vl1::hueloom_theme_v1>();
    const auto path = plugin_dir() / "Hueloom.ofx.bundle" / "Contents" / "Resources" / "theme_00000001.hlt";
    if (!vl1::hueloom_theme_file_serializer_v1::read_theme_from_file(*theme, path.string()))
        throw std::runtime_error("cannot read the built-in theme " + path.string());
    return theme;
}

std::shared_ptr<vl1::hueloom_theme_v1> travelling_theme()
{
    auto theme = std::make_shared<vl1::hueloom_theme_v1>();
    theme->uid = 0x7e57f00d;
    theme->name = "Travelling";
    const float shifts[4][3] = {{0.08f, 0.0f, -0.08f}, {0.0f, 0.06f, 0.0f}, {-0.08f, 0.0f, 0.08f}, {0.05f, -0.05f, 0.05f}};
    for (int i = 0; i < 4; ++i) {
        auto lut = std::make_shared<vl1::lut_argb<32>>();
        for (auto& e : lut->data) {
            e.r = std::clamp(e.r + shifts[i][0], 0.0f, 1.0f);
            e.g = std::clamp(e.g + shifts[i][1], 0.0f, 1.0f);
            e.b = std::clamp(e.b + shifts[i][2], 0.0f, 1.0f);
        }
        theme->luts.push_back({lut, 90.0f * static_cast<float>(i)});
    }
    return theme;
}

vl1::lut_argb<32> table_for(const vl1::hueloom_theme_v1& theme, const look& values)
{
    vl1::lut_argb<32> table;
    if (values.bypass || !theme.is_self_consistent())
        return table;
    // The wheel's "Angle" runs against the theme's rotations; percentages are divided by 100.
    theme.apply_theme_luts(table, 360.0f - values.angle, static_cast<float>(values.strength / 100.0));
    theme.apply_theme_modifiers(table, static_cast<float>(values.hue / 100.0), static_cast<float>(values.chroma / 100.0),
                                static_cast<float>(values.luminance / 100.0));
    theme.apply_post_processing(table);
    return table;
}

}  // namespace hueloom_test
