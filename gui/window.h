// The editor's top-level window on X11, and the factory that places it on the host's monitor.
#pragma once

#include <memory>
#include <string>

#include "framework/window.h"

class Fl_Double_Window;
class Fl_RGB_Image;

namespace vl1::gui {

class fltk_window : public window {
public:
    /// A window of `width` x `height` at (`x`, `y`), not yet shown.
    fltk_window(int x, int y, int width, int height, const std::string& title, unsigned long parent);
    ~fltk_window() override;

    void begin_modal() override;
    void end_modal() override;
    bool is_modal() const override { return modal; }
    bool is_open() const override;
    void close() override;
    /// One turn of the toolkit's event loop, waiting up to 25 ms.
    bool pop_pending_messages() override;

    /// Where the editor's frame goes; null after close().
    Fl_Double_Window* content() const { return platform_window.get(); }
    /// Shows the window, transient for the parent and marked modal.
    void show(const Fl_RGB_Image* icon);

private:
    std::unique_ptr<Fl_Double_Window> platform_window;
    std::string title;
    unsigned long parent = 0;
    bool modal = false;
};

class fltk_window_factory : public window_factory {
public:
    std::shared_ptr<window> create_window(rect size, const std::string& title, void* parent) override;
    bool get_host_window(void** out) override;
    void set_icon_name(const std::string& name) override { icon_name = name; }

private:
    std::string icon_name = "vl_icon";
};

}  // namespace vl1::gui
