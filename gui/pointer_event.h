// A mouse event as the controls act on it, free of the toolkit: the toolkit's event state is
// read into it in one place, and tests hand controls events without a display.
#pragma once

#include <optional>

namespace vl1::gui {

struct pointer_event {
    enum class type { press, drag, release, wheel };
    static constexpr int left_button = 1, middle_button = 2, right_button = 4;

    type what = type::press;
    double x = 0, y = 0;  // window points
    int buttons = 0;   // the buttons held, a mask of the *_button values; none on release
    bool shift = false, alt = false;
    int wheel_dx = 0, wheel_dy = 0;  // notches; dy > 0 turns down, toward the user
};

/// The pointer event of the toolkit's `fltk_event` (push, drag, release, mouse wheel) from
/// its current event state, its position in points at `zoom` pixels per point; nothing for
/// any other event.
std::optional<pointer_event> read_pointer_event(int fltk_event, double zoom);

}  // namespace vl1::gui
