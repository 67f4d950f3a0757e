#include "gui/zoom.h"

#include <cmath>

namespace vl1::gui {

double zoom_of(const Fl_Widget* widget)
{
    for (const Fl_Widget* w = widget; w != nullptr; w = w->parent()) {
        if (const auto* frame = dynamic_cast<const zoomed_frame*>(w))
            return frame->get_zoom();
    }
    return 1.0;
}

int to_pixels(double points, double zoom) { return static_cast<int>(std::lround(points * zoom)); }

point_box points_of(const Fl_Widget* widget)
{
    const double z = zoom_of(widget);
    return {widget->x() / z, widget->y() / z, widget->w() / z, widget->h() / z};
}

}  // namespace vl1::gui
