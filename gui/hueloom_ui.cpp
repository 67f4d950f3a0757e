#include "gui/hueloom_ui.h"

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Scroll.H>
#include <FL/Fl_Tooltip.H>

#include <cmath>
#include <functional>

#include "effect/hueloom.h"
#include "framework/cparameter.h"
#include "framework/ihost.h"
#include "framework/iutils.h"
#include "framework/localize.h"
#include "gui/cvl_button.h"
#include "gui/cvl_image_preview.h"
#include "gui/cvl_option_menu.h"
#include "gui/cvl_panel.h"
#include "gui/cvl_plugin_toolbar.h"
#include "gui/cvl_progress_bar.h"
#include "gui/cvl_text.h"
#include "gui/monitor_profile.h"
#include "gui/window.h"
#include "gui/x11_session.h"
#include "gui/zoom.h"
#include "themes/hueloom_vault.h"

namespace vl1::gui {
namespace {

const Fl_Color editor_grey = fl_rgb_color(47, 47, 47);

std::shared_ptr<CCachedNinePartTiledBitmap> nine_part(const char* name)
{
    return std::make_shared<CCachedNinePartTiledBitmap>(std::make_shared<CVLBitmap>(name, 2.0), 3.0);
}

/// The editor's frame: takes the keys that no control used.
class editor_frame : public zoomed_frame {
public:
    editor_frame(int w, int h, double zoom, std::function<int(int, bool, bool)> on_key)
        : zoomed_frame(0, 0, w, h, zoom), on_key(std::move(on_key))
    {
        box(FL_FLAT_BOX);
        color(editor_grey);
    }

