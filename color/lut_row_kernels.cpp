#include "color/lut_row_kernels.h"

#include <cstdlib>
#include <stdexcept>

#include "color/lut_row_simd.h"
#include "color/lut_sample_kernel.h"

namespace vl1 {

namespace {

void apply_row_scalar(const argb_float* table, rgba_depth in_depth, const std::byte* in, rgba_depth out_depth,
                      std::byte* out, std::size_t count)
{
    const std::size_t in_step = rgba_pixel_bytes(in_depth);
    const std::size_t out_step = rgba_pixel_bytes(out_depth);
    for (std::size_t i = 0; i < count; ++i, in += in_step, out += out_step)
        write_rgba_pixel(out_depth, out, detail::sample_lut_32(table, read_rgba_pixel(in_depth, in)));
}

bool cpu_runs(row_kernel_path path)
{
#if defined(__x86_64__)
    // Also true only where the operating system saves the wider registers.
    __builtin_cpu_init();
    switch (path) {
    case row_kernel_path::scalar:
    case row_kernel_path::sse2: return true;
    case row_kernel_path::avx2: return __builtin_cpu_supports("avx2");
    case row_kernel_path::avx512: return __builtin_cpu_supports("avx512f");
    }
    return false;
#else
    return path == row_kernel_path::scalar;
#endif
}

row_kernel_path choose_row_kernel()
{
    if (const char* forced = std::getenv("HUELOOM_ROW_KERNEL"))
        if (const auto path = row_kernel_from_name(forced); path && cpu_runs(*path))
            return *path;
    for (const row_kernel_path path : {row_kernel_path::avx512, row_kernel_path::avx2, row_kernel_path::sse2})
        if (cpu_runs(path))
            return path;
    return row_kernel_path::scalar;
}

// Chosen while the library is loaded, before any render can ask.
const row_kernel_path chosen_at_load = choose_row_kernel();

}  // namespace

std::string_view row_kernel_name(row_kernel_path path)
{
    switch (path) {
    case row_kernel_path::scalar: return "scalar";
    case row_kernel_path::sse2: return "sse2";
    case row_kernel_path::avx2: return "avx2";
    case row_kernel_path::avx512: return "avx512";
    }
    return "scalar";
}

std::optional<row_kernel_path> row_kernel_from_name(std::string_view name)
{
    for (const row_kernel_path path : all_row_kernel_paths)
        if (row_kernel_name(path) == name)
            return path;
    return std::nullopt;
}

bool row_kernel_available(row_kernel_path path)
{
    return cpu_runs(path);
}

row_kernel_path chosen_row_kernel_path()
{
    return chosen_at_load;
}

void apply_lut_row(const lut_argb<32>& lut, rgba_depth in_depth, const void* in, rgba_depth out_depth, void* out,
                   std::size_t count, row_kernel_path path)
{
    if (lut.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");
    const auto* src = static_cast<const std::byte*>(in);
    auto* dst = static_cast<std::byte*>(out);
    if (path != chosen_at_load && !cpu_runs(path))
        path = chosen_at_load;
    const argb_float* table = lut.data.data();
    switch (path) {
#if defined(__x86_64__)
    case row_kernel_path::avx512: return detail::apply_row_avx512(table, in_depth, src, out_depth, dst, count);
    case row_kernel_path::avx2: return detail::apply_row_avx2(table, in_depth, src, out_depth, dst, count);
    case row_kernel_path::sse2: return detail::apply_row_sse2(table, in_depth, src, out_depth, dst, count);
#endif
    default: return apply_row_scalar(table, in_depth, src, out_depth, dst, count);
    }
}

bool apply_lut_row_bits(const lut_argb<32>& lut, int in_bits, const void* in, int out_bits, void* out, int count)
{
    const std::optional<rgba_depth> from = rgba_depth_from_bits(in_bits);
    const std::optional<rgba_depth> to = rgba_depth_from_bits(out_bits);
    if (!from || !to || count < 0)
        return false;
    apply_lut_row(lut, *from, in, *to, out, static_cast<std::size_t>(count));
    return true;
}

}  // namespace vl1
