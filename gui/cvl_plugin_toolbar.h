// The strip at the top of the editor's right column: logo and manual above; presets (menu,
// name, save, delete), LUT export, undo, redo, close with reset, reset and bypass below. It
// works on the component directly and runs a timer of its own that keeps the bypass button in
// line with the component and runs the export outside of any button's handler.
#pragma once

#include <FL/Fl_Group.H>

#include <array>
#include <cstdint>
#include <functional>
#include <unordered_map>
#include <memory>
#include <string>

#include "framework/localize.h"
#include "gui/cview.h"
#include "gui/zoom.h"
#include "presets/preset_manager.h"

namespace vl1::gui {

class CVLButton;
class CVLOptionMenu;
class CVLPanel;
class CVLTextEdit;
class CVLBitmap;
class fltk_window;

class CVLPluginToolbar : public Fl_Group,
                         public control_listener,
                         public preset_manager,
                         public iparameter_change_listener_v1 {
public:
    /// Rows of half the height each; `window` gets the alerts.
    CVLPluginToolbar(int x, int y, int w, int h, std::weak_ptr<icomponent_v1> component,
                     std::weak_ptr<vl1::window> editor_window);
    ~CVLPluginToolbar() override;

    void valueChanged(CVLControl* control) override;
    void controlBeginEdit(CVLControl*) override {}
    void controlEndEdit(CVLControl*) override {}
    void parameter_changed(std::shared_ptr<iparameter_v1> param, bool redraw) override;

    void show_undo_redo(bool shown);
    void set_undo_callback(std::function<void()> callback) { undo_callback = std::move(callback); }
    void set_redo_callback(std::function<void()> callback) { redo_callback = std::move(callback); }

    void rebuild_preset_menu();
    /// Undo and redo as their buttons do them (the editor's keys use these too).
    void undo_step();
    void redo_step();
    /// Close with reset, as the close button does it.
    void cancel_and_close();
    /// Saves under the name in the field, asking before an overwrite.
    void save_preset_from_field();

    CVLOptionMenu* get_preset_menu() const { return preset_menu; }
    CVLTextEdit* get_preset_name_field() const { return preset_name_field; }
    CVLButton* get_bypass_button() const { return bypass_button; }

    /// One tick of the timer: the bypass button follows the component; a requested export
    /// runs.
    void tick();

private:
    void build_upper_row(int left, int top, int width, int row);
    void build_lower_row(int left, int top, int width, int row);
    CVLButton* make_button(const char* background, const char* icon, int width, const char* tooltip, bool on_off);
    void layout_lower_row(int left, int top, int width, int row);

    void choose_preset(const std::shared_ptr<icomponent_v1>& owner);
    void delete_current_preset();
    void select_preset_by_name(const std::string& name);
    void mark_preset_changed();
    void mark_preset_unchanged();
    void toggle_bypass(const std::shared_ptr<icomponent_v1>& owner, float value);
    void wait_for_timer();
    void export_lut();
    bool alert(const std::string& text, const std::string& second_button = "");
    std::string text(const std::string& localisable) const { return localize_text(language, localisable); }
    /// `points` in pixels of the editor's frame.
    int px(double points) const { return to_pixels(points, zoom); }
    const char* tooltip_text(const std::string& localisable) const;

    static void timer_callback(void* self);
    /// The timer runs at the editor's idle rate of 30 turns a second.
    static constexpr double timer_interval_s = 1.0 / 30.0;

    bool timer_busy = false;
    bool timer_running = false;
    language_id language = language_id::en;
    double zoom = 1.0;
    CVLPanel* upper = nullptr;
    CVLPanel* lower = nullptr;
    CVLButton* help_button = nullptr;
    std::shared_ptr<CVLBitmap> delete_icon, delete_disabled_icon;
    CVLOptionMenu* preset_menu = nullptr;
    CVLTextEdit* preset_name_field = nullptr;
    CVLButton *save_button = nullptr, *delete_button = nullptr, *export_button = nullptr;
    CVLButton *undo_button = nullptr, *redo_button = nullptr, *close_button = nullptr;
    CVLButton *reset_button = nullptr, *bypass_button = nullptr;
    std::weak_ptr<icomponent_v1> component;
    std::weak_ptr<vl1::window> editor_window;
    bool export_requested = false;
    std::function<void()> undo_callback, redo_callback;
    /// The parameter values (their 16 value bytes, by uid) of the preset last loaded or saved;
    /// empty while what the user sees is no preset. A host that echoes values back thus
    /// doesn't withdraw the delete button, a real change does.
    std::unordered_map<uint32_t, std::array<uint8_t, 16>> preset_values;
};

}  // namespace vl1::gui
