#include "gui/x11_session.h"

#include <FL/Fl.H>
#include <FL/x.H>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xresource.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include "framework/log.h"

namespace vl1::gui {
namespace {

using x_error_handler = int (*)(Display*, XErrorEvent*);
x_error_handler host_error_handler = nullptr;
bool display_open = false;

/// Xlib's default handler ends the process on any error, a window that closed a moment ago
/// included; while the editor runs, errors are logged and the call that caused them fails.
int editor_x_error(Display* display, XErrorEvent* error)
{
    char text[160] = {};
    XGetErrorText(display, error->error_code, text, sizeof text);
    log("X error in the editor: {0} (request {1})", text, static_cast<int>(error->request_code));
    return 0;
}

void install_editor_error_handler()
{
    const x_error_handler previous = XSetErrorHandler(editor_x_error);
    if (previous != editor_x_error)
        host_error_handler = previous;
}

/// At unload the handler must not point into this library any more.
struct handler_guard {
    ~handler_guard() { restore_host_error_handlers(); }
} guard_at_unload;

void log_toolkit_message(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    char text[400];
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    log("Editor: {0}", text);
}

[[noreturn]] void toolkit_fatal(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    char text[400];
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    // The toolkit would end the host's process; the editor's loop catches this instead.
    throw std::runtime_error(std::string("editor toolkit failure: ") + text);
}

std::optional<unsigned long> window_property(Display* display, Window w, const char* name)
{
    const Atom atom = XInternAtom(display, name, True);
    if (atom == None)
        return std::nullopt;
    Atom type = None;
    int format = 0;
    unsigned long count = 0, after = 0;
    unsigned char* data = nullptr;
    std::optional<unsigned long> value;
    if (XGetWindowProperty(display, w, atom, 0, 1, False, XA_WINDOW, &type, &format, &count, &after, &data) ==
            Success &&
        data != nullptr && format == 32 && count == 1)
        value = *reinterpret_cast<unsigned long*>(data);
    if (data != nullptr)
        XFree(data);
    return value;
}

/// The number `text` starts with if it lies in (0, `most`], else 0.
double positive_number(const char* text, double most)
{
    if (text == nullptr || *text == '\0')
        return 0.0;
    char* end = nullptr;
    const double v = std::strtod(text, &end);
    return end != text && v > 0.0 && v <= most ? v : 0.0;
}

}  // namespace

int64_t screen_rect::overlap_area(const screen_rect& o) const
{
    const int64_t w = std::min<int64_t>(int64_t(x) + width, int64_t(o.x) + o.width) - std::max(x, o.x);
    const int64_t h = std::min<int64_t>(int64_t(y) + height, int64_t(o.y) + o.height) - std::max(y, o.y);
    return w > 0 && h > 0 ? w * h : 0;
}

bool open_editor_display()
{
    if (display_open) {
        install_editor_error_handler();
        return true;
    }
    const char* name = std::getenv("DISPLAY");
    if (name == nullptr || *name == '\0') {
        log_text("No X display: DISPLAY is not set.");
        return false;
    }
    // Opened here so that a refusal is an answer, not the toolkit's exit().
    Display* display = XOpenDisplay(name);
    if (display == nullptr) {
        log("The X display {0} can't be opened.", name);
        return false;
    }
    Fl::fatal = toolkit_fatal;
    Fl::error = log_toolkit_message;
    Fl::warning = log_toolkit_message;
    install_editor_error_handler();
    fl_open_display(display);
    install_editor_error_handler();  // in case the toolkit put its own in
    display_open = true;
    return true;
}

void restore_host_error_handlers()
{
    if (display_open)
        XSetErrorHandler(host_error_handler);
}

unsigned long find_host_window()
{
    if (!open_editor_display())
        return 0;
    const Window root = RootWindow(fl_display, fl_screen);
    const auto active = window_property(fl_display, root, "_NET_ACTIVE_WINDOW");
    // The property may still name a window that has just gone.
    XWindowAttributes attributes{};
    if (!active || *active == 0 || XGetWindowAttributes(fl_display, *active, &attributes) == 0)
        return root;
    return *active;
}

std::vector<screen_rect> monitors()
{
    std::vector<screen_rect> list;
    for (int i = 0; i < Fl::screen_count(); ++i) {
        screen_rect r;
        Fl::screen_xywh(r.x, r.y, r.width, r.height, i);
        list.push_back(r);
    }
    return list;
}

std::optional<screen_rect> window_area(unsigned long xid)
{
    if (!open_editor_display() || xid == 0)
        return std::nullopt;
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(fl_display, xid, &attributes) == 0)
        return std::nullopt;
    int x = 0, y = 0;
    Window child = 0;
    XTranslateCoordinates(fl_display, xid, attributes.root, 0, 0, &x, &y, &child);
    return screen_rect{x, y, attributes.width, attributes.height};
}

