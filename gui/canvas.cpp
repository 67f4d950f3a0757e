#include "gui/canvas.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/fl_draw.H>
#include <FL/x.H>
#include <cairo/cairo-xlib.h>

#include <cmath>

namespace vl1::gui {

canvas::canvas()
{
    const Fl_Window* w = Fl_Window::current();
    const int width = w != nullptr ? w->w() : 1;
    const int height = w != nullptr ? w->h() : 1;
    surface = cairo_xlib_surface_create(fl_display, fl_window, fl_visual->visual, width, height);
    context = cairo_create(surface);
    int x = 0, y = 0, cw = 0, ch = 0;
    fl_clip_box(0, 0, width, height, x, y, cw, ch);
    cairo_rectangle(context, x, y, cw, ch);
    cairo_clip(context);
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
