// Instances of the real bundle as a host makes, renders and destroys them, including the
// orders a careless host uses: many instances at once, destroy twice, render after destroy.
// Missing images and empty windows are in bundle_render and bundle_hostile.
#include "tests/ofx/bundle_look.h"
#include "tests/ofx/bundle_test_support.h"

#include <thread>

namespace {

using bundle_test::bundle_fixture;
using bundle_test::gradient_image;
using bundle_test::log_capture;
using bundle_test::look;
using bundle_test::render_into;

class bundle_instance : public bundle_fixture {
protected:
    vl1::ofxhost::plugin p = ready_plugin();

    vl1::ofxhost::instance make() { return p.create_instance(kOfxImageEffectContextFilter); }
};

TEST_F(bundle_instance, ManyInstancesMadeBackToBackRenderAtOnceFromManyThreadsAndOutliveEachOther)
{
    log_capture log;
    // Each with its own look, all made within the same second (each must keep its own table
    // entry), each on its own thread of the host, all rendering at the same time.
    std::vector<vl1::ofxhost::instance> instances;
    std::vector<look> looks;
    for (int i = 0; i < 6; ++i) {
        looks.push_back({60.0f * i, 100.0f - 10.0f * i});
        instances.push_back(p.create_instance(kOfxImageEffectContextFilter, {{"Angle", double(looks[i].angle)},
                                                                             {"Strength", double(looks[i].strength)}}));
        ASSERT_NE(instances[i].instance_data(), nullptr);
        if (i > 0) {
            EXPECT_NE(instances[i].instance_data(), instances[i - 1].instance_data());
        }
    }
    const auto source = gradient_image({0, 0, 64, 32});
    std::vector<std::shared_ptr<vl1::ofxhost::image>> outputs;
    for (auto& inst : instances) {
        outputs.push_back(std::make_shared<vl1::ofxhost::image>(source->depth(), source->bounds()));
        inst.set_clip_image(kOfxImageEffectSimpleSourceClipName, source);
        inst.set_clip_image(kOfxImageEffectOutputClipName, outputs.back());
    }
    std::vector<OfxStatus> results(instances.size(), kOfxStatFailed);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < instances.size(); ++i)
        threads.emplace_back([&, i] {
            for (int frame = 0; frame < 3 && (frame == 0 || results[i] == kOfxStatOK); ++frame)
                results[i] = instances[i].render(frame, source->bounds());
        });
    for (auto& t : threads)
        t.join();
    const auto theme = bundle_test::builtin_theme();
    const auto expected = [&](size_t i) { return bundle_test::graded(*source, bundle_test::table_for(*theme, looks[i])); };
    for (size_t i = 0; i < instances.size(); ++i) {
        EXPECT_EQ(results[i], kOfxStatOK);
        EXPECT_EQ(bundle_test::max_difference(*outputs[i], *expected(i)), 0.0) << "instance " << i;
    }
    // The others go on after one is destroyed.
    EXPECT_EQ(instances[0].destroy(), kOfxStatOK);
    EXPECT_EQ(bundle_test::max_difference(*render(instances[1], source), *expected(1)), 0.0);
    EXPECT_TRUE(log.contains("New component token is"));
    EXPECT_TRUE(log.contains("Notify event_render_setup"));
    EXPECT_TRUE(log.contains("OFX Render 64 32 "));
}

TEST_F(bundle_instance, DestroyTwiceRenderAfterDestroyAndARecordTheBundleNeverMadeAreHarmless)
{
    auto source = gradient_image({0, 0, 4, 4});
    const auto output = [&] { return std::make_shared<vl1::ofxhost::image>(source->depth(), source->bounds()); };
    vl1::ofxhost::instance inst = make();
    void* record = inst.instance_data();
    ASSERT_EQ(inst.call_action(kOfxActionDestroyInstance), kOfxStatOK);
    // The instance's properties still hold the old record address, which is no longer known.
    EXPECT_EQ(inst.properties().get_pointer(kOfxPropInstanceData), record);
    EXPECT_EQ(inst.call_action(kOfxActionDestroyInstance), kOfxStatOK);
    {
        log_capture log;
        EXPECT_EQ(render_into(inst, source, output(), source->bounds()), kOfxStatFailed);
        EXPECT_TRUE(log.contains("Component not found! Token was"));
    }
    inst.forget();

    vl1::ofxhost::instance other = make();
    int foreign = 42;
    void* own = other.instance_data();
    other.properties().set_pointer(kOfxPropInstanceData, &foreign);
    EXPECT_EQ(render_into(other, source, output(), source->bounds()), kOfxStatFailed);
    EXPECT_EQ(other.call_action(kOfxActionDestroyInstance), kOfxStatOK);
    EXPECT_EQ(foreign, 42);
    other.properties().set_pointer(kOfxPropInstanceData, own);
}

TEST_F(bundle_instance, OpenGuiIsTheOnlyParameterChangeThePluginActsOn)
{
    vl1::ofxhost::instance inst = make();
    {
        log_capture log;
        EXPECT_EQ(inst.press_button("Open GUI"), kOfxStatOK);
        EXPECT_TRUE(log.contains("Open GUI requested!"));
    }
    {
        // The next render consumes the request: the parameters and the state go to the host.
        log_capture log;
        render(inst, gradient_image({0, 0, 4, 4}));
        EXPECT_TRUE(log.contains("Notify event_render_setup"));
    }
    log_capture log;
    EXPECT_EQ(inst.param_changed("binaryStateParam"), kOfxStatOK);
    EXPECT_FALSE(log.contains("Open GUI requested!"));
}

}  // namespace
