#include <FL/Fl.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/fl_draw.H>

#include <algorithm>
#include <cmath>

#include "gui/cvl_image_preview.h"
#include "gui/zoom.h"

namespace vl1::gui {
namespace {

constexpr double bar_points = 16;
constexpr int bar_steps = 10000;  // scroll bar positions; the bars work in integers

double clamp_zoom(double z) { return std::clamp(z, CVLScrollView::min_zoom, CVLScrollView::max_zoom); }

}  // namespace

CVLScrollView::CVLScrollView(int x, int y, int w, int h, CVLImagePreview* content)
    : Fl_Group(x, y, w, h), content(content)
{
    box(FL_FLAT_BOX);
    color(FL_BLACK);
    add(content);
    bar_width = to_pixels(bar_points, zoom_of(this));
    horizontal = new Fl_Scrollbar(x, y + h - bar_width, w - bar_width, bar_width);
    horizontal->type(FL_HORIZONTAL);
    vertical = new Fl_Scrollbar(x + w - bar_width, y, bar_width, h - bar_width);
    for (Fl_Scrollbar* bar : {horizontal, vertical}) {
        bar->bounds(0, bar_steps);
        bar->callback(on_scrollbar, this);
        bar->color(fl_rgb_color(47, 47, 47));
        bar->hide();
    }
    end();
}

double CVLScrollView::fit_factor() const
{
    int iw = 0, ih = 0;
    content->get_image_rect(iw, ih);
    if (iw <= 0 || ih <= 0)
        return 1.0;
    // The view in points: a zoom of 1 shows a picture pixel as a point.
    const double device = zoom_of(this);
    const double rw = w() / device, rh = h() / device;
    double f = 0;
    if (iw <= ih) {
        f = rh / ih;
        if (rw < f * iw)
            f = rw / iw;
    } else {
        f = rw / iw;
        if (rh < f * ih)
            f = rh / ih;
    }
    return f;
}

double CVLScrollView::pixels_per_picture_pixel() const { return zoom_factor * zoom_of(this); }

void CVLScrollView::set_zoom(double z)
{
    z = clamp_zoom(z);
    if (z == zoom_factor)
        return;
    zoom_factor = z;
    relayout_content();
}

void CVLScrollView::relayout_content()
{
    int iw = 0, ih = 0;
    content->get_image_rect(iw, ih);
    const double scale = pixels_per_picture_pixel();
    const int cw = static_cast<int>(std::lround(iw * scale)), ch = static_cast<int>(std::lround(ih * scale));
    // A bar takes room only where the picture overhangs the view.
    const bool need_h = cw > w(), need_v = ch > h();
    const int vw = w() - (need_v ? bar_width : 0), vh = h() - (need_h ? bar_width : 0);
    const int left = cw <= vw ? (vw - cw) / 2 : -static_cast<int>(std::lround((cw - vw) * position_x));
    const int top = ch <= vh ? (vh - ch) / 2 : -static_cast<int>(std::lround((ch - vh) * position_y));
    content->resize(x() + left, y() + top, std::max(cw, 1), std::max(ch, 1));

    horizontal->resize(x(), y() + h() - bar_width, vw, bar_width);
    vertical->resize(x() + w() - bar_width, y(), bar_width, vh);
    const auto show_bar = [](Fl_Scrollbar* bar, bool shown, double position, int view, int extent) {
        if (!shown) {
            bar->hide();
            return;
        }
        bar->slider_size(std::clamp(double(view) / extent, 0.05, 1.0));
        bar->value(static_cast<int>(std::lround(position * bar_steps)));
        bar->show();
    };
    show_bar(horizontal, need_h, position_x, vw, cw);
    show_bar(vertical, need_v, position_y, vh, ch);
    redraw();
}

void CVLScrollView::resize(int nx, int ny, int nw, int nh)
{
    Fl_Widget::resize(nx, ny, nw, nh);
    relayout_content();
}

void CVLScrollView::pan_to(double px, double py)
{
    position_x = std::clamp(px, 0.0, 1.0);
    position_y = std::clamp(py, 0.0, 1.0);
    relayout_content();
}

void CVLScrollView::on_scrollbar(Fl_Widget* bar, void* self)
{
    auto* view = static_cast<CVLScrollView*>(self);
    const double v = static_cast<Fl_Scrollbar*>(bar)->value() / double(bar_steps);
    if (bar == view->horizontal)
        view->pan_to(v, view->position_y);
    else
        view->pan_to(view->position_x, v);
}

void CVLScrollView::zoom_around(double new_zoom, int mouse_x, int mouse_y)
{
    new_zoom = clamp_zoom(new_zoom);
    if (new_zoom == zoom_factor || zoom_factor <= 0.0)
        return;
    // The picture point under the mouse stays under it.
    const double old_scale = pixels_per_picture_pixel();
    const double px = (mouse_x - content->x()) / old_scale, py = (mouse_y - content->y()) / old_scale;
    int iw = 0, ih = 0;
    content->get_image_rect(iw, ih);
    zoom_factor = new_zoom;
    const double scale = pixels_per_picture_pixel();
    const double overhang_x = iw * scale - w(), overhang_y = ih * scale - h();
    const double left = mouse_x - x() - px * scale, top = mouse_y - y() - py * scale;
    pan_to(overhang_x > 0 ? -left / overhang_x : position_x, overhang_y > 0 ? -top / overhang_y : position_y);
}

bool CVLScrollView::handle_zoom_key()
{
    if ((Fl::event_state() & FL_CTRL) == 0 || zoom_factor <= 0.0)
        return false;
    const int key = Fl::event_key();
    const char* text = Fl::event_text();
    const bool shift = (Fl::event_state() & FL_SHIFT) != 0;
    const bool plus = key == '+' || key == FL_KP + '+' || key == '=' || (text != nullptr && text[0] == '+');
    const bool minus = key == '-' || key == FL_KP + '-';
    const bool zero = key == '0' || key == FL_KP + '0';
    if (plus)
        set_zoom(zoom_factor * (shift ? 1.01 : 1.1));
    else if (minus)
        set_zoom(zoom_factor / (shift ? 1.01 : 1.1));
    else if (zero && (Fl::event_state() & FL_ALT) != 0)
        set_zoom(1.0);
    else if (zero)
        set_zoom(fit_factor() * 0.91);
    else
        return false;
    return true;
}

int CVLScrollView::handle(int event)
{
    switch (event) {
    case FL_MOUSEWHEEL: {
        const int distance = Fl::event_dy() != 0 ? -Fl::event_dy() : -Fl::event_dx();
        const double factor = (Fl::event_state() & FL_SHIFT) != 0 ? 1.05 : 1.09;
        if (distance > 0)
            zoom_around(zoom_factor * factor, Fl::event_x(), Fl::event_y());
        else if (distance < 0)
            zoom_around(zoom_factor / factor, Fl::event_x(), Fl::event_y());
        return 1;
    }
    case FL_PUSH:
        if (Fl_Group::handle(event) != 0 && Fl::pushed() != this && Fl::pushed() != content)
            return 1;  // a scroll bar took it
        if (Fl::event_button() != FL_LEFT_MOUSE)
            return 0;
        drag_x = Fl::event_x();
        drag_y = Fl::event_y();
        drag_position_x = position_x;
        drag_position_y = position_y;
        Fl::focus(this);
        return 1;
    case FL_DRAG: {
        if ((Fl::event_state() & FL_BUTTON1) == 0)
            return Fl_Group::handle(event);
        int iw = 0, ih = 0;
        content->get_image_rect(iw, ih);
        const double overhang_x = iw * pixels_per_picture_pixel() - w();
        const double overhang_y = ih * pixels_per_picture_pixel() - h();
        pan_to(overhang_x > 0 ? drag_position_x - (Fl::event_x() - drag_x) / overhang_x : position_x,
               overhang_y > 0 ? drag_position_y - (Fl::event_y() - drag_y) / overhang_y : position_y);
        return 1;
    }
    case FL_RELEASE:
        return 1;
    case FL_FOCUS:
    case FL_UNFOCUS:
        return 1;
    case FL_KEYBOARD:
    case FL_SHORTCUT:
        return handle_zoom_key() ? 1 : Fl_Group::handle(event);
    default:
        return Fl_Group::handle(event);
    }
}

void CVLScrollView::draw()
{
    fl_push_clip(x(), y(), w(), h());
    fl_rectf(x(), y(), w(), h(), FL_BLACK);
    draw_children();
    fl_pop_clip();
}

}  // namespace vl1::gui
