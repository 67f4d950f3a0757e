// rgb_to_hsl, hsl_to_rgb and the remainder by 360 for four colours at once, one channel per
// SSE2 register. Each lane runs the scalar functions' operations in their order on the same
// operands; branches become selections, taken by the same comparisons, so every lane gets
// the scalar result bit for bit, infinities and signed zeros included (a NaN result is NaN
// in both; which payload it carries is the compiler's choice of operand order).
#pragma once

#if defined(__SSE2__)

#include <emmintrin.h>

#include <cmath>

#include "color/unit_clamp.h"

namespace vl1::detail {

/// Four values of one channel.
struct hsl_lanes {
    __m128 h;
    __m128 s;
    __m128 l;
};

struct rgb_lanes {
    __m128 r;
    __m128 g;
    __m128 b;
};

/// mask ? yes : no, per lane.
inline __m128 select_ps(__m128 mask, __m128 yes, __m128 no)
{
    return _mm_or_ps(_mm_and_ps(mask, yes), _mm_andnot_ps(mask, no));
}

/// std::fmod(a, 360.0f) per lane. Below 1440 in magnitude the remainder is |a| - 360k with
/// k = 0..3, a subtraction that is exact (|a| is within a factor of two of 360k), given the
/// sign of a as fmod does; other lanes (large, infinite, NaN) go to std::fmod itself.
inline __m128 fmod_360_ps(__m128 a)
{
    const __m128 sign_bit = _mm_set1_ps(-0.0f);
    const __m128 magnitude = _mm_andnot_ps(sign_bit, a);
    const __m128 full = _mm_set1_ps(360.0f);
    const __m128 k1 = _mm_and_ps(_mm_cmpge_ps(magnitude, full), full);
    const __m128 k2 = _mm_and_ps(_mm_cmpge_ps(magnitude, _mm_set1_ps(720.0f)), full);
    const __m128 k3 = _mm_and_ps(_mm_cmpge_ps(magnitude, _mm_set1_ps(1080.0f)), full);
    const __m128 whole_turns = _mm_add_ps(_mm_add_ps(k1, k2), k3);
    const __m128 reduced = _mm_or_ps(_mm_sub_ps(magnitude, whole_turns), _mm_and_ps(sign_bit, a));

    const int outside = _mm_movemask_ps(_mm_cmpnlt_ps(magnitude, _mm_set1_ps(1440.0f)));
    if (outside == 0)
        return reduced;
    alignas(16) float lanes[4];
    alignas(16) float inputs[4];
    _mm_store_ps(lanes, reduced);
    _mm_store_ps(inputs, a);
    for (int i = 0; i < 4; ++i)
        if (outside & (1 << i))
            lanes[i] = std::fmod(inputs[i], 360.0f);
    return _mm_load_ps(lanes);
}

/// rgb_to_hsl on four colours.
inline hsl_lanes rgb_to_hsl_ps(__m128 r, __m128 g, __m128 b)
{
    const __m128 max = std_max_ps(std_max_ps(r, g), b);
    const __m128 min = std_min_ps(std_min_ps(r, g), b);
    const __m128 l = _mm_mul_ps(_mm_add_ps(max, min), _mm_set1_ps(0.5f));
    const __m128 grey = _mm_cmpeq_ps(max, min);

    const __m128 d = _mm_sub_ps(max, min);
    const __m128 light = _mm_cmpgt_ps(l, _mm_set1_ps(0.5f));
    const __m128 s_denominator =
        select_ps(light, _mm_sub_ps(_mm_sub_ps(_mm_set1_ps(2.0f), max), min), _mm_add_ps(max, min));
    const __m128 s = _mm_div_ps(d, s_denominator);

    const __m128 red_max = _mm_cmpeq_ps(max, r);
    const __m128 green_max = _mm_andnot_ps(red_max, _mm_cmpeq_ps(max, g));
    const __m128 numerator = select_ps(red_max, _mm_sub_ps(g, b), select_ps(green_max, _mm_sub_ps(b, r), _mm_sub_ps(r, g)));
    const __m128 sector = _mm_div_ps(numerator, d);
    // Only where something is added does the sum replace the quotient: x + 0 would turn
    // -0.0 into +0.0. Red as the maximum adds 6 only when green is below blue.
    const __m128 wraps = _mm_and_ps(red_max, _mm_cmplt_ps(g, b));
    const __m128 adds = _mm_or_ps(wraps, _mm_andnot_ps(red_max, _mm_castsi128_ps(_mm_set1_epi32(-1))));
    const __m128 offset = select_ps(red_max, _mm_set1_ps(6.0f), select_ps(green_max, _mm_set1_ps(2.0f), _mm_set1_ps(4.0f)));
    const __m128 h = select_ps(adds, _mm_add_ps(sector, offset), sector);
    const __m128 degrees = _mm_mul_ps(_mm_div_ps(h, _mm_set1_ps(6.0f)), _mm_set1_ps(360.0f));

    return {_mm_andnot_ps(grey, degrees), _mm_andnot_ps(grey, s), l};
}

// hsl_channel: one channel at hue position u between the levels p and q.
inline __m128 hsl_channel_ps(__m128 p, __m128 q, __m128 u)
{
    const __m128 one = _mm_set1_ps(1.0f);
    u = select_ps(_mm_cmplt_ps(u, _mm_setzero_ps()), _mm_add_ps(u, one), u);
    u = select_ps(_mm_cmpgt_ps(u, one), _mm_sub_ps(u, one), u);
    const __m128 six = _mm_set1_ps(6.0f);
    const __m128 two_thirds = _mm_set1_ps(0.6666667f);
    const __m128 span = _mm_sub_ps(q, p);
    const __m128 rising = _mm_add_ps(p, _mm_mul_ps(_mm_mul_ps(span, six), u));
    const __m128 falling = _mm_add_ps(p, _mm_mul_ps(_mm_mul_ps(_mm_sub_ps(two_thirds, u), span), six));
    return select_ps(_mm_cmplt_ps(u, _mm_set1_ps(0.16666667f)), rising,
                     select_ps(_mm_cmplt_ps(u, _mm_set1_ps(0.5f)), q,
                               select_ps(_mm_cmplt_ps(u, two_thirds), falling, p)));
}

/// hsl_to_rgb on four colours.
inline rgb_lanes hsl_to_rgb_ps(const hsl_lanes& hsl)
{
    const __m128 one = _mm_set1_ps(1.0f);
    const __m128 dark = _mm_cmplt_ps(hsl.l, _mm_set1_ps(0.5f));
    const __m128 q = select_ps(dark, _mm_mul_ps(hsl.l, _mm_add_ps(hsl.s, one)),
                               _mm_sub_ps(_mm_add_ps(hsl.l, hsl.s), _mm_mul_ps(hsl.l, hsl.s)));
    const __m128 p = _mm_sub_ps(_mm_mul_ps(_mm_set1_ps(2.0f), hsl.l), q);
    const __m128 t = _mm_div_ps(hsl.h, _mm_set1_ps(360.0f));
    const __m128 third = _mm_set1_ps(0.33333334f);
    const __m128 grey = _mm_cmpeq_ps(hsl.s, _mm_setzero_ps());
    return {select_ps(grey, hsl.l, hsl_channel_ps(p, q, _mm_add_ps(t, third))),
            select_ps(grey, hsl.l, hsl_channel_ps(p, q, t)),
            select_ps(grey, hsl.l, hsl_channel_ps(p, q, _mm_sub_ps(t, third)))};
}

}  // namespace vl1::detail

#endif
