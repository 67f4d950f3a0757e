// The effect component as the plug-in makes one per instance, for the bodies that feed it a
// saved state.
#pragma once

#include <cstdint>
#include <memory>

#include "effect/hueloom.h"

namespace vl1::fuzz {

/// Uid of the theme that make_effect_component puts into the process's theme collection, so
/// that a saved state can name a theme that is available (the other themes are not).
inline constexpr uint32_t collection_theme_uid = 0x0c011ec7;

/// A new, initialised component with a plain host object. The first call also adds the
/// theme of collection_theme_uid to the shared collection.
std::shared_ptr<hueloom> make_effect_component();

}  // namespace vl1::fuzz
