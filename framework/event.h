// The one notification record of the framework, passed by value from a parameter or the
// adapter through the host object to the component.
#pragma once

#include <cstdint>
#include <memory>

#include "framework/uid.h"

namespace vl1 {

class image;

enum event_type : int32_t {
    event_initialized = 0,
    event_terminated = 1,
    event_param_set_by_host = 2,
    event_param_changed = 3,
    event_param_enabled_changed = 4,
    event_render_setup = 5,
    event_render = 6,
    event_render_setdown = 7,
    event_schedule_render = 8,
    event_effect_cancelled = 9,
    event_unknown_parameter = 10,
};

/// Images are weak because a notification may outlive a preview pass; a receiver locks them
/// and ignores an empty one.
struct event {
    event_type type = event_initialized;
    uid param;                     // the parameter concerned, else no_uid
    std::weak_ptr<image> source;  // only in the preview pass's render setup and render
    std::weak_ptr<image> result;  // only in the preview pass's render

    event() = default;
    explicit event(event_type t, uid p = no_uid) : type(t), param(p) {}
};

}  // namespace vl1
