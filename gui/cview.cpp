#include "gui/cview.h"

#include <FL/Fl_Double_Window.H>

#include <algorithm>

#include "framework/ihost.h"
#include "framework/iparameter.h"
#include "framework/iutils.h"
#include "framework/log.h"
#include "gui/window.h"

namespace vl1::gui {

rect editor_size_for_screen(int width, int height)
{
    const int w = static_cast<int>(std::max(1024.0, width * 0.9));
    if (w < 1280)
        return {w, 528};
    return {w, static_cast<int>(std::min(height * 0.9, w * 0.5344129554655871))};
}

cview_v1::cview_v1(std::weak_ptr<icomponent_v1> component) : component(std::move(component)) {}

bool cview_v1::query_interface(const std::string& name, iobject** out)
{
    if (out != nullptr && uid(name.c_str()) == ifc_id) {
        *out = this;
        return true;
    }
    return false;
}

rect cview_v1::get_rect() const
{
    void* handle = nullptr;
    if (auto owner = component.lock()) {
        if (auto host = owner->get_host())
            host->get_host_window(&handle);
    }
    int width = 0, height = 0;
    iutils::get_instance().get_screen_dimensions(handle, width, height);
    return editor_size_for_screen(width, height);
}

fltk_window* cview_v1::editor_window() const { return dynamic_cast<fltk_window*>(open_window.get()); }

bool cview_v1::open(std::shared_ptr<window> w)
{
    auto* platform = dynamic_cast<fltk_window*>(w.get());
    if (is_open() || platform == nullptr || platform->content() == nullptr) {
        log_text("Cannot open GUI window.");
        return false;
    }
    open_window = std::move(w);
    init_view();
    update_controls(false);
    auto owner = component.lock();
    if (!owner)
        return true;
    // The editor starts with an empty undo stack and a state that cancelling returns to.
    owner->save_cancel_state();
    owner->flush_state_stack();
    return true;
}

void cview_v1::close()
{
    listeners.clear();
    if (open_window)
        open_window->close();
}

bool cview_v1::is_open() { return open_window && open_window->is_open(); }

bool cview_v1::idle()
{
    if (open_window)
        open_window->pop_pending_messages();
    return true;
}

void cview_v1::set_control_from_parameter(std::shared_ptr<iparameter_v1> param, bool redraw)
{
    if (!is_open())
        return;
    for (auto* listener : listeners)
        listener->parameter_changed(param, redraw);
}

void cview_v1::set_preview_image(image&) {}

void cview_v1::update_controls(bool redraw)
{
    auto owner = component.lock();
    if (!owner)
        return;
    for (int i = 0; i < owner->get_parameter_count(); ++i) {
        if (auto param = owner->get_parameter(i))
            set_control_from_parameter(param, redraw);
    }
}

void cview_v1::register_parameter_change_listener(iparameter_change_listener_v1* listener)
{
    listeners.insert(listener);
}

void cview_v1::unregister_parameter_change_listener(iparameter_change_listener_v1* listener)
{
    listeners.erase(listener);
}

void cview_v1::valueChanged(CVLControl*) {}

void cview_v1::controlBeginEdit(CVLControl* control)
{
    editing = true;
    auto owner = component.lock();
    if (owner && owner->get_parameter(uid::from_value(static_cast<uint32_t>(control->getTag()))))
        owner->save_state(true);
}

void cview_v1::controlEndEdit(CVLControl* control)
{
    editing = false;
    auto owner = component.lock();
    if (owner && owner->get_parameter(uid::from_value(static_cast<uint32_t>(control->getTag()))))
        owner->save_state(false);
}

}  // namespace vl1::gui
