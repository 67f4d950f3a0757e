// The parameter suite: definitions on descriptors, values and keys on instances through the
// variadic calls, and the host-side view of the same values.
#include "tests/host/host_test_support.h"

#include "ofx/api/ofx_param.h"

#include <cmath>
#include <string>

namespace {

using host_test::fixture_test;

class param_test : public fixture_test {
protected:
    const OfxParameterSuiteV1* ps = static_cast<const OfxParameterSuiteV1*>(h.fetch_suite(kOfxParameterSuite, 1));
    vl1::ofxhost::instance inst = filter_instance();

    OfxParamHandle handle(const char* name)
    {
        OfxParamSetHandle set = inst.fx().params().handle();
        OfxParamHandle p = nullptr;
        EXPECT_EQ(ps->paramGetHandle(set, name, &p, nullptr), kOfxStatOK);
        return p;
    }
    double double_at(const char* name, double t)
    {
        double v = -1;
        EXPECT_EQ(ps->paramGetValueAtTime(handle(name), t, &v), kOfxStatOK);
        return v;
    }
    int int_at(const char* name, double t)
    {
        int v = -1;
        EXPECT_EQ(ps->paramGetValueAtTime(handle(name), t, &v), kOfxStatOK);
        return v;
    }
};

TEST_F(param_test, DescriptorsDefineEveryTypeAndRefuseBadDefinitions)
{
    vl1::ofxhost::param_set set(nullptr);
    for (const char* type : {kOfxParamTypeDouble, kOfxParamTypeInteger, kOfxParamTypeBoolean, kOfxParamTypeRGBA,
                             kOfxParamTypeRGB, kOfxParamTypeChoice, kOfxParamTypeString, kOfxParamTypeCustom,
                             kOfxParamTypePushButton, kOfxParamTypeGroup, kOfxParamTypePage, kOfxParamTypeDouble2D,
                             kOfxParamTypeInteger3D}) {
        OfxPropertySetHandle props = nullptr;
        EXPECT_EQ(ps->paramDefine(set.handle(), type, type, &props), kOfxStatOK) << type;
        EXPECT_NE(props, nullptr);
    }
    EXPECT_EQ(set.params().size(), 13u);
    EXPECT_EQ(ps->paramDefine(set.handle(), kOfxParamTypeDouble, kOfxParamTypeDouble, nullptr), kOfxStatErrExists);
    EXPECT_EQ(ps->paramDefine(set.handle(), "OfxParamTypeParametric", "Curve", nullptr), kOfxStatErrUnknown);
    EXPECT_EQ(ps->paramDefine(inst.fx().params().handle(), kOfxParamTypeDouble, "Late", nullptr),
              kOfxStatErrUnsupported);

    OfxParamHandle p = nullptr;
    EXPECT_EQ(ps->paramGetHandle(set.handle(), "Angle", &p, nullptr), kOfxStatErrUnknown);
    ASSERT_EQ(ps->paramGetHandle(set.handle(), kOfxParamTypeDouble, &p, nullptr), kOfxStatOK);
    double v = 0;
    EXPECT_EQ(ps->paramGetValue(p, &v), kOfxStatErrBadHandle);  // descriptors hold no values
    EXPECT_EQ(ps->paramGetValue(handle("Write Key"), &v), kOfxStatErrUnsupported);
}

TEST_F(param_test, InstancesStartAtTheDescriptorsDefaults)
{
    EXPECT_EQ(double_at("Gain", 0), 1.0);
    EXPECT_EQ(int_at("Count", 0), 3);
    EXPECT_EQ(int_at("Mode", 0), 1);
    EXPECT_EQ(int_at("Invert", 0), 1);
    double r, g, b, a;
    ASSERT_EQ(ps->paramGetValue(handle("Tint"), &r, &g, &b, &a), kOfxStatOK);
    EXPECT_EQ((std::array<double, 4>{r, g, b, a}), (std::array<double, 4>{1.0, 0.5, 0.25, 1.0}));
    double x, y;
    ASSERT_EQ(ps->paramGetValue(handle("Offset"), &x, &y), kOfxStatOK);
    EXPECT_EQ(y, 2.0);
    char* text = nullptr;
    ASSERT_EQ(ps->paramGetValue(handle("Note"), &text), kOfxStatOK);
    EXPECT_STREQ(text, "hello");
    EXPECT_EQ(inst.param("Note").get_string(), "hello");
}

TEST_F(param_test, KeysInterpolateByType)
{
    ASSERT_EQ(ps->paramSetValueAtTime(handle("Gain"), 0.0, 0.0), kOfxStatOK);
    ASSERT_EQ(ps->paramSetValueAtTime(handle("Gain"), 10.0, 1.0), kOfxStatOK);
    EXPECT_DOUBLE_EQ(double_at("Gain", 2.5), 0.25);
    EXPECT_EQ(double_at("Gain", -4), 0.0);  // before the first key
    EXPECT_EQ(double_at("Gain", 50), 1.0);  // after the last

    ASSERT_EQ(ps->paramSetValueAtTime(handle("Count"), 0.0, 0), kOfxStatOK);
    ASSERT_EQ(ps->paramSetValueAtTime(handle("Count"), 10.0, 3), kOfxStatOK);
    EXPECT_EQ(int_at("Count", 5), 2);  // 1.5 rounds up
    EXPECT_EQ(int_at("Count", 4), 1);  // 1.2

    ASSERT_EQ(ps->paramSetValueAtTime(handle("Invert"), 0.0, 0), kOfxStatOK);
    ASSERT_EQ(ps->paramSetValueAtTime(handle("Invert"), 10.0, 1), kOfxStatOK);
    EXPECT_EQ(int_at("Invert", 9.9), 0);
    EXPECT_EQ(int_at("Invert", 10), 1);

    ASSERT_EQ(ps->paramSetValueAtTime(handle("Note"), 1.0, "one"), kOfxStatOK);
    ASSERT_EQ(ps->paramSetValueAtTime(handle("Note"), 3.0, "three"), kOfxStatOK);
    char* text = nullptr;
    ASSERT_EQ(ps->paramGetValueAtTime(handle("Note"), 2.9, &text), kOfxStatOK);
    EXPECT_STREQ(text, "one");

    ASSERT_EQ(ps->paramSetValueAtTime(handle("Tint"), 0.0, 0.0, 0.0, 0.0, 1.0), kOfxStatOK);
    ASSERT_EQ(ps->paramSetValueAtTime(handle("Tint"), 4.0, 1.0, 0.5, 0.0, 0.0), kOfxStatOK);
    double r, g, b, a;
    ASSERT_EQ(ps->paramGetValueAtTime(handle("Tint"), 1.0, &r, &g, &b, &a), kOfxStatOK);
    EXPECT_EQ((std::array<double, 4>{r, g, b, a}), (std::array<double, 4>{0.25, 0.125, 0.0, 0.75}));
}

TEST_F(param_test, KeyListingIndexingAndDeletion)
{
    OfxParamHandle gain = handle("Gain");
    for (double t : {4.0, 0.0, 8.0}) ASSERT_EQ(ps->paramSetValueAtTime(gain, t, t / 2), kOfxStatOK);
    ASSERT_EQ(ps->paramSetValueAtTime(gain, 4.0, 9.0), kOfxStatOK);  // replaces, doesn't add
    unsigned int n = 0;
    ASSERT_EQ(ps->paramGetNumKeys(gain, &n), kOfxStatOK);
    EXPECT_EQ(n, 3u);
    OfxTime t = -1;
    ASSERT_EQ(ps->paramGetKeyTime(gain, 1, &t), kOfxStatOK);
    EXPECT_EQ(t, 4.0);
    EXPECT_EQ(ps->paramGetKeyTime(gain, 3, &t), kOfxStatErrBadIndex);

    int index = -1;
    EXPECT_EQ(ps->paramGetKeyIndex(gain, 5.0, -1, &index), kOfxStatOK);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(ps->paramGetKeyIndex(gain, 4.0, 1, &index), kOfxStatOK);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(ps->paramGetKeyIndex(gain, 5.0, 0, &index), kOfxStatFailed);

    EXPECT_EQ(ps->paramDeleteKey(gain, 5.0), kOfxStatErrBadIndex);
    ASSERT_EQ(ps->paramDeleteKey(gain, 4.0), kOfxStatOK);
    EXPECT_EQ(inst.param("Gain").key_times(), (std::vector<OfxTime>{0.0, 8.0}));

    inst.set_time(2.0);
    ASSERT_EQ(ps->paramDeleteAllKeys(gain), kOfxStatOK);
    EXPECT_TRUE(inst.param("Gain").key_times().empty());
    EXPECT_DOUBLE_EQ(double_at("Gain", 100), 1.0);  // the value at time 2 when the keys went
}

TEST_F(param_test, SetValueOnAnAnimatedParameterKeysTheCurrentTime)
{
    OfxParamHandle gain = handle("Gain");
    ASSERT_EQ(ps->paramSetValue(gain, 0.5), kOfxStatOK);  // no keys: the constant changes
    EXPECT_TRUE(inst.param("Gain").key_times().empty());
    EXPECT_EQ(double_at("Gain", 77), 0.5);

    inst.param("Gain").set_key(0.0, 0.0);
    inst.set_time(6.0);
    ASSERT_EQ(ps->paramSetValue(gain, 3.0), kOfxStatOK);
    EXPECT_TRUE(inst.param("Gain").has_key_at(6.0));
    EXPECT_DOUBLE_EQ(double_at("Gain", 3.0), 1.5);
    inst.set_time(3.0);
    double v = 0;
    ASSERT_EQ(ps->paramGetValue(gain, &v), kOfxStatOK);
    EXPECT_DOUBLE_EQ(v, 1.5);

    // A parameter that doesn't animate takes a timed value as its constant value.
    inst.param("Count").properties().set_int(kOfxParamPropAnimates, 0);
    ASSERT_EQ(ps->paramSetValueAtTime(handle("Count"), 5.0, 7), kOfxStatOK);
    EXPECT_TRUE(inst.param("Count").key_times().empty());
    EXPECT_EQ(int_at("Count", 0), 7);
}

TEST_F(param_test, DerivativeAndIntegralOfRealParameters)
{
    OfxParamHandle gain = handle("Gain");
    inst.param("Gain").set_key(0.0, 0.0);
    inst.param("Gain").set_key(10.0, 10.0);
    inst.param("Gain").set_key(20.0, 0.0);
    double d = 0;
    ASSERT_EQ(ps->paramGetDerivative(gain, 5.0, &d), kOfxStatOK);
    EXPECT_DOUBLE_EQ(d, 1.0);
    ASSERT_EQ(ps->paramGetDerivative(gain, 15.0, &d), kOfxStatOK);
    EXPECT_DOUBLE_EQ(d, -1.0);

    double area = 0;
    ASSERT_EQ(ps->paramGetIntegral(gain, 5.0, 12.0, &area), kOfxStatOK);
    EXPECT_DOUBLE_EQ(area, 37.5 + 18.0);  // 5..10 rising, 10..12 falling
    ASSERT_EQ(ps->paramGetIntegral(gain, 20.0, 0.0, &area), kOfxStatOK);
    EXPECT_DOUBLE_EQ(area, -100.0);

    double x = 0, y = 0;
    ASSERT_EQ(ps->paramGetIntegral(handle("Offset"), 0.0, 3.0, &x, &y), kOfxStatOK);
    EXPECT_EQ(y, 6.0);  // constant 2 over 3 frames
    int i = 0;
    EXPECT_EQ(ps->paramGetDerivative(handle("Count"), 1.0, &i), kOfxStatErrValue);
}

TEST_F(param_test, CopyTakesKeysWithOffsetAndRange)
{
    vl1::ofxhost::instance other = filter_instance();
    other.param("Gain").set_key(0.0, 1.0);
    other.param("Gain").set_key(10.0, 2.0);
    other.param("Gain").set_key(20.0, 3.0);
    OfxParamSetHandle other_set = other.fx().params().handle();
    OfxParamHandle from = nullptr;
    ASSERT_EQ(ps->paramGetHandle(other_set, "Gain", &from, nullptr), kOfxStatOK);

    ASSERT_EQ(ps->paramCopy(handle("Gain"), from, 5.0, nullptr), kOfxStatOK);
    EXPECT_EQ(inst.param("Gain").key_times(), (std::vector<OfxTime>{5.0, 15.0, 25.0}));

    inst.param("Gain").delete_all_keys();
    inst.param("Gain").set_key(100.0, 9.0);
    const OfxRangeD range{5.0, 25.0};
    ASSERT_EQ(ps->paramCopy(handle("Gain"), from, 1.0, &range), kOfxStatOK);
    EXPECT_EQ(inst.param("Gain").key_times(), (std::vector<OfxTime>{11.0, 21.0, 100.0}));

    EXPECT_EQ(ps->paramCopy(handle("Count"), from, 0.0, nullptr), kOfxStatErrValue);
}

TEST_F(param_test, EditBracketsMustPair)
{
    OfxParamSetHandle set = inst.fx().params().handle();
    EXPECT_EQ(ps->paramEditEnd(set), kOfxStatFailed);
    ASSERT_EQ(ps->paramEditBegin(set, "Change"), kOfxStatOK);
    EXPECT_EQ(ps->paramEditBegin(set, "Nested"), kOfxStatFailed);
    ASSERT_EQ(ps->paramEditEnd(set), kOfxStatOK);
    EXPECT_EQ(inst.fx().params().closed_edits(), std::vector<std::string>{"Change"});
}

}  // namespace
