#include "ofx/ofx_host_interface.h"

#include <clocale>
#include <cstdlib>

#include "framework/iparameter.h"
#include "framework/window.h"

namespace vl1 {

ofx_host_interface::ofx_host_interface(std::weak_ptr<icomponent_v1> component)
    : chost_v1(std::move(component))
{
}

host_id ofx_host_interface::get_type() { return type; }
std::string ofx_host_interface::get_vendor() { return "OFX"; }
std::string ofx_host_interface::get_name() { return name; }
version_record ofx_host_interface::get_version() { return version; }

language_id language_from_locale_name(const std::string& locale_name)
{
    if (locale_name.find("en") != std::string::npos)
        return language_id::en;
    if (locale_name.find("de") != std::string::npos)
        return language_id::de;
    return language_id::en;
}

language_id ofx_host_interface::get_language()
{
    // The user's language as the environment states it, in the order the C library weighs
    // the variables for messages. Only the language part counts ("de" of "de_AT.UTF-8").
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            std::string text(value);
            return language_from_locale_name(text.substr(0, text.find_first_of("_.@")));
        }
    }
    return language_id::en;
}

bool ofx_host_interface::get_host_window(void** out)
{
    window_factory* factory = window_factory::get_instance("vl_icon");
    return factory != nullptr && factory->get_host_window(out);
}

int ofx_host_interface::find_parameter_index(uid param) const
{
    auto owner = component.lock();
    if (!owner)
        return -1;
    const int count = owner->get_parameter_count();
    for (int i = 0; i < count; ++i) {
        auto p = owner->get_parameter(i);
        if (p && p->get_uid() == param)
            return i;
    }
    return -1;
}

void ofx_host_interface::notify(event e)
{
    if (auto owner = component.lock()) {
        switch (e.type) {
        case event_param_changed: {
            std::lock_guard lock(mutex);
            const int index = find_parameter_index(e.param);
            if (index >= 0)
                dirty_params.insert(index);
            break;
        }
        case event_param_enabled_changed: {
            const int index = find_parameter_index(e.param);
            if (index >= 0 && static_cast<size_t>(index) < enabled_bits.size())
                enabled_bits[index] = owner->get_parameter(index)->get_enabled();
            break;
        }
        case event_initialized: {
            const int count = owner->get_parameter_count();
            enabled_bits.assign(count > 0 ? count : 0, false);
            for (int i = 0; i < count; ++i) {
                auto p = owner->get_parameter(i);
                enabled_bits[i] = p && p->get_enabled();
            }
            break;
        }
        default:
            break;
        }
    }
    chost_v1::notify(e);
}

int32_t ofx_host_interface::pop_dirty_param()
{
    std::lock_guard lock(mutex);
    if (dirty_params.empty())
        return -1;
    const int32_t index = *dirty_params.begin();
    dirty_params.erase(dirty_params.begin());
    return index;
}

void ofx_host_interface::requeue_dirty_param(int32_t index)
{
    std::lock_guard lock(mutex);
    dirty_params.insert(index);
}

bool ofx_host_interface::is_dirty_param(int32_t index)
{
    std::lock_guard lock(mutex);
    return dirty_params.count(index) != 0;
}

}  // namespace vl1
