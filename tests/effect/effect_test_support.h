// Shared pieces of the effect's tests: a component with a plain host object, and small
// procedural themes whose looks are easy to tell apart.
#pragma once

#include <memory>

#include "color/hueloom_theme_v1.h"
#include "effect/hueloom.h"

namespace vl1::effect_test {

/// A LUT that shifts every entry of the identity by (dr, dg, db), clamped to 0..1.
std::shared_ptr<const lut_argb<32>> shifted_lut(float dr, float dg, float db);

/// A theme of uid `uid` with four wheel LUTs at 0, 90, 180 and 270 degrees and, if asked,
/// a post-processing LUT.
std::shared_ptr<hueloom_theme_v1> make_theme(uint32_t uid, const std::string& name, bool post_processing = false);

/// A new component behind a shared reference, initialised with a chost_v1.
std::shared_ptr<hueloom> make_component();

/// Sets the continuous parameter `name` as the host would.
void set_param(hueloom& fx, const std::string& name, float value);

/// The component's table after a render setup, read through the lut_exporter interface.
lut_argb_variable table_after_setup(hueloom& fx);

}  // namespace vl1::effect_test
