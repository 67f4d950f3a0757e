#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "framework/param_value.h"
#include "framework/uid.h"

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

TEST(ParamValue, StoredLayoutIsLittleEndianWithoutPaddingAndBytesRoundTripUntouched)
{
    // type, value (16), default (16), min, max; bytes a type doesn't use are zero.
    std::array<uint8_t, 44> expected{1, 0, 0, 0, 0x44, 0x33, 0x22, 0x11};
    expected[20] = 7;
    const uint8_t min_max[8] = {0xfe, 0xff, 0xff, 0xff, 0x04, 0x03, 0x02, 0x01};
    std::memcpy(expected.data() + 36, min_max, 8);
    EXPECT_EQ(param_value_to_bytes(param_value::make_integral(-2, 0x01020304, 0x11223344, 7)), expected);

    std::array<uint8_t, 44> raw{2};  // boolean, with garbage in the unused value bytes
    for (std::size_t i = 4; i < raw.size(); ++i)
        raw[i] = static_cast<uint8_t>(i * 7 + 3);
    const param_value v = param_value_from_bytes(raw.data());
    EXPECT_EQ(v.type, param_type::boolean);
    EXPECT_EQ(param_value_to_bytes(v), raw);
}

}  // namespace
}  // namespace vl1
