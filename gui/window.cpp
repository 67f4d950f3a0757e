#include "gui/window.h"

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/x.H>

#include <cmath>

#include "gui/cvl_bitmap.h"
#include "gui/x11_session.h"

namespace vl1::gui {
namespace {

/// The title bar's close box hides the window, which ends the editor's loop; Escape belongs
/// to the editor, not to the toolkit's habit of closing the window on it.
void on_window_close(Fl_Widget* w, void*)
{
    if (Fl::event() == FL_SHORTCUT && Fl::event_key() == FL_Escape)
        return;
    w->hide();
}

unsigned long to_xid(void* handle) { return reinterpret_cast<unsigned long>(handle); }

}  // namespace

fltk_window::fltk_window(int x, int y, int width, int height, const std::string& title, unsigned long parent)
    : platform_window(std::make_unique<Fl_Double_Window>(x, y, width, height)), title(title), parent(parent)
{
    platform_window->copy_label(title.c_str());
    platform_window->callback(on_window_close);
    platform_window->size_range(width, height, width, height);  // not resizable
    platform_window->end();
}

fltk_window::~fltk_window() { close(); }

void fltk_window::show(const Fl_RGB_Image* icon)
{
    if (icon != nullptr)
        platform_window->icon(icon);
    platform_window->show();
    make_modal_transient(fl_xid(platform_window.get()), parent);
}

void fltk_window::begin_modal()
{
    if (modal || !platform_window)
        return;
    modal = true;
    platform_window->set_modal();
    const screen_rect s = best_monitor(window_area(fl_xid(platform_window.get())));
    platform_window->position(s.x + (s.width - platform_window->w()) / 2, s.y + (s.height - platform_window->h()) / 2);
}

void fltk_window::end_modal() { modal = false; }

bool fltk_window::is_open() const { return platform_window && platform_window->shown() && platform_window->visible(); }

void fltk_window::close()
{
    if (!platform_window)
        return;
    // Reads as closed at once, even while the toolkit is still tearing the window down.
    std::unique_ptr<Fl_Double_Window> w = std::move(platform_window);
    w->hide();
    modal = false;
    w.reset();
    Fl::check();  // let the server see the window go before the render goes on
    restore_host_error_handlers();
}

bool fltk_window::pop_pending_messages()
{
    Fl::wait(0.025);
    if (modal && !is_open())
        modal = false;
    return true;
}

std::shared_ptr<window> fltk_window_factory::create_window(rect size, const std::string& title, void* parent)
{
    if (!open_editor_display())
        return nullptr;
    const screen_rect s = best_monitor(window_area(to_xid(parent)));
    // One point smaller than asked, and centred on the monitor that shows most of the host.
    const int width = std::max(1, size.width - 1);
    const int height = std::max(1, size.height - 1);
    const int x = s.x + static_cast<int>(std::ceil((s.width - size.width) * 0.5));
    const int y = s.y + static_cast<int>(std::ceil((s.height - size.height) * 0.5));
    auto w = std::make_shared<fltk_window>(x, y, width, height, title, to_xid(parent));
    static std::shared_ptr<CVLBitmap> icon;
    if (!icon)
        icon = std::make_shared<CVLBitmap>(icon_name + ".png", 1.0);
    w->show(icon->toolkit_image());
    return w;
}

bool fltk_window_factory::get_host_window(void** out)
{
    const unsigned long xid = find_host_window();
    if (xid == 0)
        return false;
    *out = reinterpret_cast<void*>(xid);
    return true;
}

}  // namespace vl1::gui
