// The host object of a component that runs inside an OFX host: on top of the default host's
// flags it queues the parameters that the component changed itself, so the adapter can write
// exactly those back to the host, and never the values the host gave it.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "framework/chost.h"

namespace vl1 {

class ofx_host_interface : public chost_v1 {
public:
    explicit ofx_host_interface(std::weak_ptr<icomponent_v1> component);

    host_id get_type() override;            // ofx (6)
    std::string get_vendor() override;      // "OFX"
    std::string get_name() override;        // "OFX Host"
    version_record get_version() override;  // all zero
    language_id get_language() override;
    /// The window the editor's window system names (the host's active window); false when
    /// there is no window system or no display.
    bool get_host_window(void** out) override;
    void notify(event e) override;

    /// The smallest queued parameter index, removed from the queue; -1 when it is empty.
    virtual int32_t pop_dirty_param();
    /// Puts a parameter back in the queue, after the host refused to take its value.
    void requeue_dirty_param(int32_t index);
    /// The parameter waits in the queue: its value in the component is newer than the host's.
    bool is_dirty_param(int32_t index);

    /// The host refused the state; it is written again at the next action that may write.
    void set_state_pending(bool pending) { state_pending = pending; }
    bool is_state_pending() const { return state_pending; }

private:
    int find_parameter_index(uid param) const;

    host_id type = host_id::ofx;
    version_record version{};
    std::string name = "OFX Host";
    std::mutex mutex;                // guards dirty_params
    std::vector<bool> enabled_bits;  // last known get_enabled() per parameter, in list order
    std::set<int32_t> dirty_params;  // indices to write back to the host
    std::atomic<bool> state_pending{false};
};

/// The language of a locale name such as "de_DE.UTF-8": en if it contains "en" anywhere,
/// else de if it contains "de", else en.
language_id language_from_locale_name(const std::string& locale_name);

}  // namespace vl1
