#include "color/lut_row_kernels.h"

#include <cmath>
#include <cstring>
#include <stdexcept>

#include "color/lut_row_sse2.h"
#include "color/lut_sample_kernel.h"

namespace vl1 {

namespace {

float from_u8(uint8_t v)
{
    const float x = static_cast<float>(v) / 255.0f;
    return x < 1.0f ? x : 1.0f;
}

float from_u16(uint16_t v)
{
    const float x = static_cast<float>(v) / 32767.0f;
    return x < 1.0f ? x : 1.0f;
}

float from_f32(float v)
{
    if (std::isnan(v))
        return 0.0f;
    return v < 0.0f ? 0.0f : (v > 1.0f ? 1.0f : v);
}

// round(value * scale) half away from zero, saturated to 0..limit; NaN gives 0. The
// product is exact in double, so the rounding sees the true value.
double to_integer(float value, double scale, double limit)
{
    const double v = std::round(static_cast<double>(value) * scale);
    return v > 0.0 ? (v < limit ? v : limit) : 0.0;
}

void apply_row_scalar(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                      std::byte* out, std::size_t count)
{
    const std::size_t in_step = rgba_pixel_bytes(in_depth);
    const std::size_t out_step = rgba_pixel_bytes(out_depth);
    for (std::size_t i = 0; i < count; ++i, in += in_step, out += out_step)
        write_rgba_pixel(out_depth, out, detail::sample_lut_32(table, read_rgba_pixel(in_depth, in)));
}

}  // namespace

argb_float read_rgba_pixel(rgba_depth depth, const void* pixel)
{
    switch (depth) {
    case rgba_depth::u8: {
        uint8_t c[4];
        std::memcpy(c, pixel, sizeof c);
        return {from_u8(c[3]), from_u8(c[0]), from_u8(c[1]), from_u8(c[2])};
    }
    case rgba_depth::u16: {
        uint16_t c[4];
        std::memcpy(c, pixel, sizeof c);
        return {from_u16(c[3]), from_u16(c[0]), from_u16(c[1]), from_u16(c[2])};
    }
    case rgba_depth::f32:
        break;
    }
    float c[4];
    std::memcpy(c, pixel, sizeof c);
    return {from_f32(c[3]), from_f32(c[0]), from_f32(c[1]), from_f32(c[2])};
}

void write_rgba_pixel(rgba_depth depth, void* pixel, const argb_float& value)
{
    const float rgba[4] = {value.r, value.g, value.b, value.a};
    switch (depth) {
    case rgba_depth::u8: {
        uint8_t c[4];
        for (int i = 0; i < 4; ++i)
            c[i] = static_cast<uint8_t>(to_integer(rgba[i], 255.0, 255.0));
        std::memcpy(pixel, c, sizeof c);
        return;
    }
    case rgba_depth::u16: {
        uint16_t c[4];
        for (int i = 0; i < 4; ++i)
            c[i] = static_cast<uint16_t>(to_integer(rgba[i], 32767.0, 65535.0));
        std::memcpy(pixel, c, sizeof c);
        return;
    }
    case rgba_depth::f32:
        std::memcpy(pixel, rgba, sizeof rgba);
        return;
    }
}

row_kernel_path best_row_kernel_path()
{
    return detail::sse2_row_kernel_available ? row_kernel_path::sse2 : row_kernel_path::scalar;
}

void apply_lut_row(const lut_argb<32>& lut, rgba_depth in_depth, const void* in, rgba_depth out_depth, void* out,
                   std::size_t count, row_kernel_path path)
{
    if (lut.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");
    const auto* src = static_cast<const std::byte*>(in);
    auto* dst = static_cast<std::byte*>(out);
    if (path == row_kernel_path::sse2 && detail::sse2_row_kernel_available)
        detail::apply_row_sse2(lut.data.data(), in_depth, src, out_depth, dst, count);
    else
        apply_row_scalar(lut.data.data(), in_depth, src, out_depth, dst, count);
}

bool apply_lut_row_bits(const lut_argb<32>& lut, int in_bits, const void* in, int out_bits, void* out, int count)
{
    const std::optional<rgba_depth> from = rgba_depth_from_bits(in_bits);
    const std::optional<rgba_depth> to = rgba_depth_from_bits(out_bits);
    if (!from || !to || count < 0)
        return false;
    apply_lut_row(lut, *from, in, *to, out, static_cast<std::size_t>(count));
    return true;
}

}  // namespace vl1
