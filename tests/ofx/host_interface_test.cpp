// The OFX host object: which parameter changes go back to the host, and in what order.
#include <gtest/gtest.h>

#include <memory>

#include "framework/ccomponent.h"
#include "framework/cparameter.h"
#include "ofx/ofx_host_interface.h"

namespace vl1 {
namespace {

class six_params : public ccomponent_v1 {
public:
    void init_component() override
    {
        for (int i = 0; i < 6; ++i)
            add_parameter(std::make_shared<cparameter_continuous_v1>(weak_from_this(), "p" + std::to_string(i), 0.0f, 1.0f, 0.0f));
    }
    cparameter_continuous_v1& param(int i) { return dynamic_cast<cparameter_continuous_v1&>(*get_parameter(i)); }
};

struct HostInterface : testing::Test {
    std::shared_ptr<six_params> component = std::make_shared<six_params>();
    std::shared_ptr<ofx_host_interface> host = std::make_shared<ofx_host_interface>(component);
    void SetUp() override { component->initialize(host); }
};

TEST_F(HostInterface, ChangedParametersPopOnceEachInAscendingOrderAndHostValuesNever)
{
    EXPECT_EQ(host->pop_dirty_param(), -1);
    component->param(5).set_value(0.5f, false);
    component->param(2).set_value(0.5f, false);
    for (int i = 0; i < 10; ++i)
        component->param(5).set_value(0.1f * i, false);
    EXPECT_EQ(host->pop_dirty_param(), 2);
    EXPECT_EQ(host->pop_dirty_param(), 5);
    EXPECT_EQ(host->pop_dirty_param(), -1);

    component->param(0).set_value(0.25f, false);
    EXPECT_EQ(host->pop_dirty_param(), 0) << "the queue works again after running empty";

    // Values from the host are not queued but make the component dirty.
    component->param(3).set_value(0.75f, true);
    EXPECT_EQ(host->pop_dirty_param(), -1);
    EXPECT_TRUE(host->component_is_dirty());
}

TEST_F(HostInterface, AnExpiredComponentQueuesNothing)
{
    auto orphan = std::make_shared<ofx_host_interface>(std::weak_ptr<icomponent_v1>{});
    event e(event_param_changed, uid("p1"));
    orphan->notify(e);
    EXPECT_EQ(orphan->pop_dirty_param(), -1);
}

TEST(HostLanguage, TheEnvironmentDecides)
{
    auto host = std::make_shared<ofx_host_interface>(std::weak_ptr<icomponent_v1>{});
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    EXPECT_EQ(host->get_language(), language_id::de);
    setenv("LC_ALL", "en_GB.UTF-8", 1);
    EXPECT_EQ(host->get_language(), language_id::en);
    unsetenv("LC_ALL");
}

}  // namespace
}  // namespace vl1
