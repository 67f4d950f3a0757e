// The memory limit of a frame pass: each pixel's 16 bytes read and 16 bytes written, nothing
// computed, rows in parallel in the render path's arena.
#pragma once

#include <tbb/task_arena.h>

#include "bench/bench_frame.h"

namespace vl1::bench {

/// Copies `source` into `result` row by row, one task per row, inside `arena`.
void memory_pass(const rgba_float_frame& source, rgba_float_frame& result, tbb::task_arena& arena);

}  // namespace vl1::bench
