#include <gtest/gtest.h>
#include <sys/stat.h>

#include <sstream>

#include "tests/support/test_paths.h"
#include "tests/themes/allocation_probe.h"
#include "tests/themes/theme_test_support.h"
#include "themes/hueloom_theme_file_serializer_v1.h"

namespace vl1 {
namespace {

using serializer = hueloom_theme_file_serializer_v1;
using test::file_bytes;
using test::file_header;

bool read(hueloom_theme_v1& theme, std::span<const uint8_t> bytes, std::string* problem = nullptr)
{
    std::string ignored;
    return serializer::read_theme_from_bytes(theme, bytes, problem ? *problem : ignored);
}

std::vector<uint8_t> written(const hueloom_theme_v1& theme)
{
    std::ostringstream out;
    EXPECT_TRUE(serializer::write_theme_to_stream(theme, out));
    const std::string text = out.str();
    return std::vector<uint8_t>(text.begin(), text.end());
}

// A canonical format 3 file: post-processing slot present, two wheel slots in unsorted order.
std::vector<uint8_t> canonical_file()
{
    const auto post = test::seeded_lut(5.0f);
    const auto first = test::seeded_lut(1.0f);
    const auto second = test::seeded_lut(2.0f);
    return file_header(3, 4, 0xc0ffee01, std::string("\x89PNG\0\x01", 6), std::string("N\0\xC3\xA4me", 6))
        .u16(3)
        .slot(1.0f, post.get())
        .slot(200.0f, first.get())
        .slot(15.5f, second.get())
        .bytes;
}

TEST(ThemeFileRead, FormatThreeHasPostProcessingSlotThenWheelLutsInFileOrder)
{
    hueloom_theme_v1 theme;
    ASSERT_TRUE(read(theme, canonical_file()));
    EXPECT_EQ(theme.uid, 0xc0ffee01u);
    EXPECT_EQ(theme.version, 4u);
    EXPECT_EQ(theme.name, std::string("N\0\xC3\xA4me", 6));
    EXPECT_EQ(theme.background_data, (std::vector<uint8_t>{0x89, 'P', 'N', 'G', 0, 1}));
    hueloom_theme_v1 expected;
    expected.luts = {{test::seeded_lut(1.0f), 200.0f}, {test::seeded_lut(2.0f), 15.5f}};
    expected.post_processing_lut = test::seeded_lut(5.0f);
    test::expect_same_luts(theme, expected);
}

TEST(ThemeFileRead, OlderAndNewerFormatVersions)
{
    const auto lut = test::seeded_lut(3.0f);
    struct version_case {
        uint32_t format_version;
        float first_angle;
        uint32_t expected_theme_version;
        std::size_t expected_wheel_luts;
        bool expected_post_processing;
    };
    for (const version_case& c : {version_case{1, 0.0f, 1, 2, false}, version_case{2, 0.0f, 9, 2, false},
                                  version_case{3, 0.0f, 9, 1, false}, version_case{3, -1.0f, 9, 1, false},
                                  version_case{4, 1.0f, 9, 1, true}}) {
        SCOPED_TRACE(testing::Message() << "format " << c.format_version << ", first angle " << c.first_angle);
        const auto bytes =
            file_header(c.format_version, 9, 5, "", "x").u16(2).slot(c.first_angle, lut.get()).slot(40.0f, lut.get()).bytes;
        hueloom_theme_v1 theme;
        ASSERT_TRUE(read(theme, bytes));
        EXPECT_EQ(theme.version, c.expected_theme_version);
        EXPECT_EQ(theme.uid, 5u);
        ASSERT_EQ(theme.luts.size(), c.expected_wheel_luts);
        EXPECT_EQ(theme.luts.back().rotation, 40.0f);
        if (c.expected_wheel_luts == 2) {
            EXPECT_EQ(theme.luts.front().rotation, 0.0f);  // no post-processing slot before format 3
        }
        EXPECT_EQ(theme.post_processing_lut != nullptr, c.expected_post_processing);
    }
}

TEST(ThemeFileRead, WrongMagicFormatZeroAndEveryTruncationAreRefusedLeavingTheThemeAlone)
{
    const std::vector<uint8_t> whole = canonical_file();
    std::vector<uint8_t> wrong_magic = whole, format_zero = whole;
    wrong_magic[0] = '2';
    format_zero[4] = 0;
    for (const auto bytes : {std::span<const uint8_t>(wrong_magic), std::span<const uint8_t>(format_zero),
                             std::span<const uint8_t>(whole).first(whole.size() - 1)}) {
        hueloom_theme_v1 theme = test::sample_theme({10.0f}, false);
        std::string problem;
        EXPECT_FALSE(read(theme, bytes, &problem));
        EXPECT_FALSE(problem.empty());
        EXPECT_EQ(theme.uid, 0x0a1b2c3du);
        EXPECT_EQ(theme.luts.size(), 1u);
    }
    for (std::size_t size = 0; size < whole.size(); ++size) {
        hueloom_theme_v1 theme;
        if (read(theme, std::span(whole).first(size))) {
            ADD_FAILURE() << "a file cut to " << size << " of " << whole.size() << " bytes was read";
            return;
        }
    }
}

TEST(ThemeFileRead, ClaimsBeyondTheFileAreRefusedBeforeAllocating)
{
    // Each file claims far more than it holds in one field.
    const std::vector<std::vector<uint8_t>> hostile = {
        file_bytes{}.u32(0x686C7431).u32(3).u32(1).u32(1).u32(0xFFFFFFFF).raw("abc").bytes,
        file_bytes{}.u32(0x686C7431).u32(3).u32(1).u32(1).u32(0).u16(0xFFFF).raw("ab").bytes,
        file_header(3, 1, 1, "bg", "name").u16(0xFFFF).f32(1.0f).bytes,
        file_header(2, 1, 1, "", "").u16(2).slot(0.0f, nullptr).bytes,
    };
    for (std::size_t i = 0; i < hostile.size(); ++i) {
        SCOPED_TRACE(testing::Message() << "hostile file " << i);
        hueloom_theme_v1 theme;
        std::string problem;
        test::allocation_probe probe;
        EXPECT_FALSE(read(theme, hostile[i], &problem));
        EXPECT_LT(probe.largest_request(), 4096u) << problem;
        EXPECT_NE(problem.find("claimed"), std::string::npos) << problem;
    }
}

TEST(ThemeFileRead, VectorAndFileForms)
{
    std::vector<uint8_t> bytes = {1, 2, 3};
    const auto file = canonical_file();
    bytes.insert(bytes.end(), file.begin(), file.end());
    bytes.push_back(0xAA);  // trailing bytes don't matter

    hueloom_theme_v1 from_vector;
    EXPECT_TRUE(serializer::read_theme_from_vector(from_vector, bytes, 3));
    EXPECT_EQ(from_vector.uid, 0xc0ffee01u);
    hueloom_theme_v1 untouched;
    EXPECT_FALSE(serializer::read_theme_from_vector(untouched, bytes, bytes.size() + 1));

    const auto dir = hueloom_test::make_temp_dir("theme-files");
    hueloom_test::write_file(dir / "a.hlt", std::string(file.begin(), file.end()));
    ASSERT_EQ(mkfifo((dir / "fifo.hlt").c_str(), 0600), 0);
    hueloom_theme_v1 from_file;
    EXPECT_TRUE(serializer::read_theme_from_file(from_file, (dir / "a.hlt").string()));
    EXPECT_EQ(from_file.name, from_vector.name);
    for (const char* not_readable : {"missing.hlt", "fifo.hlt", ""})  // a FIFO would block a plain open
        EXPECT_FALSE(serializer::read_theme_from_file(from_file, (dir / not_readable).string())) << not_readable;
}

TEST(ThemeFileRoundTrip, FileToThemeToFileIsByteForByteAndThemeToFileToThemeKeepsAllButAlpha)
{
    const std::vector<uint8_t> file = canonical_file();
    hueloom_theme_v1 read_back;
    ASSERT_TRUE(read(read_back, file));
    EXPECT_EQ(written(read_back), file);

    const hueloom_theme_v1 original = test::sample_theme({300.0f, 20.0f, 120.0f}, true);
    hueloom_theme_v1 copy;
    ASSERT_TRUE(read(copy, written(original)));
    EXPECT_EQ(copy.name, original.name);
    EXPECT_EQ(copy.uid, original.uid);
    EXPECT_EQ(copy.version, original.version);
    EXPECT_EQ(copy.background_data, original.background_data);
    test::expect_same_luts(copy, original);
}

TEST(ThemeFileWrite, EmptyThemeIsOneAbsentMarkerSlotAndNoSlotsReadAsWell)
{
    hueloom_theme_v1 empty;
    empty.name.clear();
    const auto expected = file_header(3, 1, 0, "", "").u16(1).slot(-1.0f, nullptr).bytes;
    EXPECT_EQ(written(empty), expected);
    for (const auto& bytes : {expected, file_header(3, 1, 8, "", "").u16(0).bytes}) {
        hueloom_theme_v1 back;
        ASSERT_TRUE(read(back, bytes));
        EXPECT_TRUE(back.luts.empty());
        EXPECT_EQ(back.post_processing_lut, nullptr);
    }
}

TEST(ThemeFileWrite, LongNamesAreCutAndUnfitTablesRefused)
{
    hueloom_theme_v1 long_name;
    long_name.name = std::string(70000, 'n');
    hueloom_theme_v1 back;
    ASSERT_TRUE(read(back, written(long_name)));
    EXPECT_EQ(back.name.size(), 65535u);

    hueloom_theme_v1 short_table = test::sample_theme({0.0f}, false);
    auto lut = std::make_shared<lut_argb<32>>();
    lut->data.resize(100);
    short_table.luts.push_back({lut, 10.0f});
    std::ostringstream out;
    EXPECT_EQ(serializer::serialize(short_table), nullptr);
    EXPECT_FALSE(serializer::write_theme_to_stream(short_table, out));
    EXPECT_TRUE(out.str().empty());
    EXPECT_FALSE(serializer::write_theme_to_file(long_name, "/nonexistent-folder/x.hlt"));
    EXPECT_FALSE(serializer::deserialize(back, nullptr));
}

TEST(ThemeUidText, HexTextBothWays)
{
    EXPECT_EQ(serializer::unsignedIntToHexWithPrefixAndSuffix(0xABCDEF12, nullptr, nullptr), "abcdef12");
    const std::pair<const char*, unsigned int> readings[] = {
        {"0a1b2c3d", 0x0a1b2c3du}, {"0x1F", 0x1fu}, {"  ff", 0xffu},
        {"12zz", 0x12u},           {"", 0u},        {"1ffffffff", 0xffffffffu}};
    for (const auto& [text, value] : readings)
        EXPECT_EQ(serializer::hexToUnsignedInt(text), value) << '"' << text << '"';
}

}  // namespace
}  // namespace vl1
