// The base of every editor view: sizes the editor from the monitor, opens it into a window,
// passes parameter changes to controls and listeners, and turns the begin and end of a
// control gesture into one undo step.
#pragma once

#include <memory>
#include <set>

#include "framework/icomponent.h"
#include "framework/iview.h"
#include "gui/control.h"

namespace vl1::gui {

class fltk_window;

class iparameter_change_listener_v1 {
public:
    virtual ~iparameter_change_listener_v1() = default;
    virtual void parameter_changed(std::shared_ptr<iparameter_v1> param, bool redraw) = 0;
};

/// The editor's size for a monitor of `width` x `height` points: at least 1024 x 528, from
/// 1280 wide up keeping 528:988, within 90 % of the monitor.
rect editor_size_for_screen(int width, int height);

class cview_v1 : public iview_v1, public control_listener {
public:
    static constexpr uid ifc_id{"cview_v1"};

    explicit cview_v1(std::weak_ptr<icomponent_v1> component);

    bool query_interface(const std::string& name, iobject** out) override;

    rect get_rect() const override;
    /// False, logged, if open already or the window has no content.
    bool open(std::shared_ptr<window> w) override;
    void close() override;
    bool is_open() override;
    bool is_editing() override { return editing; }
    /// One turn of the window's event pump.
    bool idle() override;
    void set_control_from_parameter(std::shared_ptr<iparameter_v1> param, bool redraw) override;
    void set_preview_image(image& picture) override;

    virtual void init_view() {}
    void update_controls(bool redraw);
    void register_parameter_change_listener(iparameter_change_listener_v1* listener);
    void unregister_parameter_change_listener(iparameter_change_listener_v1* listener);

    void valueChanged(CVLControl* control) override;
    void controlBeginEdit(CVLControl* control) override;
    void controlEndEdit(CVLControl* control) override;

protected:
    fltk_window* editor_window() const;

    std::weak_ptr<icomponent_v1> component;
    std::shared_ptr<window> open_window;

private:
    std::set<iparameter_change_listener_v1*> listeners;
    bool editing = false;
};

}  // namespace vl1::gui
