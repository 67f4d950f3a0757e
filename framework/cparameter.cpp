#include "framework/cparameter.h"

#include <utility>

#include "framework/iview.h"
#include "framework/param_rules.h"

namespace vl1 {

cparameter_v1::cparameter_v1(std::weak_ptr<icomponent_v1> owner, std::string param_name, param_type type)
    : component(std::move(owner)), name(std::move(param_name)), id(name)
{
    if (const auto c = component.lock())
        host = c->get_host();
    value.type = type;
}

bool cparameter_v1::query_interface(const std::string& interface_name, iobject** out)
{
    const bool match = uid(interface_name) == ifc_id;
    if (out != nullptr)
        *out = match ? this : nullptr;
    return match;
}

std::string cparameter_v1::get_name()
{
    return name;
}

uid cparameter_v1::get_uid()
{
    return id;
}

param_type cparameter_v1::get_type()
{
    return value.type;
}

void cparameter_v1::set_enabled(bool enable)
{
    if (enable == enabled)
        return;
    enabled = enable;
    if (const auto h = host.lock())
        h->notify(event(event_param_enabled_changed, id));
}

bool cparameter_v1::get_enabled()
{
    return enabled;
}

param_value cparameter_v1::get_param_value()
{
    return value;
}

param_value cparameter_v1::get_previous_param_value()
{
    return previous;
}

void cparameter_v1::set_param_value(param_value v, bool from_host)
{
    if (v.type != value.type)
        return;
    param_rules::clamp(v);  // by the bounds that travel in v, not the object's
    if (!enabled || !param_rules::is_known_type(v.type))
        return;
    if (!param_rules::admits(v))
        return;

    previous = value;
    value = v;
    if (param_rules::data_differs(value.type, value.value, value.default_value))
        is_reset = false;

    // The host hears of every accepted call, even one that leaves the value as it was.
    if (const auto h = host.lock())
        h->notify(event(from_host ? event_param_set_by_host : event_param_changed, id));

    if (param_rules::value_differs(value, previous)) {
        if (const auto c = component.lock()) {
            if (const auto view = c->get_view())
                view->set_control_from_parameter(shared_from_this(), from_host);
        }
    }
}

bool cparameter_v1::is_dirty()
{
    return param_rules::value_differs(value, previous);
}

void cparameter_v1::reset_to_default()
{
    param_value v = value;
    v.value = v.default_value;
    set_param_value(v, false);
    is_reset = true;
}

bool cparameter_v1::get_is_reset()
{
    return is_reset;
}

bool cparameter_v1::get_is_default()
{
    return !param_rules::data_differs(value.type, value.value, value.default_value);
}

uint32_t cparameter_v1::get_flags()
{
    return 0;
}

void cparameter_v1::finish_construction()
{
    param_rules::clamp(value);
    previous = value;
}

}  // namespace vl1
