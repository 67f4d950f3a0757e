// A horizontal slider that draws itself: a rounded dark track as high as the handle, a mark
// at the default value, and above the track the name with the current value on the left and
// the maximum on the right.
//
// A gesture is framed for the listener as controlBeginEdit, any number of valueChanged,
// controlEndEdit: a drag, a reset to the default (right click, or Alt with the left button)
// and each step of the mouse wheel are one gesture each.
#pragma once

#include <cairo/cairo.h>

#include <memory>
#include <string>

#include "gui/pointer_control.h"
#include "gui/zoom.h"

namespace vl1::gui {

class CVLBitmap;

class CVLRoundedGreySlider : public pointer_control {
public:
    /// Offset of the track and the handle below the view's top, in points; the texts sit above.
    static constexpr int track_offset = 14;

    /// The handle's left edge runs from `handle_min` to `handle_max` points right of the
    /// view's left edge as the value goes from `min` to `max`.
    CVLRoundedGreySlider(int x, int y, int w, int h, control_listener* listener, int32_t tag, int handle_min,
                         int handle_max, std::shared_ptr<CVLBitmap> handle, const std::string& name, float min = 0.0f,
                         float max = 200.0f, float default_value = 100.0f);

    float getDefaultValue() const { return default_value; }
    void setDefaultValue(float v) { default_value = v; invalidate(); }
    const std::string& get_name() const { return name; }
    void set_unit(const std::string& text) { unit = text; invalidate(); }
    void set_show_default_mark(bool show) { show_default_mark = show; invalidate(); }
    void set_right_click_resets(bool resets) { right_click_resets = resets; }
    void set_wheel_enabled(bool enabled) { wheel_enabled = enabled; }
    bool setValue(float v) override;

    /// Left edge of the handle, in window points, for a value of `normalized` (0..1).
    double handle_left(float normalized) const;

    void draw() override;
    /// Left button: the handle jumps under the mouse and follows it until release, a tenth as
    /// far with Shift. Right button, or Alt and the left: the default as one gesture. The
    /// wheel: a step per notch, up and right raising the value. 1 when the event was taken.
    int on_pointer(const pointer_event& e) override;

private:
    float normalized_under_mouse(double mouse_x) const;
    void drag_to(const pointer_event& e);
    void change_as_gesture(float v);
    void wheel_step(int notches, bool fine);
    void set_and_notify(float v);
    void draw_texts(cairo_t* cr, const point_box& b) const;

    int handle_min, handle_max;
    std::shared_ptr<CVLBitmap> handle_picture;
    std::string name;
    std::string unit;
    float default_value;
    bool show_default_mark = true;
    bool right_click_resets = true;
    bool wheel_enabled = true;
    bool dragging = false;
    // While dragging: how far the handle lags the mouse (normalised), so that a fine move
    // with Shift never makes it jump, and the mouse's last x.
    float mouse_offset = 0.0f;
    double last_mouse_x = 0;
};

}  // namespace vl1::gui
