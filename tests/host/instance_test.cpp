// Instances as the host makes and drives them: initial values, button presses, messages,
// destruction and actions out of order. What the descriptors say is read through the
// describe tool's listing.
#include "tests/host/host_test_support.h"

#include "host/status.h"

namespace {

using host_test::fixture_test;
using host_test::record_of;

class instance_test : public fixture_test {};

TEST_F(instance_test, InitialValuesAreInPlaceWhenThePluginCreatesTheInstance)
{
    auto inst = filter_instance({{"binaryStateParam", "AAEC"}, {"Gain", 2.5},
                                 {"Tint", std::array<double, 4>{0.1, 0.2, 0.3, 0.4}}, {"Invert", false}});
    EXPECT_EQ(record_of(inst).state_at_create, "AAEC");
    EXPECT_EQ(inst.param("Gain").get_double(), 2.5);
    EXPECT_EQ(inst.param("Tint").get_rgba()[2], 0.3);
    EXPECT_FALSE(inst.param("Invert").get_bool());
    EXPECT_EQ(inst.properties().get_string(kOfxImageEffectPropContext), kOfxImageEffectContextFilter);
    EXPECT_THROW(filter_instance({{"Angle", 1.0}}), vl1::ofxhost::host_error);
}

TEST_F(instance_test, PressingAButtonLetsThePluginWriteAKeyAtTheCurrentTime)
{
    auto inst = filter_instance();
    inst.set_time(5.0);
    ASSERT_EQ(inst.press_button("Write Key"), kOfxStatOK);
    EXPECT_EQ(inst.param("Gain").key_times(), std::vector<OfxTime>{5.0});
    EXPECT_EQ(inst.param("Gain").value_at(5.0).numbers[0], 2.5);
    EXPECT_EQ(inst.param("Note").get_string(), "written");
    EXPECT_TRUE(inst.param("Note").key_times().empty());
    EXPECT_EQ(inst.fx().params().closed_edits(), std::vector<std::string>{"Write Key"});
    EXPECT_EQ(inst.param_changed("Gain"), kOfxStatReplyDefault);
    EXPECT_THROW(inst.press_button("No Such Button"), vl1::ofxhost::host_error);
}

TEST_F(instance_test, MessagesAreFormattedAndRecorded)
{
    auto inst = filter_instance({{"binaryStateParam", "xyz"}});
    ASSERT_EQ(inst.press_button("Report"), kOfxStatOK);
    const auto messages = h.messages();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].type, kOfxMessageMessage);
    EXPECT_EQ(messages[0].text,
              "suites=OfxImageEffectSuite,OfxPropertySuite,OfxParameterSuite,OfxMemorySuite,"
              "OfxMultiThreadSuite,OfxMessageSuite,OfxInteractSuite state=xyz");

    const auto* ms = static_cast<const OfxMessageSuiteV1*>(h.fetch_suite(kOfxMessageSuite, 1));
    h.clear_messages();
    EXPECT_EQ(ms->message(nullptr, kOfxMessageError, "id7", "%d of %s", 3, "four"), kOfxStatOK);
    EXPECT_EQ(h.messages().at(0).text, "3 of four");
    EXPECT_EQ(h.messages().at(0).id, "id7");
    h.state().question_reply = kOfxStatReplyNo;
    EXPECT_EQ(ms->message(nullptr, kOfxMessageQuestion, nullptr, "Sure?"), kOfxStatReplyNo);
}

TEST_F(instance_test, DestroyedInstancesHaveDeadHandles)
{
    auto inst = filter_instance();
    OfxImageEffectHandle handle = inst.handle();
    ASSERT_EQ(inst.destroy(), kOfxStatOK);
    EXPECT_FALSE(inst.alive());
    EXPECT_EQ(inst.destroy(), kOfxStatErrBadHandle);
    const auto* es = static_cast<const OfxImageEffectSuiteV1*>(h.fetch_suite(kOfxImageEffectSuite, 1));
    OfxPropertySetHandle props = nullptr;
    EXPECT_EQ(es->getPropertySet(handle, &props), kOfxStatErrBadHandle);
    // The plug-in, asked to render the dead instance, finds no instance data and says so.
    EXPECT_EQ(inst.render(0.0, {0, 0, 1, 1}), kOfxStatFailed);
}

}  // namespace
