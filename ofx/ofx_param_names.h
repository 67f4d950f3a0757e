// The two parameters the adapter adds in front of the component's own.
#pragma once

namespace vl1 {

/// Push button that asks for the editor; takes effect at the instance's next render.
inline constexpr const char* open_gui_param_name = "Open GUI";
/// Hidden custom parameter that carries the component's state blob as base64 text.
inline constexpr const char* state_param_name = "binaryStateParam";

}  // namespace vl1
