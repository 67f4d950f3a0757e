// Mouse events handed straight to a control, without a display, as the toolkit's events
// reach it once read.
#pragma once

#include <string>
#include <vector>

#include "gui/control.h"
#include "gui/pointer_event.h"

namespace hueloom_test {

using vl1::gui::pointer_event;
constexpr auto press = pointer_event::type::press;
constexpr auto drag = pointer_event::type::drag;
constexpr auto release = pointer_event::type::release;
enum modifier { no_modifier = 0, shift = 1, alt = 2 };

/// `button` 1 (left) to 3 (right), held except on release.
template <typename Control>
int mouse(Control& c, pointer_event::type what, int button, int x, int y, int modifiers = no_modifier)
{
    pointer_event e;
    e.what = what;
    e.x = x;
    e.y = y;
    e.buttons = what == release ? 0 : 1 << (button - 1);
    e.shift = (modifiers & shift) != 0;
    e.alt = (modifiers & alt) != 0;
    return c.on_pointer(e);
}

template <typename Control>
int wheel(Control& c, int x, int y, int dy)
{
    pointer_event e;
    e.what = pointer_event::type::wheel;
    e.x = x;
    e.y = y;
    e.wheel_dy = dy;
    return c.on_pointer(e);
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
