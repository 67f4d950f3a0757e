#include "gui/pointer_event.h"

#include <FL/Enumerations.H>
#include <FL/Fl.H>

namespace vl1::gui {

std::optional<pointer_event> read_pointer_event(int fltk_event, double zoom)
{
    pointer_event e;
    switch (fltk_event) {
    case FL_PUSH:
        e.what = pointer_event::type::press;
        break;
    case FL_DRAG:
        e.what = pointer_event::type::drag;
        break;
    case FL_RELEASE:
        e.what = pointer_event::type::release;
        break;
    case FL_MOUSEWHEEL:
        e.what = pointer_event::type::wheel;
        e.wheel_dx = Fl::event_dx();
        e.wheel_dy = Fl::event_dy();
        break;
    default:
        return std::nullopt;
    }
    e.x = Fl::event_x() / zoom;
    e.y = Fl::event_y() / zoom;
    // FL_BUTTON1..3 are bits 24..26 of the event state.
    e.buttons = (Fl::event_buttons() >> 24) & 7;
    e.shift = (Fl::event_state() & FL_SHIFT) != 0;
    e.alt = (Fl::event_state() & FL_ALT) != 0;
    return e;
}

}  // namespace vl1::gui
