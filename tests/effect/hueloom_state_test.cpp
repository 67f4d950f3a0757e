// The effect's saved state: its size, the theme record inside it, and what a state from the
// host or from a preset does when its theme is or isn't known on this machine.
#include <gtest/gtest.h>

#include "tests/effect/effect_test_support.h"
#include "themes/hueloom_vault.h"

namespace vl1 {
namespace {

using effect_test::make_component;
using effect_test::make_theme;
using effect_test::param_of;
using effect_test::set_param;

constexpr std::size_t flag_at = 8 + 48 * 6;

TEST(HueloomState, RoundTripCarriesParametersAndThemeAndNoThemeLeavesTheRecordEmpty)
{
    const auto theme = make_theme(0x5a7e0001, "Round trip");
    auto first = make_component(theme);
    set_param(*first, "Angle", 123.5f);
    set_param(*first, "Strength", 42.0f);
    auto state = first->get_state();
    ASSERT_EQ(state.size(), 4325877u);
    EXPECT_EQ(first->get_state_size(), state.size());
    EXPECT_EQ(state[flag_at], 1);

    auto second = make_component();
    std::string reason;
    EXPECT_FALSE(second->is_state_rejected(state, false, reason));
    ASSERT_TRUE(second->set_state(state, false));
    EXPECT_EQ(param_of(*second, "Angle"), 123.5f);
    EXPECT_EQ(param_of(*second, "Strength"), 42.0f);
    EXPECT_EQ(second->get_current_theme_uuid(), theme->uid);
    // The collection's object comes back, wheel picture and all.
    EXPECT_EQ(second->get_current_theme(), hueloom::get_vault()->get_theme_collection()->get_theme_by_uid(theme->uid));

    // Without a theme the flag is zero and the record empty, the size the same.
    auto bare = make_component();
    bare->set_current_theme_by_uuid(0x0badf00d);
    state = bare->get_state();
    ASSERT_EQ(state.size(), 4325877u);
    EXPECT_EQ(state[flag_at], 0);
    for (std::size_t i = flag_at; i < state.size(); i += 4099)
        ASSERT_EQ(state[i], 0) << i;
}

TEST(HueloomState, AMissingThemeIsTakenFromAHostStateButRefusedFromAPreset)
{
    // A theme that this machine has never seen: the state carries the only copy.
    const auto traveller = make_theme(0x5a7e0002, "Traveller");
    auto state = make_component(traveller)->get_state();
    hueloom::get_vault()->get_theme_collection()->remove_theme(traveller->uid);

    auto from_preset = make_component();
    const uint32_t before = from_preset->get_current_theme_uuid();
    std::string reason;
    EXPECT_TRUE(from_preset->is_state_rejected(state, false, reason));
    EXPECT_EQ(reason, "Saved data contains theme \"Traveller\", which is not available.");
    from_preset->set_state(state, false);
    EXPECT_EQ(from_preset->get_current_theme_uuid(), before);

    auto from_host = make_component();
    EXPECT_FALSE(from_host->is_state_rejected(state, true, reason));
    ASSERT_TRUE(from_host->set_state(state, true));
    EXPECT_EQ(from_host->get_current_theme_uuid(), traveller->uid);
    EXPECT_EQ(from_host->get_current_theme_name(), "Traveller");
    // The record has no picture and the theme doesn't join the collection.
    EXPECT_EQ(from_host->get_current_wheel_background_data().second, 0u);
    EXPECT_FALSE(from_host->is_theme_in_collection(traveller->uid));
}

TEST(HueloomState, ABrokenRecordIsRejectedAndSkipped)
{
    const auto theme = make_theme(0x5a7e0003, "Broken");
    auto state = make_component(theme)->get_state();
    state[flag_at + 1] ^= 0xff;  // the record's magic

    auto other = make_component(theme);
    std::string reason;
    EXPECT_TRUE(other->is_state_rejected(state, true, reason));
    EXPECT_EQ(reason, "An error occured when loading a saved theme.");
    EXPECT_TRUE(other->set_state(state, true));
    EXPECT_EQ(other->get_current_theme_uuid(), theme->uid) << "the theme stays as it was";
}

TEST(HueloomState, AShortStateRestoresParametersOnly)
{
    const auto theme = make_theme(0x5a7e0004, "Kept");
    auto source = make_component();
    set_param(*source, "Hue", 150.0f);
    auto state = source->get_state();

    auto fx = make_component(theme);
    std::vector<uint8_t> base_only(state.begin(), state.begin() + flag_at);
    std::string reason;
    EXPECT_FALSE(fx->is_state_rejected(base_only, false, reason));
    EXPECT_TRUE(fx->set_state(base_only, false));
    EXPECT_EQ(param_of(*fx, "Hue"), 150.0f);
    EXPECT_EQ(fx->get_current_theme_uuid(), theme->uid);
}

}  // namespace
}  // namespace vl1
