#include "gui/cvl_color_wheel_xy_pad.h"

#include <FL/Fl.H>
#include <FL/Fl_Group.H>

#include <cmath>

#include "gui/canvas.h"
#include "gui/cvl_bitmap.h"
#include "gui/zoom.h"

namespace vl1::gui {

CVLColorWheelXYPad::CVLColorWheelXYPad(int x, int y, int w, int h, control_listener* listener, int32_t tag)
    : pointer_control(x, y, w, h, listener, tag, wheel::value_min, wheel::value_max)
{
    box(FL_NO_BOX);
    CVLControl::setValue(wheel::centre_value);
    // The order matters: the reach is taken with the thinner frame, the ring drawn with 3.
    setFrameWidth(2.5);
    setRoundRectRadius(12.0);
    setFrameWidth(3.0);
}

bool CVLColorWheelXYPad::setValue(float v)
{
    const bool changed = CVLControl::setValue(v);
    if (!std::isnan(v))
        wheel::polar_from_value(v, max_radius, current);
    if (changed)
        invalidate();
    return changed;
}

void CVLColorWheelXYPad::set_strength(float percent)
{
    if (percent == get_strength())
        return;
    current.strength_percent = percent;
    setValue(wheel::value_for_strength(get_angle(), percent, max_radius));
}

void CVLColorWheelXYPad::set_angle(float degrees)
{
    if (degrees == get_angle())
        return;
    current.angle_degrees = degrees;
    setValue(wheel::value_for_angle(degrees, get_strength(), max_radius));
}

void CVLColorWheelXYPad::setRoundRectRadius(double radius)
{
    if (radius != marker_size) {
        marker_size = radius;
        invalidate();
    }
    max_radius = wheel::max_radius_for(radius, frame_width, points_of(this).w);
}

void CVLColorWheelXYPad::setFrameWidth(double width)
{
    if (width != frame_width) {
        frame_width = width;
        invalidate();
    }
}

void CVLColorWheelXYPad::set_background(std::shared_ptr<CVLBitmap> picture)
{
    background = std::move(picture);
    invalidate();
}

void CVLColorWheelXYPad::set_frame_colour(int r, int g, int b, int a)
{
    frame_rgba[0] = r, frame_rgba[1] = g, frame_rgba[2] = b, frame_rgba[3] = a;
    invalidate();
}

void CVLColorWheelXYPad::set_fill_colour(int r, int g, int b, int a)
{
    fill_rgba[0] = r, fill_rgba[1] = g, fill_rgba[2] = b, fill_rgba[3] = a;
    invalidate();
}

bool CVLColorWheelXYPad::hit(double px, double py) const
{
    const point_box b = points_of(this);
    return wheel::hits(px, py, b.x, b.y, b.w, b.h, max_radius);
}

void CVLColorWheelXYPad::draw()
{
    canvas cr(this);
    const point_box b = points_of(this);
    if (background && !background->empty())
        background->draw_stretched(cr, b.x, b.y, b.w, b.h);
    const wheel::point p = wheel::marker_point(getValue(), max_radius);
    const double left = b.x + (b.w - marker_size) * p.x, top = b.y + (b.h - marker_size) * p.y;
    const double half = marker_size / 2;
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_DEFAULT);
    cairo_new_path(cr);
    cairo_arc(cr, left + half, top + half, half, 0, 2 * M_PI);
    cr.set_colour(fill_rgba[0], fill_rgba[1], fill_rgba[2], fill_rgba[3]);
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, frame_width);
    cr.set_colour(frame_rgba[0], frame_rgba[1], frame_rgba[2], frame_rgba[3]);
    cairo_stroke(cr);
}

void CVLColorWheelXYPad::move_to(double mouse_x, double mouse_y)
{
    const point_box b = points_of(this);
    const wheel::point p = wheel::point_under_mouse(mouse_x, mouse_y, b.x, b.y, b.w, b.h, marker_size);
    if (setValue(wheel::pack(p)))
        notifyValueChanged();
}

bool CVLColorWheelXYPad::reset_to_centre()
{
    if (getValue() == getDefaultValue())
        return false;
    beginEdit();
    CVLControl::setValue(getDefaultValue());
    current = {};
    notifyValueChanged();
    invalidate();
    endEdit();
    return true;
}

int CVLColorWheelXYPad::on_pointer(const pointer_event& e)
{
    switch (e.what) {
    case pointer_event::type::press:
        if (!hit(e.x, e.y))
            return 0;
        if (e.buttons == pointer_event::right_button)
            return reset_to_centre() ? 1 : 0;
        if (e.buttons != pointer_event::left_button)
            return 0;
        if (isEditing())
            endEdit();  // a gesture whose release never came
        dragging = true;
        beginEdit();
        move_to(e.x, e.y);
        return 1;
    case pointer_event::type::drag:
        if (!dragging)
            return 0;
        move_to(e.x, e.y);
        return 1;
    case pointer_event::type::release:
        if (!dragging)
            return 0;
        dragging = false;
        endEdit();
        return 1;
    case pointer_event::type::wheel:
        return 0;  // the panel's scroller takes it
    }
    return 0;
}

}  // namespace vl1::gui
