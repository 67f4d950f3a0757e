// The built-in theme as hueloom-theme-gen makes it from its recipe at build time: the colour
// behaviour of its looks, its folder form against the packed resource, and its wheel
// picture; and the generator on recipes of the tests' own.
#include <gtest/gtest.h>

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "color/hsl.h"
#include "color/lut_reader.h"
#include "color/lut_sampling.h"
#include "tests/support/test_paths.h"
#include "tests/tools/run_process.h"
#include "tests/tools/theme/theme_folder_maker.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_vault.h"
#include "tools/theme_generator/theme_recipe.h"
#include "tools/theme_generator/wheel_picture.h"

namespace vl1 {
namespace {

namespace fs = std::filesystem;

struct generated_theme {
    fs::path folder;
    fs::path packed;
    themegen::theme_recipe recipe;
    std::shared_ptr<const hueloom_theme_v1> imported;
    std::string problem;
};

// The built-in theme as the build generated it: its folder form and the bundle's resource.
const generated_theme& builtin()
{
    static const generated_theme generated = [] {
        generated_theme g;
        g.folder = HUELOOM_BUILTIN_FOLDER;
        g.packed = HUELOOM_BUILTIN_THEME;
        if (!themegen::read_theme_recipe(HUELOOM_BUILTIN_RECIPE, g.recipe, g.problem))
            return g;
        hueloom_vault vault;
        std::string german;
        g.imported = vault.import_theme_from_folder(g.folder.string(), g.problem, german);
        return g;
    }();
    return generated;
}

class GeneratedTheme : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(builtin().imported) << builtin().problem; }
    const hueloom_theme_v1& theme() const { return *builtin().imported; }
};

argb_float through(const lut_argb<32>& lut, float r, float g, float b) { return sample_lut(lut, {1.0f, r, g, b}); }

float luma(const argb_float& c) { return 0.2126f * c.r + 0.7152f * c.g + 0.0722f * c.b; }

float hue_distance(float a, float b)
{
    const float d = std::fabs(a - b);
    return std::min(d, 360.0f - d);
}

// Every LUT of the theme with a name for messages, the post-processing LUT last.
std::vector<std::pair<std::string, const lut_argb<32>*>> all_luts(const hueloom_theme_v1& theme)
{
    std::vector<std::pair<std::string, const lut_argb<32>*>> luts;
    for (const theme_lut_slot& slot : theme.luts)
        luts.emplace_back("look at " + std::to_string(slot.rotation), slot.lut.get());
    if (theme.post_processing_lut)
        luts.emplace_back("post-processing", theme.post_processing_lut.get());
    return luts;
}

TEST_F(GeneratedTheme, EveryLutKeepsGreysSkinAndMidTonesInBounds)
{
    // Skin from pale to deep; a hue shift of more than a few degrees makes faces look ill.
    const float skin[][3] = {{0.98f, 0.87f, 0.80f}, {0.96f, 0.80f, 0.69f}, {0.87f, 0.67f, 0.53f}, {0.80f, 0.52f, 0.42f},
                             {0.78f, 0.57f, 0.44f}, {0.55f, 0.38f, 0.28f}, {0.45f, 0.30f, 0.25f}, {0.36f, 0.24f, 0.17f}};
    for (const auto& [name, lut] : all_luts(theme())) {
        // A look may cast a grey, as warm or cool looks do, but it stays a tint: the channels
        // of a graded grey stay within a tenth of the range of each other, and the grey axis
        // rises from black to white without kinks (neighbouring steps within a factor of two).
        std::vector<float> levels;
        for (int i = 0; i <= 128; ++i) {
            const float v = i / 128.0f;
            const argb_float out = through(*lut, v, v, v);
            EXPECT_LE(std::max({out.r, out.g, out.b}) - std::min({out.r, out.g, out.b}), 0.1f) << name << " grey " << v;
            levels.push_back(luma(out));
        }
        EXPECT_LE(levels.front(), 0.08f) << name;
        EXPECT_GE(levels.back(), 0.9f) << name;
        for (std::size_t i = 1; i < levels.size(); ++i)
            ASSERT_GT(levels[i], levels[i - 1]) << name << " step " << i;
        for (std::size_t i = 2; i < levels.size(); ++i) {
            const float before = levels[i - 1] - levels[i - 2];
            const float after = levels[i] - levels[i - 1];
            EXPECT_LT(std::max(before / after, after / before), 2.0f) << name << " step " << i;
        }
        for (const auto& s : skin) {
            const argb_float out = through(*lut, s[0], s[1], s[2]);
            const float before = rgb_to_hsl(s[0], s[1], s[2]).h;
            const float after = rgb_to_hsl(out.r, out.g, out.b).h;
            EXPECT_LE(hue_distance(before, after), 5.0f) << name << " skin " << s[0] << " " << s[1] << " " << s[2];
        }
        // Colours whose channels all lie in the middle of the range keep every channel off the
        // ends: saturation and casts are compressed towards the gamut's edge, never pushed onto it.
        for (int r = 7; r <= 24; ++r)
            for (int g = 7; g <= 24; ++g)
                for (int b = 7; b <= 24; ++b) {
                    const argb_float out = lut->data[lut_index(32, r, g, b)];
                    ASSERT_GE(std::min({out.r, out.g, out.b}), 0.01f) << name << " at " << r << "," << g << "," << b;
                    ASSERT_LE(std::max({out.r, out.g, out.b}), 0.99f) << name << " at " << r << "," << g << "," << b;
                }
    }
}

