// rgb_to_hsl, hsl_to_rgb, the remainder by 360 and clamp_unit on 4, 8 or 16 colours at once,
// one channel per vector of the compiler's generic vector types. Each lane runs the scalar
// functions' operations in their order on the same operands; branches become selections,
// taken by the same comparisons, so every lane gets the scalar result bit for bit,
// infinities and signed zeros included (a NaN result is NaN in both; which payload it
// carries is the compiler's choice of operand order).
//
// The code names no instruction set; it is compiled three times (hsl_lanes_ops.inc), for
// baseline x86-64 (namespace base_lanes), with AVX2 on every function (avx2_lanes) and with
// AVX-512F (avx512_lanes), so that no function ever passes a vector wider than its own
// instruction set to another.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

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

}  // namespace vl1::detail

#define VL1_LANES [[gnu::always_inline]] inline
namespace vl1::detail::base_lanes {
#include "color/hsl_lanes_ops.inc"
}  // namespace vl1::detail::base_lanes
#undef VL1_LANES

#if defined(__x86_64__)
#define VL1_LANES [[gnu::target("avx2"), gnu::always_inline]] inline
namespace vl1::detail::avx2_lanes {
#include "color/hsl_lanes_ops.inc"
}  // namespace vl1::detail::avx2_lanes
#undef VL1_LANES
#define VL1_LANES [[gnu::target("avx512f"), gnu::always_inline]] inline
namespace vl1::detail::avx512_lanes {
#include "color/hsl_lanes_ops.inc"
}  // namespace vl1::detail::avx512_lanes
#undef VL1_LANES
#endif
