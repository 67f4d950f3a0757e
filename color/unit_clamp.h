#pragma once

#include <algorithm>

namespace vl1 {

/// min(1, max(0, v)), the clamp of blended and refined channels. A NaN ends at 0.0, so a
/// broken weight can't leave NaN in a table.
inline float clamp_unit(float v)
{
    return std::min(1.0f, std::max(0.0f, v));
}

}  // namespace vl1