TEST_F(GeneratedTheme, EveryLookDoesSomethingOfItsOwn)
{
    auto mean_difference = [](const lut_argb<32>& x, const lut_argb<32>& y) {
        double sum = 0.0;
        for (std::size_t i = 0; i < x.data.size(); ++i)
            sum += std::fabs(x.data[i].r - y.data[i].r) + std::fabs(x.data[i].g - y.data[i].g) +
                   std::fabs(x.data[i].b - y.data[i].b);
        return sum / (3.0 * x.data.size());
    };
    const lut_argb<32> identity;
    const auto& slots = theme().luts;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_GT(mean_difference(*slots[i].lut, identity), 0.005) << "slot " << i;
        for (std::size_t j = i + 1; j < slots.size(); ++j)
            EXPECT_GT(mean_difference(*slots[i].lut, *slots[j].lut), 0.003) << "slots " << i << " and " << j;
    }
}

TEST_F(GeneratedTheme, BundledResourceHoldsTheRecipesLooksAsThirtyTwoPointTables)
{
    const auto& recipe = builtin().recipe;
    EXPECT_EQ(theme().uid, 1u);
    EXPECT_EQ(theme().name, recipe.name);
    EXPECT_GE(theme().luts.size(), 6u);
    ASSERT_EQ(theme().luts.size(), recipe.looks.size());
    for (std::size_t i = 0; i < recipe.looks.size(); ++i)
        EXPECT_EQ(theme().luts[i].rotation, recipe.looks[i].rotation);
    EXPECT_TRUE(theme().is_self_consistent());
    EXPECT_EQ(theme().post_processing_lut != nullptr, recipe.post_processing_enabled);

    hueloom_theme_v1 packed;
    std::string problem;
    ASSERT_TRUE(hueloom_theme_file_serializer_v1::read_theme_from_file(packed, builtin().packed.string(), problem))
        << problem;
    hueloom_test::expect_same_theme(packed, theme());
    const std::vector<uint8_t> picture_bytes = hueloom_test::read_bytes(builtin().folder / builtin().recipe.background_file);
    EXPECT_FALSE(picture_bytes.empty());
    EXPECT_EQ(packed.background_data, picture_bytes);
    for (const auto& look : builtin().recipe.looks)
        EXPECT_TRUE(hueloom_test::contains(hueloom_test::read_file(builtin().folder / look.file), "\nLUT_3D_SIZE 32\n"))
            << look.file;
}

class WheelPicture : public GeneratedTheme {
protected:
    struct picture {
        int size = 0;
        std::vector<uint8_t> rgba;
        const uint8_t* at(double x, double y) const
        {
            return &rgba[(static_cast<std::size_t>(y) * size + static_cast<std::size_t>(x)) * 4];
        }
    };

    static picture read_picture()
    {
        picture p;
        const std::string path = (builtin().folder / builtin().recipe.background_file).string();
        auto in = OIIO::ImageInput::open(path);
        if (!in)
            return p;
        const OIIO::ImageSpec header = in->spec_dimensions(0, 0);  // size and channels are all this needs
        if (header.width != header.height || header.nchannels != 4)
            return p;
        p.size = header.width;
        p.rgba.resize(static_cast<std::size_t>(p.size) * p.size * 4);
        if (!in->read_image(0, 0, 0, 4, OIIO::TypeDesc::UINT8, p.rgba.data()))
            p.size = 0;
        return p;
    }

    static bool near(const uint8_t* pixel, const argb_float& expected, int tolerance)
    {
        auto byte = [](float v) { return static_cast<int>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255.0f)); };
        return std::abs(pixel[0] - byte(expected.r)) <= tolerance && std::abs(pixel[1] - byte(expected.g)) <= tolerance &&
               std::abs(pixel[2] - byte(expected.b)) <= tolerance;
    }
};

