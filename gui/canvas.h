// A cairo context on the drawable the toolkit is drawing into, for anti-aliased shapes and
// scaled pictures. Made inside a widget's draw(), gone at the end of it.
#pragma once

#include <cairo/cairo.h>

namespace vl1::gui {

class canvas {
public:
    /// Clipped to the toolkit's current clip region, rectangle by rectangle.
    canvas();
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
