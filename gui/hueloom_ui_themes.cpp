// The editor's theme side: the menu of themes, the wheel's picture, downloads and the import
// of a theme folder.
#include <FL/Fl.H>

#include <algorithm>
#include <utility>
#include <vector>

#include "effect/hueloom.h"
#include "framework/ihost.h"
#include "gui/cvl_bitmap.h"
#include "gui/cvl_button.h"
#include "gui/cvl_option_menu.h"
#include "gui/cvl_panel.h"
#include "gui/cvl_progress_bar.h"
#include "gui/cvl_text.h"
#include "gui/file_dialogs.h"
#include "gui/hueloom_ui.h"
#include "themes/hueloom_theme_collection_v1.h"
#include "themes/hueloom_vault.h"

namespace vl1::gui {

void hueloom_ui::setThemeInComponent(unsigned int uid)
{
    auto owner = effect();
    if (!owner)
        return;
    // Changing the theme is one undo step.
    owner->save_state(true);
    owner->set_current_theme_by_uuid(uid);
    owner->save_state(false);
}

void hueloom_ui::setGuiFromComponentTheme()
{
    auto owner = effect();
    if (!owner)
        return;
    const uint32_t uid = owner->get_current_theme_uuid();
    if (theme_menu != nullptr && theme_name_field != nullptr) {
        if (uid == 0) {
            setWheelAndSlidersEnabled(false);
            return;
        }
        if (const std::string name = owner->get_current_theme_name(); !name.empty())
            theme_name_field->setText(name);
        for (int i = 0; i < theme_menu->getNbEntries(); ++i) {
            if (static_cast<uint32_t>(theme_menu->getEntry(i)->tag) == uid) {
                theme_menu->setCurrent(i, false);
                break;
            }
        }
    }
    const auto [data, size] = owner->get_current_wheel_background_data();
    std::shared_ptr<CVLBitmap> picture;
    if (owner->is_theme_in_collection(uid) && size > 0)
        picture = std::make_shared<CVLBitmap>(std::vector<uint8_t>(data, data + size), 2.0);
    const bool usable = picture && !picture->empty();
    wheel_background = usable ? picture : getThemeNotAvailableBackground();
    setWheelAndSlidersEnabled(usable);
    show_wheel_background();
    if (auto host = owner->get_host())
        host->schedule_render();
}

std::shared_ptr<CVLBitmap> hueloom_ui::getThemeNotAvailableBackground()
{
    return std::make_shared<CVLBitmap>(
        language == language_id::de ? "theme_nicht_verfuegbar.png" : "theme_not_available.png", 2.0);
}

void hueloom_ui::updateThemeListFromComponent()
{
    auto owner = effect();
    if (!owner || theme_menu == nullptr)
        return;
    const int before = theme_menu->getNbEntries();
    theme_menu->removeAllEntry();
    const auto names = hueloom::get_vault()->get_theme_collection()->get_theme_names();
    std::vector<std::pair<uint32_t, std::string>> themes(names.begin(), names.end());
    std::sort(themes.begin(), themes.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
    for (const auto& [uid, name] : themes)
        theme_menu->addEntry(name, static_cast<int32_t>(uid));
    const uint32_t current = owner->get_current_theme_uuid();
    for (int i = 0; i < theme_menu->getNbEntries(); ++i) {
        if (static_cast<uint32_t>(theme_menu->getEntry(i)->tag) == current)
            theme_menu->setCurrent(i, false);
    }
    const int after = theme_menu->getNbEntries();
    if (before >= 1 && after != before && updated_label != nullptr &&
        hueloom::get_vault()->get_download_percentage() < 0)
        updated_label->set_shown(true);
    theme_menu->redraw();
}

void hueloom_ui::handleThemeDownloadInGui()
{
    if (!effect() || progress_bar == nullptr || !is_open())
        return;
    const float percentage = hueloom::get_vault()->get_download_percentage();
    if (percentage < 0) {
        if (progress_bar->visible()) {
            progress_bar->hide();
            panel->damage(FL_DAMAGE_ALL, progress_bar->x(), progress_bar->y(), progress_bar->w(), progress_bar->h());
            if (updated_label != nullptr)
                updated_label->set_shown(true);
        }
        return;
    }
    if (!progress_bar->visible()) {
        progress_bar->show();
        if (updated_label != nullptr && updated_label->visible())
            updated_label->hide();
    }
    progress_bar->set_value(std::clamp(percentage / 100.0f, 0.0f, 1.0f));
    progress_bar->redraw();
}

std::string hueloom_ui::openFolderDialog() { return choose_folder("Select Folder with Theme"); }

void hueloom_ui::import_theme_from_folder()
{
    auto owner = effect();
    if (!owner || !owner->get_host() || !open_window)
        return;
    const std::string folder = openFolderDialog();
    if (folder.empty()) {
        alertBox(owner->get_name(), text("{en:No folder selected.}{de:Kein Ordner ausgewählt.}"));
        return;
    }
    std::pair<std::string, unsigned int> result;
    std::string error;
    if (!owner->import_theme_and_store_to_appdata(folder, result, error)) {
        alertBox(owner->get_name(), error);
        return;
    }
    // Appended at the end: the list is sorted again at its next rebuild.
    theme_menu->addEntry(result.first, static_cast<int32_t>(result.second));
    const std::string quoted = "\"" + result.first + "\"";
    alertBox(owner->get_name(), text("{en:Theme " + quoted + " imported successfully!}{de:Der Import der Theme " +
                                     quoted + " war erfolgreich! }"));
    setThemeInComponent(result.second);
    setGuiFromComponentTheme();
}

}  // namespace vl1::gui
