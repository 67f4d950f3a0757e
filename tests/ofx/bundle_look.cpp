#include "tests/ofx/bundle_look.h"

#include "color/lut_sampling.h"
#include "tests/ofx/bundle_test_support.h"
#include "themes/hueloom_theme_file_serializer_v1.h"

#include <algorithm>
#include <cstring>
#include <cmath>
#include <stdexcept>

namespace bundle_test {

std::shared_ptr<const vl1::hueloom_theme_v1> builtin_theme()
{
    auto theme = std::make_shared<vl1::hueloom_theme_v1>();
    const auto path = bundle_path() / "Contents" / "Resources" / "theme_00000001.hlt";
    if (!vl1::hueloom_theme_file_serializer_v1::read_theme_from_file(*theme, path.string()))
        throw std::runtime_error("cannot read the built-in theme " + path.string());
    return theme;
}

vl1::lut_argb<32> table_for(const vl1::hueloom_theme_v1& theme, const look& values)
{
    vl1::lut_argb<32> table;
    if (values.bypass)
        return table;
    if (theme.is_self_consistent()) {
        theme.apply_theme_luts(table, 360.0f - values.angle, static_cast<float>(values.strength / 100.0));
        theme.apply_theme_modifiers(table, static_cast<float>(values.hue / 100.0),
                                    static_cast<float>(values.chroma / 100.0),
                                    static_cast<float>(values.luminance / 100.0));
        theme.apply_post_processing(table);
    }
    return table;
}

std::shared_ptr<ofxhost::image> graded(const ofxhost::image& source, const vl1::lut_argb<32>& table)
{
    auto out = std::make_shared<ofxhost::image>(source.depth(), source.bounds());
    const auto to_unit = [](double v) {
        const float f = static_cast<float>(v);
        return std::isnan(f) ? 0.0f : std::clamp(f, 0.0f, 1.0f);
    };
    for (int y = source.bounds().y1; y < source.bounds().y2; ++y) {
        for (int x = source.bounds().x1; x < source.bounds().x2; ++x) {
            const auto p = source.pixel(x, y);
            const vl1::argb_float in{to_unit(p[3]), to_unit(p[0]), to_unit(p[1]), to_unit(p[2])};
            const vl1::argb_float o = vl1::sample_lut(table, in);
            out->set_pixel(x, y, {o.r, o.g, o.b, o.a});
        }
    }
    return out;
}

double max_difference(const ofxhost::image& a, const ofxhost::image& b)
{
    double worst = 0.0;
    for (int y = a.bounds().y1; y < a.bounds().y2; ++y)
        for (int x = a.bounds().x1; x < a.bounds().x2; ++x)
            for (int c = 0; c < 4; ++c) {
                const double d = std::abs(a.channel(x, y, c) - b.channel(x, y, c));
                worst = std::isnan(d) ? INFINITY : std::max(worst, d);
            }
    return worst;
}

}  // namespace bundle_test

#include "themes/hueloom_theme_state_serializer_v1.h"

#include <sodium.h>

namespace bundle_test {

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
        theme->luts.push_back({lut, 90.0f * i});
    }
    return theme;
}

std::vector<uint8_t> state_blob_with(const vl1::hueloom_theme_v1& theme, std::size_t extra)
{
    // Base part: "s1vc" and a record count of 0, so the host's parameter values stand; it
    // is padded to the size it has with the effect's six parameters.
    constexpr std::size_t flag_at = 8 + 48 * 6;
    std::vector<uint8_t> blob(flag_at + 1, 0);
    std::memcpy(blob.data(), "s1vc", 4);
    blob[flag_at] = 1;
    if (!vl1::hueloom_theme_state_serializer_v1::write_theme_to_vector(theme, blob, flag_at + 1))
        throw std::runtime_error("cannot write the theme record");
    blob.resize(blob.size() + extra, 0);
    return blob;
}

std::string state_text(const std::vector<uint8_t>& blob)
{
    std::string text(sodium_base64_encoded_len(blob.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
    sodium_bin2base64(text.data(), text.size(), blob.data(), blob.size(), sodium_base64_VARIANT_ORIGINAL);
    text.resize(std::strlen(text.c_str()));
    return text;
}

}  // namespace bundle_test
