// The component's whole private state travels to the host as text in the hidden custom
// parameter "binaryStateParam" and back. The text is written packed: the prefix "hlz1:"
// (no base64 character, so the two forms can't be mistaken), then base64 of the packed
// state (ofx_state_packing.h). Plain base64 of the blob, as earlier versions wrote it, is
// read as well, so every saved project opens.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/icomponent.h"
#include "framework/istate_layout.h"
#include "ofx/ofx_suites.h"

namespace vl1 {

/// Starts the packed form of the state text; the digit is the version of the packing.
inline constexpr const char* packed_state_prefix = "hlz1:";

/// Decodes the host's text and hands it to the component as a state from the host. Empty,
/// short, undecodable or oversized text sets nothing; the component keeps its defaults.
void LoadStateFromHost(const host_suites& suites, OfxImageEffectHandle effect,
                       const std::shared_ptr<icomponent_v1>& component);

/// Encodes the component's state, packed, and sets it as the parameter's text.
void SaveStateToHost(const host_suites& suites, OfxImageEffectHandle effect,
                     const std::shared_ptr<icomponent_v1>& component);

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
