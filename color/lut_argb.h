// The three-dimensional colour tables that all colour work runs on.
//
// Memory order of every table here: red is the slowest axis and blue the fastest, so grid
// point (r, g, b) of a table of edge n stands at index (r * n + g) * n + b.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "color/argb_float_ops.h"
#include "framework/lut_table.h"

namespace vl1 {

/// Index of grid point (r, g, b) in a table of edge `n` (red slowest, blue fastest).
constexpr std::size_t lut_index(std::size_t n, std::size_t r, std::size_t g, std::size_t b)
{
    return (r * n + g) * n + b;
}

template <std::size_t N>
struct lut_argb;

/// Overwrites every entry of `lut` with the identity of the 16-bit-scale fill (see
/// lut_argb.cpp), without allocating. `lut.data` must already hold 32768 entries.
void fill_identity(lut_argb<32>& lut);

/// A table of fixed edge N. Only N = 32 is used: themes and the render result are kept so.
/// Copies by value (512 KiB for N = 32).
template <std::size_t N>
struct lut_argb {
    static constexpr std::size_t edge = N;
    static constexpr std::size_t entry_count = lut_entry_count(N);

    /// Exactly entry_count entries; red slowest, blue fastest.
    std::vector<argb_float> data;

    /// The identity table.
    lut_argb() : data(entry_count) { fill_identity(*this); }
};

/// The 17-point identity: alpha 1.0 and r, g, b = min(i * 0.0625, 1.0) for grid index i.
lut_argb_variable make_identity_17();

}  // namespace vl1
