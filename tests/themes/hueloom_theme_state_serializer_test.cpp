#include <gtest/gtest.h>

#include <cstring>

#include "tests/themes/theme_test_support.h"
#include "themes/hueloom_theme_state_serializer_v1.h"

namespace vl1 {
namespace {

using state = hueloom_theme_state_serializer_v1;
constexpr std::size_t record_bytes = 4325580;

template <typename T>
T field(const std::vector<uint8_t>& blob, std::size_t at)
{
    T value;
    std::memcpy(&value, blob.data() + at, sizeof(T));
    return value;
}

TEST(ThemeStateRecord, RoundTripAtAnUnalignedOffset)
{
    const hueloom_theme_v1 original = test::sample_theme({300.0f, 20.0f, 120.0f}, true);
    std::vector<uint8_t> blob(record_bytes + 500, 7);  // sized exactly by the write
    ASSERT_TRUE(state::write_theme_to_vector(original, blob, 3));
    ASSERT_EQ(blob.size(), 3 + record_bytes);
    EXPECT_EQ(blob[0], 7);

    // The layout as the host project keeps it: magic "1slh", format 3, uid, name, slot
    // count at 114, slot 0's marker at 116, slot 1's angle one slot further.
    EXPECT_EQ(std::string(blob.begin() + 3, blob.begin() + 7), "1slh");
    EXPECT_EQ(field<uint32_t>(blob, 3 + 4), 3u);
    EXPECT_EQ(field<uint32_t>(blob, 3 + 8), 0x0a1b2c3du);
    EXPECT_STREQ(reinterpret_cast<const char*>(blob.data() + 3 + 12), original.name.c_str());
    EXPECT_EQ(field<uint16_t>(blob, 3 + 114), 4u);
    EXPECT_EQ(field<float>(blob, 3 + 116), 1.0f);
    EXPECT_EQ(field<float>(blob, 3 + 116 + 393224), 300.0f);

    hueloom_theme_v1 copy;
    copy.background_data = {1, 2, 3};
    ASSERT_TRUE(state::read_theme_from_vector(copy, blob, 3));
    EXPECT_EQ(copy.name, original.name);
    EXPECT_EQ(copy.uid, original.uid);
    EXPECT_EQ(copy.version, 0u);
    EXPECT_EQ(copy.background_data, (std::vector<uint8_t>{1, 2, 3}));
    test::expect_same_luts(copy, original);
}

TEST(ThemeStateRecord, NamesAreCutAtOneHundredBytesOrAZero)
{
    for (const auto& [name, expected] : {std::pair{std::string(101, 'a'), std::string(100, 'a')},
                                         std::pair{std::string("ab\0cd", 5), std::string("ab")}}) {
        hueloom_theme_v1 theme = test::sample_theme({}, false);
        theme.name = name;
        std::vector<uint8_t> blob;
        ASSERT_TRUE(state::write_theme_to_vector(theme, blob, 0));
        hueloom_theme_v1 copy;
        ASSERT_TRUE(state::read_theme_from_vector(copy, blob, 0));
        EXPECT_EQ(copy.name, expected);
        EXPECT_TRUE(copy.luts.empty());  // slot count 1, marker -1.0
        EXPECT_EQ(copy.post_processing_lut, nullptr);
    }
}

TEST(ThemeStateRecord, RefusesShortWrongOrHostileRecordsLeavingTheThemeAlone)
{
    std::vector<uint8_t> good;
    ASSERT_TRUE(state::write_theme_to_vector(test::sample_theme({1.0f, 9.0f}, false), good, 0));
    std::vector<uint8_t> short_by_one(good.begin(), good.end() - 1);
    std::vector<uint8_t> wrong_magic = good;
    wrong_magic[0] = '2';
    std::vector<uint8_t> format_zero = good;
    std::memset(format_zero.data() + 4, 0, 4);
    std::vector<uint8_t> too_many_slots = good;
    too_many_slots[114] = 12;

    for (const auto* blob : {&short_by_one, &wrong_magic, &format_zero, &too_many_slots}) {
        hueloom_theme_v1 theme = test::sample_theme({50.0f}, false);
        EXPECT_FALSE(state::read_theme_from_vector(theme, *blob, 0));
        EXPECT_EQ(theme.version, 7u);
        EXPECT_EQ(theme.luts.size(), 1u);
    }
    hueloom_theme_v1 theme;
    EXPECT_FALSE(state::read_theme_from_vector(theme, good, good.size() + 1));
    EXPECT_FALSE(state::serialize(theme, nullptr));
    EXPECT_FALSE(state::deserialize(theme, nullptr));
}

TEST(ThemeStateRecord, ThemesBeyondTheRecordsRoomAreRefusedNotCut)
{
    // Ten wheel LUTs and a post-processing LUT fill the record.
    hueloom_theme_v1 eleven = test::sample_theme({0, 10, 20, 30, 40, 50, 60, 70, 80, 90}, true);
    std::vector<uint8_t> blob;
    ASSERT_TRUE(state::write_theme_to_vector(eleven, blob, 0));
    eleven.luts.push_back({test::seeded_lut(11.0f), 100.0f});
    std::vector<uint8_t> untouched = {1, 2};
    EXPECT_FALSE(state::write_theme_to_vector(eleven, untouched, 0));
    EXPECT_EQ(untouched, (std::vector<uint8_t>{1, 2}));
}

}  // namespace
}  // namespace vl1
