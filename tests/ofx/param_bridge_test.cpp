// The parameter bridge between a component and the host's parameters, driven through the
// suites of our own host: the component's own changes go back, as keys where the user
// animated, and a parameter the host can't find is skipped. Host values reaching the
// component at the render time, clamped, are shown through the bundle (bundle_render).
#include <gtest/gtest.h>

#include <cmath>

#include "effect/hueloom.h"
#include "framework/cparameter.h"
#include "host/effect.h"
#include "host/host.h"
#include "ofx/ofx_host_interface.h"
#include "ofx/ofx_param_bridge.h"

namespace vl1 {
namespace {

class ParamBridge : public ::testing::Test {
protected:
    ofxhost::host h;
    host_suites suites{static_cast<const OfxImageEffectSuiteV1*>(h.fetch_suite(kOfxImageEffectSuite, 1)),
                       static_cast<const OfxPropertySuiteV1*>(h.fetch_suite(kOfxPropertySuite, 1)),
                       static_cast<const OfxParameterSuiteV1*>(h.fetch_suite(kOfxParameterSuite, 1))};
    std::shared_ptr<hueloom> component = make_component();
    ofxhost::effect descriptor{ofxhost::effect_role::context_descriptor, kOfxImageEffectContextFilter};
    ofxhost::effect instance{ofxhost::effect_role::instance, kOfxImageEffectContextFilter};

    void SetUp() override
    {
        DefineParameters(suites, descriptor.handle(), component);
        instance.instantiate_from(descriptor);
    }

    static std::shared_ptr<hueloom> make_component()
    {
        auto c = std::make_shared<hueloom>();
        c->initialize(std::make_shared<ofx_host_interface>(c));
        return c;
    }

    ofxhost::param& host_param(const char* name) { return *instance.params().find(name); }

    std::shared_ptr<cparameter_continuous_v1> continuous(const char* name)
    {
        return std::dynamic_pointer_cast<cparameter_continuous_v1>(component->get_parameter(std::string(name)));
    }
};

TEST_F(ParamBridge, TheComponentsOwnChangesGoBackAsKeysWhereAnimated)
{
    host_param("Angle").set_value_at(0.0, 0.0);
    host_param("Angle").set_value_at(10.0, 100.0);
    // Changes the component makes itself (an editor, an undo) queue their parameters.
    continuous("Angle")->set_value(42.0f, false);
    continuous("Hue")->set_value(150.0f, false);
    PushDirtyParamsToHost(suites, 5.0, instance.handle(), component);
    EXPECT_EQ(host_param("Angle").key_times(), (std::vector<OfxTime>{0.0, 5.0, 10.0}));
    EXPECT_EQ(host_param("Angle").value_at(5.0).numbers[0], 42.0);
    EXPECT_TRUE(host_param("Hue").key_times().empty());
    EXPECT_EQ(host_param("Hue").value().numbers[0], 150.0);

    // Without a render time everything goes in as a constant value.
    continuous("Angle")->set_value(7.0f, false);
    PushDirtyParamsToHost(suites, no_particular_time(), instance.handle(), component);
    EXPECT_EQ(host_param("Angle").key_times().size(), 3u);
    // Nothing is queued any more.
    host_param("Hue").set_constant(10.0);
    PushDirtyParamsToHost(suites, 1.0, instance.handle(), component);
    EXPECT_EQ(host_param("Hue").value().numbers[0], 10.0);
}

TEST_F(ParamBridge, AParameterTheHostCantFindIsSkippedAndTheRestAreRead)
{
    h.fail_call(ofxhost::failing("paramGetHandle").for_argument("Angle"));
    host_param("Angle").set_constant(90.0);
    host_param("Strength").set_constant(60.0);
    SetAllParamsToComponent(suites, no_particular_time(), instance.handle(), component);
    EXPECT_EQ(continuous("Angle")->get_value(), 0.0f);
    EXPECT_EQ(continuous("Strength")->get_value(), 60.0f);
}

}  // namespace
}  // namespace vl1
