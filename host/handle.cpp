#include "host/handle.h"

#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace vl1::ofxhost {

namespace {

struct handle_registry {
    std::shared_mutex mutex;
    std::unordered_map<const void*, handle_kind> live;
};

// Never destroyed: handles may outlive static destruction order (a plug-in's globals).
handle_registry& registry()
{
    static auto* r = new handle_registry;
    return *r;
}

}  // namespace

handle_tag::handle_tag(handle_kind k) : tag(k)
{
    auto& r = registry();
    std::unique_lock lock(r.mutex);
    r.live[static_cast<const void*>(this)] = k;
}

handle_tag::~handle_tag()
{
    auto& r = registry();
    std::unique_lock lock(r.mutex);
    r.live.erase(static_cast<const void*>(this));
    tag = handle_kind::dead;
}

void handle_tag::kill()
{
    auto& r = registry();
    std::unique_lock lock(r.mutex);
    r.live.erase(static_cast<const void*>(this));
    tag = handle_kind::dead;
}

void handle_tag::revive(handle_kind k)
{
    auto& r = registry();
    std::unique_lock lock(r.mutex);
    r.live[static_cast<const void*>(this)] = k;
    tag = k;
}

handle_kind live_handle_kind(const void* handle)
{
    if (handle == nullptr)
        return handle_kind::dead;
    auto& r = registry();
    std::shared_lock lock(r.mutex);
    const auto it = r.live.find(handle);
    return it == r.live.end() ? handle_kind::dead : it->second;
}

}  // namespace vl1::ofxhost
