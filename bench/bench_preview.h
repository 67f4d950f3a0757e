// The editor's preview pass at proxy size, as the preview thread runs it while the user drags
// a control: the proxy size found from one timed full pass over the frame, then passes whose
// parameter changes each time, so each one rebuilds the table too.
#pragma once

#include <memory>

#include "bench/bench_frame.h"
#include "effect/hueloom.h"
#include "ofx/ofx_preview.h"

namespace vl1::bench {

class preview_session {
public:
    /// `frame` and `effect` must outlive the session.
    preview_session(rgba_float_frame& frame, std::shared_ptr<hueloom> effect);

    /// One pass at proxy size, the wheel's angle nudged first.
    void proxy_pass();

    /// The proxy picture's size.
    uint64_t proxy_width() const;
    uint64_t proxy_height() const;

private:
    std::shared_ptr<hueloom> effect;
    preview_renderer renderer;
    float angle;
    bool nudged = false;
};

}  // namespace vl1::bench
