#include "gui/cvl_rounded_grey_slider.h"

#include <FL/Fl.H>
#include <FL/Fl_Group.H>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "gui/canvas.h"
#include "gui/cvl_bitmap.h"
#include "gui/zoom.h"

namespace vl1::gui {

namespace {

constexpr int track_bottom_margin = 4;
constexpr int text_height = 10;
constexpr int name_width = 100;
constexpr int maximum_width = 50;
/// A wheel step moves this much of the range; with Shift a tenth of it.
constexpr float wheel_fraction = 0.01f;
constexpr float fine_factor = 0.1f;

std::string formatted(const char* format, float v, const std::string& unit)
{
    char text[64];
    std::snprintf(text, sizeof text, format, static_cast<double>(v), unit.c_str());
    return text;
}

}  // namespace

CVLRoundedGreySlider::CVLRoundedGreySlider(int x, int y, int w, int h, control_listener* listener, int32_t tag,
                                           int handle_min, int handle_max, std::shared_ptr<CVLBitmap> handle,
                                           const std::string& name, float min, float max, float default_value)
    : pointer_control(x, y, w, h, listener, tag, min, max),
      handle_min(handle_min),
      handle_max(handle_max),
      handle_picture(std::move(handle)),
      name(name),
      default_value(default_value)
{
    box(FL_NO_BOX);
    CVLControl::setValue(default_value);
}

bool CVLRoundedGreySlider::setValue(float v)
{
    if (!CVLControl::setValue(v))
        return false;
    invalidate();
    return true;
}

double CVLRoundedGreySlider::handle_left(float normalized) const
{
    return points_of(this).x + handle_min + std::floor(normalized * static_cast<float>(handle_max - handle_min));
}

float CVLRoundedGreySlider::normalized_under_mouse(double mouse_x) const
{
    const double handle_width = handle_picture ? handle_picture->width() : 0.0;
    const int range = handle_max - handle_min;
    if (range <= 0)
        return 0.0f;
    return static_cast<float>((mouse_x - points_of(this).x - handle_min - handle_width / 2) / range);
}

void CVLRoundedGreySlider::set_and_notify(float v)
{
    if (setValue(v))
        notifyValueChanged();
}

void CVLRoundedGreySlider::drag_to(const pointer_event& e)
{
    const int range = handle_max - handle_min;
    if (e.shift && range > 0) {
        // Fine: a tenth of the mouse's way, and the handle stays where it is relative to it.
        const float n = getValueNormalized() + fine_factor * static_cast<float>(e.x - last_mouse_x) / range;
        mouse_offset = normalized_under_mouse(e.x) - std::clamp(n, 0.0f, 1.0f);
        set_and_notify(getMin() + std::clamp(n, 0.0f, 1.0f) * (getMax() - getMin()));
    } else {
        const float n = std::clamp(normalized_under_mouse(e.x) - mouse_offset, 0.0f, 1.0f);
        set_and_notify(getMin() + n * (getMax() - getMin()));
    }
    last_mouse_x = e.x;
}

void CVLRoundedGreySlider::change_as_gesture(float v)
{
    // A change that changes nothing makes no gesture, and so no empty undo step.
    if (std::clamp(v, getMin(), getMax()) == getValue())
        return;
    beginEdit();
    set_and_notify(v);
    endEdit();
}

void CVLRoundedGreySlider::wheel_step(int notches, bool fine)
{
    const float fraction = fine ? wheel_fraction * fine_factor : wheel_fraction;
    change_as_gesture(getValue() + static_cast<float>(notches) * fraction * (getMax() - getMin()));
}

int CVLRoundedGreySlider::on_pointer(const pointer_event& e)
{
    switch (e.what) {
    case pointer_event::type::press:
        if ((e.buttons & pointer_event::right_button) != 0 && right_click_resets) {
            change_as_gesture(default_value);
            return 1;
        }
        if (e.buttons != pointer_event::left_button)
            return 0;
        if (e.alt) {
            change_as_gesture(default_value);
            return 1;
        }
        if (isEditing())
            endEdit();  // a gesture whose release never came
        beginEdit();
        dragging = true;
        mouse_offset = 0.0f;  // the handle jumps under the mouse
        last_mouse_x = e.x;
        drag_to(e);
        return 1;
    case pointer_event::type::drag:
        if (!dragging)
            return 0;
        drag_to(e);
        return 1;
    case pointer_event::type::release:
        if (!dragging)
            return 0;
        dragging = false;
        endEdit();
        return 1;
    case pointer_event::type::wheel: {
        if (!wheel_enabled || dragging)
            return 0;
        const int notches = e.wheel_dy != 0 ? -e.wheel_dy : e.wheel_dx;
        if (notches != 0)
            wheel_step(notches, e.shift);
        return 1;
    }
    }
    return 0;
}

void CVLRoundedGreySlider::draw()
{
    canvas cr(this);
    const point_box b = points_of(this);
    const double alpha = active_r() ? 1.0 : 0.5;
    const double track_top = b.y + track_offset, track_bottom = b.y + b.h - track_bottom_margin;
    const double handle_width = handle_picture ? handle_picture->width() : 0.0;

    if (show_default_mark) {
        const float range = getMax() - getMin();
        const float f = range > 0.0f ? (default_value - getMin()) / range : 0.0f;
        const double mark_x = handle_left(f) + handle_width / 2;
        cairo_set_line_width(cr, 2.0);
        cr.set_colour(100, 100, 100, static_cast<int>(255 * alpha));
        cairo_move_to(cr, mark_x, track_top - 4);
        cairo_line_to(cr, mark_x, track_bottom + 4);
        cairo_stroke(cr);
    }

    cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
    const double track_height = track_bottom - track_top;
    cr.rounded_rect(b.x + 0.5, track_top + 0.5, b.w - 1.0, track_height - 1.0, track_height / 2);
    cr.set_colour(35, 35, 35, static_cast<int>(255 * alpha));
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, 1.0);
    cr.set_colour(100, 100, 100, static_cast<int>(255 * alpha));
    cairo_stroke(cr);
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_DEFAULT);

    if (handle_picture && !handle_picture->empty())
        handle_picture->draw(cr, handle_left(getValueNormalized()), track_top, handle_picture->width(),
                             handle_picture->height(), 0, 0, alpha);
    draw_texts(cr, b);
}

void CVLRoundedGreySlider::draw_texts(cairo_t* cr, const point_box& b) const
{
    cairo_select_font_face(cr, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, 10);
    const double grey = active_r() ? 150 / 255.0 : 100 / 255.0;
    const auto show = [&](const std::string& text, double left, double right, bool align_right) {
        cairo_text_extents_t extents{};
        cairo_text_extents(cr, text.c_str(), &extents);
        const double start = align_right ? right - extents.x_advance : left;
        cairo_save(cr);
        cairo_rectangle(cr, left, b.y, right - left, track_offset);
        cairo_clip(cr);
        cairo_move_to(cr, start, b.y + (text_height - extents.height) / 2 - extents.y_bearing);
        cairo_show_text(cr, text.c_str());
        cairo_restore(cr);
        return extents.x_advance;
    };
    cairo_set_source_rgb(cr, grey, grey, grey);
    show(formatted("%.2f%s", getMax(), unit), b.x + b.w - maximum_width, b.x + b.w, true);
    const double name_advance = show(name + ":", b.x, b.x + name_width, false);
    const double white = active_r() ? 1.0 : 0.6;
    cairo_set_source_rgb(cr, white, white, white);
    show(formatted(" %.2f%s", getValue(), unit), b.x + name_advance, b.x + name_width, false);
}

}  // namespace vl1::gui
