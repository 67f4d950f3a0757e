// Tables with recognisable contents for the colour tests.
#pragma once

#include <functional>

#include "color/lut_argb.h"

namespace vl1::test {

/// A table of edge 32 whose entry at grid point (r, g, b) is make(r, g, b).
inline lut_argb<32> make_lut_32(const std::function<argb_float(float, float, float)>& make)
{
    lut_argb<32> lut;
    for (std::size_t r = 0; r < 32; ++r)
        for (std::size_t g = 0; g < 32; ++g)
            for (std::size_t b = 0; b < 32; ++b)
                lut.data[lut_index(32, r, g, b)] =
                    make(static_cast<float>(r), static_cast<float>(g), static_cast<float>(b));
    return lut;
}

/// A table of edge n (any n >= 2) whose entry at grid point (r, g, b) is make(r, g, b).
inline lut_argb_variable make_lut_variable(std::size_t n, const std::function<argb_float(float, float, float)>& make)
{
    lut_argb_variable lut;
    lut.edge = n;
    lut.data.assign(lut_entry_count(n), argb_float{});
    for (std::size_t r = 0; r < n; ++r)
        for (std::size_t g = 0; g < n; ++g)
            for (std::size_t b = 0; b < n; ++b)
                lut.data[lut_index(n, r, g, b)] =
                    make(static_cast<float>(r), static_cast<float>(g), static_cast<float>(b));
    return lut;
}

/// Every entry tells its own grid point: (index, r, g, b) in grid units.
inline argb_float grid_coordinates(float r, float g, float b)
{
    return {(r * 32.0f + g) * 32.0f + b, r, g, b};
}

}  // namespace vl1::test
