#include "ofx/ofx_preview_images.h"

#include <tbb/parallel_for.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "framework/io/pixel_codec.h"

namespace vl1 {
namespace {

/// Source rows (bottom-up in OFX) and columns that target pixel `t` of a `scale`-fold
/// reduction covers, stopping at `limit`.
struct span {
    uint64_t begin, end;
};
span covered(uint64_t t, float scale, uint64_t limit)
{
    const auto begin = static_cast<uint64_t>(scale * static_cast<float>(t));
    const auto end = static_cast<uint64_t>(scale * static_cast<float>(t + 1));
    return {std::min(begin, limit), std::min(end, limit)};
}

float reduction(uint64_t from, uint64_t to)
{
    const float q = static_cast<float>(from) / static_cast<float>(to);
    return std::isnan(q) || q < 1.0f ? 1.0f : q;
}

float mean_in_unit(float sum, float count)
{
    const float v = sum / count;  // NaN when no pixel was read
    return std::isnan(v) ? 0.0f : std::clamp(v, 0.0f, 1.0f);
}

/// A row that needs no reduction: each pixel read and clamped as a mean of one would be.
void copy_row(const ofx_image_view& frame, rgba_depth depth, image& target, uint64_t ty)
{
    const int ofx_y = frame.bounds.y2 - 1 - static_cast<int>(ty);
    const uint8_t* in = frame.pixel(frame.bounds.x1, ofx_y);
    const int step = frame.bytes_per_pixel();
    auto* out = reinterpret_cast<float*>(target.row(ty));
    for (uint64_t x = 0; x < target.width; ++x, in += step) {
        const argb_float p = read_rgba_pixel(depth, in);
        out[4 * x + 0] = mean_in_unit(p.r, 1.0f);
        out[4 * x + 1] = mean_in_unit(p.g, 1.0f);
        out[4 * x + 2] = mean_in_unit(p.b, 1.0f);
        out[4 * x + 3] = mean_in_unit(p.a, 1.0f);
    }
}

void scale_row(const ofx_image_view& frame, rgba_depth depth, image& target, uint64_t ty, float sx, float sy)
{
    if (sx == 1.0f && sy == 1.0f && target.width == static_cast<uint64_t>(frame.bounds.x2 - frame.bounds.x1)) {
        copy_row(frame, depth, target, ty);
        return;
    }
    const auto width = static_cast<uint64_t>(frame.bounds.x2 - frame.bounds.x1);
    const auto height = static_cast<uint64_t>(frame.bounds.y2 - frame.bounds.y1);
    const span rows = covered(ty, sy, height);
    auto* out = reinterpret_cast<float*>(target.row(ty));
    for (uint64_t tx = 0; tx < target.width; ++tx) {
        const span cols = covered(tx, sx, width);
        float r = 0, g = 0, b = 0, a = 0;
        for (uint64_t y = rows.begin; y < rows.end; ++y) {
            // The picture's top row is the OFX image's last.
            const int ofx_y = frame.bounds.y2 - 1 - static_cast<int>(y);
            for (uint64_t x = cols.begin; x < cols.end; ++x) {
                const argb_float p = read_rgba_pixel(depth, frame.pixel(frame.bounds.x1 + static_cast<int>(x), ofx_y));
                r += p.r;
                g += p.g;
                b += p.b;
                a += p.a;
            }
        }
        const auto n = static_cast<float>((rows.end - rows.begin) * (cols.end - cols.begin));
        out[4 * tx + 0] = mean_in_unit(r, n);
        out[4 * tx + 1] = mean_in_unit(g, n);
        out[4 * tx + 2] = mean_in_unit(b, n);
        out[4 * tx + 3] = mean_in_unit(a, n);
    }
}

}  // namespace

preview_size scaled_size(uint64_t width, uint64_t height, int limit)
{
    if (width == 0 || height == 0 || limit < 1)
        return {};
    const float aspect = static_cast<float>(width) / static_cast<float>(height);
    const auto cap = static_cast<uint64_t>(limit);
    if (width > height) {
        const uint64_t w = std::min(width, cap);
        return {w, std::max<uint64_t>(1, static_cast<uint64_t>(static_cast<float>(w) / aspect))};
    }
    const uint64_t h = std::min(height, cap);
    return {std::max<uint64_t>(1, static_cast<uint64_t>(aspect * static_cast<float>(h))), h};
}

preview_images build_images(const ofx_image_view& frame, int limit)
{
    const std::optional<rgba_depth> depth = rgba_depth_from_bits(frame.depth);
    if (frame.data == nullptr || !depth || frame.bounds.x2 <= frame.bounds.x1 || frame.bounds.y2 <= frame.bounds.y1)
        return {};
    const auto width = static_cast<uint64_t>(frame.bounds.x2 - frame.bounds.x1);
    const auto height = static_cast<uint64_t>(frame.bounds.y2 - frame.bounds.y1);
    const preview_size size = scaled_size(width, height, limit);
    auto source = std::make_shared<image>(size.width, size.height, pixel_format::rgba_f32, false);
    const float sx = reduction(width, size.width);
    const float sy = reduction(height, size.height);
    tbb::parallel_for(uint64_t{0}, size.height, [&](uint64_t ty) { scale_row(frame, *depth, *source, ty, sx, sy); });

    preview_images images;
    images.result = std::make_shared<image>();
    images.result->copy_from(*source);
    images.display = std::make_shared<image>();
    images.display->copy_from(*source);
    images.source = std::move(source);
    return images;
}

int proxy_long_side(uint64_t width, uint64_t height, int64_t full_pass_ms)
{
    const double d = static_cast<double>(full_pass_ms) / preview_pass_budget_ms;
    if (d <= 1.0)
        return 0;
    const auto fits = static_cast<int64_t>(std::max(static_cast<double>(width) / d, static_cast<double>(height) / d));
    auto side = static_cast<int64_t>(std::max(width, height));
    while (side > fits && side > 1)
        side /= 2;
    if (side < fits)
        side *= 2;
    return static_cast<int>(std::max<int64_t>(side, 1));
}

}  // namespace vl1
