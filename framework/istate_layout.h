// A third, optional face of a component: where its state blob holds grids of 32-bit floats
// (look-up tables, say), so that whoever stores the blob can compress those with a coder
// that predicts each float from its neighbours. Found through
// query_interface("istate_layout_v1"); without it the blob is stored as plain bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "framework/iobject.h"
#include "framework/uid.h"

namespace vl1 {

/// nx * ny * nz cells of `channels` little-endian 32-bit floats each, channels interleaved,
/// x fastest, then y, then z; the first byte at `offset` in the blob.
struct state_float_grid {
    std::size_t offset = 0;
    uint16_t nx = 0, ny = 0, nz = 0;
    uint16_t channels = 1;

    std::size_t bytes() const { return std::size_t(nx) * ny * nz * channels * 4; }
};

class istate_layout_v1 : public iobject {
public:
    static constexpr uid ifc_id{"istate_layout_v1"};

    /// The grids in `state`, a blob as get_state gives it, in ascending order of offset and
    /// not overlapping.
    virtual std::vector<state_float_grid> float_grids(const std::vector<uint8_t>& state) = 0;
};

}  // namespace vl1
