// One plug-in of a bundle, driven the way a host drives it: Load, Describe, DescribeInContext
// for each context, then instances. Describing makes fresh descriptors each time; an instance
// is made from the descriptor of its context, which is described on demand. Hosts scan their
// plug-ins at start-up (Load, Describe, Unload), keep what they learnt, and load a plug-in
// again when it is first used; the same binary may go through that any number of times.
#pragma once

#include "host/description.h"
#include "host/effect.h"
#include "host/instance.h"
#include "host/loader.h"
#include "host/param.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vl1::ofxhost {

using initial_values = std::vector<std::pair<std::string, param_value>>;

class plugin {
public:
    plugin(std::shared_ptr<library> lib, OfxPlugin* record, int index);

    std::string identifier() const { return plugin_record->pluginIdentifier; }
    unsigned version_major() const { return plugin_record->pluginVersionMajor; }
    unsigned version_minor() const { return plugin_record->pluginVersionMinor; }
    int index() const { return record_index; }
    const std::filesystem::path& bundle() const { return binary->bundle(); }
    OfxPlugin* record() const { return plugin_record; }

    /// Any action with any arguments, for tests that play a hostile host.
    OfxStatus call_action(const char* action, const void* handle, OfxPropertySetHandle in_args,
                          OfxPropertySetHandle out_args);

    OfxStatus load();
    /// OfxActionUnload. The descriptors go with it, as a host forgets the handles of a plug-in
    /// it unloaded; what they said lives on in any plugin_info taken before.
    OfxStatus unload();
    /// A host's scan at start-up: Load, Describe, Unload; the description it caches. Throws
    /// host_error naming the action that failed.
    plugin_info scan();
    /// OfxActionDescribe on a new descriptor.
    OfxStatus describe();
    /// OfxImageEffectActionDescribeInContext on a new descriptor for the context, which starts
    /// as a copy of the Describe descriptor's properties (describing first when needed). The
    /// descriptor is kept when the action succeeds.
    OfxStatus describe_in_context(const std::string& context);

    /// The descriptors made so far; null before the action ran.
    effect* descriptor() { return main_descriptor.get(); }
    effect* context_descriptor(const std::string& context);

    /// What the descriptors say, for listings and tests; describes the contexts not yet described.
    plugin_info info();
    /// What the Describe descriptor says, without describing any context.
    plugin_info info_without_contexts();

    /// Makes an instance in a context and sends OfxActionCreateInstance. The named values
    /// replace the defaults before the action, as a host restoring a saved project does.
    /// Throws host_error when the context can't be described, a name is unknown, or the
    /// plug-in answers anything but kOfxStatOK or kOfxStatReplyDefault.
    instance create_instance(const std::string& context, const initial_values& values = {});

private:
    std::shared_ptr<library> binary;
    OfxPlugin* plugin_record;
    int record_index;
    std::unique_ptr<effect> main_descriptor;
    std::map<std::string, std::unique_ptr<effect>> context_descriptors;
};

/// kOfxStatOK or kOfxStatReplyDefault: an action the plug-in did or let the host do.
inline bool succeeded(OfxStatus status) { return status == kOfxStatOK || status == kOfxStatReplyDefault; }

}  // namespace vl1::ofxhost
