// The parameters the adapter adds in front of the component's own.
#pragma once

namespace vl1 {

/// Push button that asks for the editor; takes effect at the instance's next render.
inline constexpr const char* open_gui_param_name = "Open GUI";
/// Hidden custom parameter that carries the component's state blob as base64 text.
inline constexpr const char* state_param_name = "binaryStateParam";
/// Hidden integer that "Open GUI" counts up: a push button makes no host render, a change of
/// a parameter the render depends on does, and the editor opens inside that render.
inline constexpr const char* editor_request_param_name = "editorRequest";

}  // namespace vl1
