// Process-wide state of the adapter: the host, its suites, the prototype component that
// answers the describing actions, and the table that keeps every effect instance alive.
// Created on first use and never torn down: a host may call into the bundle until the process
// ends. The host calls Load, Describe, Create and Destroy one at a time, so the table carries
// no lock of its own beyond what keeps concurrent renders' look-ups safe.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "framework/icomponent.h"
#include "ofx/ofx_instance_data.h"
#include "ofx/ofx_suites.h"

namespace vl1 {

/// Used in the log only.
inline constexpr int wrapper_version = 4;

struct instance_entry {
    std::shared_ptr<ofx_instance_data> record;
    std::shared_ptr<icomponent_v1> component;
};

class ofx_plugin_state {
public:
    static ofx_plugin_state& get();

    OfxHost* host = nullptr;
    host_suites suites;
    std::shared_ptr<icomponent_v1> prototype;

    /// The prototype with its parameters built: initialised at the first describing action
    /// after a load and kept, so that describing again adds nothing. Null without a prototype.
    std::shared_ptr<icomponent_v1> described_prototype();
    /// "OfxActionUnload": forgets the suites and starts a fresh prototype, so that the next
    /// load finds the adapter as the first one did. Instances the host left alive stay.
    void unload();

    /// Adds an entry under the address of its record, which the host keeps for the instance.
    void add_instance(std::shared_ptr<ofx_instance_data> record, std::shared_ptr<icomponent_v1> component);
    /// The entry of the instance `effect`, by the record address in its "OfxPropInstanceData",
    /// found without reading through that address (a host may hand back a stale or foreign
    /// pointer). Empty pointers if the instance has no live entry.
    instance_entry find_entry(OfxImageEffectHandle effect) const;
    /// Erases the entry of `effect`; false if there was none. A host may destroy twice.
    bool remove_entry(OfxImageEffectHandle effect);
    size_t instance_count() const;

private:
    /// The record address the host keeps for `effect`; null if it can't be read.
    const void* record_address(OfxImageEffectHandle effect) const;

    bool prototype_initialised = false;

    mutable std::mutex table_mutex;  // renders of other instances may look up concurrently
    std::map<const void*, instance_entry> instances;
};

}  // namespace vl1
