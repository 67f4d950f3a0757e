#pragma once

#include <algorithm>

#if defined(__SSE2__)
#include <xmmintrin.h>
#endif

namespace vl1 {

/// min(1, max(0, v)), the clamp of blended and refined channels. A NaN ends at 0.0, so a
/// broken weight can't leave NaN in a table.
inline float clamp_unit(float v)
{
    return std::min(1.0f, std::max(0.0f, v));
}

#if defined(__SSE2__)

namespace detail {

// std::max(x, y) is x < y ? y : x and maxps(a, b) is a > b ? a : b, so the operands swap;
// likewise for the minimum. Equal in every case, NaN and signed zeros included.
inline __m128 std_max_ps(__m128 x, __m128 y) { return _mm_max_ps(y, x); }
inline __m128 std_min_ps(__m128 x, __m128 y) { return _mm_min_ps(y, x); }

/// clamp_unit on four lanes, bit for bit.
inline __m128 clamp_unit_ps(__m128 v)
{
    return std_min_ps(_mm_set1_ps(1.0f), std_max_ps(_mm_setzero_ps(), v));
}

}  // namespace detail

#endif

}  // namespace vl1
