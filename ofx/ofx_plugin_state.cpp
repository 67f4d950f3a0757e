#include "ofx/ofx_plugin_state.h"

#include "framework/component_factory.h"
#include "ofx/ofx_host_interface.h"

namespace vl1 {

ofx_plugin_state& ofx_plugin_state::get()
{
    // Never destroyed: a host may still call into the bundle while static destructors run.
    static auto* state = new ofx_plugin_state;
    return *state;
}

std::shared_ptr<icomponent_v1> ofx_plugin_state::described_prototype()
{
    if (!prototype)
        return nullptr;
    if (!prototype_initialised) {
        // Set first: a prototype whose initialisation threw is not initialised twice.
        prototype_initialised = true;
        prototype->initialize(std::make_shared<ofx_host_interface>(prototype));
    }
    return prototype;
}

void ofx_plugin_state::unload()
{
    suites = host_suites{};
    prototype.reset(create_ccomponent());
    prototype_initialised = false;
}

void ofx_plugin_state::add_instance(std::shared_ptr<ofx_instance_data> record, std::shared_ptr<icomponent_v1> component)
{
    std::lock_guard lock(table_mutex);
    const void* address = record.get();
    instances[address] = instance_entry{std::move(record), std::move(component)};
}

const void* ofx_plugin_state::record_address(OfxImageEffectHandle effect) const
{
    OfxPropertySetHandle props = nullptr;
    void* record = nullptr;
    if (suites.effect == nullptr || suites.property == nullptr ||
        suites.effect->getPropertySet(effect, &props) != kOfxStatOK || props == nullptr ||
        suites.property->propGetPointer(props, kOfxPropInstanceData, 0, &record) != kOfxStatOK)
        return nullptr;
    return record;
}

instance_entry ofx_plugin_state::find_entry(OfxImageEffectHandle effect) const
{
    const void* address = record_address(effect);
    if (address == nullptr)
        return {};
    std::lock_guard lock(table_mutex);
    const auto it = instances.find(address);
    return it == instances.end() ? instance_entry{} : it->second;
}

bool ofx_plugin_state::remove_entry(OfxImageEffectHandle effect)
{
    const void* address = record_address(effect);
    std::unique_lock lock(table_mutex);
    const auto it = instances.find(address);
    if (address == nullptr || it == instances.end())
        return false;
    // The component may run its destructor here; do that outside the lock.
    instance_entry gone = std::move(it->second);
    instances.erase(it);
    lock.unlock();
    return true;
}

size_t ofx_plugin_state::instance_count() const
{
    std::lock_guard lock(table_mutex);
    return instances.size();
}

}  // namespace vl1
