// The reference to beat: OpenColorIO's CPU processor applying our table as a trilinear
// Lut3DTransform. Kept behind this header so that only one file sees OpenColorIO.
#pragma once

#include <memory>

#include "bench/bench_frame.h"
#include "color/lut_argb.h"

namespace vl1::bench {

/// A CPU processor for `table` (RGB only; OpenColorIO passes alpha through), float in and out.
class ocio_lut_processor {
public:
    explicit ocio_lut_processor(const lut_argb<32>& table);
    ~ocio_lut_processor();
    ocio_lut_processor(const ocio_lut_processor&) = delete;
    ocio_lut_processor& operator=(const ocio_lut_processor&) = delete;

    /// Rows first_row .. first_row + rows - 1 of `source` into the same rows of `result`, on
    /// the calling thread.
    void apply(const rgba_float_frame& source, rgba_float_frame& result, int first_row, int rows) const;

private:
    struct impl;
    std::unique_ptr<impl> p;
};

}  // namespace vl1::bench
