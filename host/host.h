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

namespace vl1::ofxhost {

class host {
public:
    host();
    ~host();
    host(const host&) = delete;
    host& operator=(const host&) = delete;

    /// The record handed to setHost.
    OfxHost* ofx_host() { return &ofx_host_struct; }
    /// The host's description (kOfxPropName, supported depths and contexts...): read-only for
    /// the plug-in, changeable here.
    property_set& properties() { return props; }

    /// What fetchSuite gives the plug-in: null for an omitted suite or a version other than 1.
    const void* fetch_suite(const char* name, int version) const;

    host_state& state() { return shared_state; }
    failure_table& failures() { return shared_state.failures; }
    void omit_suite(const std::string& name) { shared_state.failures.omit_suite(name); }
    void fail_call(injected_failure failure) { shared_state.failures.add(std::move(failure)); }
    std::vector<message_record> messages() const { return shared_state.messages(); }
    void clear_messages() { shared_state.clear_messages(); }
    void echo_messages(bool on) { shared_state.echo_messages = on; }

    /// The number of plug-ins in a bundle; throws host_error as library::open does.
    int plugin_count(const std::filesystem::path& bundle);
    /// Opens the bundle, checks the nth plug-in record and calls its setHost with this host.
    plugin load_plugin(const std::filesystem::path& bundle, int index = 0);

private:
    host_state shared_state;
    property_set props{set_access::read_only};
    OfxHost ofx_host_struct{};
};

}  // namespace vl1::ofxhost
