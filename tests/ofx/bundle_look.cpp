#include "tests/ofx/bundle_look.h"

#include "color/lut_sampling.h"
#include "tests/ofx/bundle_test_support.h"
#include "themes/hueloom_theme_state_serializer_v1.h"

#include <sodium.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace bundle_test {

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
