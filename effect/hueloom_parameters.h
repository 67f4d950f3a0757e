// The effect's bypass switch. It is hidden from the host's panel (the editor has its own
// button for it) and carries the flag by which the component base finds its bypass.
#pragma once

#include "framework/cparameter.h"

namespace vl1 {

class hueloom_hidden_boolean_param : public cparameter_boolean_v1 {
public:
    using cparameter_boolean_v1::cparameter_boolean_v1;
    uint32_t get_flags() override { return param_flag_hidden; }
};

class hueloom_bypass_parameter : public hueloom_hidden_boolean_param {
public:
    using hueloom_hidden_boolean_param::hueloom_hidden_boolean_param;
    uint32_t get_flags() override { return param_flag_hidden | param_flag_bypass; }
};

}  // namespace vl1
