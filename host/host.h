// The host as tests and tools use it:
//
//   ofxhost::host h;
//   for (auto& bundle : ofxhost::find_bundles(ofxhost::default_search_path())) {
//       auto p = h.load_plugin(bundle, 0);
//       p.load(); p.describe(); p.describe_in_context(kOfxImageEffectContextFilter);
//       auto inst = p.create_instance(kOfxImageEffectContextFilter, {{"binaryStateParam", "..."}});
//       inst.set_clip_image("Source", src); inst.set_clip_image("Output", out);
//       inst.render(0.0, {0, 0, 64, 32});
//   }
//
// One host at a time is the intended use: the suites reach the failure table and the message
// log of the most recently created host that is still alive (host_state.h).
#pragma once

#include "host/failure_injection.h"
#include "host/host_state.h"
#include "host/loader.h"
#include "host/plugin.h"
#include "host/property_set.h"

#include <filesystem>
#include <string>
#include <vector>

namespace ofxhost {

class host {
public:
    host();
    ~host();
    host(const host&) = delete;
    host& operator=(const host&) = delete;

    /// The record handed to setHost.
    OfxHost* ofx_host() { return &ofx_host_; }
    /// The host's description (kOfxPropName, supported depths and contexts...): read-only for
    /// the plug-in, changeable here.
    property_set& properties() { return props_; }

    /// What fetchSuite gives the plug-in: null for an omitted suite or a version other than 1.
    const void* fetch_suite(const char* name, int version) const;

    host_state& state() { return state_; }
    failure_table& failures() { return state_.failures; }
    void omit_suite(const std::string& name) { state_.failures.omit_suite(name); }
    void fail_call(injected_failure failure) { state_.failures.add(std::move(failure)); }
    std::vector<message_record> messages() const { return state_.messages(); }
    void clear_messages() { state_.clear_messages(); }
    void echo_messages(bool on) { state_.echo_messages = on; }

    /// The number of plug-ins in a bundle; throws host_error as library::open does.
    int plugin_count(const std::filesystem::path& bundle);
    /// Opens the bundle, checks the nth plug-in record and calls its setHost with this host.
    plugin load_plugin(const std::filesystem::path& bundle, int index = 0);

private:
    host_state state_;
    property_set props_{set_access::read_only};
    OfxHost ofx_host_{};
};

}  // namespace ofxhost
