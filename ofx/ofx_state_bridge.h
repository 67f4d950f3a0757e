// The component's whole private state travels to the host as text in the hidden custom
// parameter "binaryStateParam" and back, in the form of framework/io/state_text.h.
#pragma once

#include <memory>

#include "framework/icomponent.h"
#include "ofx/ofx_suites.h"

namespace vl1 {

/// Decodes the host's text and hands it to the component as a state from the host. Empty,
/// short, undecodable or oversized text sets nothing; the component keeps its defaults.
void LoadStateFromHost(const host_suites& suites, OfxImageEffectHandle effect,
                       const std::shared_ptr<icomponent_v1>& component);

/// Encodes the component's state, packed with the float grids it names, and sets it as the
/// parameter's text. When the host refuses (some do during a render), the host object marks
/// the state pending and WritePendingToHost tries again at the next action that may write.
bool SaveStateToHost(const host_suites& suites, OfxImageEffectHandle effect,
                     const std::shared_ptr<icomponent_v1>& component);

/// Writes what the host refused earlier: queued parameter values, then a pending state.
void WritePendingToHost(const host_suites& suites, OfxImageEffectHandle effect,
                        const std::shared_ptr<icomponent_v1>& component);

}  // namespace vl1
