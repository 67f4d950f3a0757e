// The value rules every parameter shares: clamping, the admission check and comparison.
// Used by the parameter objects; kept apart so the rules can be read in one place.
#pragma once

#include "framework/param_value.h"

namespace vl1::param_rules {

/// Types 0 and 1: clamps `v.value` into v.min..v.max, lower bound first, then upper. A NaN
/// stays NaN. Other types are left alone.
void clamp(param_value& v) noexcept;

/// Whether `v.value` may be stored: types 0 and 1 need min <= x <= max (a NaN fails),
/// booleans always pass, colours need every channel in 0.0..1.0. Unknown types fail.
bool admits(const param_value& v) noexcept;

/// Compares two value fields as `type` reads them: one float, one int, one byte, four floats.
/// A NaN differs from everything. Unknown types compare all 16 bytes.
bool data_differs(param_type type, const param_data& a, const param_data& b) noexcept;

/// True if the types differ or the values differ.
bool value_differs(const param_value& a, const param_value& b) noexcept;

bool is_known_type(param_type type) noexcept;

}  // namespace vl1::param_rules
