// The hue, chroma and luminance refinements of a theme.
//
// The reference colours' HSL is computed once for the process (it depends on nothing but
// the identity fill), and where SSE2 is available four entries go through at once
// (hsl_sse2.h); both forms give the bits of the per-entry rule below.
#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "color/hsl.h"
#include "color/hsl_sse2.h"
#include "color/hueloom_theme_v1.h"
#include "color/unit_clamp.h"

#if defined(__SSE2__)
#include <xmmintrin.h>
#endif

namespace vl1 {

namespace {

// HSL of the reference colours, the 16-bit-scale identity, one array per component so that
// four neighbouring entries load as one register each.
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
hsl_float scale_hsl_change(const hsl_float& ref, const hsl_float& cur, float hue, float chroma,
                           float luminance)
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

#if defined(__SSE2__)

// scale_hsl_change and refine_entry for the four entries at `entries`, alpha untouched.
void refine_four_entries(argb_float* entries, const reference_hsl& ref, std::size_t i, float hue, float chroma,
                         float luminance)
{
    using namespace detail;
    __m128 a = _mm_loadu_ps(&entries[0].a);
    __m128 r = _mm_loadu_ps(&entries[1].a);
    __m128 g = _mm_loadu_ps(&entries[2].a);
    __m128 b = _mm_loadu_ps(&entries[3].a);
    _MM_TRANSPOSE4_PS(a, r, g, b);  // now one channel of the four entries per register

    const hsl_lanes cur = rgb_to_hsl_ps(r, g, b);
    const __m128 ref_h = _mm_loadu_ps(&ref.h[i]);
    const __m128 ref_s = _mm_loadu_ps(&ref.s[i]);
    const __m128 ref_l = _mm_loadu_ps(&ref.l[i]);
    const __m128 full = _mm_set1_ps(360.0f);

    hsl_lanes target;
    target.s = clamp_unit_ps(_mm_add_ps(ref_s, _mm_mul_ps(_mm_sub_ps(cur.s, ref_s), _mm_set1_ps(chroma))));
    target.l = clamp_unit_ps(_mm_add_ps(ref_l, _mm_mul_ps(_mm_sub_ps(cur.l, ref_l), _mm_set1_ps(luminance))));
    const __m128 cw = fmod_360_ps(_mm_sub_ps(_mm_add_ps(cur.h, full), ref_h));
    const __m128 ccw = fmod_360_ps(_mm_sub_ps(_mm_add_ps(ref_h, full), cur.h));
    const __m128 delta = select_ps(_mm_cmple_ps(cw, ccw), cw, _mm_xor_ps(ccw, _mm_set1_ps(-0.0f)));
    target.h = fmod_360_ps(_mm_add_ps(_mm_mul_ps(delta, _mm_set1_ps(hue)), _mm_add_ps(ref_h, full)));

    const rgb_lanes rgb = hsl_to_rgb_ps(target);
    r = clamp_unit_ps(rgb.r);
    g = clamp_unit_ps(rgb.g);
    b = clamp_unit_ps(rgb.b);
    _MM_TRANSPOSE4_PS(a, r, g, b);  // back to one entry per register
    _mm_storeu_ps(&entries[0].a, a);
    _mm_storeu_ps(&entries[1].a, r);
    _mm_storeu_ps(&entries[2].a, g);
    _mm_storeu_ps(&entries[3].a, b);
}

#endif

}  // namespace

void hueloom_theme_v1::apply_theme_modifiers(lut_argb<32>& lut, float hue, float chroma, float luminance) const
{
    if (lut.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");
    const reference_hsl& ref = reference();

    std::size_t i = 0;
#if defined(__SSE2__)
    for (; i + 4 <= lut_argb<32>::entry_count; i += 4)
        refine_four_entries(&lut.data[i], ref, i, hue, chroma, luminance);
#endif
    for (; i < lut_argb<32>::entry_count; ++i)
        refine_entry(lut.data[i], hsl_float{ref.h[i], ref.s[i], ref.l[i]}, hue, chroma, luminance);
}

}  // namespace vl1
