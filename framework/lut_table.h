// A three-dimensional colour table of run-time edge as a plain record, so that interfaces
// below the colour engine (the exporter a preset asks for its table) can name it. The colour
// engine adds the arithmetic and the fixed-edge form.
//
// Memory order: red is the slowest axis and blue the fastest, so grid point (r, g, b) of a
// table of edge n stands at index (r * n + g) * n + b.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "framework/argb_float.h"

namespace vl1 {

/// Entries of a table of edge `n`.
constexpr std::size_t lut_entry_count(std::size_t n) { return n * n * n; }

/// A table of run-time edge, the form in which LUT files are read and written and in which
/// a table is handed out for export.
struct lut_argb_variable {
    /// Grid points per axis.
    uint64_t edge = 17;
    /// edge³ entries; red slowest, blue fastest.
    std::vector<argb_float> data = std::vector<argb_float>(lut_entry_count(17), argb_float{0, 0, 0, 0});
    /// Free text that travels with the table; no operation fills or reads it.
    std::string text;
};

}  // namespace vl1
