#include "color/lut_sampling.h"

// GCC 12's AVX-512 intrinsics take a deliberately undefined register as the source of their
// unmasked forms, which its own flow analysis then reports as uninitialised.
#if !defined(__clang__)
#pragma GCC diagnostic ignored "-Wuninitialized"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <stdexcept>

#include "color/lut_row_kernels.h"
#include "color/lut_sample_avx2.h"
#include "color/lut_sample_avx512.h"
#include "color/lut_sample_kernel.h"
#include "color/lut_sample_sse2.h"

namespace vl1 {

namespace {

void check_size(const lut_argb<32>& table)
{
    if (table.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");
}

// The SSE2 step where the build has it (every x86-64 build does); both give the same bits.
argb_float sample_32(const argb_float* table, const argb_float& in)
{
#if defined(__SSE2__)
    return detail::sample_lut_32_sse2(table, in);
#else
    return detail::sample_lut_32(table, in);
#endif
}

// Every entry through `map`, two per turn (their cells found together, one entry's table
// reads overlapping the other's lerps).
void map_entries(argb_float* entries, const argb_float* map)
{
#if defined(__SSE2__)
    for (std::size_t i = 0; i < lut_argb<32>::entry_count; i += 2) {
        const __m128 first = _mm_loadu_ps(&entries[i].a);
        const __m128 second = _mm_loadu_ps(&entries[i + 1].a);
        __m128 first_result, second_result;
        detail::trilinear_pair_sse2<1, 2, 3>(map, first, second, first_result, second_result);
        _mm_storeu_ps(&entries[i].a, _mm_move_ss(first_result, first));  // each keeps its alpha
        _mm_storeu_ps(&entries[i + 1].a, _mm_move_ss(second_result, second));
    }
#else
    for (std::size_t i = 0; i < lut_argb<32>::entry_count; ++i)
        entries[i] = detail::sample_lut_32(map, entries[i]);
#endif
}

#if defined(__x86_64__)

// map_entries with four entries per turn in two AVX2 registers, the same bits. Entries go in
// runs of 64: all their cells are found first, then all are interpolated, so that the table
// reads of one entry don't wait behind the chain that finds the next one's cell.
[[gnu::target("avx2")]] void map_entries_avx2(argb_float* entries, const argb_float* map)
{
    constexpr std::size_t run_groups = 16;  // groups of four entries
    const auto* bytes = reinterpret_cast<const char*>(map);
    __m256 fractions[2 * run_groups];
    detail::four_cells cells[run_groups];
    for (std::size_t run = 0; run < lut_argb<32>::entry_count; run += 4 * run_groups) {
        for (std::size_t g = 0; g < run_groups; ++g) {
            const std::size_t i = run + 4 * g;
            const __m256 first = _mm256_loadu_ps(&entries[i].a);
            const __m256 second = _mm256_loadu_ps(&entries[i + 2].a);
            cells[g] = detail::find_four_avx2<1, 2, 3>(first, second, fractions[2 * g], fractions[2 * g + 1]);
        }
        for (std::size_t g = 0; g < run_groups; ++g) {
            const std::size_t i = run + 4 * g;
            const __m256 first = detail::interpolate_two_avx2<1, 2, 3>(bytes, cells[g], 0, fractions[2 * g]);
            const __m256 second = detail::interpolate_two_avx2<1, 2, 3>(bytes, cells[g], 1, fractions[2 * g + 1]);
            // Each keeps its alpha: lanes 0 and 4 from the entries.
            _mm256_storeu_ps(&entries[i].a, _mm256_blend_ps(first, _mm256_loadu_ps(&entries[i].a), 0x11));
            _mm256_storeu_ps(&entries[i + 2].a, _mm256_blend_ps(second, _mm256_loadu_ps(&entries[i + 2].a), 0x11));
        }
    }
}

// map_entries_avx2 with four entries per AVX-512F register, the same bits. An entry may lie
// anywhere: x = c * 31, then x > 0 ? x : 0, then x < 31 ? x : 31.
[[gnu::target("avx512f")]] void map_entries_avx512(argb_float* entries, const argb_float* map)
{
    constexpr std::size_t run_groups = 16;  // groups of four entries
    const auto* bytes = reinterpret_cast<const char*>(map);
    const __m512 top = _mm512_set1_ps(31.0f);
    __m512 fractions[run_groups];
    detail::cells_of_four cells[run_groups];
    for (std::size_t run = 0; run < lut_argb<32>::entry_count; run += 4 * run_groups) {
        for (std::size_t g = 0; g < run_groups; ++g) {
            const __m512 x = _mm512_min_ps(
                _mm512_max_ps(_mm512_mul_ps(_mm512_loadu_ps(&entries[run + 4 * g].a), top), _mm512_setzero_ps()),
                top);
            const __m512i indices = _mm512_cvttps_epi32(x);
            fractions[g] = _mm512_sub_ps(x, _mm512_cvtepi32_ps(indices));
            detail::find_cells_avx512<1, 2, 3>(indices, cells[g]);
        }
        for (std::size_t g = 0; g < run_groups; ++g) {
            float* entry = &entries[run + 4 * g].a;
            const __m512 graded = detail::interpolate_four_avx512<1, 2, 3>(bytes, cells[g], fractions[g]);
            // Each keeps its alpha: lanes 0, 4, 8 and 12 from the entries.
            _mm512_storeu_ps(entry, _mm512_mask_blend_ps(0x1111, graded, _mm512_loadu_ps(entry)));
        }
    }
}

#endif

void map_all(argb_float* entries, const argb_float* map)
{
#if defined(__x86_64__)
    const row_kernel_path path = chosen_row_kernel_path();
    if (path == row_kernel_path::avx512)
        return map_entries_avx512(entries, map);
    if (path == row_kernel_path::avx2)
        return map_entries_avx2(entries, map);
#endif
    map_entries(entries, map);
}

}  // namespace

argb_float sample_lut(const lut_argb<32>& table, const argb_float& in)
{
    check_size(table);
    return sample_32(table.data.data(), in);
}

void map_lut_through(lut_argb<32>& target, const lut_argb<32>& map)
{
    check_size(target);
    check_size(map);
    // An entry's new value depends on nothing but its old value and `map`, so entries are
    // replaced where they stand; only a table mapped through itself needs the copy.
    if (&target != &map) {
        map_all(target.data.data(), map.data.data());
        return;
    }
    std::vector<argb_float> mapped = target.data;
    map_all(mapped.data(), map.data.data());
    target.data = std::move(mapped);
}

}  // namespace vl1
