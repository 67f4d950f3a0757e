#include "color/lut_difference.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "color/argb_float_ops.h"
#include "color/hsl_lanes.h"
#include "color/lut_row_kernels.h"
#include "color/unit_clamp.h"

namespace vl1 {

namespace {

#if defined(__SSE2__)

// lut + (source - identity) * weight, then clamp_unit, on all four channels of one entry.
inline void add_entry_difference(argb_float& entry, const argb_float& source, __m128 identity, __m128 weight)
{
    const __m128 sum = _mm_add_ps(_mm_loadu_ps(&entry.a), _mm_mul_ps(_mm_sub_ps(_mm_loadu_ps(&source.a), identity), weight));
    _mm_storeu_ps(&entry.a, detail::clamp_unit_ps(sum));
}

#else

inline void add_entry_difference(argb_float& entry, const argb_float& source, const argb_float& identity, float weight)
{
    const argb_float v = entry + (source - identity) * weight;
    entry = {clamp_unit(v.a), clamp_unit(v.r), clamp_unit(v.g), clamp_unit(v.b)};
}

#endif

// Every entry of `lut` through the weighted differences of the sources, in their order.
template <std::size_t Count>
void add_differences(lut_argb<32>& lut, const std::array<const lut_argb<32>*, Count>& sources,
                     const std::array<float, Count>& weights)
{
    constexpr std::size_t count = Count;

    std::array<float, 32> grid{};
    for (std::size_t i = 0; i < 32; ++i)
        grid[i] = static_cast<float>(i) / 31.0f;

#if defined(__SSE2__)
    // The identity entry as a register: alpha, red and green lanes per (r, g), the blue lane
    // OR-ed in (the other lanes of each part are +0.0, all bits clear).
    __m128 blue[32];
    for (std::size_t b = 0; b < 32; ++b)
        blue[b] = _mm_set_ps(grid[b], 0.0f, 0.0f, 0.0f);
    __m128 w[Count];
    for (std::size_t k = 0; k < count; ++k)
        w[k] = _mm_set1_ps(weights[k]);
#endif

    std::size_t i = 0;
    for (std::size_t r = 0; r < 32; ++r) {
        for (std::size_t g = 0; g < 32; ++g) {
#if defined(__SSE2__)
            const __m128 alpha_red_green = _mm_set_ps(0.0f, grid[g], grid[r], 1.0f);
            for (std::size_t b = 0; b < 32; ++b, ++i) {
                const __m128 identity = _mm_or_ps(alpha_red_green, blue[b]);
                for (std::size_t k = 0; k < count; ++k)
                    add_entry_difference(lut.data[i], sources[k]->data[i], identity, w[k]);
            }
#else
            for (std::size_t b = 0; b < 32; ++b, ++i)
                for (std::size_t k = 0; k < count; ++k)
                    add_entry_difference(lut.data[i], sources[k]->data[i], argb_float{1.0f, grid[r], grid[g], grid[b]},
                                         weights[k]);
#endif
        }
    }
}

#if defined(__x86_64__)

// The identity entries (1, r / 31, g / 31, b / 31) of one row of the table (fixed r and g),
// laid out as the table's floats, so that vector code loads them as it loads entries.
class identity_row {
public:
    identity_row()
    {
        for (std::size_t b = 0; b < 32; ++b) {
            values[4 * b] = 1.0f;
            values[4 * b + 3] = static_cast<float>(b) / 31.0f;
        }
    }
    void move_to(std::size_t r, std::size_t g)
    {
        for (std::size_t b = 0; b < 32; ++b) {
            values[4 * b + 1] = static_cast<float>(r) / 31.0f;
            values[4 * b + 2] = static_cast<float>(g) / 31.0f;
        }
    }
    const float* at(std::size_t b) const { return &values[4 * b]; }

private:
    float values[32 * 4];
};

// add_differences with two entries per vector of eight lanes, each lane the operations of
// the same lane above.
template <std::size_t Count>
[[gnu::target("avx2")]] void add_differences_avx2(lut_argb<32>& lut,
                                                  const std::array<const lut_argb<32>*, Count>& sources,
                                                  const std::array<float, Count>& weights)
{
    using V = detail::lanes_t<8>;
    using namespace detail::avx2_lanes;
    identity_row row;
    for (std::size_t r = 0, i = 0; r < 32; ++r) {
        for (std::size_t g = 0; g < 32; ++g) {
            row.move_to(r, g);
            for (std::size_t b = 0; b < 32; b += 2, i += 2) {
                V entry = load_lanes<V>(&lut.data[i].a);
                for (std::size_t k = 0; k < Count; ++k)
                    entry = clamp_unit_lanes(entry + (load_lanes<V>(&sources[k]->data[i].a) - load_lanes<V>(row.at(b))) *
                                                         weights[k]);
                store_lanes(&lut.data[i].a, entry);
            }
        }
    }
}

// The same with four entries per vector of sixteen lanes.
template <std::size_t Count>
[[gnu::target("avx512f")]] void add_differences_avx512(lut_argb<32>& lut,
                                                       const std::array<const lut_argb<32>*, Count>& sources,
                                                       const std::array<float, Count>& weights)
{
    using V = detail::lanes_t<16>;
    using namespace detail::avx512_lanes;
    identity_row row;
    for (std::size_t r = 0, i = 0; r < 32; ++r) {
        for (std::size_t g = 0; g < 32; ++g) {
            row.move_to(r, g);
            for (std::size_t b = 0; b < 32; b += 4, i += 4) {
                V entry = load_lanes<V>(&lut.data[i].a);
                for (std::size_t k = 0; k < Count; ++k)
                    entry = clamp_unit_lanes(entry + (load_lanes<V>(&sources[k]->data[i].a) - load_lanes<V>(row.at(b))) *
                                                         weights[k]);
                store_lanes(&lut.data[i].a, entry);
            }
        }
    }
}

#endif

template <std::size_t Count>
void add_differences_chosen(lut_argb<32>& lut, const std::array<const lut_argb<32>*, Count>& sources,
                            const std::array<float, Count>& weights)
{
    if (lut.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");
    for (const lut_argb<32>* source : sources)
        if (source->data.size() != lut_argb<32>::entry_count)
            throw std::out_of_range("vector");
#if defined(__x86_64__)
    const row_kernel_path path = chosen_row_kernel_path();
    if (path == row_kernel_path::avx512)
        return add_differences_avx512<Count>(lut, sources, weights);
    if (path == row_kernel_path::avx2)
        return add_differences_avx2<Count>(lut, sources, weights);
#endif
    add_differences<Count>(lut, sources, weights);
}

}  // namespace

void add_lut_difference(lut_argb<32>& lut, const lut_argb<32>& source, float weight)
{
    add_differences_chosen<1>(lut, {&source}, {weight});
}

void add_lut_differences(lut_argb<32>& lut, const lut_argb<32>& first, float first_weight, const lut_argb<32>& second,
                         float second_weight)
{
    add_differences_chosen<2>(lut, {&first, &second}, {first_weight, second_weight});
}

}  // namespace vl1
