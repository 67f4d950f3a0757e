// The component's view of the program it runs in, and the channel every event takes.
#pragma once

#include "framework/event.h"
#include "framework/iobject.h"
#include "framework/param_value.h"
#include "framework/types.h"

namespace vl1 {

class image;

class ihost_v1 : public iobject {
public:
    virtual host_id get_type() = 0;
    virtual std::string get_vendor() = 0;
    virtual std::string get_name() = 0;
    virtual version_record get_version() = 0;

    virtual language_id get_language() = 0;

    /// The native handle of a window to stand in front of; false if there is none.
    virtual bool get_host_window(void** out) = 0;

    virtual project_info get_project_info() = 0;

    virtual bool has_working_color_profile() = 0;
    virtual bool convert_to_working_color_profile(param_argb& color) = 0;
    virtual bool convert_to_monitor_color_profile(image& picture) = 0;

    virtual bool schedule_render() = 0;

    virtual void notify(event e) = 0;

    /// A parameter changed or a render was asked for, and no preview pass started since.
    virtual bool component_is_dirty() = 0;
    /// A loaded state held a parameter that this version no longer has.
    virtual bool has_legacy_parameters() = 0;
};

}  // namespace vl1
