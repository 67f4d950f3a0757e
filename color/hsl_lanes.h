// rgb_to_hsl, hsl_to_rgb, the remainder by 360 and clamp_unit on 4, 8 or 16 colours at once,
// one channel per vector of the compiler's generic vector types. Each lane runs the scalar
// functions' operations in their order on the same operands; branches become selections,
// taken by the same comparisons, so every lane gets the scalar result bit for bit,
// infinities and signed zeros included (a NaN result is NaN in both; which payload it
// carries is the compiler's choice of operand order).
//
// Nothing here names an instruction set: inlined into a function compiled for AVX2 or
// AVX-512F, the same code fills those registers, and compiled alone it stays baseline x86-64.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

namespace vl1::detail {

template <int N>
struct float_lanes;
template <>
struct float_lanes<4> {
    typedef float type __attribute__((vector_size(16)));
};
template <>
struct float_lanes<8> {
    typedef float type __attribute__((vector_size(32)));
};
template <>
struct float_lanes<16> {
    typedef float type __attribute__((vector_size(64)));
};

/// N floats, one channel of N colours.
template <int N>
using lanes_t = typename float_lanes<N>::type;

/// A comparison's result: all bits set in the lanes where it holds.
template <class V>
using mask_t = decltype(V{} < V{});

template <class V>
struct hsl_lanes {
    V h, s, l;
};

template <class V>
struct rgb_lanes {
    V r, g, b;
};

#define VL1_LANES [[gnu::always_inline]] inline

/// The lanes at `p`, any alignment.
template <class V>
VL1_LANES V load_lanes(const float* p)
{
    V v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

template <class V>
VL1_LANES void store_lanes(float* p, V v)
{
    std::memcpy(p, &v, sizeof v);
}

/// std::max(x, y) and std::min(x, y): x < y ? y : x and y < x ? y : x.
template <class V>
VL1_LANES V std_max(V x, V y)
{
    return x < y ? y : x;
}

template <class V>
VL1_LANES V std_min(V x, V y)
{
    return y < x ? y : x;
}

/// clamp_unit on every lane: min(1, max(0, v)), NaN to 0.
template <class V>
VL1_LANES V clamp_unit_lanes(V v)
{
    return std_min(V{} + 1.0f, std_max(V{}, v));
}

/// std::fmod(a, 360.0f) per lane. Below 1440 in magnitude the remainder is |a| - 360k with
/// k = 0..3, a subtraction that is exact (|a| is within a factor of two of 360k), given the
/// sign of a as fmod does; other lanes (large, infinite, NaN) go to std::fmod itself.
template <class V>
VL1_LANES V fmod_360_lanes(V a)
{
    using M = mask_t<V>;
    const M sign_bit = M{} + static_cast<int32_t>(0x80000000u);
    const V magnitude = (V)((M)a & ~sign_bit);
    const V k1 = magnitude >= 360.0f ? V{} + 360.0f : V{};
    const V k2 = magnitude >= 720.0f ? V{} + 360.0f : V{};
    const V k3 = magnitude >= 1080.0f ? V{} + 360.0f : V{};
    const V reduced = (V)((M)(magnitude - ((k1 + k2) + k3)) | ((M)a & sign_bit));

    const M outside = ~(magnitude < 1440.0f);
    uint64_t words[sizeof(M) / 8];
    std::memcpy(words, &outside, sizeof words);
    uint64_t any = 0;
    for (const uint64_t w : words)
        any |= w;
    if (any == 0)
        return reduced;
    V out = reduced;
    for (int i = 0; i < int(sizeof(V) / sizeof(float)); ++i)
        if (outside[i])
            out[i] = std::fmod(a[i], 360.0f);
    return out;
}

/// rgb_to_hsl on every lane.
template <class V>
VL1_LANES hsl_lanes<V> rgb_to_hsl_lanes(V r, V g, V b)
{
    using M = mask_t<V>;
    const V zero{};
    const V max = std_max(std_max(r, g), b);
    const V min = std_min(std_min(r, g), b);
    const V l = (max + min) * 0.5f;
    const M grey = max == min;

    const V d = max - min;
    const V s = d / (l > 0.5f ? (2.0f - max) - min : max + min);

    const M red_max = max == r;
    const M green_max = (max == g) & ~red_max;
    const V sector = (red_max ? g - b : (green_max ? b - r : r - g)) / d;
    // Only where something is added does the sum replace the quotient: x + 0 would turn
    // -0.0 into +0.0. Red as the maximum adds 6 only when green is below blue.
    const M adds = (red_max & (g < b)) | ~red_max;
    const V offset = red_max ? zero + 6.0f : (green_max ? zero + 2.0f : zero + 4.0f);
    const V h = adds ? sector + offset : sector;
    const V degrees = h / 6.0f * 360.0f;
    return {grey ? zero : degrees, grey ? zero : s, l};
}

// One channel at hue position u (0..1) between the levels p and q.
template <class V>
VL1_LANES V hsl_channel_lanes(V p, V q, V u)
{
    u = u < 0.0f ? u + 1.0f : u;
    u = u > 1.0f ? u - 1.0f : u;
    const V span = q - p;
    const V rising = p + span * 6.0f * u;
    const V falling = p + (0.6666667f - u) * span * 6.0f;
    return u < 0.16666667f ? rising : (u < 0.5f ? q : (u < 0.6666667f ? falling : p));
}

/// hsl_to_rgb on every lane.
template <class V>
VL1_LANES rgb_lanes<V> hsl_to_rgb_lanes(const hsl_lanes<V>& hsl)
{
    const V q = hsl.l < 0.5f ? hsl.l * (hsl.s + 1.0f) : hsl.l + hsl.s - hsl.l * hsl.s;
    const V p = 2.0f * hsl.l - q;
    const V t = hsl.h / 360.0f;
    constexpr float third = 0.33333334f;
    const auto grey = hsl.s == 0.0f;
    return {grey ? hsl.l : hsl_channel_lanes(p, q, t + third), grey ? hsl.l : hsl_channel_lanes(p, q, t),
            grey ? hsl.l : hsl_channel_lanes(p, q, t - third)};
}

#undef VL1_LANES

}  // namespace vl1::detail
