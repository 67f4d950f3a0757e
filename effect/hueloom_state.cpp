// The effect's saved state: the base part of the component, then one flag byte and, when a
// theme is current, its fixed-size state record. Every blob has the same size, whatever the
// theme, so the host and the undo ring see one length.
#include "effect/hueloom.h"

#include <algorithm>
#include <cstddef>

#include "framework/log.h"
#include "themes/byte_order.h"
#include "themes/hueloom_theme_state_serializer_v1.h"
#include "themes/hueloom_vault.h"

namespace vl1 {

namespace {

/// A theme read from the record behind the flag, or null when there is no readable record.
std::shared_ptr<hueloom_theme_v1> theme_from_record(const std::vector<uint8_t>& state, std::size_t record_offset)
{
    if (state.size() < record_offset || state.size() - record_offset < hueloom_theme_record_size)
        return nullptr;
    auto theme = std::make_shared<hueloom_theme_v1>();
    if (!hueloom_theme_state_serializer_v1::read_theme_from_vector(*theme, state, record_offset))
        return nullptr;
    return theme;
}

}  // namespace

std::size_t hueloom::get_state_size()
{
    return ccomponent_v1::get_state_size() + 1 + hueloom_theme_record_size;
}

std::vector<uint8_t> hueloom::get_state()
{
    std::vector<uint8_t> state = ccomponent_v1::get_state();
    const std::size_t flag_at = state.size();
    state.resize(get_state_size(), 0);
    std::lock_guard lock(theme_mutex);
    if (current_theme) {
        // The record has room for 10 wheel LUTs; an imported theme (or one read from an older
        // record) may have more. Its first 10 are saved rather than a flag without a readable
        // record, which the component would reject when the project opens; the uid still finds
        // the whole theme in the collection.
        const hueloom_theme_v1* saved = current_theme.get();
        hueloom_theme_v1 fitting;
        if (saved->luts.size() > theme_state_max_wheel_luts) {
            fitting = *saved;
            fitting.luts.resize(theme_state_max_wheel_luts);
            saved = &fitting;
        }
        if (hueloom_theme_state_serializer_v1::write_theme_to_vector(*saved, state, flag_at + 1))
            state[flag_at] = 1;
    }
    return state;
}

std::vector<state_float_grid> hueloom::float_grids(const std::vector<uint8_t>& state)
{
    const std::size_t record_at = flag_offset() + 1;
    if (state.size() < record_at + hueloom_theme_record_size || state[record_at - 1] == 0)
        return {};
    const auto slot_count =
        theme_bytes::load<uint16_t>(state.data() + record_at + offsetof(theme_state_entry_v1, slot_count));
    std::vector<state_float_grid> grids;
    for (std::size_t i = 0; i < std::min<std::size_t>(slot_count, theme_state_slot_capacity); ++i) {
        const std::size_t slot_at = record_at + offsetof(theme_state_entry_v1, slots) + i * theme_lut_entry_bytes;
        // Slot 0 without a post-processing LUT holds zeros, which the rest's coder takes for less.
        if (i == 0 && load_lut_slot_angle(state.data() + slot_at) <= 0.0f)
            continue;
        const auto edge = static_cast<uint16_t>(theme_lut_edge);
        grids.push_back({slot_at + offsetof(theme_lut_entry_v1, table), edge, edge, edge, 3});
    }
    return grids;
}

bool hueloom::is_state_rejected(std::vector<uint8_t>& state, bool from_host, std::string& reason)
{
    if (state.size() < get_state_size())
        return false;
    const std::size_t flag_at = flag_offset();
    if (state[flag_at] == 0)
        return false;
    const auto theme = theme_from_record(state, flag_at + 1);
    if (!theme) {
        reason = "An error occured when loading a saved theme.";
        return true;
    }
    if (is_theme_in_collection(theme->uid) || from_host)
        return false;
    reason = "Saved data contains theme \"" + theme->name + "\", which is not available.";
    return true;
}

bool hueloom::set_state(std::vector<uint8_t>& state, bool from_host)
{
    const bool restored = ccomponent_v1::set_state(state, from_host);
    if (!restored || state.size() < get_state_size())
        return restored;
    const std::size_t flag_at = flag_offset();
    if (state[flag_at] == 1) {
        if (auto theme = theme_from_record(state, flag_at + 1)) {
            if (is_theme_in_collection(theme->uid)) {
                // The collection's theme is the full one, with its wheel picture.
                set_current_theme_by_uuid(theme->uid);
            } else if (from_host) {
                std::lock_guard lock(theme_mutex);
                current_theme = std::move(theme);
            }
        }
    }
    auto fallback = get_vault()->get_theme_collection()->get_default_theme();
    {
        std::lock_guard lock(theme_mutex);
        if (!current_theme)
            current_theme = std::move(fallback);
    }
    refresh_requested = true;
    return restored;
}

}  // namespace vl1
