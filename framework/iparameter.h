// One value of an effect, with default and bounds.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "framework/iobject.h"
#include "framework/param_value.h"
#include "framework/uid.h"

namespace vl1 {

/// Bits of iparameter_v1::get_flags.
inline constexpr uint32_t param_flag_hidden = 1u << 0;  // hidden from the user of the host
inline constexpr uint32_t param_flag_bypass = 1u << 1;  // the effect's bypass switch

class iparameter_v1 : public iobject, public std::enable_shared_from_this<iparameter_v1> {
public:
    virtual std::string get_name() = 0;
    virtual uid get_uid() = 0;
    virtual param_type get_type() = 0;

    virtual void set_enabled(bool enabled) = 0;
    virtual bool get_enabled() = 0;

    virtual param_value get_param_value() = 0;
    /// The one way to change the value: clamps, checks, notifies the host object and moves
    /// the view's control. `from_host` marks a value that came from the host.
    virtual void set_param_value(param_value value, bool from_host) = 0;
    virtual param_value get_previous_param_value() = 0;

    virtual bool is_dirty() = 0;

    virtual void reset_to_default() = 0;
    virtual bool get_is_reset() = 0;
    virtual bool get_is_default() = 0;

    virtual bool get_string_from_value(param_value value, std::string& out, int precision) = 0;
    /// `out` carries type and bounds on entry.
    virtual bool get_value_from_string(std::string text, param_value& out) = 0;

    virtual uint32_t get_flags() = 0;
};

}  // namespace vl1
