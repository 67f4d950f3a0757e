#include "gui/pointer_control.h"

#include <FL/Fl_Group.H>

#include "gui/zoom.h"

namespace vl1::gui {

pointer_control::pointer_control(int x, int y, int w, int h, control_listener* listener, int32_t tag, float min,
                                 float max)
    : Fl_Widget(x, y, w, h), CVLControl(listener, tag, min, max)
{
}

void pointer_control::invalidate()
{
    if (parent() != nullptr)
        parent()->damage(FL_DAMAGE_ALL, x(), y(), w(), h());
    else
        redraw();
}

int pointer_control::handle(int event)
{
    if (const auto pointer = read_pointer_event(event, zoom_of(this)))
        return on_pointer(*pointer);
    if (event == FL_ACTIVATE || event == FL_DEACTIVATE)
        invalidate();
    return Fl_Widget::handle(event);
}

}  // namespace vl1::gui
