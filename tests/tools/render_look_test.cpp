// hueloom-render grading real files through the bundle: the pixels must be the colour
// engine's own result for the same table, whether the look comes from --set, from a theme
// chosen by uid, name or file, or from a preset saved by the effect itself.
#include "tests/tools/render_test_support.h"

#include "effect/hueloom.h"
#include "framework/chost.h"
#include "presets/preset_manager.h"
#include "tests/support/test_paths.h"
#include "tests/support/theme_looks.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_vault.h"

#include <cmath>

namespace {

namespace fs = std::filesystem;
using namespace render_test;
using hueloom_test::look;

pixel_rule graded_by(const vl1::hueloom_theme_v1& theme, const look& values)
{
    return table_look(std::make_shared<vl1::lut_argb<32>>(hueloom_test::table_for(theme, values)));
}

class render_look : public ::testing::Test {
protected:
    fs::path dir = hueloom_test::make_temp_dir("look");
    fs::path source = dir / "source.exr";

    void SetUp() override { write_pattern(source, 24, 16, 4, OIIO::TypeDesc::FLOAT, true); }

    pixels graded(const std::string& name, const std::vector<std::string>& look_args)
    {
        const fs::path out = dir / name;
        const run_result r = run_render(joined(hueloom_plugin_args(), joined({"-i", source.string(), "-o", out.string()}, look_args)));
        EXPECT_EQ(r.exit_code, 0) << r.err;
        return read_pixels(out);
    }
};

// A float EXR with these channels; colour far outside 0..1 ((4, 2, -0.5) at the first pixel),
// alpha within it, every other channel a value of its own.
fs::path write_channels(const fs::path& path, const std::vector<std::string>& names)
{
    OIIO::ImageSpec header(5, 3, static_cast<int>(names.size()), OIIO::TypeDesc::FLOAT);
    header.channelnames = names;
    header.alpha_channel = -1;
    std::vector<float> data(static_cast<std::size_t>(15) * names.size());
    for (std::size_t i = 0; i < data.size(); ++i) {
        const std::size_t c = i % names.size(), pixel = i / names.size();
        data[i] = names[c] == "A" ? 0.25f + 0.05f * static_cast<float>(pixel)
                                  : 4.0f - 2.0f * static_cast<float>(c) + 0.125f * static_cast<float>(pixel);
    }
    data[2] = -0.5f;
    auto out = OIIO::ImageOutput::create(path.string());
    if (!out || !out->open(path.string(), header) || !out->write_image(OIIO::TypeDesc::FLOAT, data.data()) ||
        !out->close())
        throw std::runtime_error("cannot write " + path.string());
    return path;
}

TEST_F(render_look, TheIdentityPassesTheSourceThroughAndUngradedChannelsStay)
{
    for (const std::vector<std::string>& names : {std::vector<std::string>{"R", "G", "B", "Z"},
                                                  std::vector<std::string>{"R", "G", "B", "A", "Z"}}) {
        SCOPED_TRACE(names.size());
        const fs::path in_path = write_channels(dir / "channels.exr", names);
        const pixels in = read_pixels(in_path);
        ASSERT_EQ(in.header.channelnames, names);
        const pixels same = graded("bypass.exr", {"-i", in_path.string(), "--set", "Global Bypass=on"});
        EXPECT_EQ(same.header.channelnames, names);
        EXPECT_EQ(same.values, in.values) << "bypass passes every value through";

        const pixels out = graded("graded.exr", {"-i", in_path.string(), "--set", "Strength=100", "--set", "Angle=60"});
        EXPECT_EQ(out.header.channelnames, names);
        ASSERT_EQ(out.values.size(), in.values.size());
        for (std::size_t i = 0; i < in.values.size(); ++i) {
            const std::size_t c = i % names.size();
            if (c >= 3)
                EXPECT_EQ(out.values[i], in.values[i]) << names[c] << " is not graded";
            else
                EXPECT_TRUE(out.values[i] >= 0.0f && out.values[i] <= 1.0f) << "graded colour lies in 0..1";
        }
    }
}

TEST_F(render_look, AThemeComesInByUidNameOrFile)
{
    const auto builtin = hueloom_test::builtin_theme();
    const auto traveller = hueloom_test::travelling_theme();
    const fs::path file = dir / "travelling.hlt";
    ASSERT_TRUE(vl1::hueloom_theme_file_serializer_v1::write_theme_to_file(*traveller, file.string()));
    const pixels in = read_pixels(source);
    // Names are found in any case; every slider reaches the look.
    const std::vector<std::string> values = {"--set", "angle=135", "--set", "Strength=90", "--set", "Hue=150",
                                             "--set", "LUMINANCE=80", "--set", "Chroma=120"};
    const look v{135, 90, 150, 120, 80};

    EXPECT_TRUE(matches_rule(in, graded("file.exr", joined({"--theme", file.string()}, values)), graded_by(*traveller, v)));
    const pixels by_uid = graded("uid.exr", joined({"--theme", "00000001"}, values));
    EXPECT_TRUE(matches_rule(in, by_uid, graded_by(*builtin, v)));
    EXPECT_FALSE(matches_rule(in, by_uid, identity_look())) << "the look must show";
    EXPECT_TRUE(matches_rule(in, graded("name.exr", joined({"--theme", builtin->name}, values)), graded_by(*builtin, v)));

    // An installed theme is found by its uid in the app-data folder.
    const fs::path appdata = hueloom_test::home_dir() / "Varnlight" / "Hueloom";
    fs::create_directories(appdata);
    fs::copy_file(file, appdata / "theme_7e57f00d.hlt", fs::copy_options::overwrite_existing);
    EXPECT_TRUE(matches_rule(in, graded("installed.exr", joined({"--theme", "0x7E57F00D"}, values)), graded_by(*traveller, v)));
    fs::remove(appdata / "theme_7e57f00d.hlt");
}

TEST_F(render_look, APresetSavedByTheEffectGivesItsLookAndTheme)
{
    // The effect itself saves the preset, as its editor would.
    auto traveller = hueloom_test::travelling_theme();
    vl1::hueloom::get_vault()->get_theme_collection()->add_or_replace_theme(traveller);
    auto fx = std::make_shared<vl1::hueloom>();
    fx->initialize(std::make_shared<vl1::chost_v1>(fx));
    fx->set_current_theme_by_uuid(traveller->uid);
    std::dynamic_pointer_cast<vl1::cparameter_continuous_v1>(fx->get_parameter(std::string("Angle")))->set_value(210.5f, false);
    std::dynamic_pointer_cast<vl1::cparameter_continuous_v1>(fx->get_parameter(std::string("Strength")))->set_value(65.0f, false);
    vl1::preset_manager presets(fx);
    ASSERT_EQ(presets.save_preset("Evening", true), vl1::preset_saved);

    const pixels in = read_pixels(source);
    const pixels out = graded("preset.exr", {"--preset", presets.preset_path("Evening")});
    EXPECT_TRUE(matches_rule(in, out, graded_by(*traveller, {210.5f, 65})));
    // --set still has the last word.
    const pixels changed = graded("changed.exr", {"--preset", presets.preset_path("Evening"), "--set", "Strength=20"});
    EXPECT_TRUE(matches_rule(in, changed, graded_by(*traveller, {210.5f, 20})));
}

}  // namespace
