// The editor inside the host: opened from a render action, kept alive by a loop of its own
// on the render thread, and closed before the render goes on.
#pragma once

#include <memory>

#include "framework/icomponent.h"
#include "framework/ihost.h"
#include "ofx/ofx_image_view.h"
#include "ofx/ofx_preview.h"

namespace vl1 {

/// Opens the component's editor on `frame` (the render action's source image, valid until
/// this returns) and runs its loop until the user closes it. Returns at once, with a log
/// line, when there is no window system, no parent window, no view or no window, or when
/// another instance's editor is open in this process.
void RunGUILoop(const ofx_image_view& frame, const std::shared_ptr<icomponent_v1>& component,
                const std::shared_ptr<ihost_v1>& host,
                preview_renderer::clock_ms clock = steady_clock_ms);

}  // namespace vl1
