#include "ofx/ofx_plugin_state.h"

#include <random>

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

uint64_t ofx_plugin_state::make_token()
{
    // Random start, then a splitmix64 walk: tokens look random in the log but never repeat
    // within a process, so two instances made in the same second both keep their entries.
    if (token_state == 0)
        token_state = (uint64_t(std::random_device{}()) << 32) ^ std::random_device{}() ^ 0x9e3779b97f4a7c15ull;
    uint64_t z = (token_state += 0x9e3779b97f4a7c15ull);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
    return z ^ (z >> 31);
}

uint64_t ofx_plugin_state::add_instance(std::shared_ptr<ofx_instance_data> record,
                                        std::shared_ptr<icomponent_v1> component)
{
    std::lock_guard lock(table_mutex);
    uint64_t token = make_token();
    while (token == 0 || instances.count(token) != 0)
        token = make_token();
    record->token = token;
    instances[token] = instance_entry{std::move(record), std::move(component)};
    return token;
}

instance_entry ofx_plugin_state::find_instance(uint64_t token) const
{
    std::lock_guard lock(table_mutex);
    auto it = instances.find(token);
    return it == instances.end() ? instance_entry{} : it->second;
}

uint64_t ofx_plugin_state::find_instance_by_record(const void* address) const
{
    if (address == nullptr)
        return 0;
    std::lock_guard lock(table_mutex);
    for (const auto& [token, entry] : instances) {
        if (entry.record.get() == address)
            return token;
    }
    return 0;
}

bool ofx_plugin_state::remove_instance(uint64_t token)
{
    std::unique_lock lock(table_mutex);
    auto it = instances.find(token);
    if (it == instances.end())
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