TEST_F(WheelPicture, IsRoundAndShowsEachLookAtItsAngleClockwiseFromTheTop)
{
    // The wheel's "Angle" grows counter-clockwise and the theme angle is 360 - "Angle", so
    // a look's rotation is shown clockwise from the top. The grey patch in the middle of
    // each look's sample shows grey 0.5 graded by that look alone.
    const picture p = read_picture();
    ASSERT_EQ(p.size, builtin().recipe.picture_size_px);
    // Round: transparent corners, opaque centre and top.
    EXPECT_EQ(p.at(0, 0)[3], 0);
    EXPECT_EQ(p.at(p.size - 1, p.size - 1)[3], 0);
    EXPECT_EQ(p.at(p.size / 2, p.size / 2)[3], 255);
    EXPECT_EQ(p.at(p.size / 2, p.size * 0.01)[3], 255);
    const float grey = themegen::wheel_picture_layout::grey_patch_value;
    const double reach = themegen::wheel_picture_layout::sample_centre_reach;
    int mirrored_matches = 0;
    for (const theme_lut_slot& slot : theme().luts) {
        const argb_float expected = through(*slot.lut, grey, grey, grey);
        const themegen::picture_point at = themegen::wheel_point(p.size, slot.rotation, reach);
        EXPECT_TRUE(near(p.at(at.x, at.y), expected, 2)) << "rotation " << slot.rotation;
        const themegen::picture_point mirrored = themegen::wheel_point(p.size, 360.0 - slot.rotation, reach);
        mirrored_matches += near(p.at(mirrored.x, mirrored.y), expected, 2) ? 1 : 0;
    }
    // The looks differ enough that the opposite sense of rotation would be noticed.
    EXPECT_LT(mirrored_matches, static_cast<int>(theme().luts.size()));
    // Rotation 90 is on the right of the picture.
    const themegen::picture_point right = themegen::wheel_point(p.size, 90.0, 0.5);
    EXPECT_GT(right.x, p.size * 0.7);
    EXPECT_NEAR(right.y, p.size * 0.5, 1e-9);
}

TEST(ThemeGenerator, SwitchedOnPostProcessingTravelsIntoTheThemeFile)
{
    const fs::path work = hueloom_test::make_temp_dir("recipe");
    const std::string recipe = R"({
        "name": "Two", "version": 1,
        "background": {"size_px": 96},
        "looks": [{"name": "A", "file": "a.cube", "rotation": 10, "saturation": 0.5},
                  {"name": "B", "file": "b.cube", "rotation": 100, "contrast": 1.2}],
        "post_processing": {"enabled": true, "name": "P", "file": "p.cube", "white_rolloff": 0.02}})";
    std::ofstream(work / "recipe.json") << recipe;
    const auto run = hueloom_test::run_process(
        HUELOOM_THEME_GEN, {(work / "recipe.json").string(), (work / "out").string(), (work / "t.hlt").string()},
        hueloom_test::home_dir());
    ASSERT_EQ(run.exit_code, 0) << run.err;

    hueloom_theme_v1 packed;
    std::string problem;
    ASSERT_TRUE(hueloom_theme_file_serializer_v1::read_theme_from_file(packed, (work / "t.hlt").string(), problem));
    ASSERT_TRUE(packed.post_processing_lut);
    const auto from_file = load_lut_from_file_or_resource((work / "out").string(), "p.cube");
    ASSERT_TRUE(from_file);
    EXPECT_TRUE(packed.post_processing_lut->data == from_file->data);
    // Without a "uid" in the recipe the import gives the theme a new one, never the built-in's.
    EXPECT_NE(packed.uid, 1u);
    EXPECT_EQ(packed.name, "Two");
}

TEST(ThemeGenerator, FailsWithAReasonAndTheRightExitCode)
{
    const fs::path work = hueloom_test::make_temp_dir("recipe");
    std::ofstream(work / "bad.json") << R"({"name": "X", "looks": [{"name": "A", "file": "a.cube", "rotation": 0,
                                            "contrastt": 1.1}, {"name": "B", "file": "b.cube", "rotation": 90}]})";
    const auto bad = hueloom_test::run_process(HUELOOM_THEME_GEN, {(work / "bad.json").string(), (work / "out").string()},
                                               hueloom_test::home_dir());
    EXPECT_EQ(bad.exit_code, 1);
    EXPECT_NE(bad.err.find("looks[0]: unknown key \"contrastt\""), std::string::npos) << bad.err;
    EXPECT_FALSE(fs::exists(work / "out"));

    const auto usage = hueloom_test::run_process(HUELOOM_THEME_GEN, {"only-one"}, hueloom_test::home_dir());
    EXPECT_EQ(usage.exit_code, 2);
    EXPECT_NE(usage.err.find("Usage: hueloom-theme-gen"), std::string::npos);
}

}  // namespace
}  // namespace vl1
