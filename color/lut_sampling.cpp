#include "color/lut_sampling.h"

#include <stdexcept>

#include "color/lut_row_kernels.h"
#include "color/lut_sample_avx2.h"
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
            const __m256 first = detail::interpolate_two_avx2<1, 2, 3>(bytes, cells[g], 0, 1, fractions[2 * g]);
            const __m256 second = detail::interpolate_two_avx2<1, 2, 3>(bytes, cells[g], 2, 3, fractions[2 * g + 1]);
            // Each keeps its alpha: lanes 0 and 4 from the entries.
            _mm256_storeu_ps(&entries[i].a, _mm256_blend_ps(first, _mm256_loadu_ps(&entries[i].a), 0x11));
            _mm256_storeu_ps(&entries[i + 2].a, _mm256_blend_ps(second, _mm256_loadu_ps(&entries[i + 2].a), 0x11));
        }
    }
}

#endif

void map_all(argb_float* entries, const argb_float* map)
{
#if defined(__x86_64__)
    const row_kernel_path path = chosen_row_kernel_path();
    if (path == row_kernel_path::avx2 || path == row_kernel_path::avx512)
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
