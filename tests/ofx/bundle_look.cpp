#include "tests/ofx/bundle_look.h"

#include "color/lut_sampling.h"
#include "framework/io/state_text.h"
#include "tests/ofx/bundle_test_support.h"
#include "themes/hueloom_theme_state_serializer_v1.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace bundle_test {

namespace {

double scale_of(vl1::ofxhost::pixel_depth depth)
{
    return depth == vl1::ofxhost::pixel_depth::byte ? 255.0 : depth == vl1::ofxhost::pixel_depth::short_int ? 32767.0 : 1.0;
}

}  // namespace

std::shared_ptr<vl1::ofxhost::image> graded(const vl1::ofxhost::image& source, const vl1::lut_argb<32>& table)
{
    return graded(source, table, source.depth());
}

std::shared_ptr<vl1::ofxhost::image> graded(const vl1::ofxhost::image& source, const vl1::lut_argb<32>& table,
                                       vl1::ofxhost::pixel_depth output_depth)
{
    auto out = std::make_shared<vl1::ofxhost::image>(output_depth, source.bounds());
    const bool integer_in = source.depth() != vl1::ofxhost::pixel_depth::real;
    const double in_scale = scale_of(source.depth()), out_scale = scale_of(output_depth);
    const auto to_unit = [&](double v) {
        const float f = integer_in ? std::min(static_cast<float>(v / in_scale), 1.0f) : static_cast<float>(v);
        return std::isnan(f) ? 0.0f : std::clamp(f, 0.0f, 1.0f);
    };
    const auto stored = [&](float v) {
        if (output_depth == vl1::ofxhost::pixel_depth::real)
            return double(v);
        const double most = output_depth == vl1::ofxhost::pixel_depth::byte ? 255.0 : 65535.0;
        return std::isnan(v) ? 0.0 : std::clamp(std::round(double(v) * out_scale), 0.0, most);
    };
    for (int y = source.bounds().y1; y < source.bounds().y2; ++y) {
        for (int x = source.bounds().x1; x < source.bounds().x2; ++x) {
            const auto p = source.pixel(x, y);
            const vl1::argb_float in{to_unit(p[3]), to_unit(p[0]), to_unit(p[1]), to_unit(p[2])};
            const vl1::argb_float o = vl1::sample_lut(table, in);
            out->set_pixel(x, y, {stored(o.r), stored(o.g), stored(o.b), stored(o.a)});
        }
    }
    return out;
}

double max_difference(const vl1::ofxhost::image& a, const vl1::ofxhost::image& b)
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
    return vl1::plain_state_text(blob);
}

}  // namespace bundle_test
