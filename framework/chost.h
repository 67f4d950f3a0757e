// The default host object: for a component with no real host behind it, and the base of
// every host object (dirty flag, legacy flag, forwarding of events to the component).
#pragma once

#include <atomic>
#include <memory>

#include "framework/icomponent.h"
#include "framework/ihost.h"

namespace vl1 {

class chost_v1 : public ihost_v1 {
public:
    static constexpr uid ifc_id{"chost_v1"};

    explicit chost_v1(std::weak_ptr<icomponent_v1> component);

    bool query_interface(const std::string& name, iobject** out) override;

    host_id get_type() override;                 // standalone (0)
    std::string get_vendor() override;           // "Varnlight"
    std::string get_name() override;             // "VL Default Host V1"
    version_record get_version() override;       // 1, 3, 0, 0
    language_id get_language() override;         // en
    bool get_host_window(void** out) override;   // false, *out untouched
    project_info get_project_info() override;    // 0, 24
    bool has_working_color_profile() override;   // false
    bool convert_to_working_color_profile(param_argb& color) override;  // false, untouched
    bool convert_to_monitor_color_profile(image& picture) override;     // false, untouched
    /// Raises event_schedule_render through the virtual notify; returns true.
    bool schedule_render() override;
    /// Updates the dirty and legacy flags by the event's type, then hands the event to the
    /// component if it is still alive. Subclasses do their own part and then call this.
    void notify(event e) override;
    bool component_is_dirty() override;
    bool has_legacy_parameters() override;

protected:
    std::weak_ptr<icomponent_v1> component;  // weak: the component holds this object
    std::atomic<bool> dirty{false};          // read by the GUI loop, cleared by the preview thread
    bool legacy_parameters = false;
};

}  // namespace vl1
