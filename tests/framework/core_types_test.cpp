#include <gtest/gtest.h>

#include <cstring>

#include "framework/chost.h"
#include "framework/param_value.h"
#include "framework/uid.h"
#include "tests/framework/fixtures.h"

namespace vl1 {
namespace {

TEST(Uid, Fnv1aKnownVectors)
{
    EXPECT_EQ(uid("").value, 0x811c9dc5u);
    EXPECT_EQ(uid("a").value, 0xe40c292cu);
    EXPECT_EQ(uid("foobar").value, 0xbf9cf968u);
    EXPECT_EQ(no_uid.value, 0x6f12b008u);  // "invalid_id"
    EXPECT_EQ(uid(), no_uid);
    // Bytes above 0x7f hash as unsigned bytes.
    EXPECT_EQ(fnv1a_32("\xff"), (0x811c9dc5u ^ 0xffu) * 16777619u);
    static_assert(fnv1a_32("a") == 0xe40c292cu, "usable at compile time");
}

TEST(Uid, InterfaceIdsAreHashesOfClassNames)
{
    EXPECT_EQ(chost_v1::ifc_id.value, 0x87ffadc4u);
    EXPECT_EQ(cparameter_v1::ifc_id.value, 0x123bd69bu);
    EXPECT_EQ(ccomponent_v1::ifc_id.value, 0xfe1eea9fu);
}

TEST(Uid, QueryInterfaceMatchesOnlyItsOwnClass)
{
    auto r = fwtest::make_rig();
    iobject* out = reinterpret_cast<iobject*>(1);

    EXPECT_TRUE(r.host->query_interface("chost_v1", &out));
    EXPECT_EQ(out, r.host.get());
    EXPECT_FALSE(r.component->query_interface("chost_v1", &out));
    EXPECT_EQ(out, nullptr);
    EXPECT_FALSE(r.param("Amount")->query_interface("chost_v1", &out));

    EXPECT_TRUE(r.component->query_interface("ccomponent_v1", &out));
    EXPECT_EQ(out, static_cast<iobject*>(r.component.get()));
    EXPECT_TRUE(r.param("Tint")->query_interface("cparameter_v1", &out));
    EXPECT_FALSE(r.host->query_interface("chost_v2", &out));
}

TEST(ParamValue, StoredLayoutIsLittleEndianWithoutPadding)
{
    const param_value v = param_value::make_integral(-2, 0x01020304, 0x11223344, 7);
    const auto bytes = param_value_to_bytes(v);
    ASSERT_EQ(bytes.size(), 44u);
    const uint8_t expected_type[4] = {1, 0, 0, 0};
    const uint8_t expected_value[4] = {0x44, 0x33, 0x22, 0x11};
    const uint8_t expected_min[4] = {0xfe, 0xff, 0xff, 0xff};
    const uint8_t expected_max[4] = {0x04, 0x03, 0x02, 0x01};
    EXPECT_EQ(std::memcmp(bytes.data(), expected_type, 4), 0);
    EXPECT_EQ(std::memcmp(bytes.data() + 4, expected_value, 4), 0);
    EXPECT_EQ(bytes[20], 7);
    EXPECT_EQ(std::memcmp(bytes.data() + 36, expected_min, 4), 0);
    EXPECT_EQ(std::memcmp(bytes.data() + 40, expected_max, 4), 0);
    // A fresh value has zero in every byte its type doesn't use.
    for (std::size_t i = 8; i < 20; ++i)
        EXPECT_EQ(bytes[i], 0) << "byte " << i;
}

TEST(ParamValue, BytesRoundTripUntouched)
{
    std::array<uint8_t, 44> raw{};
    for (std::size_t i = 0; i < raw.size(); ++i)
        raw[i] = static_cast<uint8_t>(i * 7 + 3);
    raw[0] = 2;  // boolean, with garbage in the unused value bytes
    raw[1] = raw[2] = raw[3] = 0;
    const param_value v = param_value_from_bytes(raw.data());
    EXPECT_EQ(v.type, param_type::boolean);
    EXPECT_EQ(param_value_to_bytes(v), raw);
}

}  // namespace
}  // namespace vl1
