#include "gui/cvl_plugin_toolbar.h"

#include <FL/Fl.H>

#include <algorithm>
#include <cstring>

#include "framework/ihost.h"
#include "framework/iparameter.h"
#include "framework/iutils.h"
#include "gui/cvl_button.h"
#include "gui/cvl_option_menu.h"
#include "gui/cvl_panel.h"
#include "gui/cvl_text.h"
#include "gui/window.h"
#include "gui/zoom.h"

namespace vl1::gui {
namespace {

// In points.
constexpr int edge_margin = 20;
constexpr int gap = 4;
constexpr int button_width = 23, button_height = 22;
/// The menus open from their rightmost points; the rest belongs to their name field.
constexpr int menu_handle_width = 17;
const std::string preset_title = "Preset:";

std::shared_ptr<CCachedNinePartTiledBitmap> row_background(const char* name)
{
    return std::make_shared<CCachedNinePartTiledBitmap>(std::make_shared<CVLBitmap>(name, 2.0), 3.0);
}

}  // namespace

CVLPluginToolbar::CVLPluginToolbar(int x, int y, int w, int h, std::weak_ptr<icomponent_v1> component,
                                   std::weak_ptr<vl1::window> editor_window)
    : Fl_Group(x, y, w, h), preset_manager(component), component(component), editor_window(std::move(editor_window))
{
    zoom = zoom_of(this);
    if (auto owner = component.lock(); owner && owner->get_host())
        language = owner->get_host()->get_language();
    const int row = h / 2;
    build_upper_row(x, y, w, row);
    build_lower_row(x, y + row, w, row);
    end();
    rebuild_preset_menu();
    Fl::add_timeout(timer_interval_s, timer_callback, this);
    timer_running = true;
}

CVLPluginToolbar::~CVLPluginToolbar() { Fl::remove_timeout(timer_callback, this); }

const char* CVLPluginToolbar::tooltip_text(const std::string& localisable) const
{
    return persistent_text(text(localisable));
}

void CVLPluginToolbar::build_upper_row(int left, int top, int width, int row)
{
    upper = new CVLPanel(left, top, width, row, row_background("panel_top.png"));
    auto logo = std::make_shared<CVLBitmap>("logo_small.png", 2.0);
    auto* logo_view = new CVLPicture(left + px(edge_margin), top, logo);
    logo_view->position(left + px(edge_margin), top + (row - logo_view->h()) / 2);
    help_button = new CVLButton(left + width - px(edge_margin) - px(button_width), top + (row - px(button_height)) / 2,
                                px(button_width), px(button_height), this, CVLControl::no_tag, CVLButton::style::kick,
                                "button.png");
    help_button->set_icon(std::make_shared<CVLBitmap>("help.png", 2.0));
    help_button->tooltip(tooltip_text("{en:Open Manual}{de:Handbuch öffnen}"));
    upper->end();
}

CVLButton* CVLPluginToolbar::make_button(const char* background, const char* icon, int width, const char* tooltip,
                                         bool on_off)
{
    auto* button = new CVLButton(0, 0, px(width), px(button_height), this, CVLControl::no_tag,
                                 on_off ? CVLButton::style::on_off : CVLButton::style::kick, background);
    button->set_icon(std::make_shared<CVLBitmap>(icon, 2.0));
    button->tooltip(tooltip_text(tooltip));
    button->clear_visible_focus();
    return button;
}

void CVLPluginToolbar::build_lower_row(int left, int top, int width, int row)
{
    lower = new CVLPanel(left, top, width, row, row_background("panel_first.png"));
    auto menu_picture = std::make_shared<CVLBitmap>("preset_menu.png", 2.0);
    preset_menu = new CVLOptionMenu(0, 0, px(menu_picture->width()), px(menu_picture->height()), this,
                                    CVLControl::no_tag, menu_picture,
                                    std::make_shared<CVLBitmap>("preset_menu_clicked.png", 2.0));
    preset_menu->set_title_visible(false);
    preset_menu->tooltip(tooltip_text("{en:Select preset}{de:Preset auswählen}"));
    preset_name_field = new CVLTextEdit(0, 0, 10, 10, preset_menu);
    preset_name_field->textcolor(fl_rgb_color(100, 100, 100));
    preset_name_field->setText(preset_title);
    preset_name_field->set_on_enter([](void* self) { static_cast<CVLPluginToolbar*>(self)->save_preset_from_field(); },
                                    this);
    save_button = make_button("button.png", "save.png", button_width, "{en:Save preset}{de:Preset speichern}", false);
    delete_icon = std::make_shared<CVLBitmap>("delete.png", 2.0);
    delete_disabled_icon = std::make_shared<CVLBitmap>("delete_disabled.png", 2.0);
    delete_button = make_button("button.png", "delete_disabled.png", button_width,
                                "{en:Delete current preset}{de:Ausgewähltes Preset löschen}", false);
    delete_button->deactivate();
    auto owner = component.lock();
    iobject* exporter = nullptr;
    if (owner && owner->query_interface("lut_exporter", &exporter))
        export_button = make_button("button_lut.png", "lut_export.png", 2 * button_width,
                                    "{en:Export LUT}{de:LUT exportieren}", false);
    undo_button = make_button("button.png", "step_back.png", button_width,
                              "{en:Undo of last change}{de:Zurücksetzen der letzten Änderung}", false);
    redo_button = make_button("button.png", "step_forward.png", button_width,
                              "{en:Redo of last change}{de:Wiederherstellen der letzten Änderung}", false);
    close_button = make_button("button.png", "close.png", button_width,
                               "{en:Reset and close GUI}{de:Zurücksetzen und GUI-Fenster schließen}", false);
    reset_button = make_button("button.png", "reset.png", button_width, "{en:Reset}{de:Zurücksetzen}", false);
    if (owner && owner->has_bypass())
        bypass_button = make_button("button.png", "bypass.png", button_width,
                                    "{en:Bypass effect}{de:Effekt ausschalten}", true);
    undo_button->hide();
    redo_button->hide();
    lower->end();
    layout_lower_row(left, top, width, row);
}

void CVLPluginToolbar::layout_lower_row(int left, int top, int width, int row)
{
    auto place = [&](Fl_Widget* child, int at_x) {
        child->position(at_x, top + (row - child->h()) / 2);
        return at_x + child->w();
    };
    int next = place(preset_menu, left + px(edge_margin));
    preset_name_field->resize(preset_menu->x() + px(2), preset_menu->y() + px(2),
                              preset_menu->w() - px(menu_handle_width + 1 + 2 + 2), preset_menu->h() - px(4));
    preset_menu->set_mouseable_from_right(menu_handle_width);
    next = left + preset_menu->w() + px(gap + edge_margin);
    next = place(save_button, next) + px(gap);
    next = place(delete_button, next) + px(gap);
    if (export_button != nullptr)
        place(export_button, next);
    int right = left + width - px(edge_margin);
    for (CVLButton* button : {bypass_button, reset_button, close_button, redo_button, undo_button}) {
        if (button == nullptr)
            continue;
        place(button, right - button->w());
        right -= button->w() + px(gap);
    }
}

void CVLPluginToolbar::show_undo_redo(bool shown)
{
    for (CVLButton* button : {undo_button, redo_button})
        shown ? button->show() : button->hide();
}

bool CVLPluginToolbar::alert(const std::string& message, const std::string& second_button)
{
    auto owner = component.lock();
    const std::string title = owner ? owner->get_name() : "";
    return iutils::get_instance().alert_box(editor_window.lock().get(), title, message, "", second_button);
}

void CVLPluginToolbar::rebuild_preset_menu()
{
    preset_menu->removeAllEntry();
    preset_menu->addEntry(preset_title);
    std::vector<preset_entry> presets;
    if (!list_presets(presets)) {
        alert(text("{en:Error loading presets}{de:Fehler beim Laden der Presets.}"));
        preset_menu->setCurrent(0, false);
        return;
    }
    preset_menu->addSeparator();
    for (const preset_entry& preset : presets)
        preset_menu->addEntry(preset.name);
    preset_menu->setCurrent(0, false);
}

void CVLPluginToolbar::mark_preset_changed()
{
    preset_values.clear();
    delete_button->set_icon(delete_disabled_icon);
    delete_button->deactivate();
}

void CVLPluginToolbar::mark_preset_unchanged()
{
    preset_values.clear();
    if (auto owner = component.lock()) {
        for (int i = 0; i < owner->get_parameter_count(); ++i) {
            if (auto param = owner->get_parameter(i))
                std::memcpy(preset_values[param->get_uid().value].data(), param->get_param_value().value.bytes, 16);
        }
    }
    delete_button->set_icon(delete_icon);
    delete_button->activate();
}

void CVLPluginToolbar::parameter_changed(std::shared_ptr<iparameter_v1> param, bool)
{
    if (!param || preset_values.empty())
        return;
    const auto known = preset_values.find(param->get_uid().value);
    if (known == preset_values.end() ||
        std::memcmp(known->second.data(), param->get_param_value().value.bytes, 16) != 0)
        mark_preset_changed();
}

}  // namespace vl1::gui
