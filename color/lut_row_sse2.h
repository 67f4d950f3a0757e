// The SSE2 row kernel: one pixel per register, the four channels in the lanes, every step
// the same operation in the same order as the scalar path, so the bits agree.
#pragma once

#include <cstddef>

#include "color/lut_row_kernels.h"

namespace vl1::detail {

#if defined(__SSE2__)
inline constexpr bool sse2_row_kernel_available = true;
#else
inline constexpr bool sse2_row_kernel_available = false;
#endif

/// As apply_lut_row; `table` holds 32768 entries. Only called where SSE2 is available.
void apply_row_sse2(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                    std::byte* out, std::size_t count);

}  // namespace vl1::detail
