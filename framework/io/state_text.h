// A component's state blob as text, the form in which hosts keep it in their projects and
// the tools in their files. The text is written packed: the prefix "hlz1:" (no base64
// character, so the two forms can't be mistaken), then base64 of the packed state
// (state_packing.h). Plain base64 of the blob, as earlier versions wrote it, is read as
// well, so every saved project opens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "framework/istate_layout.h"

namespace vl1 {

/// Starts the packed form of the state text; the digit is the version of the packing.
inline constexpr const char* packed_state_prefix = "hlz1:";

/// The state blob in `text`, in either form. Packed text gives the blob exactly, or nothing
/// with a log line saying why when it doesn't unpack to at most `max_state_bytes`. Plain
/// base64 gives a buffer of (length / 4) * 3 bytes, so a blob whose length isn't a multiple
/// of three arrives with one or two zero bytes behind it. Empty if the text carries no state.
std::vector<uint8_t> decode_state_text(const char* text, std::size_t max_state_bytes);

/// The packed text of `blob`, with `grids` (istate_layout_v1) stored by the float coder.
std::string encode_state_text(const std::vector<uint8_t>& blob, const std::vector<state_float_grid>& grids = {});

/// Plain base64 (original alphabet, padded) of `blob`: how earlier versions wrote the state.
std::string plain_state_text(const std::vector<uint8_t>& blob);

}  // namespace vl1
