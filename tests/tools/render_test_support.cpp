
#include "tests/tools/render_test_support.h"

#include "color/lut_sampling.h"
#include "tests/support/test_paths.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace render_test {

namespace {

namespace fs = std::filesystem;

float pattern_value(int x, int y, int c, bool hdr)
{
    const float v = static_cast<float>((x * 7 + y * 13 + c * 29) % 97) / 96.0f;
    return hdr ? v * 1.6f - 0.3f : v;
}

// Half a step of the stored depth, at the value `v`; a value exactly between two steps may
// round either way, so a hair more than half a step passes.
float tolerance(const OIIO::TypeDesc& format, float v)
{
    if (format == OIIO::TypeDesc::UINT8) return 0.5001f / 255.0f;
    if (format == OIIO::TypeDesc::UINT16) return 0.5001f / 65535.0f;
    if (format == OIIO::TypeDesc::HALF) return std::max(std::fabs(v), 1.0f / 1024.0f) / 2048.0f;
    return std::max(std::fabs(v), 1e-6f) * 1e-6f;
}

// RGBA of a pixel of `p`: grey for one channel, grey and alpha for two, alpha 1 for three.
std::array<float, 4> rgba_at(const pixels& p, int x, int y)
{
    const float* v = p.at(x, y);
    switch (p.channels) {
    case 1: return {v[0], v[0], v[0], 1.0f};
    case 2: return {v[0], v[0], v[0], v[1]};
    case 3: return {v[0], v[1], v[2], 1.0f};
    default: return {v[0], v[1], v[2], v[3]};
    }
}

}  // namespace

run_result run_render(const std::vector<std::string>& args)
{
    return hueloom_test::run_process(HUELOOM_RENDER_TOOL, args, hueloom_test::home_dir());
}

run_result run_chart(const std::vector<std::string>& args)
{
    return hueloom_test::run_process(HUELOOM_CHART_TOOL, args, hueloom_test::home_dir());
}

fs::path fixture_dir() { return HOST_FIXTURE_DIR; }

std::vector<std::string> fixture_plugin_args()
{
    return {"--plugin-path", (fixture_dir() / "HostFixture.ofx.bundle").string(), "--plugin-id",
            "org.hueloom.test.fixture"};
}

std::vector<std::string> hueloom_plugin_args()
{
    return {"--plugin-path", (hueloom_test::plugin_dir() / "Hueloom.ofx.bundle").string()};
}

void write_pattern(const fs::path& path, int width, int height, int channels, OIIO::TypeDesc format, bool hdr,
                   const std::vector<std::pair<std::string, std::string>>& attributes)
{
    OIIO::ImageSpec header(width, height, channels, format);
    for (const auto& [name, value] : attributes) {
        const bool whole = !value.empty() && value.find_first_not_of("0123456789") == std::string::npos;
        if (whole) header.attribute(name, std::stoi(value));
        else header.attribute(name, value);
    }
    const bool has_alpha = channels == 2 || channels == 4;
    if (has_alpha) header.attribute("oiio:UnassociatedAlpha", 1);
    std::vector<float> data(static_cast<std::size_t>(width) * height * channels);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < channels; ++c) {
                float v = pattern_value(x, y, c, hdr);
                if (has_alpha && c == channels - 1) v = (x + y) % 5 == 0 ? 0.0f : (x + y) % 5 == 1 ? 1.0f : v;
                data[(static_cast<std::size_t>(y) * width + x) * channels + c] = v;
            }
        }
    }
    auto out = OIIO::ImageOutput::create(path.string());
    if (!out || !out->open(path.string(), header) || !out->write_image(OIIO::TypeDesc::FLOAT, data.data()) ||
        !out->close()) {
        throw std::runtime_error("cannot write test image " + path.string());
    }
}

pixels read_pixels(const fs::path& path)
{
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);
    auto in = OIIO::ImageInput::open(path.string(), &config);
    if (!in) throw std::runtime_error("cannot open " + path.string() + ": " + OIIO::geterror());
    pixels p;
    p.header = in->spec();
    p.width = p.header.width;
    p.height = p.header.height;
    p.channels = p.header.nchannels;
    p.format = p.header.format;
    p.values.resize(static_cast<std::size_t>(p.width) * p.height * p.channels);
    if (!in->read_image(0, 0, 0, p.channels, OIIO::TypeDesc::FLOAT, p.values.data())) {
        throw std::runtime_error("cannot read " + path.string() + ": " + in->geterror());
    }
    return p;
}

pixel_rule identity_look()
{
    return [](std::array<float, 4> in) {
        for (float& v : in) v = std::isnan(v) ? 0.0f : std::clamp(v, 0.0f, 1.0f);
        return in;
    };
}

pixel_rule table_look(std::shared_ptr<const vl1::lut_argb<32>> table)
{
    const pixel_rule clamp = identity_look();
    return [table, clamp](std::array<float, 4> in) {
        const auto c = clamp(in);
        const vl1::argb_float out = vl1::sample_lut(*table, vl1::argb_float{c[3], c[0], c[1], c[2]});
        return std::array<float, 4>{out.r, out.g, out.b, in[3]};
    };
}

const look_case& neutral_look()
{
    static const look_case look{{"--set", "Global Bypass=on"}, [](std::array<float, 4> in) { return in; }};
    return look;
}

pixel_rule inverted_look()
{
    return [](std::array<float, 4> in) { return std::array<float, 4>{1 - in[0], 1 - in[1], 1 - in[2], in[3]}; };
}

::testing::AssertionResult matches_rule(const pixels& source, const pixels& result, const pixel_rule& rule)
{
    if (source.width != result.width || source.height != result.height) {
        return ::testing::AssertionFailure() << "size " << result.width << "x" << result.height << " instead of "
                                             << source.width << "x" << source.height;
    }
    const int compared = std::min(result.channels, 4);
    for (int y = 0; y < source.height; ++y) {
        for (int x = 0; x < source.width; ++x) {
            const auto want = rule(rgba_at(source, x, y));
            const auto got = rgba_at(result, x, y);
            for (int c = 0; c < compared; ++c) {
                if (std::fabs(got[c] - want[c]) > tolerance(result.format, want[c])) {
                    return ::testing::AssertionFailure() << "pixel (" << x << ", " << y << ") channel " << c << ": "
                                                         << got[c] << " instead of " << want[c];
                }
            }
        }
    }
    return ::testing::AssertionSuccess();
}

std::vector<std::string> joined(std::vector<std::string> a, const std::vector<std::string>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

int line_count(const std::string& text)
{
    const auto n = std::count(text.begin(), text.end(), '\n');
    return static_cast<int>(n) + (!text.empty() && text.back() != '\n' ? 1 : 0);
}

}  // namespace render_test
