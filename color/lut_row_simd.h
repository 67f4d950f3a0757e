// The vector row kernels behind apply_lut_row. Each keeps the scalar sampling step's
// operations, in its order and on its operands, in the lanes of one pixel; only the number
// of pixels per register differs. Callers check the table's size and the CPU beforehand.
#pragma once

#include <cstddef>

#include "color/lut_argb.h"
#include "framework/io/pixel_codec.h"

namespace vl1::detail {

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
