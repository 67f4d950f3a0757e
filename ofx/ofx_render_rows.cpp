#include "ofx/ofx_render_rows.h"

#include <tbb/blocked_range.h>
#include <tbb/info.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <optional>

#include "framework/io/pixel_codec.h"
#include "ofx/thread_annotations.h"

namespace vl1 {

tbb::task_arena& render_arena(unsigned max_threads)
{
    const unsigned cores = static_cast<unsigned>(std::max(1, tbb::info::default_concurrency()));
    const unsigned limit = max_threads == 0 ? cores : std::min(max_threads, cores);
    // At most one arena per core count; never destroyed, as renders may run until exit.
    static std::mutex mutex;
    static auto* arenas = new std::map<unsigned, tbb::task_arena*>;
    std::lock_guard lock(mutex);
    tbb::task_arena*& arena = (*arenas)[limit];
    if (arena == nullptr)
        arena = new tbb::task_arena(static_cast<int>(limit), 1, tbb::task_arena::priority::high);
    return *arena;
}

irow_processor_v1* find_row_processor(icomponent_v1& component)
{
    iobject* face = nullptr;
    if (!component.query_interface("irow_processor_v1", &face) || face == nullptr)
        return nullptr;
    return static_cast<irow_processor_v1*>(face);
}

void render_row(icomponent_v1& component, irow_processor_v1* rows, const OfxRectI& window, int y,
                const ofx_image_view& src, const ofx_image_view& dst)
{
    const std::optional<rgba_depth> in_depth = rgba_depth_from_bits(src.depth);
    const std::optional<rgba_depth> out_depth = rgba_depth_from_bits(dst.depth);
    if (src.data == nullptr || dst.data == nullptr || !in_depth || !out_depth)
        return;
    if (y < dst.bounds.y1 || y >= dst.bounds.y2 || y < src.bounds.y1 || y >= src.bounds.y2)
        return;
    const int x_begin = std::max({window.x1, dst.bounds.x1, src.bounds.x1});
    const int x_end = std::min({window.x2, dst.bounds.x2, src.bounds.x2});
    if (rows != nullptr && x_begin < x_end &&
        rows->process_row(x_begin, y, src.depth, src.pixel(x_begin, y), dst.depth, dst.pixel(x_begin, y),
                          x_end - x_begin))
        return;
    for (int x = x_begin; x < x_end; ++x) {
        const argb_float in = read_rgba_pixel(*in_depth, src.pixel(x, y));
        argb_float out = in;
        component.process_pixel(x, y, in, &out);
        write_rgba_pixel(*out_depth, dst.pixel(x, y), out);
    }
}

void render_window_rows(icomponent_v1& component, const OfxRectI& window, const ofx_image_view& src,
                        const ofx_image_view& dst, tbb::task_arena& arena)
{
    // Only rows inside both images are ever written, so a window that reaches far beyond
    // them (a host may send any four integers) costs nothing for the rows outside.
    const int y_begin = std::max({window.y1, dst.bounds.y1, src.bounds.y1});
    const int y_end = std::min({window.y2, dst.bounds.y2, src.bounds.y2});
    if (y_begin >= y_end)
        return;
    irow_processor_v1* const row_face = find_row_processor(component);
    const char loop_token = 0;
    const auto rows = [&] {
        tbb::parallel_for(tbb::blocked_range<int>(y_begin, y_end, 1), [&](const tbb::blocked_range<int>& range) {
            take_over_from_other_threads(&loop_token);
            for (int y = range.begin(); y < range.end(); ++y)
                render_row(component, row_face, window, y, src, dst);
            announce_to_other_threads(&loop_token);
        });
    };
    announce_to_other_threads(&loop_token);
    if constexpr (thread_checker_build) {
        // A busy arena hands its functor to one of its own threads in a way the checker
        // can't follow; the rows themselves are the same without the arena's priority.
        (void)arena;
        rows();
    } else {
        arena.execute(rows);
    }
    take_over_from_other_threads(&loop_token);
}

}  // namespace vl1
