#include "bench/bench_memory_pass.h"

#include <emmintrin.h>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

namespace vl1::bench {

namespace {

// One 16-byte load and store per pixel: the same traffic as the render path, whose
// rows are read and written with ordinary (cached) accesses too.
void copy_row(const float* in, float* out, int width)
{
    for (int x = 0; x < width; ++x, in += 4, out += 4)
        _mm_storeu_ps(out, _mm_loadu_ps(in));
}

}  // namespace

void memory_pass(const rgba_float_frame& source, rgba_float_frame& result, tbb::task_arena& arena)
{
    const std::size_t row_floats = static_cast<std::size_t>(source.width) * 4;
    arena.execute([&] {
        tbb::parallel_for(tbb::blocked_range<int>(0, source.height, 1), [&](const tbb::blocked_range<int>& rows) {
            for (int y = rows.begin(); y < rows.end(); ++y)
                copy_row(source.pixels.data() + y * row_floats, result.pixels.data() + y * row_floats, source.width);
        });
    });
}

}  // namespace vl1::bench
