// The text of a preset file: the component's parameters one by one, its whole state blob as
// byte values and, for a component that exports its table, that table.
#pragma once

#include <string>

#include "framework/icomponent.h"

namespace vl1 {

/// The whole preset text for the component as it stands now. The layout is fixed: tabs for
/// indentation, floats with six decimals, the state as decimal bytes joined by "," and
/// lut_points as red, green, blue of each cell in linear order (red slowest).
/// May throw (out of memory, formatting).
std::string build_preset_text(icomponent_v1& component);

}  // namespace vl1
