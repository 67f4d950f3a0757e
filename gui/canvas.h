// A cairo context on the drawable the toolkit is drawing into, for anti-aliased shapes and
// scaled pictures. Made inside a widget's draw(), gone at the end of it. It works in points:
// scaled by the zoom of the widget's frame.
#pragma once

#include <cairo/cairo.h>

class Fl_Widget;

namespace vl1::gui {

class canvas {
public:
    /// Clipped to the toolkit's current clip region, rectangle by rectangle, and scaled from
    /// points to pixels by the zoom of the frame that holds `widget`.
    explicit canvas(const Fl_Widget* widget);
    ~canvas();
    canvas(const canvas&) = delete;
    canvas& operator=(const canvas&) = delete;

    cairo_t* get() const { return context; }
    operator cairo_t*() const { return context; }

    /// Fill colour from 0..255 components.
    void set_colour(int r, int g, int b, int a = 255);
    /// A rectangle with corners of `radius`; 0 gives a plain rectangle.
    void rounded_rect(double x, double y, double w, double h, double radius);

private:
    cairo_surface_t* surface = nullptr;
    cairo_t* context = nullptr;
};

}  // namespace vl1::gui
