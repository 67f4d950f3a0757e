// The editor's preview passes as the preview thread runs them: at full size when the user
// lets go of a control, at the proxy size found from one timed full pass while the user
// drags. The parameter changes before each pass, so each one rebuilds the table too. Also
// the pictures' first making from the frame and the 8-bit conversion of one shown picture.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

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
    /// One pass at full size (the long side at most 3840), the angle nudged first.
    void full_pass();
    /// The frame box-filtered into the full-size pictures, as each opening of the editor does.
    void build_full_images();
    /// The last full picture converted to what the editor draws, at 1:1 or, with a reduction
    /// k, as shown at a k-th of its size (a 4K picture fitted into the editor takes 4).
    void convert_for_display(int reduction);

    /// The full and the proxy picture's size.
    uint64_t full_width() const;
    uint64_t full_height() const;
    uint64_t proxy_width() const;
    uint64_t proxy_height() const;

private:
    void nudged_pass(bool editing);

    std::shared_ptr<hueloom> effect;
    preview_renderer renderer;
    float angle;
    bool nudged = false;
    std::vector<uint32_t> shown;
};

}  // namespace vl1::bench
