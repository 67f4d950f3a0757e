// Process-wide state of the adapter: the host, its suites, the prototype component that
// answers the describing actions, and the table that keeps every effect instance alive.
// Created on first use and never torn down: a host may call into the bundle until the process
// ends. The host calls Load, Describe, Create and Destroy one at a time, so the table carries
// no lock of its own beyond what keeps concurrent renders' look-ups safe.
#pragma once

#include <cstdint>
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

    /// Adds an entry under a fresh token, unique among the live instances of this process.
    uint64_t add_instance(std::shared_ptr<ofx_instance_data> record, std::shared_ptr<icomponent_v1> component);
    /// The entry of `token`; empty pointers if there is none.
    instance_entry find_instance(uint64_t token) const;
    /// The token of the live record at `address`, found without reading through the address
    /// (a host may hand back a stale or foreign pointer); 0 if no live record is there.
    uint64_t find_instance_by_record(const void* address) const;
    /// Erases the entry of `token`; false if there was none.
    bool remove_instance(uint64_t token);
    size_t instance_count() const;

private:
    uint64_t make_token();

    bool prototype_initialised = false;

    mutable std::mutex table_mutex;  // renders of other instances may look up concurrently
    std::map<uint64_t, instance_entry> instances;
    uint64_t token_state = 0;
};

}  // namespace vl1
