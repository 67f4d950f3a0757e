#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/framework/fixtures.h"

namespace vl1 {
namespace {

using fwtest::make_rig;

TEST(Parameter, ClampsIntoItsBoundsAndNotifiesOnce)
{
    auto r = make_rig();
    auto amount = r.param<cparameter_continuous_v1>("Amount");
    amount->set_value(2.0f, false);
    EXPECT_EQ(amount->get_value(), 1.0f);
    ASSERT_EQ(r.host->events.size(), 1u);
    EXPECT_EQ(r.host->events[0].type, event_param_changed);
    EXPECT_EQ(r.host->events[0].param, uid("Amount"));
    // The event travels on from the host object to the component.
    ASSERT_FALSE(r.component->received.empty());
    EXPECT_EQ(r.component->received.back().type, event_param_changed);

    auto steps = r.param<cparameter_integral_v1>("Steps");
    steps->set_value(-9, true);
    EXPECT_EQ(steps->get_value(), -5);
    EXPECT_EQ(r.host->count(event_param_set_by_host), 1);

    // The bounds that count are those inside the value: all 44 bytes are taken.
    param_value v = amount->get_param_value();
    v.max.f = 10.0f;
    v.value.f = 5.0f;
    amount->set_param_value(v, false);
    EXPECT_EQ(amount->get_param_value().value.f, 5.0f);
    EXPECT_EQ(amount->get_param_value().max.f, 10.0f);
}

TEST(Parameter, SameValueTwiceRaisesTwoEventsButMovesTheControlOnce)
{
    auto r = make_rig();
    auto amount = r.param<cparameter_continuous_v1>("Amount");
    amount->set_value(0.75f, true);
    amount->set_value(0.75f, true);
    EXPECT_EQ(r.host->count(event_param_set_by_host), 2);
    ASSERT_EQ(r.view->updates.size(), 1u);
    EXPECT_EQ(r.view->updates[0].first, uid("Amount"));
    EXPECT_TRUE(r.view->updates[0].second);
    EXPECT_TRUE(r.host->component_is_dirty());
}

TEST(Parameter, RefusedValuesChangeNothingAndRaiseNothing)
{
    auto r = make_rig();
    auto amount = r.param<cparameter_continuous_v1>("Amount");
    amount->set_value(std::numeric_limits<float>::quiet_NaN(), false);
    EXPECT_EQ(amount->get_value(), 0.5f);

    auto tint = r.param<cparameter_color_v1>("Tint");
    tint->set_value({1.0f, 1.5f, 0.0f, 0.0f}, false);
    EXPECT_EQ(tint->get_value().r, 0.5f);
    tint->set_value({std::nanf(""), 0.0f, 0.0f, 0.0f}, false);
    EXPECT_EQ(tint->get_value().a, 1.0f);

    param_value wrong_type = amount->get_param_value();
    wrong_type.type = param_type::integral;
    amount->set_param_value(wrong_type, false);
    EXPECT_EQ(amount->get_type(), param_type::continuous);

    EXPECT_TRUE(r.host->events.empty());
    EXPECT_TRUE(r.view->updates.empty());

    tint->set_value({0.0f, 0.0f, 1.0f, 1.0f}, false);  // colours in range pass unclamped
    EXPECT_EQ(tint->get_value().g, 1.0f);
}

TEST(Parameter, ADefaultOutsideTheBoundsIsKeptAndTheValueClamped)
{
    auto r = make_rig([](fwtest::test_component& c) {
        fwtest::add_standard_parameters(c);
        c.add_parameter(std::make_shared<cparameter_continuous_v1>(c.self(), "Gain", 0.0f, 1.0f, 2.0f));
    });
    auto gain = r.param<cparameter_continuous_v1>("Gain");
    EXPECT_EQ(gain->get_value(), 1.0f);
    EXPECT_EQ(gain->get_param_value().default_value.f, 2.0f);
    gain->set_value(0.5f, false);
    gain->reset_to_default();
    EXPECT_EQ(gain->get_value(), 1.0f);
}

TEST(Parameter, NormalizedForms)
{
    auto r = make_rig([](fwtest::test_component& c) {
        fwtest::add_standard_parameters(c);
        c.add_parameter(std::make_shared<cparameter_integral_v1>(c.self(), "Fixed", 3, 3, 3));
    });
    auto amount = r.param<cparameter_continuous_v1>("Amount");
    amount->set_value_normalized(0.25f, false);
    EXPECT_EQ(amount->get_value(), 0.25f);

    auto steps = r.param<cparameter_integral_v1>("Steps");
    steps->set_value_normalized(0.25f, false);  // 10 * 0.25 - 5 = -2.5, truncated
    EXPECT_EQ(steps->get_value(), -2);
    EXPECT_FLOAT_EQ(steps->get_value_normalized(), 0.3f);
    steps->set_value_normalized(std::numeric_limits<float>::quiet_NaN(), false);
    EXPECT_EQ(steps->get_value(), -5);

    auto bypass = r.param<cparameter_boolean_v1>("Bypass");
    bypass->set_value_normalized(0.5f, false);
    EXPECT_FALSE(bypass->get_value());
    bypass->set_value_normalized(0.51f, false);
    EXPECT_TRUE(bypass->get_value());
    EXPECT_EQ(bypass->get_value_normalized(), 1.0f);
    // An integral of equal bounds divides by zero.
    EXPECT_TRUE(std::isnan(r.param<cparameter_integral_v1>("Fixed")->get_value_normalized()));
}

TEST(Parameter, MadeBeforeTheHostNotifiesNobody)
{
    auto component = std::make_shared<fwtest::test_component>();
    auto orphan = std::make_shared<cparameter_continuous_v1>(component, "Early", 0.0f, 1.0f, 0.0f);
    auto host = std::make_shared<fwtest::recording_host>(component);
    component->initialize(host);
    host->events.clear();
    orphan->set_value(0.5f, false);
    EXPECT_EQ(orphan->get_value(), 0.5f);
    EXPECT_TRUE(host->events.empty());
}

}  // namespace
}  // namespace vl1
