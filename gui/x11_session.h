// The editor's own connection to the X server, and what the editor reads from it: the host's
// active window, the monitors, the desktop's scale and the monitor's colour profile. Only the
// thread that runs the editor calls these, and only while it holds the editor.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace vl1::gui {

struct screen_rect {
    int x = 0, y = 0, width = 0, height = 0;

    int64_t overlap_area(const screen_rect& other) const;
};

/// Opens the display named by DISPLAY for the toolkit, once per process. False (and logged)
/// when there is no DISPLAY or the server refuses: then no editor can open.
bool open_editor_display();

/// Puts the host's X error handlers back after an editor session: the handlers are global to
/// the process, and the toolkit's must not outlive the editor (nor this library).
void restore_host_error_handlers();

/// The host's active top-level window (_NET_ACTIVE_WINDOW), else the root window. Zero only
/// when there is no display.
unsigned long find_host_window();

/// The monitors, in the toolkit's order.
std::vector<screen_rect> monitors();
/// The area of an X window in root coordinates; none for an unknown window.
std::optional<screen_rect> window_area(unsigned long xid);
/// The monitor that shows most of `area`, the first on a tie; the first monitor if none does.
screen_rect best_monitor(const std::optional<screen_rect>& area);

/// GDK_SCALE or QT_SCALE_FACTOR when set, else Xft.dpi / 96, else 1.
double desktop_scale();

/// The monitor's ICC profile (_ICC_PROFILE on the root window), empty if none is set.
std::vector<uint8_t> monitor_profile();

/// Marks a mapped window modal and transient for `parent` (skipped for the root window).
void make_modal_transient(unsigned long xid, unsigned long parent);

}  // namespace vl1::gui
