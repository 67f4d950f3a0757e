// The hue, chroma and luminance refinements of a theme.
//
// The reference colours' HSL is computed once for the process (it depends on nothing but
// the identity fill). The entries go through 4 or 8 at a time (hsl_lanes.h) by the
// instruction set chosen for the row kernels; every width gives the bits of the per-entry
// rule below.
#include "color/theme_modifiers.h"

#include <cmath>
#include <cstring>
#include <stdexcept>
#include <utility>
#include <vector>

#include "color/hsl.h"
#include "color/hsl_lanes.h"
#include "color/hueloom_theme_v1.h"
#include "color/unit_clamp.h"

namespace vl1 {

namespace {

// HSL of the reference colours, the 16-bit-scale identity, one array per component so that
// neighbouring entries load as one vector each.
struct reference_hsl {
    std::vector<float> h, s, l;

    reference_hsl() : h(lut_argb<32>::entry_count), s(lut_argb<32>::entry_count), l(lut_argb<32>::entry_count)
    {
        const lut_argb<32> identity;
        for (std::size_t i = 0; i < lut_argb<32>::entry_count; ++i) {
            const argb_float& c = identity.data[i];
            const hsl_float hsl = rgb_to_hsl(c.r, c.g, c.b);
            h[i] = hsl.h;
            s[i] = hsl.s;
            l[i] = hsl.l;
        }
    }
};

const reference_hsl& reference()
{
    static const reference_hsl hsl;
    return hsl;
}

// The current colour's hue, saturation and lightness moved away from the reference by the
// given factors. The hue goes the shorter way round, clockwise when both ways are equal.
hsl_float scale_hsl_change(const hsl_float& ref, const hsl_float& cur, float hue, float chroma, float luminance)
{
    hsl_float out;
    out.s = clamp_unit(ref.s + (cur.s - ref.s) * chroma);
    out.l = clamp_unit(ref.l + (cur.l - ref.l) * luminance);
    const float cw = std::fmod(cur.h + 360.0f - ref.h, 360.0f);
    const float ccw = std::fmod(ref.h + 360.0f - cur.h, 360.0f);
    const float delta = cw <= ccw ? cw : -ccw;
    out.h = std::fmod(delta * hue + (ref.h + 360.0f), 360.0f);
    return out;
}

void refine_entry(argb_float& cur, const hsl_float& ref, float hue, float chroma, float luminance)
{
    const rgb_float rgb = hsl_to_rgb(scale_hsl_change(ref, rgb_to_hsl(cur.r, cur.g, cur.b), hue, chroma, luminance));
    cur.r = clamp_unit(rgb.r);
    cur.g = clamp_unit(rgb.g);
    cur.b = clamp_unit(rgb.b);
}

using detail::lanes_t;
using detail::load_lanes;
using detail::mask_t;
using detail::store_lanes;

// Shuffle masks between N entries in four vectors (a, r, g, b per entry, in memory order)
// and one vector per channel. Built from index functions at compile time.
template <class M, class F, std::size_t... I>
constexpr M mask_from(F index, std::index_sequence<I...>)
{
    return M{index(static_cast<int>(I))...};
}

template <int N, class F>
constexpr mask_t<lanes_t<N>> lane_mask(F index)
{
    return mask_from<mask_t<lanes_t<N>>>(index, std::make_index_sequence<N>());
}

// Channel c (1 red, 2 green, 3 blue) of the N entries held in v[0..3].
template <int N, int C>
[[gnu::always_inline]] inline lanes_t<N> channel_of(const lanes_t<N>* v)
{
    constexpr auto half = lane_mask<N>([](int j) { return j < N / 2 ? 4 * j + C : 0; });
    constexpr auto join = lane_mask<N>([](int j) { return j < N / 2 ? j : N + j - N / 2; });
    return __builtin_shuffle(__builtin_shuffle(v[0], v[1], half), __builtin_shuffle(v[2], v[3], half), join);
}

// Vector k of the entries again: alpha from v[k] as it was, red, green and blue from r, g, b.
template <int N, int K>
[[gnu::always_inline]] inline lanes_t<N> entries_of(lanes_t<N> v, lanes_t<N> r, lanes_t<N> g, lanes_t<N> b)
{
    constexpr auto red_green = lane_mask<N>([](int t) {
        const int f = K * N + t;
        return f % 4 == 1 ? f / 4 : (f % 4 == 2 ? N + f / 4 : 0);
    });
    constexpr auto blue_alpha = lane_mask<N>([](int t) {
        const int f = K * N + t;
        return f % 4 == 3 ? f / 4 : (f % 4 == 0 ? N + t : 0);
    });
    constexpr auto merge = lane_mask<N>([](int t) { return t % 4 == 1 || t % 4 == 2 ? t : N + t; });
    return __builtin_shuffle(__builtin_shuffle(r, g, red_green), __builtin_shuffle(b, v, blue_alpha), merge);
}

// scale_hsl_change and refine_entry for the N entries from `i` on, alpha untouched.
template <int N>
[[gnu::always_inline]] inline void refine_entries(argb_float* table, const reference_hsl& ref, std::size_t i,
                                                  float hue, float chroma, float luminance)
{
    using V = lanes_t<N>;
    using namespace detail;
    // One load per vector: a copy of all four at once would pass through the stack in
    // pieces narrower than the loads that follow, which stalls them.
    const float* entries = &table[i].a;
    const V v[4] = {load_lanes<V>(entries), load_lanes<V>(entries + N), load_lanes<V>(entries + 2 * N),
                    load_lanes<V>(entries + 3 * N)};
    const hsl_lanes<V> cur = rgb_to_hsl_lanes(channel_of<N, 1>(v), channel_of<N, 2>(v), channel_of<N, 3>(v));
    const V ref_h = load_lanes<V>(&ref.h[i]);
    const V ref_s = load_lanes<V>(&ref.s[i]);
    const V ref_l = load_lanes<V>(&ref.l[i]);

    hsl_lanes<V> target;
    target.s = clamp_unit_lanes(ref_s + (cur.s - ref_s) * chroma);
    target.l = clamp_unit_lanes(ref_l + (cur.l - ref_l) * luminance);
    const V cw = fmod_360_lanes(cur.h + 360.0f - ref_h);
    const V ccw = fmod_360_lanes(ref_h + 360.0f - cur.h);
    const V delta = cw <= ccw ? cw : -ccw;
    target.h = fmod_360_lanes(delta * hue + (ref_h + 360.0f));

    const rgb_lanes<V> rgb = hsl_to_rgb_lanes(target);
    const V r = clamp_unit_lanes(rgb.r);
    const V g = clamp_unit_lanes(rgb.g);
    const V b = clamp_unit_lanes(rgb.b);
    store_lanes(&table[i].a, entries_of<N, 0>(v[0], r, g, b));
    store_lanes(&table[i].a + N, entries_of<N, 1>(v[1], r, g, b));
    store_lanes(&table[i].a + 2 * N, entries_of<N, 2>(v[2], r, g, b));
    store_lanes(&table[i].a + 3 * N, entries_of<N, 3>(v[3], r, g, b));
}

void refine_scalar(argb_float* table, const reference_hsl& ref, float hue, float chroma, float luminance)
{
    for (std::size_t i = 0; i < lut_argb<32>::entry_count; ++i)
        refine_entry(table[i], hsl_float{ref.h[i], ref.s[i], ref.l[i]}, hue, chroma, luminance);
}

void refine_4(argb_float* table, const reference_hsl& ref, float hue, float chroma, float luminance)
{
    for (std::size_t i = 0; i < lut_argb<32>::entry_count; i += 4)
        refine_entries<4>(table, ref, i, hue, chroma, luminance);
}

[[gnu::target("avx2")]] void refine_8(argb_float* table, const reference_hsl& ref, float hue, float chroma,
                                      float luminance)
{
    for (std::size_t i = 0; i < lut_argb<32>::entry_count; i += 8)
        refine_entries<8>(table, ref, i, hue, chroma, luminance);
}

}  // namespace

void refine_theme_entries(lut_argb<32>& lut, float hue, float chroma, float luminance, row_kernel_path path)
{
    if (lut.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");
    const reference_hsl& ref = reference();
    if (!row_kernel_available(path))
        path = chosen_row_kernel_path();
    switch (path) {
    // Sixteen lanes gained nothing over eight: GCC 12 builds parts of the hue sector's
    // selection for them as scalar code.
    case row_kernel_path::avx512:
    case row_kernel_path::avx2: return refine_8(lut.data.data(), ref, hue, chroma, luminance);
    case row_kernel_path::sse2: return refine_4(lut.data.data(), ref, hue, chroma, luminance);
    case row_kernel_path::scalar: break;
    }
    refine_scalar(lut.data.data(), ref, hue, chroma, luminance);
}

void hueloom_theme_v1::apply_theme_modifiers(lut_argb<32>& lut, float hue, float chroma, float luminance) const
{
    refine_theme_entries(lut, hue, chroma, luminance, chosen_row_kernel_path());
}

}  // namespace vl1
