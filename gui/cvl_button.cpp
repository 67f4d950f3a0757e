#include "gui/cvl_button.h"

#include <FL/Fl.H>

#include <cmath>

#include "gui/canvas.h"
#include "gui/zoom.h"

namespace vl1::gui {

CVLButton::CVLButton(int x, int y, int w, int h, control_listener* listener, int32_t tag, style s,
                     const std::string& background_name)
    : Fl_Widget(x, y, w, h), CVLControl(listener, tag), button_style(s)
{
    if (!background_name.empty())
        background = std::make_shared<CVLBitmap>(background_name, 2.0);
    box(FL_NO_BOX);
}

bool CVLButton::setValue(float v)
{
    if (!CVLControl::setValue(v))
        return false;
    on = getValue() > 0.5f;
    redraw();
    return true;
}

void CVLButton::draw_pictures(cairo_t* cr, const CVLBitmap* icon_sheet)
{
    const point_box b = points_of(this);
    const CVLBitmap* ground = !active_r() && disabled_background ? disabled_background.get() : background.get();
    if (ground != nullptr)
        ground->draw(cr, b.x, b.y, b.w, b.h, 0, pressed ? ground->height() / 2 : 0);
    if (icon_sheet != nullptr && !icon_sheet->empty()) {
        const double iw = icon_sheet->width() / 2, ih = icon_sheet->height() / 2;
        const double ix = std::floor(b.x + (b.w - iw) / 2 + 0.5), iy = std::floor(b.y + (b.h - ih) / 2 + 0.5);
        icon_sheet->draw(cr, ix, iy, iw, ih, hovered ? iw : 0, on ? ih : 0, active_r() ? 1.0 : 0.5);
    }
}

void CVLButton::draw()
{
    canvas cr(this);
    draw_pictures(cr, icon.get());
}

void CVLButton::mouse_down()
{
    value_at_press = getValue();
    beginEdit();
    pressed = true;
    // The value follows the press; the listener hears of it when the mouse comes up.
    CVLControl::setValue(button_style == style::kick ? getMax() : (on ? getMin() : getMax()));
    redraw();
}

void CVLButton::mouse_up(bool inside)
{
    if (!inside)
        CVLControl::setValue(value_at_press);
    if (isEditing()) {
        if (getValue() != value_at_press) {
            notifyValueChanged();
            if (button_style == style::kick) {
                CVLControl::setValue(getMin());
                notifyValueChanged();
            }
        }
        endEdit();
    }
    pressed = false;
    on = getValue() > 0.5f;
    redraw();
}

int CVLButton::handle(int event)
{
    switch (event) {
    case FL_ENTER:
        hovered = true;
        redraw();
        return 1;
    case FL_LEAVE:
        hovered = false;
        redraw();
        return 1;
    case FL_PUSH:
        if (Fl::event_button() != FL_LEFT_MOUSE)
            return 0;
        mouse_down();
        return 1;
    case FL_DRAG: {
        const bool inside = Fl::event_inside(this) != 0;
        if (pressed != inside) {
            pressed = inside;
            redraw();
        }
        return 1;
    }
    case FL_RELEASE:
        if (Fl::event_button() == FL_LEFT_MOUSE)
            mouse_up(Fl::event_inside(this) != 0);
        return 1;
    default:
        return Fl_Widget::handle(event);
    }
}

}  // namespace vl1::gui
