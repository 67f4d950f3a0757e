// The two further buttons of the widget set: the drawn text button and the blinking one.
#include <FL/Fl.H>
#include <FL/fl_draw.H>

#include "gui/canvas.h"
#include "gui/cvl_button.h"
#include "gui/zoom.h"

namespace vl1::gui {

CVLRoundedGreyButton::CVLRoundedGreyButton(int x, int y, int w, int h, control_listener* listener, int32_t tag,
                                           const std::string& title, style s)
    : CVLButton(x, y, w, h, listener, tag, s, ""), title(title)
{
}

void CVLRoundedGreyButton::setRightIcon(std::shared_ptr<CVLBitmap> picture, float alpha)
{
    right_icon = std::move(picture);
    right_icon_alpha = alpha;
    redraw();
}

void CVLRoundedGreyButton::draw()
{
    canvas cr(this);
    const point_box b = points_of(this);
    cr.rounded_rect(b.x + 0.5, b.y + 0.5, b.w - 1.0, b.h - 1.0, b.h * 0.5);
    if (is_pressed())
        cr.set_colour(130, 130, 130);
    else
        cr.set_colour(100, 100, 100);
    cairo_fill_preserve(cr);
    cr.set_colour(100, 100, 100);
    cairo_set_line_width(cr, 1.0);
    cairo_stroke(cr);

    cairo_select_font_face(cr, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, 14);
    cairo_text_extents_t text{};
    cairo_text_extents(cr, title.c_str(), &text);
    if (is_hovered())
        cr.set_colour(255, 255, 255);
    else
        cr.set_colour(200, 200, 200);
    const double left = b.x + (b.w - text.x_advance) / 2;
    cairo_move_to(cr, left, b.y + (b.h - text.height) / 2 - text.y_bearing);
    cairo_show_text(cr, title.c_str());

    if (right_icon && !right_icon->empty()) {
        // In the middle of the room behind the title, but never past the right edge.
        double ix = left + text.x_advance + (b.x + b.w - left - text.x_advance) * 0.5 + 5;
        ix = std::min(ix, b.x + b.w - right_icon->width());
        right_icon->draw(cr, ix, b.y + (b.h - right_icon->height()) / 2, right_icon->width(), right_icon->height(), 0, 0,
                         right_icon_alpha);
    }
}

CBlinkingButton::~CBlinkingButton() { Fl::remove_timeout(timer_tick, this); }

void CBlinkingButton::setBlinkParams(bool blink, int period)
{
    blinking = blink;
    period_ms = period;
    showing_second = false;
    time_left_ms = period;
    if (!second_icon)
        return;
    Fl::remove_timeout(timer_tick, this);
    if (blink)
        Fl::add_timeout(0.05, timer_tick, this);
    redraw();
}

void CBlinkingButton::setBlinkIcon(std::shared_ptr<CVLBitmap> second)
{
    second_icon = std::move(second);
    redraw();
}

void CBlinkingButton::on_idle(int elapsed_ms)
{
    if (!blinking)
        return;
    time_left_ms -= elapsed_ms;
    if (time_left_ms < 0) {
        showing_second = !showing_second;
        time_left_ms += period_ms;
        redraw();
    }
}

void CBlinkingButton::timer_tick(void* self)
{
    auto* button = static_cast<CBlinkingButton*>(self);
    button->on_idle(50);
    if (button->blinking)
        Fl::repeat_timeout(0.05, timer_tick, self);
}

void CBlinkingButton::draw()
{
    canvas cr(this);
    draw_pictures(cr, blinking && showing_second && second_icon ? second_icon.get() : icon.get());
}

}  // namespace vl1::gui
