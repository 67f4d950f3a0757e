// The undo ring with the effect's real states: each entry carries the whole theme record,
// yet a ring full of steps with one theme costs that theme about once.
#include <gtest/gtest.h>

#include <iostream>

#include "tests/effect/effect_test_support.h"
#include "tests/framework/fixtures.h"
#include "tests/support/theme_looks.h"
#include "themes/hueloom_vault.h"

namespace vl1 {
namespace {

using effect_test::make_theme;
using effect_test::param_of;
using effect_test::set_param;

constexpr std::size_t ring_budget = 10u * 1024 * 1024;

/// An effect with the built-in theme current and an open editor.
std::shared_ptr<hueloom> editing_effect()
{
    const auto builtin = effect_test::add_to_collection(hueloom_test::builtin_theme());
    auto fx = std::make_shared<hueloom>([](std::weak_ptr<icomponent_v1>) { return std::make_shared<fwtest::test_view>(); });
    fx->initialize(std::make_shared<chost_v1>(fx));
    fx->set_current_theme_by_uuid(builtin->uid);
    fx->create_view();
    fx->flush_state_stack();
    return fx;
}

/// One gesture as the editor frames it.
template <typename Change>
void gesture(hueloom& fx, Change change)
{
    fx.save_state(true);
    change();
    fx.save_state(false);
}

TEST(HueloomUndoMemory, ThirtyTwoStepsWithTheBuiltInThemeStayWithinTenMegabytes)
{
    auto fx = editing_effect();
    for (int i = 0; i < 40; ++i)
        gesture(*fx, [&] { set_param(*fx, "Angle", 9.0f * static_cast<float>(i)); });
    const std::size_t bytes = fx->undo_memory_bytes();
    std::cout << "undo ring at 32 entries of " << fx->get_state_size() << " bytes: " << bytes << " bytes\n";
    RecordProperty("undo_ring_bytes", std::to_string(bytes));
    EXPECT_LE(bytes, ring_budget);

    // Every entry still restores its own step.
    for (int i = 39; i > 8; --i) {
        fx->undo();
        ASSERT_EQ(param_of(*fx, "Angle"), 9.0f * static_cast<float>(i - 1)) << i;
    }
}

TEST(HueloomUndoMemory, UndoAndRedoCarryTheThemeAcrossAThemeChange)
{
    auto fx = editing_effect();
    const uint32_t builtin_uid = fx->get_current_theme_uuid();
    const auto other = effect_test::add_to_collection(make_theme(0x5a7e0012, "Other"));

    gesture(*fx, [&] { set_param(*fx, "Strength", 40.0f); });
    gesture(*fx, [&] { fx->set_current_theme_by_uuid(other->uid); });
    gesture(*fx, [&] { set_param(*fx, "Strength", 60.0f); });
    gesture(*fx, [&] { fx->set_current_theme_by_uuid(builtin_uid); });
    EXPECT_LE(fx->undo_memory_bytes(), ring_budget);

    fx->undo();
    EXPECT_EQ(fx->get_current_theme_uuid(), other->uid);
    EXPECT_EQ(param_of(*fx, "Strength"), 60.0f);
    fx->undo();
    fx->undo();
    EXPECT_EQ(fx->get_current_theme_uuid(), builtin_uid);
    EXPECT_EQ(param_of(*fx, "Strength"), 40.0f);
    fx->redo();
    EXPECT_EQ(fx->get_current_theme_uuid(), other->uid);
    fx->redo();
    fx->redo();
    EXPECT_EQ(fx->get_current_theme_uuid(), builtin_uid);
    EXPECT_EQ(param_of(*fx, "Strength"), 60.0f);
}

}  // namespace
}  // namespace vl1
