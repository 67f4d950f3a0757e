#include "framework/chost.h"

#include <utility>

namespace vl1 {

chost_v1::chost_v1(std::weak_ptr<icomponent_v1> owner) : component(std::move(owner)) {}

bool chost_v1::query_interface(const std::string& name, iobject** out)
{
    const bool match = uid(name) == ifc_id;
    if (out != nullptr)
        *out = match ? this : nullptr;
    return match;
}

host_id chost_v1::get_type()
{
    return host_id::standalone;
}

std::string chost_v1::get_vendor()
{
    return "Varnlight";
}

std::string chost_v1::get_name()
{
    return "VL Default Host V1";
}

version_record chost_v1::get_version()
{
    return {1, 3, 0, 0};
}

language_id chost_v1::get_language()
{
    return language_id::en;
}

bool chost_v1::get_host_window(void** /*out*/)
{
    return false;
}

project_info chost_v1::get_project_info()
{
    return {0, 24};
}

bool chost_v1::has_working_color_profile()
{
    return false;
}

bool chost_v1::convert_to_working_color_profile(param_argb& /*color*/)
{
    return false;
}

bool chost_v1::convert_to_monitor_color_profile(image& /*picture*/)
{
    return false;
}

bool chost_v1::schedule_render()
{
    // Through the virtual notify, so a subclass sees the request too. Without a render path
    // behind this host the request is only the raised dirty flag the GUI loop picks up.
    notify(event(event_schedule_render));
    return true;
}

void chost_v1::notify(event e)
{
    switch (e.type) {
    case event_initialized:
        legacy_parameters = false;
        break;
    case event_param_set_by_host:
    case event_param_changed:
    case event_schedule_render:
        dirty.store(true);
        break;
    case event_render_setup:
        dirty.store(false);
        break;
    case event_unknown_parameter:
        legacy_parameters = true;
        break;
    default:
        break;
    }
    if (const auto c = component.lock())
        c->notify(std::move(e));
}

bool chost_v1::component_is_dirty()
{
    return dirty.load();
}

bool chost_v1::has_legacy_parameters()
{
    return legacy_parameters;
}

}  // namespace vl1
