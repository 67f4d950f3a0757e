// The common ground of the colour wheel and the sliders: a control that draws over what lies
// beneath it, with no background of its own, and acts on the mouse through pointer events.
#pragma once

#include <FL/Fl_Widget.H>

#include <cstdint>

#include "gui/control.h"
#include "gui/pointer_event.h"

namespace vl1::gui {

class pointer_control : public Fl_Widget, public CVLControl {
public:
    pointer_control(int x, int y, int w, int h, control_listener* listener, int32_t tag, float min, float max);

    /// Asks for a redraw of the control together with what lies beneath it.
    void invalidate();
    /// Mouse events go to on_pointer; being enabled or disabled redraws.
    int handle(int event) override;
    /// 1 when the event was taken.
    virtual int on_pointer(const pointer_event& e) = 0;
};

}  // namespace vl1::gui
