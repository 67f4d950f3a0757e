// The vector row kernels behind apply_lut_row. Each keeps the scalar sampling step's
// operations, in its order and on its operands, in the lanes of one pixel; only the number
// of pixels per register differs. Callers check the table's size and the CPU beforehand.
#pragma once

#include <cstddef>

#include "color/lut_argb.h"
#include "framework/io/pixel_codec.h"

namespace vl1::detail {

/// Turns the run-time depths of a row into the compile-time pair a kernel is built for:
/// calls `row.template operator()<In, Out>()`.
template <typename Row>
void with_depths(rgba_depth in_depth, rgba_depth out_depth, Row&& row)
{
    const auto with_out = [&]<rgba_depth In>() {
        switch (out_depth) {
        case rgba_depth::u8: return row.template operator()<In, rgba_depth::u8>();
        case rgba_depth::u16: return row.template operator()<In, rgba_depth::u16>();
        case rgba_depth::f32: return row.template operator()<In, rgba_depth::f32>();
        }
    };
    switch (in_depth) {
    case rgba_depth::u8: return with_out.template operator()<rgba_depth::u8>();
    case rgba_depth::u16: return with_out.template operator()<rgba_depth::u16>();
    case rgba_depth::f32: return with_out.template operator()<rgba_depth::f32>();
    }
}

/// One pixel per SSE2 register; any x86-64 CPU.
void apply_row_sse2(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                    std::byte* out, std::size_t count);

/// Two pixels per AVX2 register; the last few pixels of a row go through apply_row_sse2.
void apply_row_avx2(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                    std::byte* out, std::size_t count);

/// Four pixels per AVX-512F register; the last few pixels likewise.
void apply_row_avx512(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                      std::byte* out, std::size_t count);

}  // namespace vl1::detail
