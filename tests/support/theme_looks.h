// Looks worked out with the colour engine directly, for tests that check what the bundle or
// a tool made of them: the table a theme gives at given parameter values, the built-in
// theme as the build packed it, and a theme that no machine has installed.
#pragma once

#include "color/hueloom_theme_v1.h"

#include <memory>

namespace hueloom_test {

/// The effect's parameters, in their own units.
struct look {
    float angle = 0.0f;
    float strength = 0.0f;
    float hue = 100.0f;
    float chroma = 100.0f;
    float luminance = 100.0f;
    bool bypass = false;
};

/// The built-in theme, read from the built bundle's resources; throws if it isn't there.
std::shared_ptr<const vl1::hueloom_theme_v1> builtin_theme();

/// A theme of four gentle LUTs at 0, 90, 180 and 270 degrees, uid 0x7e57f00d, "Travelling".
std::shared_ptr<vl1::hueloom_theme_v1> travelling_theme();

/// The table the effect builds for `theme` at `values`.
vl1::lut_argb<32> table_for(const vl1::hueloom_theme_v1& theme, const look& values);

}  // namespace hueloom_test
