// Playing a broken host: suites left out, and suite calls that fail by name, argument or count.
#include "tests/host/host_test_support.h"

#include <memory>

namespace {

using host_test::fixture_test;
using host_test::record_of;
using vl1::ofxhost::image;
using vl1::ofxhost::pixel_depth;

constexpr OfxRectI bounds{0, 0, 4, 3};

class failure_injection_test : public fixture_test {
protected:
    std::shared_ptr<image> src = std::make_shared<image>(pixel_depth::byte, bounds);
    std::shared_ptr<image> out = std::make_shared<image>(pixel_depth::byte, bounds);

    vl1::ofxhost::instance ready_instance()
    {
        auto inst = filter_instance();
        inst.set_clip_image("Source", src);
        inst.set_clip_image("Output", out);
        return inst;
    }
};

TEST_F(failure_injection_test, OmittedSuitesAreNullAndRequiredOnesFailTheLoad)
{
    h.omit_suite(kOfxMessageSuite);
    EXPECT_EQ(h.fetch_suite(kOfxMessageSuite, 1), nullptr);
    EXPECT_EQ(h.fetch_suite(kOfxPropertySuite, 2), nullptr);  // only version 1 exists
    EXPECT_NE(h.fetch_suite(kOfxInteractSuite, 1), nullptr);
    ASSERT_EQ(plugin.load(), kOfxStatOK);
    auto inst = filter_instance();
    EXPECT_EQ(record_of(inst).suites_found.find(kOfxMessageSuite), std::string::npos);
    EXPECT_NE(record_of(inst).suites_found.find(kOfxInteractSuite), std::string::npos);
    EXPECT_EQ(inst.press_button("Report"), kOfxStatOK);
    EXPECT_TRUE(h.messages().empty());

    h.omit_suite(kOfxParameterSuite);
    EXPECT_EQ(plugin.load(), kOfxStatErrMissingHostFeature);
    h.failures().clear();
    EXPECT_EQ(plugin.load(), kOfxStatOK);
}

TEST_F(failure_injection_test, ACallFailsOnlyForTheNamedArgumentOrOnItsNthOccurrence)
{
    auto inst = ready_instance();
    h.fail_call(vl1::ofxhost::failing("clipGetImage", kOfxStatErrMemory).for_argument("Source"));
    EXPECT_EQ(inst.render(0.0, bounds), kOfxStatErrMemory);
    EXPECT_EQ(inst.outstanding_images(), 0);  // the output image it did get went back
    ASSERT_EQ(h.messages().size(), 1u);
    EXPECT_EQ(h.messages()[0].type, kOfxMessageError);
    EXPECT_EQ(h.messages()[0].text, "render failed");

    const auto* es = static_cast<const OfxImageEffectSuiteV1*>(h.fetch_suite(kOfxImageEffectSuite, 1));
    OfxImageClipHandle output = nullptr;
    OfxPropertySetHandle img = nullptr;
    ASSERT_EQ(es->clipGetHandle(inst.handle(), "Output", &output, nullptr), kOfxStatOK);
    EXPECT_EQ(es->clipGetImage(output, 0.0, nullptr, &img), kOfxStatOK);
    EXPECT_EQ(es->clipReleaseImage(img), kOfxStatOK);
    h.failures().clear();

    // Each render asks for the output, then the source: the second call is the first source.
    h.fail_call(vl1::ofxhost::failing("clipGetImage").on_call(2));
    EXPECT_EQ(inst.render(0.0, bounds), kOfxStatFailed);
    EXPECT_EQ(inst.render(0.0, bounds), kOfxStatOK);
    EXPECT_EQ(out->pixel(0, 0), (std::array<double, 4>{255, 255, 255, 0}));
}

TEST_F(failure_injection_test, FailingPropertyAndThreadCallsReachThePlugin)
{
    auto inst = ready_instance();
    h.fail_call(vl1::ofxhost::failing("propGetString", kOfxStatErrBadIndex).for_argument(kOfxPropName));
    EXPECT_EQ(inst.press_button("Write Key"), kOfxStatErrBadIndex);
    EXPECT_TRUE(inst.param("Gain").key_times().empty());
    h.failures().clear();

    // Without threads the fixture renders on the calling thread.
    h.fail_call(vl1::ofxhost::failing("multiThread"));
    EXPECT_EQ(inst.render(0.0, bounds), kOfxStatOK);
    EXPECT_EQ(record_of(inst).rows_done, 3);
    EXPECT_EQ(record_of(inst).rows_on_spawned_threads, 0);
}

TEST_F(failure_injection_test, FailingParamDefineShowsInTheDescriptor)
{
    h.fail_call(vl1::ofxhost::failing("paramDefine", kOfxStatErrMemory).for_argument("Gain"));
    ASSERT_EQ(plugin.describe_in_context(kOfxImageEffectContextFilter), kOfxStatOK);
    const auto& params = plugin.context_descriptor(kOfxImageEffectContextFilter)->params();
    EXPECT_EQ(params.find("Gain"), nullptr);
    EXPECT_NE(params.find("Count"), nullptr);
}

}  // namespace
