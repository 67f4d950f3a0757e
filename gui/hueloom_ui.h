// The editor of Hueloom: the graded preview on the left; on the right a column of fixed
// width with the toolbar on top and, below it, the scrolling panel with the theme menu, the
// colour wheel and the hue, chroma and luminance sliders.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "gui/cview.h"

class Fl_Group;
class Fl_Scroll;

namespace vl1 {
class hueloom;
}

namespace vl1::gui {

class CVLImagePreview;
class CVLScrollView;
class CVLButton;
class CVLBitmap;
class CVLPanel;
class CVLOptionMenu;
class CVLTextEdit;
class CVLTextLabel;
class CVLProgressBar;
class CVLPluginToolbar;
class CVLColorWheelXYPad;
class CVLRoundedGreySlider;
class CCachedNinePartTiledBitmap;
class monitor_profile_transform;

/// Width of the right column and height of its toolbar, in points.
inline constexpr int editor_column_width = 494;
inline constexpr int editor_toolbar_height = 64;
/// The panel of theme controls scrolls inside the column.
inline constexpr int editor_panel_width = 482;
inline constexpr int editor_panel_height = 760;

/// Tags of the panel's controls that stand for no parameter.
inline constexpr int32_t theme_menu_tag = static_cast<int32_t>(0xF3C81D1Cu);
inline constexpr int32_t load_button_tag = 0x6C6F6164;  // "load"

/// Where the panel's controls go, in points relative to the panel, for a theme menu picture of
/// `menu_w` x `menu_h`, a wheel picture of `wheel_w` x `wheel_h` and slider handles
/// `handle_h` high.
struct panel_layout {
    double menu_left, menu_right, menu_bottom;
    int wheel_left, wheel_right, wheel_bottom;
    /// Top and bottom of the hue, chroma and luminance sliders.
    int slider_top[3], slider_bottom[3];
};
panel_layout compute_panel_layout(double menu_w, double menu_h, double wheel_w, double wheel_h, double handle_h);

/// What schedule_ui_event takes.
enum class eScheduleEvent : int { refresh = 1, theme_list = 3 };

class hueloom_ui : public cview_v1 {
public:
    explicit hueloom_ui(std::weak_ptr<icomponent_v1> component);
    ~hueloom_ui() override;

    void init_view() override;
    void close() override;
    /// Shows what arrived since the last turn, serves the refresh and theme-list requests,
    /// then pumps the window's events.
    bool idle() override;
    void set_control_from_parameter(std::shared_ptr<iparameter_v1> param, bool redraw) override;
    void set_preview_image(image& picture) override;
    void valueChanged(CVLControl* control) override;
    void controlBeginEdit(CVLControl* control) override;
    void controlEndEdit(CVLControl* control) override;

    /// 1 for the known events, 0 (and nothing raised) for any other value.
    int schedule_ui_event(int event);

    void setThemeInComponent(unsigned int uid);
    void setGuiFromComponentTheme();
    void updateThemeListFromComponent();
    void handleThemeDownloadInGui();
    std::string openFolderDialog();
    std::shared_ptr<CVLBitmap> getThemeNotAvailableBackground();
    void setWheelAndSlidersEnabled(bool enabled);
    /// `alert_box` on the editor's window, with an OK button only.
    void alertBox(const std::string& title, const std::string& text);

    CVLImagePreview* get_preview() const { return preview; }
    CVLScrollView* get_preview_scroller() const { return preview_scroller; }
    CVLPanel* get_panel() const { return panel; }
    CVLPluginToolbar* get_toolbar() const { return toolbar; }
    CVLOptionMenu* get_theme_menu() const { return theme_menu; }
    CVLColorWheelXYPad* get_wheel() const { return wheel; }
    const std::vector<CVLRoundedGreySlider*>& get_sliders() const { return sliders; }

private:
    std::shared_ptr<hueloom> effect() const;
    std::string text(const std::string& localisable) const;
    void build_panel(int left, int height);
    void build_theme_controls(int left, int top, const panel_layout& layout);
    void build_wheel_and_sliders(int left, int top, const panel_layout& layout);
    void import_theme_from_folder();
    void show_wheel_background();
    int handle_key(int key, bool ctrl, bool shift);
    /// `points` in pixels at the editor's zoom.
    int px(double points) const;

    Fl_Group* frame = nullptr;  // owned by the window
    CVLImagePreview* preview = nullptr;
    CVLScrollView* preview_scroller = nullptr;
    CVLPluginToolbar* toolbar = nullptr;
    Fl_Scroll* panel_scroller = nullptr;
    CVLPanel* panel = nullptr;
    CVLColorWheelXYPad* wheel = nullptr;
    std::vector<CVLRoundedGreySlider*> sliders;
    CVLOptionMenu* theme_menu = nullptr;
    CVLTextEdit* theme_name_field = nullptr;
    CVLButton* load_button = nullptr;
    CVLProgressBar* progress_bar = nullptr;
    CVLTextLabel* updated_label = nullptr;
    std::shared_ptr<CVLBitmap> wheel_background;
    std::shared_ptr<CCachedNinePartTiledBitmap> panel_background, panel_first_background;
    std::shared_ptr<monitor_profile_transform> monitor;
    language_id language = language_id::en;
    double zoom = 1.0;  // pixels per point, the desktop's scale
    std::atomic<bool> refresh_requested{false};
    std::atomic<bool> theme_list_requested{false};
};

}  // namespace vl1::gui
