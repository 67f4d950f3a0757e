#include "gui/cvl_text.h"

#include <FL/Fl.H>
#include <FL/Fl_Group.H>
#include <FL/fl_draw.H>

#include "gui/zoom.h"

namespace vl1::gui {

CVLTextEdit::CVLTextEdit(int x, int y, int w, int h, Fl_Widget* under) : Fl_Input(x, y, w, h), under(under)
{
    box(FL_NO_BOX);
    textfont(FL_HELVETICA);
    textsize(to_pixels(12, zoom_of(this)));
    cursor_color(fl_rgb_color(200, 200, 200));
    selection_color(fl_rgb_color(100, 100, 100));
    when(FL_WHEN_NEVER);
}

void CVLTextEdit::setText(const std::string& text)
{
    value(text.c_str());
    redraw();
}

void CVLTextEdit::draw()
{
    // Without a box of its own the field shows the control below; that one is drawn first
    // and the text is then drawn whole over it.
    if (under != nullptr) {
        fl_push_clip(x(), y(), w(), h());
        under->draw();
        fl_pop_clip();
    }
    clear_damage(FL_DAMAGE_ALL);
    Fl_Input::draw();
}

int CVLTextEdit::handle(int event)
{
    if (event == FL_KEYBOARD && (Fl::event_key() == FL_Enter || Fl::event_key() == FL_KP_Enter) &&
        on_enter != nullptr) {
        on_enter(on_enter_data);
        return 1;
    }
    const int used = Fl_Input::handle(event);
    if (used && (event == FL_KEYBOARD || event == FL_PASTE || event == FL_PUSH || event == FL_DRAG))
        redraw();
    return used;
}

CVLTextLabel::CVLTextLabel(int x, int y, int w, int h, const std::string& text) : Fl_Widget(x, y, w, h), text(text)
{
    box(FL_NO_BOX);
    labelfont(FL_HELVETICA);
    labelsize(to_pixels(12, zoom_of(this)));
    labelcolor(fl_rgb_color(200, 200, 200));
}

void CVLTextLabel::setText(const std::string& value)
{
    text = value;
    set_shown(visible());
}

void CVLTextLabel::set_shown(bool shown)
{
    shown ? show() : hide();
    if (parent() != nullptr)
        parent()->damage(FL_DAMAGE_ALL, x(), y(), w(), h());
    redraw();
}

void CVLTextLabel::draw()
{
    fl_font(labelfont(), labelsize());
    fl_color(labelcolor());
    const int indent = to_pixels(5, zoom_of(this));
    fl_draw(text.c_str(), x() + indent, y(), w() - indent, h(), FL_ALIGN_LEFT | FL_ALIGN_INSIDE | FL_ALIGN_CLIP, nullptr,
            0);
}

}  // namespace vl1::gui

#include <mutex>
#include <set>

namespace vl1::gui {

const char* persistent_text(const std::string& text)
{
    static std::mutex lock;
    static std::set<std::string> texts;
    std::lock_guard guard(lock);
    return texts.insert(text).first->c_str();
}

}  // namespace vl1::gui
