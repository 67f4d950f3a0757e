// A second, optional face of a component: its per-pixel operation for a whole run of pixels
// at once, so that the render path pays one call per row instead of one per pixel. Found
// through query_interface("irow_processor_v1"); a component without it is rendered pixel by
// pixel, with the same result.
#pragma once

#include <cstdint>

#include "framework/iobject.h"
#include "framework/uid.h"

namespace vl1 {

class irow_processor_v1 : public iobject {
public:
    static constexpr uid ifc_id{"irow_processor_v1"};

    /// `count` packed pixels, channels r, g, b, a of `in_depth` bits (8, 16 or 32) at `in`,
    /// written to `out` at `out_depth`; pixel i stands at (x + i, y). The result must be,
    /// bit for bit, what the render path's pixel loop gives: reading 8-bit as value / 255,
    /// 16-bit as value / 32767 (each at most 1.0), float clamped to 0..1 with NaN as 0; then
    /// process_pixel; writing 8 and 16 bits as value * 255 or * 32767 rounded half away from
    /// zero and saturated (NaN as 0), float as it is. `in` and `out` may be the same row.
    /// Called from many threads at once: must neither allocate nor lock. Returns false,
    /// having written nothing, for a depth it doesn't handle.
    virtual bool process_row(int x, int y, int in_depth, const uint8_t* in, int out_depth, uint8_t* out,
                             int count) = 0;
};

}  // namespace vl1
