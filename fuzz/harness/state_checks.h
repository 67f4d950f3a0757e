// The promises of the effect's saved state, shared by the bodies that reach it: through the
// blob directly and through the host's base64 text.
#pragma once

#include <cstdint>
#include <vector>

namespace vl1::fuzz {

/// Hands `blob` to a fresh component as the host (`from_host`) or a preset would and checks:
/// - with `ask_first`, is_state_rejected changes neither the blob nor the component, and a
///   rejection comes with a reason (a rejected blob is then not set, as callers do);
/// - set_state returning false leaves get_state() as it was;
/// - a restored state, saved and set on another fresh component the same way, saves the same
///   bytes again: a project saved after opening opens with the same state.
void check_state_load(const char* target, const std::vector<uint8_t>& blob, bool from_host, bool ask_first);

}  // namespace vl1::fuzz