    int handle(int event) override
    {
        if (Fl_Group::handle(event))
            return 1;
        if (event != FL_SHORTCUT && event != FL_KEYBOARD)
            return 0;
        return on_key(Fl::event_key(), Fl::event_state(FL_CTRL) != 0, Fl::event_state(FL_SHIFT) != 0);
    }

private:
    std::function<int(int, bool, bool)> on_key;
};

}  // namespace

panel_layout compute_panel_layout(double menu_w, double menu_h, double wheel_w, double wheel_h, double handle_h)
{
    panel_layout l{};
    l.menu_left = (editor_panel_width - (menu_w + 1)) * 0.5 - 15;
    l.menu_right = l.menu_left + menu_w + 1;
    l.menu_bottom = 40 + menu_h + 1;
    l.wheel_left = static_cast<int>(std::floor((editor_panel_width - (wheel_w + 1)) * 0.5 + 0.5));
    l.wheel_right = static_cast<int>(std::floor((editor_panel_width - (wheel_w + 1)) * 0.5 + wheel_w + 1.5));
    l.wheel_bottom = static_cast<int>(std::floor(108 + wheel_h + 1.5));
    const int gaps[3] = {40, 100, 160};
    for (int i = 0; i < 3; ++i) {
        l.slider_top[i] = l.wheel_bottom + gaps[i];
        l.slider_bottom[i] = l.wheel_bottom + gaps[i] + 18 + static_cast<int>(handle_h);
    }
    return l;
}

hueloom_ui::hueloom_ui(std::weak_ptr<icomponent_v1> component) : cview_v1(std::move(component)) {}

hueloom_ui::~hueloom_ui() = default;

std::shared_ptr<hueloom> hueloom_ui::effect() const { return std::dynamic_pointer_cast<hueloom>(component.lock()); }

std::string hueloom_ui::text(const std::string& localisable) const { return localize_text(language, localisable); }

int hueloom_ui::px(double points) const { return to_pixels(points, zoom); }

void hueloom_ui::init_view()
{
    fltk_window* target = editor_window();
    if (target == nullptr || target->content() == nullptr)
        return;
    Fl_Double_Window* w = target->content();
    const int width = w->w(), height = w->h();
    // The window is sized in pixels; the layout below is in points, the desktop's scale apart.
    zoom = iutils::get_instance().get_dpi_scale();
    if (auto owner = component.lock(); owner && owner->get_host())
        language = owner->get_host()->get_language();
    // The toolkit's colours are the editor's own (its copy of the toolkit serves no one
    // else): menus, dialogs and alerts open dark, in the panel's greys.
    Fl::background(47, 47, 47);
    Fl::background2(35, 35, 35);
    Fl::foreground(200, 200, 200);
    Fl::set_color(FL_SELECTION_COLOR, 100, 100, 100);
    Fl_Tooltip::delay(4.0f);
    // The toolkit's own texts (tooltips, the marks of menus, dialogs) at the desktop's scale.
    FL_NORMAL_SIZE = px(14);
    Fl_Tooltip::color(editor_grey);
    Fl_Tooltip::textcolor(fl_rgb_color(200, 200, 200));
    if (!monitor)
        monitor = std::make_shared<monitor_profile_transform>(monitor_profile());

    w->begin();
    frame = new editor_frame(width, height, zoom, [this](int key, bool ctrl, bool shift) {
        return handle_key(key, ctrl, shift);
    });
    const int left = width - px(editor_column_width);
    preview = new CVLImagePreview(0, 0, left, height, monitor);
    preview_scroller = new CVLScrollView(0, 0, left, height, preview);
    panel_background = nine_part("panel.png");
    panel_first_background = nine_part("panel_first.png");
    toolbar = new CVLPluginToolbar(left, 0, width - left, px(editor_toolbar_height), component, open_window);
    register_parameter_change_listener(toolbar);
    toolbar->show_undo_redo(true);
    toolbar->set_undo_callback({});
    toolbar->set_redo_callback({});
    build_panel(left, height);
    frame->end();
    w->end();
    w->redraw();

    if (auto owner = effect())
        owner->downloadThemesIfNeededThenUpdateVaultThenUpdateGuiThemeList();
    setGuiFromComponentTheme();
}

void hueloom_ui::build_panel(int left, int height)
{
    const int top = px(editor_toolbar_height), bar = px(12);
    panel_scroller = new Fl_Scroll(left, top, frame->w() - left, height - top);
    panel_scroller->type(Fl_Scroll::VERTICAL);
    panel_scroller->scrollbar_size(bar);
    // The bar is made at the toolkit's width of 16 and narrowed only in the first draw, which
    // would clip the panel 4 points short on its right; it is narrowed here instead.
    panel_scroller->scrollbar.resize(panel_scroller->x() + panel_scroller->w() - bar, panel_scroller->y(), bar,
                                     panel_scroller->h());
    panel_scroller->box(FL_FLAT_BOX);
    panel_scroller->color(editor_grey);
    panel_scroller->scrollbar.box(FL_FLAT_BOX);
    panel_scroller->scrollbar.slider(FL_FLAT_BOX);
    panel_scroller->scrollbar.color(FL_BLACK, editor_grey);
    panel_scroller->scrollbar.labelcolor(editor_grey);
    panel = new CVLPanel(left, top, px(editor_panel_width), px(editor_panel_height), panel_first_background);
    wheel_background = getThemeNotAvailableBackground();
    CVLBitmap menu_picture("preset_menu.png", 2.0);
    CVLBitmap handle("slider_handle.png", 2.0);
    const panel_layout layout = compute_panel_layout(wheel_background->width(), menu_picture.height(),
                                                     wheel_background->width(), wheel_background->height(),
                                                     handle.height());
    build_theme_controls(left, top, layout);
    build_wheel_and_sliders(left, top, layout);
    panel->end();
    panel_scroller->end();
}

void hueloom_ui::build_theme_controls(int left, int top, const panel_layout& layout)
{
    // Points relative to the panel; the controls are placed in pixels.
    const int menu_left = left + px(static_cast<int>(layout.menu_left));
    const int menu_right = left + px(static_cast<int>(layout.menu_right));
    const int menu_top = top + px(40), menu_height = px(static_cast<int>(layout.menu_bottom) - 40);
    CVLBitmap menu_picture("preset_menu.png", 2.0), menu_pressed("preset_menu_clicked.png", 2.0);
    const int menu_width = static_cast<int>(wheel_background->width());
    theme_menu = new CVLOptionMenu(menu_left, menu_top, menu_right - menu_left, menu_height, this, theme_menu_tag,
                                   createScaledBitmap(menu_picture, menu_width),
                                   createScaledBitmap(menu_pressed, menu_width));
    theme_menu->set_title_visible(false);
    theme_menu->set_mouseable_from_right(24);
    theme_menu->tooltip(persistent_text(text("{en:Select theme}{de:Theme auswählen}")));
    theme_name_field = new CVLTextEdit(menu_left, menu_top, menu_right - px(24) - menu_left, menu_height, theme_menu);
    theme_name_field->textcolor(fl_rgb_color(200, 200, 200));
    theme_name_field->setText(text("{en:Select theme here}{de:Theme hier auswählen}"));
    load_button = new CVLButton(menu_right + px(6), menu_top, px(24), px(22), this, load_button_tag,
                                CVLButton::style::kick, "button.png");
    load_button->set_icon(std::make_shared<CVLBitmap>("icon_load.png", 2.0));
    load_button->tooltip(
        persistent_text(text("{en:Import theme from folder}{de:Theme importieren (Ordner auswählen)}")));
    load_button->clear_visible_focus();
    progress_bar = new CVLProgressBar(menu_left, top + px(70), menu_right - menu_left, px(7));
    progress_bar->set_colour(26, 186, 0);
    progress_bar->tooltip(
        persistent_text(text("{en:Downloading themes from server...}{de:Themen werden vom Server geholt...}")));
    progress_bar->hide();
    updated_label = new CVLTextLabel(menu_left, top + px(70), menu_right - menu_left, px(14),
                                     text("{en:The Theme list has been updated.}{de:Die Theme-Liste wurde aktualisiert.}"));
    updated_label->hide();
}

void hueloom_ui::close()
{
    if (auto owner = component.lock()) {
        // A bypass doesn't outlive the editor.
        if (auto bypass = std::dynamic_pointer_cast<cparameter_boolean_v1>(owner->get_parameter("Global Bypass")))
            bypass->set_value(false, false);
        if (effect())
            hueloom::get_vault()->stop_download_themes();
    }
    if (toolbar != nullptr)
        unregister_parameter_change_listener(toolbar);
    cview_v1::close();
    frame = nullptr;
    preview = nullptr;
    preview_scroller = nullptr;
    toolbar = nullptr;
    panel_scroller = nullptr;
    panel = nullptr;
    wheel = nullptr;
    sliders.clear();
    theme_menu = nullptr;
    theme_name_field = nullptr;
    load_button = nullptr;
    progress_bar = nullptr;
    updated_label = nullptr;
}

int hueloom_ui::schedule_ui_event(int event)
{
    if (event == static_cast<int>(eScheduleEvent::refresh))
        refresh_requested = true;
    else if (event == static_cast<int>(eScheduleEvent::theme_list))
        theme_list_requested = true;
    else
        return 0;
    return 1;
}

bool hueloom_ui::idle()
{
    if (preview != nullptr)
        preview->update_preview();
    if (auto owner = effect()) {
        if (owner->refresh_requested.exchange(false))
            refresh_requested = true;
        if (owner->theme_list_changed.exchange(false))
            theme_list_requested = true;
    }
    if (is_open() && refresh_requested.exchange(false))
        setGuiFromComponentTheme();
    if (is_open() && theme_list_requested.exchange(false))
        updateThemeListFromComponent();
    handleThemeDownloadInGui();
    return cview_v1::idle();
}

void hueloom_ui::set_preview_image(image& picture)
{
    if (preview != nullptr)
        preview->set_preview_image(picture);
}

int hueloom_ui::handle_key(int key, bool ctrl, bool shift)
{
    if (toolbar == nullptr)
        return 0;
    if (key == FL_Escape && !ctrl && !shift) {
        toolbar->cancel_and_close();
        return 1;
    }
    if (ctrl && (key == 'z' || key == 'Z')) {
        shift ? toolbar->redo_step() : toolbar->undo_step();
        return 1;
    }
    return 0;
}

void hueloom_ui::alertBox(const std::string& title, const std::string& message)
{
    iutils::get_instance().alert_box(open_window.get(), title, message, "");
}

}  // namespace vl1::gui
