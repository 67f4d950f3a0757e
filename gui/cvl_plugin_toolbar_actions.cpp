// What the toolbar's controls do: presets, the buttons, bypass, and the export that the timer
// runs.
#include <FL/Fl.H>

#include "framework/lut_exporter.h"
#include "color/lut_writer_3dl.h"
#include "color/lut_writer_cube.h"
#include "framework/ihost.h"
#include "framework/log.h"
#include "gui/cvl_button.h"
#include "gui/cvl_option_menu.h"
#include "gui/cvl_plugin_toolbar.h"
#include "gui/cvl_text.h"
#include "gui/file_dialogs.h"
#include "gui/window.h"

namespace vl1::gui {
namespace {

const std::string preset_title = "Preset:";

bool ends_with(const std::string& text, const std::string& ending)
{
    return text.size() >= ending.size() && text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

void schedule_render(const std::shared_ptr<icomponent_v1>& owner)
{
    if (auto host = owner->get_host())
        host->schedule_render();
}

}  // namespace

void CVLPluginToolbar::timer_callback(void* self)
{
    auto* toolbar = static_cast<CVLPluginToolbar*>(self);
    Fl::repeat_timeout(timer_interval_s, timer_callback, self);
    toolbar->tick();
}

void CVLPluginToolbar::valueChanged(CVLControl* control)
{
    auto owner = component.lock();
    if (!owner || control == nullptr)
        return;
    if (control == preset_menu) {
        choose_preset(owner);
        return;
    }
    if (control->getValue() > 0.5f) {
        if (control == help_button)
            owner->open_manual();
        else if (control == save_button)
            save_preset_from_field();
        else if (control == delete_button)
            delete_current_preset();
        else if (control == export_button) {
            wait_for_timer();
            export_requested = true;
        } else if (control == reset_button) {
            owner->reset_to_default();
            preset_menu->setCurrent(0, false);
            preset_name_field->setText(preset_menu->getCurrent() ? preset_menu->getCurrent()->title : preset_title);
        } else if (control == close_button)
            cancel_and_close();
        else if (control == undo_button)
            undo_step();
        else if (control == redo_button)
            redo_step();
    }
    if (control == bypass_button)
        toggle_bypass(owner, control->getValue());
}

void CVLPluginToolbar::choose_preset(const std::shared_ptr<icomponent_v1>& owner)
{
    const CVLOptionMenu::entry* chosen = preset_menu->getCurrent();
    if (preset_menu->getCurrentIndex() <= 1 || chosen == nullptr || chosen->title.empty())
        return;
    const std::string path = preset_path(chosen->title);
    std::string reason;
    if (is_preset_rejected(path, reason)) {
        preset_name_field->setText(preset_title);
        mark_preset_unchanged();
        alert(text("{en:Cannot load preset: }{de:Preset kann nicht geladen werden: }") + reason);
        return;
    }
    owner->save_state(true);
    if (!load_preset(path)) {
        alert(text("{en:Error loading preset}{de:Fehler beim Laden des Presets}"));
        return;
    }
    preset_name_field->setText(preset_title);
    mark_preset_unchanged();
    owner->save_state(false);
    schedule_render(owner);
}

void CVLPluginToolbar::save_preset_from_field()
{
    const std::string name = preset_name_field->getText();
    if (name.empty() || name == preset_title) {
        preset_name_field->setText(preset_menu->getCurrent() ? preset_menu->getCurrent()->title : preset_title);
        return;
    }
    int result = save_preset(name, false);
    if (result == preset_exists) {
        if (!alert(text("{en:Preset exists already. Overwrite file?}{de:Preset existiert bereits. Datei überschreiben?}"),
                   text("{en:Cancel}{de:Abbrechen}")))
            return;
        result = save_preset(name, true);
    }
    if (result != preset_saved)
        return;
    rebuild_preset_menu();
    select_preset_by_name(name);
}

void CVLPluginToolbar::select_preset_by_name(const std::string& name)
{
    for (int i = 0; i < preset_menu->getNbEntries(); ++i) {
        const CVLOptionMenu::entry* e = preset_menu->getEntry(i);
        if (e->separator || e->title != name)
            continue;
        preset_menu->setCurrent(i, false);
        preset_name_field->setText(preset_menu->getEntry(0)->title);
        mark_preset_unchanged();
        return;
    }
}

void CVLPluginToolbar::delete_current_preset()
{
    if (preset_menu->getCurrentIndexWithoutSeparators() <= 0)
        return;
    const std::string name = preset_menu->getCurrent()->title;
    const std::string question = text("{en:Are you sure you want to delete the selected preset (" + name +
                                      ")?}{de:Soll das ausgewählte Preset (" + name + ") gelöscht werden?}");
    if (!alert(question, text("{en:Cancel}{de:Abbrechen}")))
        return;
    delete_preset(name);
    rebuild_preset_menu();
    preset_name_field->setText(preset_title);
    // No preset is current any more: nothing to delete until one is loaded or saved.
    mark_preset_changed();
}

void CVLPluginToolbar::undo_step()
{
    auto owner = component.lock();
    if (!owner)
        return;
    undo_callback ? undo_callback() : owner->undo();
    schedule_render(owner);
}

void CVLPluginToolbar::redo_step()
{
    auto owner = component.lock();
    if (!owner)
        return;
    redo_callback ? redo_callback() : owner->redo();
    schedule_render(owner);
}

void CVLPluginToolbar::cancel_and_close()
{
    auto owner = component.lock();
    if (!owner)
        return;
    owner->cancel_effect();
    if (auto w = editor_window.lock())
        w->close();
}

void CVLPluginToolbar::toggle_bypass(const std::shared_ptr<icomponent_v1>& owner, float value)
{
    Fl::remove_timeout(timer_callback, this);
    timer_running = false;
    wait_for_timer();
    // The button on means the effect is active.
    owner->set_bypass(value < 0.5f);
    if (!timer_running) {
        Fl::add_timeout(timer_interval_s, timer_callback, this);
        timer_running = true;
    }
}

void CVLPluginToolbar::wait_for_timer()
{
    // A press can arrive while a tick runs a dialog's own loop; the tick finishes first.
    while (timer_busy && Fl::first_window() != nullptr)
        Fl::wait(0.025);
}

void CVLPluginToolbar::tick()
{
    timer_busy = true;
    auto owner = component.lock();
    if (!owner) {
        timer_busy = false;
        return;
    }
    if (bypass_button != nullptr && !bypass_button->isEditing()) {
        const bool on = bypass_button->getValue() >= 0.5f;
        if (on == owner->get_bypass()) {
            bypass_button->setValue(owner->get_bypass() ? 0.0f : 1.0f);
            bypass_button->redraw();
        }
    }
    if (export_requested) {
        export_requested = false;
        export_lut();
    }
    timer_busy = false;
}

void CVLPluginToolbar::export_lut()
{
    std::string type;
    std::string path = choose_save_file(text("{en:Export LUT}{de:LUT exportieren}"),
                                        "Cube LUT\t*.cube\n3DL LUT\t*.3dl", type);
    auto owner = component.lock();
    iobject* found = nullptr;
    if (path.empty() || !owner || !owner->query_interface("lut_exporter", &found))
        return;
    auto* exporter = dynamic_cast<lut_exporter*>(found);
    lut_argb_variable lut;
    std::string problem;
    bool written = exporter != nullptr && exporter->get_lut(&lut);
    if (written) {
        bool as_3dl = ends_with(path, ".3dl");
        if (!as_3dl && !ends_with(path, ".cube")) {
            const bool names_3dl = type.find(".3dl") != std::string::npos;
            const bool names_cube = type.find(".cube") != std::string::npos;
            as_3dl = names_3dl;
            path += names_3dl && !names_cube ? ".3dl" : ".cube";
        }
        written = as_3dl ? write_lut_3dl(lut, path, "", "", problem) : write_lut_cube(lut, path, "", "", problem);
    }
    if (!written) {
        log("LUT export to {0} failed: {1}", path, problem);
        alert(text("{en:Error exporting LUT}{de:Fehler beim Exportieren der LUT}"));
    }
}

}  // namespace vl1::gui
