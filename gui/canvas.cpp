#include "gui/canvas.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/fl_draw.H>
#include <FL/x.H>
#include <cairo/cairo-xlib.h>

#include <cmath>

#include "gui/zoom.h"

// Last: the layout of an X region, whose macros (MIN, MAX, TRUE) nothing below uses.
#include <X11/Xregion.h>

namespace vl1::gui {

canvas::canvas(const Fl_Widget* widget)
{
    const Fl_Window* w = Fl_Window::current();
    const int width = w != nullptr ? w->w() : 1;
    const int height = w != nullptr ? w->h() : 1;
    surface = cairo_xlib_surface_create(fl_display, fl_window, fl_visual->visual, width, height);
    context = cairo_create(surface);
    // The toolkit's clip is a region, often of several rectangles (controls damaged apart
    // from each other). Its bounding box would let a background painted here cover controls
    // between them that aren't drawn again, and the double buffer shows the whole box.
    const Fl_Region region = fl_clip_region();
    if (region == nullptr) {
        cairo_rectangle(context, 0, 0, width, height);
    } else {
        for (long i = 0; i < region->numRects; ++i) {
            const BOX& r = region->rects[i];
            cairo_rectangle(context, r.x1, r.y1, r.x2 - r.x1, r.y2 - r.y1);
        }
    }
    cairo_clip(context);
    const double zoom = zoom_of(widget);
    cairo_scale(context, zoom, zoom);
}

canvas::~canvas()
{
    cairo_destroy(context);
    cairo_surface_flush(surface);
    cairo_surface_destroy(surface);
}

void canvas::set_colour(int r, int g, int b, int a)
{
    cairo_set_source_rgba(context, r / 255.0, g / 255.0, b / 255.0, a / 255.0);
}

void canvas::rounded_rect(double x, double y, double w, double h, double radius)
{
    if (radius <= 0.0) {
        cairo_rectangle(context, x, y, w, h);
        return;
    }
    const double r = std::fmin(radius, std::fmin(w, h) * 0.5);
    cairo_new_sub_path(context);
    cairo_arc(context, x + w - r, y + r, r, -M_PI / 2, 0);
    cairo_arc(context, x + w - r, y + h - r, r, 0, M_PI / 2);
    cairo_arc(context, x + r, y + h - r, r, M_PI / 2, M_PI);
    cairo_arc(context, x + r, y + r, r, M_PI, 3 * M_PI / 2);
    cairo_close_path(context);
}

}  // namespace vl1::gui
