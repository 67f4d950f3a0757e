// The property suite as a plug-in calls it: error codes, dimensions, access rules, and the
// lifetime of strings handed out.
#include "host/host.h"
#include "ofx/api/ofx_property.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using vl1::ofxhost::property_set;
using vl1::ofxhost::set_access;

class property_suite_test : public ::testing::Test {
protected:
    vl1::ofxhost::host h;
    const OfxPropertySuiteV1* suite = static_cast<const OfxPropertySuiteV1*>(h.fetch_suite(kOfxPropertySuite, 1));
    property_set set{set_access::open};
    OfxPropertySetHandle handle = set.handle();
};

TEST_F(property_suite_test, ErrorCodesForUnknownIndexTypeAndHandle)
{
    set.define_int("Count", {1, 2});
    int i = 0;
    double d = 0;
    char* s = nullptr;
    EXPECT_EQ(suite->propGetInt(handle, "Missing", 0, &i), kOfxStatErrUnknown);
    EXPECT_EQ(suite->propGetInt(handle, "Count", 2, &i), kOfxStatErrBadIndex);
    EXPECT_EQ(suite->propGetInt(handle, "Count", -1, &i), kOfxStatErrBadIndex);
    EXPECT_EQ(suite->propGetDouble(handle, "Count", 0, &d), kOfxStatErrValue);
    EXPECT_EQ(suite->propGetString(handle, "Count", 0, &s), kOfxStatErrValue);
    EXPECT_EQ(suite->propSetDouble(handle, "Count", 0, 1.5), kOfxStatErrValue);
    EXPECT_EQ(suite->propGetInt(nullptr, "Count", 0, &i), kOfxStatErrBadHandle);
    EXPECT_EQ(suite->propGetDimension(handle, "Missing", &i), kOfxStatErrUnknown);
    EXPECT_EQ(suite->propReset(handle, "Missing"), kOfxStatErrUnknown);

    // A handle of another kind of host object is refused, not read as a property set.
    vl1::ofxhost::param_set params(nullptr);
    EXPECT_EQ(suite->propGetInt(reinterpret_cast<OfxPropertySetHandle>(params.handle()), "Count", 0, &i),
              kOfxStatErrBadHandle);
    EXPECT_EQ(suite->propGetInt(handle, "Count", 1, &i), kOfxStatOK);
    EXPECT_EQ(i, 2);
}

TEST_F(property_suite_test, MultiDimensionalValuesAndDimensionRules)
{
    set.define_double("Bounds", {0, 0, 0, 0});  // fixed: four values
    const double values[] = {1.5, 2.5, 3.5, 4.5};
    ASSERT_EQ(suite->propSetDoubleN(handle, "Bounds", 4, values), kOfxStatOK);
    double out[4] = {};
    ASSERT_EQ(suite->propGetDoubleN(handle, "Bounds", 4, out), kOfxStatOK);
    EXPECT_EQ(out[3], 4.5);
    EXPECT_EQ(suite->propSetDouble(handle, "Bounds", 4, 9.0), kOfxStatErrBadIndex);
    EXPECT_EQ(suite->propGetDoubleN(handle, "Bounds", 5, out), kOfxStatErrBadIndex);

    // A property the plug-in creates grows by one index at a time and shrinks with a shorter N set.
    EXPECT_EQ(suite->propSetString(handle, "Tags", 0, "a"), kOfxStatOK);
    EXPECT_EQ(suite->propSetString(handle, "Tags", 1, "b"), kOfxStatOK);
    EXPECT_EQ(suite->propSetString(handle, "Tags", 3, "d"), kOfxStatErrBadIndex);
    int n = 0;
    ASSERT_EQ(suite->propGetDimension(handle, "Tags", &n), kOfxStatOK);
    EXPECT_EQ(n, 2);
    const char* one[] = {"only"};
    ASSERT_EQ(suite->propSetStringN(handle, "Tags", 1, one), kOfxStatOK);
    EXPECT_EQ(set.get_strings("Tags"), std::vector<std::string>{"only"});

    void* ptrs[] = {&n, nullptr};
    ASSERT_EQ(suite->propSetPointerN(handle, "Ptrs", 2, ptrs), kOfxStatOK);
    void* back = nullptr;
    ASSERT_EQ(suite->propGetPointer(handle, "Ptrs", 0, &back), kOfxStatOK);
    EXPECT_EQ(back, &n);
}

TEST_F(property_suite_test, AccessRulesOfFixedAndReadOnlySets)
{
    property_set fixed(set_access::fixed);
    fixed.define_int("Known", {0});
    EXPECT_EQ(suite->propSetInt(fixed.handle(), "Known", 0, 7), kOfxStatOK);
    EXPECT_EQ(suite->propSetInt(fixed.handle(), "New", 0, 7), kOfxStatErrUnknown);
    EXPECT_EQ(fixed.get_int("Known"), 7);

    property_set read_only(set_access::read_only);
    read_only.define_int("Known", {3});
    EXPECT_EQ(suite->propSetInt(read_only.handle(), "Known", 0, 7), kOfxStatErrUnsupported);
    EXPECT_EQ(suite->propSetInt(read_only.handle(), "New", 0, 7), kOfxStatErrUnknown);
    EXPECT_EQ(suite->propReset(read_only.handle(), "Known"), kOfxStatErrUnsupported);
    EXPECT_EQ(read_only.get_int("Known"), 3);

    set.define_string(kOfxPropType, {"OfxTypeImageEffect"});
    set.protect(kOfxPropType);
    EXPECT_EQ(suite->propSetString(handle, kOfxPropType, 0, "Other"), kOfxStatErrUnsupported);

    // The host's own description is read-only for the plug-in.
    EXPECT_EQ(suite->propSetString(h.ofx_host()->host, kOfxPropName, 0, "evil"), kOfxStatErrUnsupported);
}

TEST_F(property_suite_test, StringsStayValidWhileTheirValueIsUnchanged)
{
    set.define_string("Names", {"first value that is long enough to live on the heap", "b"},
                      vl1::ofxhost::prop_dimension::variable);
    set.define_string("Short", {"x"});
    char* first = nullptr;
    char* small = nullptr;
    ASSERT_EQ(suite->propGetString(handle, "Names", 0, &first), kOfxStatOK);
    ASSERT_EQ(suite->propGetString(handle, "Short", 0, &small), kOfxStatOK);
    for (int i = 2; i < 40; ++i) ASSERT_EQ(suite->propSetString(handle, "Names", i, "grown"), kOfxStatOK);
    ASSERT_EQ(suite->propSetString(handle, "Names", 1, "changed"), kOfxStatOK);
    ASSERT_EQ(suite->propSetString(handle, "Names", 0, "first value that is long enough to live on the heap"),
              kOfxStatOK);
    for (int i = 0; i < 20; ++i) set.set_string("Other" + std::to_string(i), "filler");
    EXPECT_STREQ(first, "first value that is long enough to live on the heap");
    EXPECT_STREQ(small, "x");

    ASSERT_EQ(suite->propReset(handle, "Names"), kOfxStatOK);
    EXPECT_EQ(set.get_strings("Names"),
              (std::vector<std::string>{"first value that is long enough to live on the heap", "b"}));
}

}  // namespace
