// An editor view of a component. The editor's own classes add their operations behind these.
#pragma once

#include <memory>

#include "framework/iobject.h"
#include "framework/types.h"

namespace vl1 {

class image;
class iparameter_v1;
class window;

class iview_v1 : public iobject {
public:
    virtual rect get_rect() const = 0;
    virtual bool open(std::shared_ptr<window> parent) = 0;
    virtual void close() = 0;
    virtual bool is_open() = 0;
    /// True while the user holds a control.
    virtual bool is_editing() = 0;
    virtual bool idle() = 0;
    /// Moves the control bound to `param` to its value; called by the parameter on a change.
    virtual void set_control_from_parameter(std::shared_ptr<iparameter_v1> param, bool from_host) = 0;
    /// A finished preview picture; the view keeps its own copy. Called on the view's thread.
    virtual void set_preview_image(image& picture) = 0;
};

}  // namespace vl1
