#include "bench/bench_frame.h"

#include <cmath>
#include <cstdint>

namespace vl1::bench {

namespace {

// A small deterministic generator for the grain; the figures must not depend on a seed.
class grain_source {
public:
    float next()  // uniform in -0.5..0.5
    {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return static_cast<float>(state >> 40) / static_cast<float>(1u << 24) - 0.5f;
    }

private:
    uint64_t state = 0x9e3779b97f4a7c15ull;
};

}  // namespace

rgba_float_frame make_source_frame(int width, int height)
{
    rgba_float_frame frame{width, height, std::vector<float>(static_cast<std::size_t>(width) * height * 4)};
    grain_source grain;
    float* p = frame.pixels.data();
    for (int y = 0; y < height; ++y) {
        const double v = static_cast<double>(y) / height;
        for (int x = 0; x < width; ++x, p += 4) {
            const double u = static_cast<double>(x) / width;
            const double field = 0.5 + 0.5 * std::sin(5.3 * u + 3.1 * v);
            const double sky = 0.5 + 0.5 * std::cos(2.2 * u - 4.7 * v);
            // About one pixel in 500 lies outside 0..1, as highlights and crushed blacks do.
            const double over = field > 0.998 ? 0.3 : (field < 0.002 ? -0.1 : 0.0);
            p[0] = static_cast<float>(0.15 + 0.7 * field + over) + 0.03f * grain.next();
            p[1] = static_cast<float>(0.1 + 0.6 * sky * field + 0.2 * v) + 0.03f * grain.next();
            p[2] = static_cast<float>(0.2 + 0.7 * sky * (1.0 - 0.5 * u)) + 0.03f * grain.next();
            p[3] = static_cast<float>(0.75 + 0.25 * sky);
        }
    }
    return frame;
}

rgba_float_frame make_blank_frame(const rgba_float_frame& like)
{
    return {like.width, like.height, std::vector<float>(like.pixels.size(), 0.0f)};
}

ofx_image_view float_image_view(rgba_float_frame& frame)
{
    ofx_image_view view;
    view.depth = 32;
    view.bounds = OfxRectI{0, 0, frame.width, frame.height};
    view.data = reinterpret_cast<uint8_t*>(frame.pixels.data());
    view.row_bytes = static_cast<std::ptrdiff_t>(frame.width) * 16;
    return view;
}

}  // namespace vl1::bench
