// A hostile or broken host: suite calls that fail, actions out of order, images that lie
// about themselves, values no panel should hold. The bundle must answer each with a status
// and go on; a crash here is a crash in a colourist's session.
#include "tests/ofx/bundle_look.h"
#include "tests/ofx/bundle_test_support.h"

#include "framework/io/state_text.h"
#include "host/status.h"
#include "tests/support/forged_state.h"

#include <cmath>
#include <limits>

namespace {

using namespace bundle_test;

/// Every suite member the plug-in calls.
const char* const suite_calls[] = {
    "getPropertySet", "getParamSet",     "clipDefine",         "clipGetHandle",  "clipGetImage",
    "clipReleaseImage", "abort",          "propSetString",      "propSetInt",     "propSetDouble",
    "propSetPointer", "propGetPointer",  "propGetString",      "propGetDouble",  "propGetInt",
    "propGetIntN",    "paramDefine",     "paramGetHandle",     "paramGetPropertySet", "paramGetValue",
    "paramGetValueAtTime", "paramSetValue", "paramSetValueAtTime", "paramGetNumKeys", "multiThreadNumCPUs",
};

bool is_ofx_status(OfxStatus s)
{
    return s == kOfxStatOK || s == kOfxStatReplyDefault || s == kOfxStatFailed || s == kOfxStatErrBadHandle ||
           s == kOfxStatErrMissingHostFeature || s == kOfxStatErrUnknown || s == kOfxStatErrMemory ||
           s == kOfxStatErrImageFormat || s == kOfxStatErrValue || s == kOfxStatErrBadIndex ||
           s == kOfxStatErrUnsupported || s == kOfxStatErrFatal || s == kOfxStatErrExists ||
           s == kOfxStatErrFormat;
}

/// Load, describe, create (with a state), change, open the editor, render twice, destroy:
/// a whole session, whatever the host breaks on the way.
void run_session(vl1::ofxhost::host& h, const std::string& state, bool images_come_back = true)
{
    vl1::ofxhost::plugin p = h.load_plugin(bundle_path(), 0);
    std::vector<OfxStatus> answers;
    answers.push_back(p.load());
    answers.push_back(p.describe());
    answers.push_back(p.describe_in_context(kOfxImageEffectContextFilter));
    try {
        vl1::ofxhost::instance inst =
            p.create_instance(kOfxImageEffectContextFilter, {{"binaryStateParam", state}, {"Strength", 80.0}});
        auto source = gradient_image({0, 0, 8, 4});
        auto output = std::make_shared<vl1::ofxhost::image>(source->depth(), source->bounds());
        inst.set_clip_image(kOfxImageEffectSimpleSourceClipName, source);
        inst.set_clip_image(kOfxImageEffectOutputClipName, output);
        answers.push_back(inst.press_button("Open GUI"));
        answers.push_back(inst.render(1.0, source->bounds()));
        answers.push_back(inst.render(2.0, source->bounds()));
        if (images_come_back) {
            EXPECT_EQ(inst.outstanding_images(), 0);
        }
        answers.push_back(inst.destroy());
    } catch (const vl1::ofxhost::host_error&) {
        // The host refused to go on after the plug-in's answer: that is the host's choice.
    }
    for (OfxStatus s : answers)
        EXPECT_TRUE(is_ofx_status(s)) << s;
}

TEST(bundle_hostile, EverySuiteCallFailingAlwaysOrOnce)
{
    const std::string state = state_text(state_blob_with(*travelling_theme()));
    for (const char* call : suite_calls) {
        for (int nth : {0, 1, 2}) {
            SCOPED_TRACE(testing::Message() << call << " call " << nth);
            // A host whose release fails keeps its images; that is the host's own fault.
            const bool images_come_back = std::string(call) != "clipReleaseImage";
            vl1::ofxhost::host h;
            h.fail_call(vl1::ofxhost::failing(call).on_call(nth));
            run_session(h, nth == 0 ? state : "", images_come_back);
            vl1::ofxhost::host h2;
            h2.fail_call(vl1::ofxhost::failing(call, kOfxStatErrBadHandle).on_call(nth));
            run_session(h2, "", images_come_back);
        }
    }
}

TEST_F(bundle_fixture, PackedStatesThatWouldGrowPastAStateAreRefused)
{
    vl1::ofxhost::plugin p = ready_plugin();
    using hueloom_test::forged_packed_state;
    const std::vector<uint8_t> forged[] = {
        forged_packed_state(0xffffffffu, 100, true),     // claims 4 GiB
        forged_packed_state(4000000, 16 << 20, true),    // the rest declares 16 MiB
        forged_packed_state(4000000, 16 << 20, false),   // the rest declares nothing and expands
    };
    auto source = gradient_image({0, 0, 8, 4});
    const auto expected = graded(*source, table_for(*builtin_theme(), {30, 70}));
    for (const std::vector<uint8_t>& packed : forged) {
        const std::string text = vl1::packed_state_prefix + state_text(packed);
        log_capture log;
        vl1::ofxhost::instance inst = p.create_instance(kOfxImageEffectContextFilter,
                                                   {{"binaryStateParam", text}, {"Angle", 30.0}, {"Strength", 70.0}});
        EXPECT_EQ(max_difference(*render(inst, source), *expected), 0.0) << "the instance works with the defaults";
        EXPECT_TRUE(log.contains("The saved state is ignored: the packed state")) << text.substr(0, 40);
    }
}

class bundle_hostile_images : public bundle_fixture {
protected:
    vl1::ofxhost::plugin p = ready_plugin();
    vl1::ofxhost::instance inst = p.create_instance(kOfxImageEffectContextFilter, {{"Strength", 100.0}, {"Angle", 90.0}});
    std::shared_ptr<vl1::ofxhost::image> source = gradient_image({0, 0, 8, 4});
    std::shared_ptr<vl1::ofxhost::image> output = std::make_shared<vl1::ofxhost::image>(vl1::ofxhost::pixel_depth::real, OfxRectI{0, 0, 8, 4});

