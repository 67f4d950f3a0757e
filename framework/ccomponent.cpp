#include "framework/ccomponent.h"

#include <filesystem>
#include <utility>

#include "framework/cutils_linux.h"
#include "framework/iutils.h"

namespace vl1 {

bool ccomponent_v1::query_interface(const std::string& name, iobject** out)
{
    const bool match = uid(name) == ifc_id;
    if (out != nullptr)
        *out = match ? this : nullptr;
    return match;
}

std::shared_ptr<iview_v1> ccomponent_v1::create_view()
{
    return nullptr;
}

std::string ccomponent_v1::get_name()
{
    return "Hueloom";
}

std::string ccomponent_v1::get_vendor()
{
    return "Varnlight";
}

std::string ccomponent_v1::get_com_identifier()
{
    return std::string("com.") + "varnlight" + "." + "hueloomofx";
}

version_record ccomponent_v1::get_version()
{
    return {1, 3, 0, 0};
}

std::shared_ptr<ihost_v1> ccomponent_v1::get_host()
{
    return host;
}

void ccomponent_v1::initialize(std::shared_ptr<ihost_v1> h)
{
    if (!h)
        return;
    host = h;
    init_component();
    h->notify(event(event_initialized));
    default_state = get_state();
}

void ccomponent_v1::terminate()
{
    if (!host)
        return;
    view.reset();
    host->notify(event(event_terminated));
    // Front to back, so parameters go in the order they were made.
    for (auto& param : parameters)
        param.reset();
    parameters.clear();
    host.reset();
}

void ccomponent_v1::init_component() {}

bool ccomponent_v1::is_state_rejected(std::vector<uint8_t>& /*state*/, bool /*from_host*/, std::string& reason)
{
    reason.clear();
    return false;
}

int ccomponent_v1::get_parameter_count()
{
    return static_cast<int>(parameters.size());
}

std::shared_ptr<iparameter_v1> ccomponent_v1::get_parameter(int index)
{
    if (index < 0 || index >= get_parameter_count())
        return nullptr;
    return parameters[static_cast<std::size_t>(index)];
}

std::shared_ptr<iparameter_v1> ccomponent_v1::get_parameter(uid id)
{
    for (const auto& param : parameters) {
        if (param->get_uid() == id)
            return param;
    }
    return nullptr;
}

std::shared_ptr<iparameter_v1> ccomponent_v1::get_parameter(const std::string& name)
{
    return get_parameter(uid(name));
}

std::shared_ptr<iview_v1> ccomponent_v1::get_view()
{
    return view;
}

void ccomponent_v1::notify(event /*e*/) {}

void ccomponent_v1::process_pixel(int /*x*/, int /*y*/, const argb_float& /*in*/, argb_float* /*out*/) {}

void ccomponent_v1::open_manual()
{
    // The manual ships in the bundle's resources, in the host's language; the web page is the
    // fallback for a build without resources.
    const bool german = host && host->get_language() == language_id::de;
    const auto* utils = dynamic_cast<const cutils_linux*>(&iutils::get_instance());
    const std::string page = utils != nullptr && !utils->resource_dir().empty()
                                 ? utils->resource_dir() + (german ? "/manual_de.html" : "/manual_en.html")
                                 : std::string();
    std::error_code ignored;
    iutils::get_instance().open_url(!page.empty() && std::filesystem::exists(page, ignored) ? page : manual_url);
}

void ccomponent_v1::idle()
{
    if (idle_seen)
        return;
    if (host)
        host->schedule_render();
    idle_seen = true;
}

std::shared_ptr<iparameter_v1> ccomponent_v1::find_bypass_parameter()
{
    for (const auto& param : parameters) {
        if ((param->get_flags() & param_flag_bypass) != 0)
            return param;
    }
    return nullptr;
}

bool ccomponent_v1::has_bypass()
{
    return find_bypass_parameter() != nullptr;
}

bool ccomponent_v1::get_bypass()
{
    const auto param = find_bypass_parameter();
    return param && param->get_param_value().value.b != 0;
}

void ccomponent_v1::set_bypass(bool bypass)
{
    const auto param = find_bypass_parameter();
    if (!param)
        return;
    param_value v = param->get_param_value();
    v.value.b = bypass ? 1 : 0;
    param->set_param_value(v, false);
}

void ccomponent_v1::reset_to_default()
{
    set_state(default_state, false);
}

void ccomponent_v1::cancel_effect()
{
    if (host)
        host->notify(event(event_effect_cancelled));
    set_state(cancel_state, false);
}

void ccomponent_v1::handle_unknown_parameter(uid id, const param_value& /*value*/, bool /*from_host*/)
{
    // The value is dropped; the host object notes that the project comes from another version.
    if (host)
        host->notify(event(event_unknown_parameter, id));
}

}  // namespace vl1
