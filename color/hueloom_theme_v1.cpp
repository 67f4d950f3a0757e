#include "color/hueloom_theme_v1.h"

#include <algorithm>
#include <cmath>

#include "color/lut_difference.h"
#include "color/lut_sampling.h"

namespace vl1 {

namespace {

// Tolerance of floatEqual, absolute near zero and relative elsewhere (bits 0x3727C5AC).
constexpr float angle_tolerance = 1e-5f;

// Start values of the neighbour search: above any rotation, and below any.
constexpr float no_upper_rotation = 361.0f;
constexpr float no_lower_rotation = -1.0f;

void add_slot_difference(lut_argb<32>& lut, const theme_lut_slot& slot, float weight)
{
    if (slot.lut)
        add_lut_difference(lut, *slot.lut, weight);
}

}  // namespace

bool hueloom_theme_v1::floatEqual(float a, float b)
{
    const float diff = std::fabs(a - b);
    return diff <= angle_tolerance || diff <= std::max(std::fabs(a), std::fabs(b)) * angle_tolerance;
}

bool hueloom_theme_v1::is_self_consistent() const
{
    if (luts.size() < 2)
        return false;
    return luts.size() == 2 || luts[1].rotation - luts[0].rotation >= 2.0f;
}

theme_lut_slot hueloom_theme_v1::get_exact_fit_if_exists_by_angle(float angle) const
{
    for (const theme_lut_slot& slot : luts)
        if (floatEqual(slot.rotation, angle))
            return slot;
    return {nullptr, -1.0f};
}

neighbor_luts hueloom_theme_v1::get_neighbor_luts_by_angle(float angle) const
{
    const theme_lut_slot* lower = nullptr;
    const theme_lut_slot* upper = nullptr;
    float lower_rotation = no_lower_rotation;
    float upper_rotation = no_upper_rotation;
    const theme_lut_slot* highest = nullptr;
    const theme_lut_slot* lowest = nullptr;

    for (const theme_lut_slot& slot : luts) {
        const float x = slot.rotation;
        if (x > angle && x < upper_rotation) {
            upper = &slot;
            upper_rotation = x;
        } else if (x < angle && x > lower_rotation) {
            lower = &slot;
            lower_rotation = x;
        }
        if (!highest || x > highest->rotation)
            highest = &slot;
        if (!lowest || x < lowest->rotation)
            lowest = &slot;
    }

    neighbor_luts result;
    if (const theme_lut_slot* l = lower ? lower : highest)
        result.lower = *l;
    if (const theme_lut_slot* u = upper ? upper : lowest)
        result.upper = *u;
    return result;
}

void hueloom_theme_v1::apply_theme_luts(lut_argb<32>& lut, float angle, float strength) const
{
    const theme_lut_slot exact = get_exact_fit_if_exists_by_angle(angle);
    if (exact.lut) {
        add_lut_difference(lut, *exact.lut, strength);
        return;
    }

    // Adding 360 before each remainder keeps the distances positive across 0/360; the
    // remainder has the sign of the dividend.
    const neighbor_luts n = get_neighbor_luts_by_angle(angle);
    const float span = std::fmod(n.upper.rotation + 360.0f - n.lower.rotation, 360.0f);

    const float d_lower = std::fmod(angle + 360.0f - n.lower.rotation, 360.0f);
    const float lower_weight = (span - d_lower) / span * strength;
    const float d_upper = std::fmod(n.upper.rotation + 360.0f - angle, 360.0f);
    const float upper_weight = (span - d_upper) / span * strength;
    // Both passes in one, with the bits of one after the other.
    if (n.lower.lut && n.upper.lut) {
        add_lut_differences(lut, *n.lower.lut, lower_weight, *n.upper.lut, upper_weight);
        return;
    }
    add_slot_difference(lut, n.lower, lower_weight);
    add_slot_difference(lut, n.upper, upper_weight);
}

void hueloom_theme_v1::apply_post_processing(lut_argb<32>& lut) const
{
    if (post_processing_lut)
        map_lut_through(lut, *post_processing_lut);
}

void hueloom_theme_v1::apply_theme(lut_argb<32>& lut, float angle, float strength, float hue, float chroma,
                                   float luminance) const
{
    if (!is_self_consistent())
        return;
    apply_theme_luts(lut, angle, strength);
    apply_theme_modifiers(lut, hue, chroma, luminance);
    apply_post_processing(lut);
}

}  // namespace vl1
