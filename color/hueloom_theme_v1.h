// One theme: LUTs placed at angles on the colour wheel, and how a position on the wheel and
// three refinements turn them into the one table that grades a clip.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "color/lut_argb.h"

namespace vl1 {

/// One LUT of the wheel.
struct theme_lut_slot {
    std::shared_ptr<const lut_argb<32>> lut;
    /// The slot's angle on the wheel, degrees, in the theme's own sense of rotation.
    float rotation = 0.0f;
};

/// The two slots an angle lies between.
struct neighbor_luts {
    theme_lut_slot lower;
    theme_lut_slot upper;
};

/// A theme, built once by a reader and then shared as a reference to const; its tables are
/// never changed, so any thread may read it without a lock.
///
/// Units of the operations: `angle` in degrees, `strength` 0..1, `hue`, `chroma` and
/// `luminance` 0..2 with 1.0 neutral.
class hueloom_theme_v1 {
public:
    /// Wheel LUTs in the order the theme's source gives them; never sorted.
    std::vector<theme_lut_slot> luts;
    /// Applied last, at full weight; null when the theme has none.
    std::shared_ptr<const lut_argb<32>> post_processing_lut;
    uint32_t uid = 0;
    uint32_t version = 1;
    std::string name;
    /// Undecoded bytes of the wheel's background image.
    std::vector<uint8_t> background_data;

    /// The whole pipeline on `lut`, which must hold the identity on entry: wheel blending,
    /// refinements, post-processing. Does nothing at all unless is_self_consistent().
    void apply_theme(lut_argb<32>& lut, float angle, float strength, float hue, float chroma,
                     float luminance) const;

    /// Wheel blending: the slot at `angle` alone with weight `strength`, else the two
    /// neighbours weighted by closeness, each weight applied in its own clamped pass.
    void apply_theme_luts(lut_argb<32>& lut, float angle, float strength) const;

    /// Scales, per entry, what the theme changed in HSL hue, saturation and lightness
    /// against the identity: 0 removes the change, 1 keeps it, 2 doubles it. Alpha stays.
    void apply_theme_modifiers(lut_argb<32>& lut, float hue, float chroma, float luminance) const;

    /// map_lut_through(lut, post-processing LUT) when the theme has one.
    void apply_post_processing(lut_argb<32>& lut) const;

    /// At least two slots, and with more than two the second slot's rotation at least 2.0
    /// above the first one's. Only that first pair is examined.
    bool is_self_consistent() const;

    /// The first slot whose rotation equals `angle` by floatEqual; else a slot with a null
    /// LUT and rotation -1.0.
    theme_lut_slot get_exact_fit_if_exists_by_angle(float angle) const;

    /// The nearest slot above and below `angle` (a slot at exactly `angle` is neither), the
    /// earlier slot winning ties. Without a slot below, `lower` is the highest slot; without
    /// one above, `upper` is the lowest: the wheel closes across 0/360.
    neighbor_luts get_neighbor_luts_by_angle(float angle) const;

    /// |a - b| <= 1e-5, or |a - b| <= max(|a|, |b|) * 1e-5.
    static bool floatEqual(float a, float b);
};

}  // namespace vl1
