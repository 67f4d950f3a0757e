// What a plug-in's descriptors say, gathered into plain structs for listings and tests.
// Values are text as property_set::format writes it, with the host's "no limit" defaults
// shown as -inf and inf.
#pragma once

#include "host/effect.h"

#include <string>
#include <vector>

namespace vl1::ofxhost {

struct clip_info {
    std::string name;
    std::vector<std::string> components;
    bool optional = false;
};

struct param_info {
    std::string name;
    std::string type;  // "Double", "PushButton"...
    std::string label;
    std::string script_name;
    std::string parent;
    bool secret = false;
    std::string default_value;  // empty for types without a value
    std::string min, max, display_min, display_max;  // empty for types without a range
    std::vector<std::string> options;  // of a choice
};

struct context_info {
    std::string context;
    std::vector<clip_info> clips;    // in definition order
    std::vector<param_info> params;  // in definition order
};

struct plugin_info {
    std::string identifier;
    unsigned version_major = 0;
    unsigned version_minor = 0;
    std::string label;
    std::string grouping;
    std::string description;
    std::vector<std::string> contexts;
    std::vector<std::string> pixel_depths;
    std::string thread_safety;
    std::vector<context_info> per_context;
};

plugin_info describe_plugin(const std::string& identifier, unsigned major, unsigned minor, const effect& descriptor);
context_info describe_context(const effect& context_descriptor);
param_info describe_param(const param& p);

}  // namespace vl1::ofxhost
