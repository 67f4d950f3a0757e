// The refinement pass of hueloom_theme_v1::apply_theme_modifiers with the instruction set
// named, so that tests and measurements can hold every width to the per-entry rule.
#pragma once

#include "color/lut_argb.h"
#include "color/lut_row_kernels.h"

namespace vl1 {

/// apply_theme_modifiers' pass over `lut`, 1 (scalar), 4 (sse2), 8 (avx2) or 16 (avx512)
/// entries at a time; a `path` this CPU can't run falls back to the chosen one. Every path
/// gives the same bits. Throws std::out_of_range("vector") if `lut` lost its 32768 entries.
void refine_theme_entries(lut_argb<32>& lut, float hue, float chroma, float luminance, row_kernel_path path);

}  // namespace vl1
