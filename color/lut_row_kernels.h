// Rows of RGBA pixels through a table of edge 32: the render path's inner loop, free of any
// host or toolkit type. Pixels are read and written by the pixel codec
// (framework/io/pixel_codec.h) and sampled exactly as sample_lut samples, so the result keeps
// the pixel's alpha.
//
// Four kernels do this: a scalar one, and SSE2, AVX2 and AVX-512F ones with one, two and
// four pixels per register. Every kernel gives the same bits as the per-pixel functions.
// Which one runs is chosen once, when the library is loaded, by what the CPU supports; the
// environment variable HUELOOM_ROW_KERNEL (scalar, sse2, avx2, avx512) forces one the CPU
// has, for tests and measurements.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "color/lut_argb.h"
#include "framework/io/pixel_codec.h"

namespace vl1 {

enum class row_kernel_path {
    scalar,  // one channel at a time; always available
    sse2,    // one pixel per register
    avx2,    // two pixels per register
    avx512,  // four pixels per register (AVX-512F)
};

inline constexpr row_kernel_path all_row_kernel_paths[] = {row_kernel_path::scalar, row_kernel_path::sse2,
                                                           row_kernel_path::avx2, row_kernel_path::avx512};

/// "scalar", "sse2", "avx2" or "avx512".
std::string_view row_kernel_name(row_kernel_path path);

/// The kernel called `name`; empty for any other text.
std::optional<row_kernel_path> row_kernel_from_name(std::string_view name);

/// Whether this build and this CPU (and its operating system) can run `path`.
bool row_kernel_available(row_kernel_path path);

/// The kernel chosen at load time: the one HUELOOM_ROW_KERNEL names if it is available,
/// else the widest available.
row_kernel_path chosen_row_kernel_path();

/// Reads `count` pixels at `in`, samples each through `lut` and writes them to `out`.
/// `in` and `out` may be the same row when the depths are equal. Allocation-free; throws
/// std::out_of_range("vector") before touching a pixel if `lut` lost its 32768 entries. A
/// `path` this CPU can't run falls back to the chosen one.
void apply_lut_row(const lut_argb<32>& lut, rgba_depth in_depth, const void* in, rgba_depth out_depth, void* out,
                   std::size_t count, row_kernel_path path = chosen_row_kernel_path());

/// apply_lut_row with the depths in bits per channel (8, 16 or 32), the form in which a
/// component's row-wise face (framework/irow_processor.h) receives them. False, touching
/// nothing, for any other depth or a negative count.
bool apply_lut_row_bits(const lut_argb<32>& lut, int in_bits, const void* in, int out_bits, void* out, int count);

}  // namespace vl1
