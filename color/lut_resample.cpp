#include "color/lut_resample.h"

#include <algorithm>
#include <stdexcept>

#include "color/lut_sample_kernel.h"

namespace vl1 {

namespace {

// Where target index i falls on the source axis.
struct source_position {
    std::size_t i0;
    float f;
};

// The two uses differ in how the step and its inverse are written in single precision;
// both forms are kept as they stand, since they decide the last bits of f:
//   to 32: k = (e - 1) / 31.0,    f = i / (31.0 / (e - 1)) - i0
//   to 17: k = (e - 1) * 0.0625,  f = i / (16.0 / (e - 1)) - i0
// i0 is the truncated k * i, at most e - 2 so that i0 + 1 stays on the grid.
std::vector<source_position> axis_positions(std::size_t source_edge, std::size_t target_edge)
{
    const float e1 = static_cast<float>(source_edge - 1);
    const float k = target_edge == 32 ? e1 / 31.0f : e1 * 0.0625f;
    const float inverse = target_edge == 32 ? 31.0f / e1 : 16.0f / e1;
    std::vector<source_position> positions(target_edge);
    for (std::size_t i = 0; i < target_edge; ++i) {
        const float fi = static_cast<float>(i);
        const std::size_t i0 = std::min(source_edge - 2, static_cast<std::size_t>(k * fi));
        positions[i] = {i0, fi / inverse - static_cast<float>(i0)};
    }
    return positions;
}

void check_source(const lut_argb_variable& source)
{
    if (source.edge < 2)
        throw std::invalid_argument("a table of edge below 2 can't be resampled");
    if (source.edge > 0xFFFFF || source.data.size() != lut_entry_count(source.edge))
        throw std::out_of_range("vector");
}

// Trilinear resampling into `out` (target_edge³ entries, red slowest): along red first,
// then green, then blue, each step (high - low) * f + low.
void resample_into(const lut_argb_variable& source, std::size_t target_edge, argb_float* out)
{
    const std::size_t e = source.edge;
    const std::vector<source_position> axis = axis_positions(e, target_edge);
    const auto at = [&](std::size_t r, std::size_t g, std::size_t b) -> const argb_float& {
        return source.data[lut_index(e, r, g, b)];
    };
    for (std::size_t ri = 0; ri < target_edge; ++ri) {
        const source_position r = axis[ri];
        for (std::size_t gi = 0; gi < target_edge; ++gi) {
            const source_position g = axis[gi];
            for (std::size_t bi = 0; bi < target_edge; ++bi) {
                const source_position b = axis[bi];
                const argb_float g0b0 = detail::lut_lerp(at(r.i0, g.i0, b.i0), at(r.i0 + 1, g.i0, b.i0), r.f);
                const argb_float g0b1 = detail::lut_lerp(at(r.i0, g.i0, b.i0 + 1), at(r.i0 + 1, g.i0, b.i0 + 1), r.f);
                const argb_float g1b0 = detail::lut_lerp(at(r.i0, g.i0 + 1, b.i0), at(r.i0 + 1, g.i0 + 1, b.i0), r.f);
                const argb_float g1b1 =
                    detail::lut_lerp(at(r.i0, g.i0 + 1, b.i0 + 1), at(r.i0 + 1, g.i0 + 1, b.i0 + 1), r.f);
                const argb_float b0 = detail::lut_lerp(g0b0, g1b0, g.f);
                const argb_float b1 = detail::lut_lerp(g0b1, g1b1, g.f);
                *out++ = detail::lut_lerp(b0, b1, b.f);
            }
        }
    }
}

}  // namespace

lut_argb<32> resample_lut_to_32(const lut_argb_variable& source)
{
    check_source(source);
    lut_argb<32> result;
    if (source.edge == 32)
        std::copy(source.data.begin(), source.data.end(), result.data.begin());
    else
        resample_into(source, 32, result.data.data());
    return result;
}

lut_argb_variable resample_lut_to_17(const lut_argb_variable& source)
{
    check_source(source);
    if (source.edge == 17)
        return source;
    lut_argb_variable result;
    resample_into(source, 17, result.data.data());
    return result;
}

}  // namespace vl1