    OfxStatus render_window(OfxRectI window)
    {
        const OfxStatus s = render_into(inst, source, output, window);
        EXPECT_EQ(inst.outstanding_images(), 0);
        return s;
    }

    void expect_output_untouched(float marker)
    {
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 8; ++x)
                ASSERT_EQ(output->channel(x, y, 0), marker) << x << "," << y;
    }
};

TEST_F(bundle_hostile_images, ImagesThatLieAboutThemselvesLeaveTheOutputAlone)
{
    output->fill({0.5, 0.5, 0.5, 0.5});
    source->claims.null_data = true;
    EXPECT_EQ(render_window(source->bounds()), kOfxStatOK);
    expect_output_untouched(0.5f);
    source->claims.null_data = false;
    output->claims.null_data = true;
    EXPECT_EQ(render_window(source->bounds()), kOfxStatOK);
    output->claims.null_data = false;

    source->claims.row_bytes = 8 * 16 - 4;  // too small for the bounds
    EXPECT_EQ(render_window(source->bounds()), kOfxStatErrImageFormat);
    source->claims.row_bytes.reset();
    output->claims.row_bytes = 0;
    EXPECT_EQ(render_window(source->bounds()), kOfxStatErrImageFormat);
    output->claims.row_bytes.reset();
    expect_output_untouched(0.5f);

    for (const char* depth : {"OfxBitDepthHalf", "", "OfxBitDepthFloatButNotReally"}) {
        output->claims.pixel_depth = depth;
        EXPECT_TRUE(is_ofx_status(render_window(source->bounds()))) << depth;
        expect_output_untouched(0.5f);
    }
}

TEST_F(bundle_hostile_images, InvertedAndEmptyWindowsAreNoImage)
{
    output->fill({0.5, 0.5, 0.5, 0.5});
    for (OfxRectI window : {OfxRectI{8, 0, 0, 4}, OfxRectI{0, 4, 8, 0}, OfxRectI{0, 0, 0, 0},
                            OfxRectI{std::numeric_limits<int>::min(), 0, std::numeric_limits<int>::max(), 0}}) {
        EXPECT_EQ(render_window(window), kOfxStatFailed);
    }
    expect_output_untouched(0.5f);
    // The widest window a host can send still writes only where the images are.
    EXPECT_EQ(render_window({std::numeric_limits<int>::min() / 2, -1000, std::numeric_limits<int>::max() / 2, 1000}),
              kOfxStatOK);
}

TEST_F(bundle_hostile_images, NanAndInfiniteParameterValuesGiveFinitePixels)
{
    const double bad[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                          -std::numeric_limits<double>::infinity(), 1e300, -1e300};
    for (const char* name : {"Angle", "Strength", "Hue", "Chroma", "Luminance"}) {
        for (double value : bad) {
            SCOPED_TRACE(testing::Message() << name << " = " << value);
            inst.param(name).set_constant(value);
            ASSERT_EQ(render_window(source->bounds()), kOfxStatOK);
            for (int y = 0; y < 4; ++y)
                for (int x = 0; x < 8; ++x)
                    for (int c = 0; c < 4; ++c)
                        ASSERT_TRUE(std::isfinite(output->channel(x, y, c)));
            inst.param(name).set_constant(name == std::string("Angle") || name == std::string("Strength") ? 50.0 : 100.0);
        }
    }
}

TEST_F(bundle_hostile_images, ActionsBeforeCreateOrOnADescriptorAreRefused)
{
    // The descriptor's handle never saw "OfxActionCreateInstance".
    OfxImageEffectHandle descriptor = p.context_descriptor(kOfxImageEffectContextFilter)->handle();
    vl1::ofxhost::property_set args{vl1::ofxhost::set_access::open};
    args.define_double(kOfxPropTime, {0.0});
    args.define_int(kOfxImageEffectPropRenderWindow, {0, 0, 4, 4});
    args.define_string(kOfxPropName, {"Open GUI"});
    EXPECT_EQ(p.call_action(kOfxImageEffectActionRender, descriptor, args.handle(), nullptr), kOfxStatFailed);
    EXPECT_TRUE(is_ofx_status(p.call_action(kOfxActionInstanceChanged, descriptor, args.handle(), nullptr)));
    EXPECT_EQ(p.call_action(kOfxActionDestroyInstance, descriptor, nullptr, nullptr), kOfxStatOK);
    // Render with no arguments at all.
    EXPECT_TRUE(is_ofx_status(inst.call_action(kOfxImageEffectActionRender)));
}

}  // namespace
