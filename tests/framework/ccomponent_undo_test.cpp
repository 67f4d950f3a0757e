#include <gtest/gtest.h>

#include "tests/framework/fixtures.h"

namespace vl1 {
namespace {

using fwtest::make_rig;

// One user gesture as the view frames it: push before the change, refresh after it.
void gesture(fwtest::rig& r, int steps_value)
{
    r.component->save_state(true);
    r.param<cparameter_integral_v1>("Steps")->set_value(steps_value, false);
    r.component->save_state(false);
}

int steps(fwtest::rig& r)
{
    return r.param<cparameter_integral_v1>("Steps")->get_value();
}

TEST(UndoStack, UndoAndRedoWalkTheGesturesAndAPushCutsTheRedoBranch)
{
    auto r = make_rig();
    r.component->undo();  // nothing to undo yet
    EXPECT_EQ(r.component->stack_current(), 0);
    EXPECT_EQ(steps(r), 1);

    gesture(r, 2);
    gesture(r, 3);
    r.component->undo();
    EXPECT_EQ(steps(r), 2);
    r.component->undo();
    EXPECT_EQ(steps(r), 1);
    r.component->undo();
    EXPECT_EQ(steps(r), 1);
    r.component->redo();
    r.component->redo();
    EXPECT_EQ(steps(r), 3);
    EXPECT_EQ(r.component->stack_current(), 2);
    r.component->redo();
    EXPECT_EQ(r.component->stack_current(), 2);

    // A push after an undo cuts the redo branch.
    r.component->undo();
    r.component->undo();
    EXPECT_EQ(r.component->save_state(true), 0);
    EXPECT_EQ(r.component->stack_top(), 1);
    r.component->redo();
    EXPECT_EQ(r.component->stack_current(), 1);

    // A flushed stack has nothing to undo.
    gesture(r, 4);
    r.component->flush_state_stack();
    EXPECT_EQ(r.component->stack_top(), 0);
    EXPECT_EQ(r.component->stack_count(), 0);
    r.component->undo();
    EXPECT_EQ(steps(r), 4);
}

TEST(UndoStack, NothingIsStoredWhileTheEditorIsClosed)
{
    auto r = make_rig();
    r.view->open_flag = false;
    EXPECT_EQ(r.component->save_state(true), 0);
    EXPECT_EQ(r.component->stack_top(), 0);
    r.component->attach_view(nullptr);
    EXPECT_EQ(r.component->save_state(true), 0);
    EXPECT_EQ(r.component->stack_current(), 0);
}

TEST(UndoStack, RingKeepsThirtyTwoEntries)
{
    auto r = make_rig();
    const auto value_of_gesture = [](int i) { return i % 11 - 5; };
    for (int i = 0; i < 40; ++i)
        gesture(r, value_of_gesture(i));  // the entry at index k holds gesture k - 1's value
    EXPECT_EQ(r.component->stack_count(), 32);
    EXPECT_EQ(r.component->stack_top(), 40);
    for (int i = 0; i < 31; ++i)
        r.component->undo();
    EXPECT_EQ(r.component->stack_current(), 9);
    EXPECT_EQ(steps(r), value_of_gesture(8));
    for (int i = 0; i < 20; ++i)
        r.component->undo();
    // The floor is (40 - 32) & 31 = 8; index 8 shares its slot with index 40, so the last
    // step shows the newest state again.
    EXPECT_EQ(r.component->stack_current(), 8);
    EXPECT_EQ(steps(r), value_of_gesture(39));

    // Past 63 pushes the floor wraps back: (70 - 32) & 31.
    auto wrapped = make_rig();
    for (int i = 0; i < 70; ++i)
        wrapped.component->save_state(true);
    for (int i = 0; i < 100; ++i)
        wrapped.component->undo();
    EXPECT_EQ(wrapped.component->stack_current(), (70 - 32) & 31);
}

TEST(UndoStack, ChangesMadeByAnUndoDoNotPush)
{
    auto r = make_rig();
    gesture(r, 4);
    // A view that pushes whenever a control moves, as a careless editor might.
    r.view->on_update = [&] { r.component->save_state(true); };
    r.component->undo();
    EXPECT_EQ(steps(r), 1);
    EXPECT_EQ(r.component->stack_top(), 1);
    r.component->redo();
    EXPECT_EQ(steps(r), 4);
    EXPECT_EQ(r.component->stack_top(), 1);
}

}  // namespace
}  // namespace vl1
