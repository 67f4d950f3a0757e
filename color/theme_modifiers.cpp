// The hue, chroma and luminance refinements of a theme.
//
// The reference colours' HSL is computed once for the process (it depends on nothing but
// the identity fill). The entries go through 4, 8 or 16 at a time (hsl_lanes.h) by the
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

#define VL1_LANES [[gnu::always_inline]] inline
namespace base {
using namespace detail::base_lanes;
#include "color/theme_refine_lanes.inc"
}  // namespace base
#undef VL1_LANES

#define VL1_LANES [[gnu::target("avx2"), gnu::always_inline]] inline
namespace wide {
using namespace detail::avx2_lanes;
#include "color/theme_refine_lanes.inc"
}  // namespace wide
#undef VL1_LANES

#define VL1_LANES [[gnu::target("avx512f"), gnu::always_inline]] inline
namespace widest {
using namespace detail::avx512_lanes;
#include "color/theme_refine_lanes.inc"
}  // namespace widest
#undef VL1_LANES

void refine_scalar(argb_float* table, const reference_hsl& ref, float hue, float chroma, float luminance)
{
    for (std::size_t i = 0; i < lut_argb<32>::entry_count; ++i)
        refine_entry(table[i], hsl_float{ref.h[i], ref.s[i], ref.l[i]}, hue, chroma, luminance);
}

void refine_4(argb_float* table, const reference_hsl& ref, float hue, float chroma, float luminance)
{
    for (std::size_t i = 0; i < lut_argb<32>::entry_count; i += 4)
        base::refine_entries<4>(table, ref, i, hue, chroma, luminance);
}

[[gnu::target("avx2")]] void refine_8(argb_float* table, const reference_hsl& ref, float hue, float chroma,
                                      float luminance)
{
    for (std::size_t i = 0; i < lut_argb<32>::entry_count; i += 8)
        wide::refine_entries<8>(table, ref, i, hue, chroma, luminance);
}

[[gnu::target("avx512f")]] void refine_16(argb_float* table, const reference_hsl& ref, float hue, float chroma,
                                          float luminance)
{
    for (std::size_t i = 0; i < lut_argb<32>::entry_count; i += 16)
        widest::refine_entries<16>(table, ref, i, hue, chroma, luminance);
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
    case row_kernel_path::avx512: return refine_16(lut.data.data(), ref, hue, chroma, luminance);
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
