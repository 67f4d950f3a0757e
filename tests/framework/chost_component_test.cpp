#include <gtest/gtest.h>

#include "tests/framework/fixtures.h"

namespace vl1 {
namespace {

using fwtest::make_rig;

TEST(DefaultHost, DirtyFlagFollowsChangesAndPreviewPassesAlsoWithAnExpiredComponent)
{
    auto r = make_rig();
    EXPECT_FALSE(r.host->component_is_dirty());
    EXPECT_TRUE(r.host->schedule_render());
    EXPECT_EQ(r.host->count(event_schedule_render), 1);  // through the virtual notify
    EXPECT_TRUE(r.host->component_is_dirty());
    r.host->notify(event(event_render_setup));
    EXPECT_FALSE(r.host->component_is_dirty());
    r.param<cparameter_integral_v1>("Steps")->set_value(2, true);
    EXPECT_TRUE(r.host->component_is_dirty());
    EXPECT_EQ(r.component->received.back().type, event_param_set_by_host);

    auto orphaned = std::make_shared<chost_v1>(std::make_shared<fwtest::test_component>());
    orphaned->notify(event(event_param_changed, uid("Amount")));
    EXPECT_TRUE(orphaned->component_is_dirty());
}

TEST(Component, LookupsStayInsideTheListAndTheFirstIdleAsksForARender)
{
    auto r = make_rig();
    auto& c = *r.component;
    EXPECT_EQ(c.get_parameter(1)->get_name(), "Steps");
    EXPECT_EQ(c.get_parameter(-1), nullptr);
    EXPECT_EQ(c.get_parameter(4), nullptr);
    EXPECT_EQ(c.get_parameter(uid("Tint")), c.get_parameter(3));
    EXPECT_EQ(c.get_parameter(std::string("Nothing")), nullptr);
    c.idle();
    c.idle();
    EXPECT_EQ(r.host->count(event_schedule_render), 1);
}

TEST(Component, InitializeNeedsAHostAndTellsIt)
{
    auto component = std::make_shared<fwtest::test_component>(fwtest::add_standard_parameters);
    component->initialize(nullptr);
    EXPECT_EQ(component->get_parameter_count(), 0);

    auto host = std::make_shared<fwtest::recording_host>(component);
    component->initialize(host);
    EXPECT_EQ(component->get_parameter_count(), 4);
    ASSERT_EQ(host->events.size(), 1u);
    EXPECT_EQ(host->events[0].type, event_initialized);
    EXPECT_EQ(host->events[0].param, no_uid);
}

TEST(Component, Bypass)
{
    auto r = make_rig();
    EXPECT_TRUE(r.component->has_bypass());
    EXPECT_FALSE(r.component->get_bypass());
    r.component->set_bypass(true);
    EXPECT_TRUE(r.component->get_bypass());
    EXPECT_EQ(r.host->count(event_param_changed), 1);

    auto plain = make_rig([](fwtest::test_component& c) {
        c.add_parameter(std::make_shared<cparameter_boolean_v1>(c.self(), "Flag", false));
    });
    EXPECT_FALSE(plain.component->has_bypass());
    plain.component->set_bypass(true);
    EXPECT_FALSE(plain.component->get_bypass());
    EXPECT_FALSE(plain.param<cparameter_boolean_v1>("Flag")->get_value());
}

}  // namespace
}  // namespace vl1
