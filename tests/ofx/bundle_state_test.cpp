// The saved state as a host keeps it: text in "binaryStateParam", packed as the plug-in
// writes it now or plain base64 as earlier versions wrote it. A project carries its theme to
// a machine that lacks it; bad text never costs the instance its defaults; the host's own
// parameter values win over what the state holds.
#include "tests/ofx/bundle_look.h"
#include "tests/ofx/bundle_test_support.h"

namespace {

using namespace bundle_test;

class bundle_state : public bundle_fixture {
protected:
    vl1::ofxhost::plugin p = ready_plugin();
    std::shared_ptr<const vl1::hueloom_theme_v1> builtin = builtin_theme();
    std::shared_ptr<const vl1::hueloom_theme_v1> traveller = travelling_theme();
    std::shared_ptr<vl1::ofxhost::image> source = gradient_image({0, 0, 16, 8});

    vl1::ofxhost::instance make(const std::string& state, double strength = 100.0, double angle = 45.0)
    {
        return p.create_instance(kOfxImageEffectContextFilter,
                                 {{"binaryStateParam", state}, {"Strength", strength}, {"Angle", angle}});
    }

    double difference_to(vl1::ofxhost::instance& inst, const vl1::hueloom_theme_v1& theme, const look& values)
    {
        return max_difference(*render(inst, source), *graded(*source, table_for(theme, values)));
    }

    /// Opens and closes the editor: the state goes to the host at the next render.
    std::string saved_state_of(vl1::ofxhost::instance& inst)
    {
        EXPECT_EQ(inst.press_button("Open GUI"), kOfxStatOK);
        render(inst, source);
        return inst.param("binaryStateParam").get_string();
    }
};

TEST_F(bundle_state, BadTextAndMegabytesOfGarbageLeaveTheDefaults)
{
    std::string garbage(6 * 1024 * 1024, 'A');
    for (std::size_t i = 0; i < garbage.size(); i += 7)
        garbage[i] = "+/09azAZ"[i % 8];
    for (const std::string& text : std::vector<std::string>{"", "QQ", "QUJD", "!!!not base64!!!", "AAAA",
                                                            std::string(5000, '@'), "hlz1:", "hlz1:QUJD", garbage}) {
        SCOPED_TRACE(text.substr(0, 20));
        vl1::ofxhost::instance inst = make(text);
        EXPECT_EQ(difference_to(inst, *builtin, {45, 100}), 0.0);
    }
}

TEST_F(bundle_state, TheThemeTravelsWithTheProjectInBlobsOfAnyLengthModuloThree)
{
    EXPECT_GT(max_difference(*graded(*source, table_for(*traveller, {45, 100})),
                             *graded(*source, table_for(*builtin, {45, 100}))),
              0.01)
        << "the two themes must look different for this test to mean anything";
    // The theme exists nowhere on this machine but in the saved state.
    for (std::size_t extra : {0u, 1u, 2u}) {
        const auto blob = state_blob_with(*traveller, extra);
        SCOPED_TRACE(blob.size() % 3);
        vl1::ofxhost::instance inst = make(state_text(blob));
        EXPECT_EQ(difference_to(inst, *traveller, {45, 100}), 0.0);
    }
}

TEST_F(bundle_state, SavedOnlyWhenTheEditorClosesTheTextGivesOtherInstancesItsLookAndTheHostsValuesWin)
{
    const std::string plain = state_text(state_blob_with(*traveller));
    vl1::ofxhost::instance first = make(plain, 70.0, 200.0);
    render(first, source);
    EXPECT_TRUE(first.param("binaryStateParam").get_string() == plain) << "nothing is written before the editor";
    const std::string saved = saved_state_of(first);
    ASSERT_EQ(saved.rfind("hlz1:", 0), 0u) << "the state is saved packed";
    EXPECT_LT(saved.size(), plain.size() / 2);

    vl1::ofxhost::instance second = make(saved, 70.0, 200.0);
    EXPECT_EQ(max_difference(*render(first, source), *render(second, source)), 0.0);
    EXPECT_EQ(difference_to(second, *traveller, {200, 70}), 0.0);
    EXPECT_EQ(saved_state_of(second), saved) << "saving again changes nothing";

    // Changed at the host between two editor sessions: the render follows the host.
    first.param("Strength").set_constant(90.0);
    EXPECT_EQ(difference_to(first, *traveller, {200, 90}), 0.0);
    // A project opened with other panel values than the blob holds.
    vl1::ofxhost::instance third = make(saved, 55.0, 300.0);
    EXPECT_EQ(difference_to(third, *traveller, {300, 55}), 0.0);
}

TEST_F(bundle_state, AStateRefusedDuringTheRenderArrivesAtTheNextActionThatMayWrite)
{
    vl1::ofxhost::property_set changed(vl1::ofxhost::set_access::read_only);
    changed.define_string(kOfxPropType, {kOfxTypeParameter});
    changed.define_string(kOfxPropName, {"Strength"});
    changed.define_string(kOfxPropChangeReason, {kOfxChangeUserEdited});
    changed.define_double(kOfxPropTime, {0.0});
    for (const char* action : {kOfxActionSyncPrivateData, kOfxActionBeginInstanceChanged, kOfxActionInstanceChanged,
                               kOfxActionEndInstanceChanged}) {
        SCOPED_TRACE(action);
        // Without a display the editor doesn't open, but the render saves the state all the same.
        vl1::ofxhost::instance inst = make("");
        EXPECT_EQ(inst.press_button("Open GUI"), kOfxStatOK);
        h.fail_call(vl1::ofxhost::failing("paramSetValue").for_argument("binaryStateParam"));
        render(inst, source);
        h.failures().clear();
        EXPECT_EQ(inst.param("binaryStateParam").get_string(), "");
        inst.call_action(action, changed.handle());
        EXPECT_EQ(inst.param("binaryStateParam").get_string().rfind("hlz1:", 0), 0u);
    }
}

}  // namespace
