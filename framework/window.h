// The editor's top-level window and the factory that makes it, as the event loop sees them.
// The window system behind them (X11 through the editor's toolkit) lives in gui/ and installs
// its factory when the plug-in's component factory first runs; without one, no editor opens.
#pragma once

#include <memory>
#include <string>

#include "framework/types.h"

namespace vl1 {

class window {
public:
    virtual ~window() = default;

    /// Starts a modal session and centres the window on its screen, unless one runs already.
    virtual void begin_modal() = 0;
    virtual void end_modal() = 0;
    virtual bool is_modal() const = 0;
    /// The platform window exists and is shown.
    virtual bool is_open() const = 0;
    /// Hides and releases the platform window; the object then reads as closed.
    virtual void close() = 0;
    /// One turn of the event pump: handles what is pending and waits up to 25 ms for more.
    virtual bool pop_pending_messages() = 0;
};

class window_factory {
public:
    virtual ~window_factory() = default;

    /// The installed factory, or null when this build or process has no window system.
    /// `icon_name` names the windows' icon resource (without extension).
    static window_factory* get_instance(const std::string& icon_name);
    /// Installs the process's factory; null uninstalls. The object must outlive its use.
    static void install(window_factory* factory);

    /// A window of `size` points titled `title`, transient for `parent` (a native handle, or
    /// null), on the monitor that shows most of the parent. Null if the window system fails.
    virtual std::shared_ptr<window> create_window(rect size, const std::string& title, void* parent) = 0;

    /// The native handle of the window the editor should stand in front of; false when no
    /// window system can be reached at all.
    virtual bool get_host_window(void** out) = 0;

    /// Remembers the icon to give new windows.
    virtual void set_icon_name(const std::string& icon_name) = 0;
};

}  // namespace vl1
