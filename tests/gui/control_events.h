// Mouse events handed straight to a control, without a display: the toolkit's event state
// is set as the window system would set it, then the control's handle() runs.
#pragma once

#include <FL/Fl.H>
#include <FL/Fl_Widget.H>

#include <string>
#include <vector>

#include "gui/control.h"

namespace hueloom_test {

/// `button` 1 (left) to 3 (right); `modifiers` e.g. FL_ALT or FL_SHIFT.
inline int mouse(Fl_Widget& w, int event, int button, int x, int y, int modifiers = 0)
{
    Fl::e_x = x;
    Fl::e_y = y;
    Fl::e_keysym = FL_Button + button;
    Fl::e_state = modifiers | (event == FL_RELEASE ? 0 : FL_BUTTON1 << (button - 1));
    return w.handle(event);
}

inline int wheel(Fl_Widget& w, int x, int y, int dy, int modifiers = 0)
{
    Fl::e_x = x;
    Fl::e_y = y;
    Fl::e_dx = 0;
    Fl::e_dy = dy;
    Fl::e_state = modifiers;
    return w.handle(FL_MOUSEWHEEL);
}

/// What a control told its listener, in order: 'b' begin, 'v' value changed, 'e' end.
class recording_listener : public vl1::gui::control_listener {
public:
    void valueChanged(vl1::gui::CVLControl* c) override { calls.push_back('v'), values.push_back(c->getValue()); }
    void controlBeginEdit(vl1::gui::CVLControl*) override { calls.push_back('b'); }
    void controlEndEdit(vl1::gui::CVLControl*) override { calls.push_back('e'); }

    std::string take()
    {
        std::string s(calls.begin(), calls.end());
        calls.clear();
        return s;
    }

    std::vector<char> calls;
    std::vector<float> values;
};

}  // namespace hueloom_test
