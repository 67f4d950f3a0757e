#include "gui/gui_utils.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/fl_ask.H>

#include <cstdlib>
#include <cstring>

#include "framework/localize.h"
#include "framework/log.h"
#include "gui/window.h"
#include "gui/x11_session.h"

namespace vl1::gui {
namespace {

language_id user_language()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return std::strncmp(value, "de", 2) == 0 ? language_id::de : language_id::en;
    }
    return language_id::en;
}

}  // namespace

bool gui_utils::alert_box(void* parent, const std::string& title, const std::string& text,
                          const std::string& first_button, const std::string& second_button) const
{
    if (!open_editor_display()) {
        log("Alert without a display: {0} {1}", title, text);
        return false;
    }
    log("Alert: {0}: {1}", title, text);
    const std::string first =
        first_button.empty() ? localize_text(user_language(), "{en:OK}{de:OK}") : first_button;
    if (auto* w = dynamic_cast<fltk_window*>(static_cast<window*>(parent)); w != nullptr && w->content() != nullptr)
        fl_message_hotspot(0);
    fl_message_title(title.c_str());
    // The toolkit's icon is a white square with a blue letter; the editor's greys instead.
    Fl_Widget* icon = fl_message_icon();
    icon->box(FL_FLAT_BOX);
    icon->color(fl_rgb_color(87, 87, 87));
    icon->labelcolor(fl_rgb_color(200, 200, 200));
    if (second_button.empty()) {
        // The toolkit's message box binds Return to its one button; its label is a global.
        const char* previous = fl_close;
        fl_close = first.c_str();
        fl_message("%s\n\n%s", title.c_str(), text.c_str());
        fl_close = previous;
        return true;
    }
    // Button 1 stands on the right and takes Return; button 0 takes Escape.
    return fl_choice("%s\n\n%s", second_button.c_str(), first.c_str(), nullptr, title.c_str(), text.c_str()) == 1;
}

void gui_utils::get_screen_dimensions(void* window, int& width, int& height) const
{
    width = height = 0;
    if (!open_editor_display())
        return;
    const screen_rect s = best_monitor(window_area(reinterpret_cast<unsigned long>(window)));
    width = s.width;
    height = s.height;
}

double gui_utils::get_dpi_scale() const { return desktop_scale(); }

}  // namespace vl1::gui
