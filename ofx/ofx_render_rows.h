// The pixel loop of a render: every row of the render window through the component's
// process_pixel, rows in parallel. Kept apart from the render action so that anything that
// must measure or check the loop the host gets (the benchmark) runs this very code.
#pragma once

#include <tbb/task_arena.h>

#include "framework/icomponent.h"
#include "framework/irow_processor.h"
#include "ofx/ofx_image_view.h"

namespace vl1 {

/// Row y of `window`: each pixel inside both images' bounds is read, passed through
/// process_pixel and written. Pixels outside either image, or of an image with a null data
/// pointer or a depth other than 8, 16 or 32 bits, stay untouched. With `rows` (the
/// component's irow_processor_v1) the run of pixels goes through it in one call, unless it
/// declines the depths.
void render_row(icomponent_v1& component, irow_processor_v1* rows, const OfxRectI& window, int y,
                const ofx_image_view& src, const ofx_image_view& dst);

/// The component's row-wise face, or null when it has none.
irow_processor_v1* find_row_processor(icomponent_v1& component);

/// All rows of `window`, one task per row, run inside `arena`; row-wise where the component
/// offers it.
void render_window_rows(icomponent_v1& component, const OfxRectI& window, const ofx_image_view& src,
                        const ofx_image_view& dst, tbb::task_arena& arena);

/// The arena of the render action for a host that lets a render take `max_threads` threads,
/// the host's own calling thread among them; 0 stands for all cores, and so does any number
/// beyond them. High priority, ahead of whatever else the process has queued on TBB. One
/// arena per limit, made at first use and kept for the life of the process.
tbb::task_arena& render_arena(unsigned max_threads = 0);

}  // namespace vl1
