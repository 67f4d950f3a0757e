// The component's whole private state travels to the host as base64 text in the hidden
// custom parameter "binaryStateParam" and back.
#pragma once

#include <memory>

#include "framework/icomponent.h"
#include "ofx/ofx_suites.h"

namespace vl1 {

/// Decodes the host's text and hands it to the component as a state from the host. Empty,
/// short or non-base64 text sets nothing; the component keeps its defaults.
void LoadStateFromHost(const host_suites& suites, OfxImageEffectHandle effect,
                       const std::shared_ptr<icomponent_v1>& component);

/// Encodes the component's state and sets it as the parameter's text. When the host refuses
/// (some do during a render), the host object marks the state pending and
/// WritePendingToHost tries again at the next action that may write.
bool SaveStateToHost(const host_suites& suites, OfxImageEffectHandle effect,
                     const std::shared_ptr<icomponent_v1>& component);

/// The state blob that base64 `text` decodes to, in a buffer of (length / 4) * 3 bytes, so a
/// blob whose length isn't a multiple of three arrives with one or two zero bytes behind it.
/// Empty if the text doesn't decode or decodes to nothing.
/// Writes what the host refused earlier: queued parameter values, then a pending state.
void WritePendingToHost(const host_suites& suites, OfxImageEffectHandle effect,
                        const std::shared_ptr<icomponent_v1>& component);

std::vector<uint8_t> decode_state_text(const char* text);

/// The base64 text (original alphabet, padded) of `blob`.
std::string encode_state_text(const std::vector<uint8_t>& blob);

}  // namespace vl1