screen_rect best_monitor(const std::optional<screen_rect>& area)
{
    const std::vector<screen_rect> all = monitors();
    if (all.empty())
        return {};
    screen_rect best = all.front();
    int64_t best_area = 0;
    for (const screen_rect& s : all) {
        const int64_t a = area ? s.overlap_area(*area) : 0;
        if (a > best_area) {
            best_area = a;
            best = s;
        }
    }
    return best;
}

double desktop_scale()
{
    for (const char* variable : {"GDK_SCALE", "QT_SCALE_FACTOR"}) {
        if (const double v = positive_number(std::getenv(variable), 16.0); v > 0.0)
            return v;
    }
    if (!open_editor_display())
        return 1.0;
    const char* resources = XResourceManagerString(fl_display);
    if (resources == nullptr)
        return 1.0;
    XrmInitialize();
    XrmDatabase db = XrmGetStringDatabase(resources);
    double scale = 1.0;
    char* type = nullptr;
    XrmValue value{};
    if (db != nullptr && XrmGetResource(db, "Xft.dpi", "Xft.Dpi", &type, &value) && value.addr != nullptr) {
        if (const double dpi = positive_number(value.addr, 16.0 * 96.0); dpi > 0.0)
            scale = std::clamp(dpi / 96.0, 1.0, 4.0);
    }
    if (db != nullptr)
        XrmDestroyDatabase(db);
    return scale;
}

std::vector<uint8_t> monitor_profile()
{
    std::vector<uint8_t> bytes;
    if (!open_editor_display())
        return bytes;
    const Atom atom = XInternAtom(fl_display, "_ICC_PROFILE", True);
    if (atom == None)
        return bytes;
    Atom type = None;
    int format = 0;
    unsigned long count = 0, after = 0;
    unsigned char* data = nullptr;
    // At most 4 MiB: a profile is a few kilobytes, a property of any size is the server's.
    if (XGetWindowProperty(fl_display, RootWindow(fl_display, fl_screen), atom, 0, 1 << 20, False, AnyPropertyType,
                           &type, &format, &count, &after, &data) == Success &&
        data != nullptr && format == 8)
        bytes.assign(data, data + count);
    if (data != nullptr)
        XFree(data);
    return bytes;
}

void make_modal_transient(unsigned long xid, unsigned long parent)
{
    if (xid == 0)
        return;
    const Window root = RootWindow(fl_display, fl_screen);
    if (parent != 0 && parent != root)
        XSetTransientForHint(fl_display, xid, parent);
    XEvent e{};
    e.xclient.type = ClientMessage;
    e.xclient.window = xid;
    e.xclient.message_type = XInternAtom(fl_display, "_NET_WM_STATE", False);
    e.xclient.format = 32;
    e.xclient.data.l[0] = 1;  // _NET_WM_STATE_ADD
    e.xclient.data.l[1] = static_cast<long>(XInternAtom(fl_display, "_NET_WM_STATE_MODAL", False));
    e.xclient.data.l[3] = 1;  // a normal application
    XSendEvent(fl_display, root, False, SubstructureRedirectMask | SubstructureNotifyMask, &e);
    XFlush(fl_display);
}

}  // namespace vl1::gui
