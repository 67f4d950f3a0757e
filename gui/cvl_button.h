// Image buttons of the editor. The background picture holds the normal state above the
// pressed one; an icon picture is a sheet of 2 x 2 states: normal | hovered across, off | on
// down.
#pragma once

#include <FL/Fl_Widget.H>

#include <memory>
#include <string>

#include "gui/control.h"
#include "gui/cvl_bitmap.h"

namespace vl1::gui {

class CVLButton : public Fl_Widget, public CVLControl {
public:
    /// A kick button reports on, then goes back to off; an on-off button keeps its state.
    enum class style { kick, on_off };

    /// `background` names a resource, or is empty for none.
    CVLButton(int x, int y, int w, int h, control_listener* listener, int32_t tag, style s,
              const std::string& background);

    void set_icon(std::shared_ptr<CVLBitmap> icon) { this->icon = std::move(icon); redraw(); }
    void set_disabled_background(std::shared_ptr<CVLBitmap> picture) { disabled_background = std::move(picture); }
    bool setValue(float v) override;

    bool is_pressed() const { return pressed; }
    bool is_hovered() const { return hovered; }
    bool is_on() const { return on; }

    void draw() override;
    int handle(int event) override;

protected:
    /// Background and icon, as every button draws them.
    void draw_pictures(cairo_t* cr, const CVLBitmap* icon_sheet);

    std::shared_ptr<CVLBitmap> background, disabled_background, icon;

private:
    void mouse_down();
    void mouse_up(bool inside);

    style button_style;
    float value_at_press = 0.0f;
    bool pressed = false, hovered = false, on = false;
};

/// A drawn button with a text title, rounded ends and an optional icon behind the title.
class CVLRoundedGreyButton : public CVLButton {
public:
    CVLRoundedGreyButton(int x, int y, int w, int h, control_listener* listener, int32_t tag, const std::string& title,
                         style s);

    void setRightIcon(std::shared_ptr<CVLBitmap> picture, float alpha);
    void draw() override;

private:
    std::string title;
    std::shared_ptr<CVLBitmap> right_icon;
    float right_icon_alpha = 1.0f;
};

/// A button whose icon alternates with a second one while it blinks.
class CBlinkingButton : public CVLButton {
public:
    using CVLButton::CVLButton;
    ~CBlinkingButton() override;

    void setBlinkParams(bool blink, int period_ms);
    void setBlinkIcon(std::shared_ptr<CVLBitmap> second);
    void draw() override;

    bool is_blinking() const { return blinking; }
    bool shows_second_icon() const { return showing_second; }
    /// One tick of `elapsed_ms`; the editor's timer calls it.
    void on_idle(int elapsed_ms);

private:
    static void timer_tick(void* self);

    int period_ms = 0;
    bool blinking = false;
    bool showing_second = false;
    int time_left_ms = 0;
    std::shared_ptr<CVLBitmap> second_icon;
};

}  // namespace vl1::gui
