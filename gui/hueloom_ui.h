// The editor of Hueloom: the graded preview on the left; on the right a column of fixed
// width with the toolbar on top and the panel of theme controls below it.
#pragma once

#include <atomic>
#include <memory>

#include "gui/cview.h"

class Fl_Group;
class Fl_Scroll;

namespace vl1::gui {

class CVLImagePreview;
class CVLScrollView;
class CVLButton;
class CVLPanel;
class CCachedNinePartTiledBitmap;
class monitor_profile_transform;

/// Width of the right column and height of its toolbar, in points.
inline constexpr int editor_column_width = 494;
inline constexpr int editor_toolbar_height = 64;
/// The panel of theme controls scrolls inside the column.
inline constexpr int editor_panel_width = 482;
inline constexpr int editor_panel_height = 760;

class hueloom_ui : public cview_v1 {
public:
    explicit hueloom_ui(std::weak_ptr<icomponent_v1> component);
    ~hueloom_ui() override;

    void init_view() override;
    void close() override;
    /// Shows what arrived since the last turn, then pumps the window's events.
    bool idle() override;
    void set_preview_image(image& picture) override;
    void valueChanged(CVLControl* control) override;

    CVLImagePreview* get_preview() const { return preview; }
    CVLScrollView* get_preview_scroller() const { return preview_scroller; }
    /// The panel that the theme menu, wheel and sliders are placed in.
    CVLPanel* get_panel() const { return panel; }
    /// The toolbar's lower row, where presets and the editing buttons go.
    CVLPanel* get_toolbar_lower_row() const { return toolbar_lower; }

    /// `alert_box` on the editor's window, with an OK button only.
    void alertBox(const std::string& title, const std::string& text);

private:
    void build_toolbar(int left);
    void build_panel(int left, int height);

    Fl_Group* frame = nullptr;  // owned by the window
    CVLImagePreview* preview = nullptr;
    CVLScrollView* preview_scroller = nullptr;
    CVLPanel* toolbar_lower = nullptr;
    Fl_Scroll* panel_scroller = nullptr;
    CVLPanel* panel = nullptr;
    CVLButton* help_button = nullptr;
    std::shared_ptr<CCachedNinePartTiledBitmap> panel_background, panel_first_background, panel_top_background;
    std::shared_ptr<monitor_profile_transform> monitor;
    language_id language = language_id::en;
};

}  // namespace vl1::gui
