// The editor's grading controls: the wheel for "Angle" and "Strength" and the sliders for
// "Hue", "Chroma" and "Luminance", and how their values travel to and from the parameters.
#include <FL/Fl.H>

#include "framework/cparameter.h"
#include "gui/cvl_color_wheel_xy_pad.h"
#include "gui/cvl_option_menu.h"
#include "gui/cvl_panel.h"
#include "gui/cvl_button.h"
#include "gui/cvl_rounded_grey_slider.h"
#include "gui/cvl_text.h"
#include "gui/hueloom_ui.h"

namespace vl1::gui {
namespace {

struct slider_setup {
    uint32_t tag;
    const char* name;
    const char* tooltip;
};

const slider_setup slider_setups[3] = {
    {0x4617FAF9u, "Hue",
     "{en:Increase or decrease the hue component}{de:Stärke des Effektes für die Hue-Komponente einstellen}"},
    {0x40DF899Fu, "Chroma",
     "{en:Increase or decrease the chroma component}{de:Stärke des Effektes für die Chroma-Komponente einstellen}"},
    {0xDE89A541u, "Luminance",
     "{en:Increase or decrease the luminance component}{de:Stärke des Effektes für die Luminance-Komponente "
     "einstellen}"},
};

}  // namespace

void hueloom_ui::build_wheel_and_sliders(int left, int top, const panel_layout& layout)
{
    // Points relative to the panel; the controls are placed in pixels.
    const int wheel_left = left + px(layout.wheel_left), wheel_width = px(layout.wheel_right) - px(layout.wheel_left);
    wheel = new CVLColorWheelXYPad(wheel_left, top + px(108), wheel_width, px(layout.wheel_bottom) - px(108), this,
                                   CVLControl::no_tag);
    wheel->set_background(wheel_background);
    wheel->tooltip(persistent_text(
        text("{en:Adjust angle and strength of selected theme}{de:Winkel und Stärke der ausgewählen Theme anpassen}")));
    auto handle = std::make_shared<CVLBitmap>("slider_handle.png", 2.0);
    for (int i = 0; i < 3; ++i) {
        const slider_setup& setup = slider_setups[i];
        auto* slider = new CVLRoundedGreySlider(
            wheel_left, top + px(layout.slider_top[i]), wheel_width,
            px(layout.slider_bottom[i]) - px(layout.slider_top[i]), this, static_cast<int32_t>(setup.tag), 0,
            layout.wheel_right - layout.wheel_left - static_cast<int>(handle->width()), handle, setup.name);
        slider->tooltip(persistent_text(text(setup.tooltip)));
        sliders.push_back(slider);
    }
}

void hueloom_ui::show_wheel_background()
{
    if (wheel == nullptr)
        return;
    wheel->set_background(wheel_background);
    wheel->redraw();
}

void hueloom_ui::setWheelAndSlidersEnabled(bool enabled)
{
    auto set = [enabled](Fl_Widget* control) { enabled ? control->activate() : control->deactivate(); };
    if (wheel != nullptr)
        set(wheel);
    for (auto* slider : sliders)
        set(slider);
}

void hueloom_ui::set_control_from_parameter(std::shared_ptr<iparameter_v1> param, bool redraw)
{
    cview_v1::set_control_from_parameter(param, redraw);
    if (frame == nullptr || !param)
        return;
    if (auto continuous = std::dynamic_pointer_cast<cparameter_continuous_v1>(param)) {
        const auto tag = static_cast<int32_t>(param->get_uid().value);
        for (auto* slider : sliders) {
            if (slider->getTag() != tag)
                continue;
            if (!slider->isEditing() && slider->getValueNormalized() != continuous->get_value_normalized()) {
                slider->setValueNormalized(continuous->get_value_normalized());
                slider->redraw();
            }
            return;
        }
        if (wheel != nullptr && !wheel->isEditing()) {
            if (param->get_uid() == wheel->get_angle_tag())
                wheel->set_angle(continuous->get_value());
            else if (param->get_uid() == wheel->get_strength_tag())
                wheel->set_strength(continuous->get_value());
            return;
        }
    }
    if (redraw)
        frame->redraw();
}

void hueloom_ui::valueChanged(CVLControl* control)
{
    auto owner = component.lock();
    if (control == nullptr || !owner)
        return;
    if (auto* pad = dynamic_cast<CVLColorWheelXYPad*>(control)) {
        if (pad != wheel)
            return;
        if (auto angle = std::dynamic_pointer_cast<cparameter_continuous_v1>(owner->get_parameter(pad->get_angle_tag())))
            angle->set_value(pad->get_angle(), false);
        if (auto strength =
                std::dynamic_pointer_cast<cparameter_continuous_v1>(owner->get_parameter(pad->get_strength_tag())))
            strength->set_value(pad->get_strength(), false);
        return;
    }
    if (dynamic_cast<CVLRoundedGreySlider*>(control) != nullptr) {
        if (auto param = std::dynamic_pointer_cast<cparameter_continuous_v1>(
                owner->get_parameter(uid::from_value(static_cast<uint32_t>(control->getTag())))))
            param->set_value_normalized(control->getValueNormalized(), false);
        return;
    }
    if (control == theme_menu) {
        if (const auto* item = theme_menu->getCurrent()) {
            if (updated_label != nullptr && updated_label->visible())
                updated_label->set_shown(false);
            setThemeInComponent(static_cast<uint32_t>(item->tag));
            setGuiFromComponentTheme();
        }
        return;
    }
    if (control->getTag() == load_button_tag && control->getValue() > 0.5f)
        import_theme_from_folder();
}

void hueloom_ui::controlBeginEdit(CVLControl* control)
{
    auto owner = component.lock();
    if (auto* pad = dynamic_cast<CVLColorWheelXYPad*>(control); pad != nullptr && owner) {
        if (owner->get_parameter(pad->get_angle_tag()) || owner->get_parameter(pad->get_strength_tag()))
            owner->save_state(true);
    }
    cview_v1::controlBeginEdit(control);
}

void hueloom_ui::controlEndEdit(CVLControl* control)
{
    auto owner = component.lock();
    if (auto* pad = dynamic_cast<CVLColorWheelXYPad*>(control); pad != nullptr && owner) {
        if (owner->get_parameter(pad->get_angle_tag()) || owner->get_parameter(pad->get_strength_tag()))
            owner->save_state(false);
    }
    cview_v1::controlEndEdit(control);
}

}  // namespace vl1::gui
