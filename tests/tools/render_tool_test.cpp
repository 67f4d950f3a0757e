// hueloom-render as a process on real files, with the build's Hueloom bundle: pixels of every
// depth and format, metadata, depth changes, sequences, LUT export, the state file, and what
// the command prints. Keys reaching each frame are shown with the fixture in render_keys.
#include "tests/tools/render_test_support.h"

#include "color/lut_reader_cube.h"
#include "color/lut_writer_3dl.h"
#include "color/lut_writer_cube.h"
#include "tests/support/test_paths.h"
#include "tools/hueloom_render/lut_export.h"
#include "tools/hueloom_render/state_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace {

namespace fs = std::filesystem;
using namespace render_test;

struct depth_case {
    const char* name;
    const char* in_extension;
    const char* out_extension;
    int channels;
    OIIO::TypeDesc format;
    bool hdr;
    std::vector<std::pair<std::string, std::string>> attributes = {};
};

class render_tool : public ::testing::Test {
protected:
    fs::path dir = hueloom_test::make_temp_dir("render");

    run_result render(const std::vector<std::string>& args)
    {
        return run_render(joined(joined(hueloom_plugin_args(), neutral_look().args), args));
    }
};

TEST_F(render_tool, EveryFormatAndDepthComesBackAsTheBundleGradesItWithItsTags)
{
    const depth_case cases[] = {
        {"png8 rgb", ".png", ".png", 3, OIIO::TypeDesc::UINT8, false},
        {"png8 rgba", ".png", ".png", 4, OIIO::TypeDesc::UINT8, false},
        {"png16 grey", ".png", ".png", 1, OIIO::TypeDesc::UINT16, false},
        {"tif8 rgb", ".tif", ".tif", 3, OIIO::TypeDesc::UINT8, false},
        {"tif16 rgba", ".tif", ".tif", 4, OIIO::TypeDesc::UINT16, false},
        {"tiff float", ".tiff", ".tiff", 3, OIIO::TypeDesc::FLOAT, true},
        {"exr half rgba", ".exr", ".exr", 4, OIIO::TypeDesc::HALF, true},
        {"exr float rgb", ".exr", ".exr", 3, OIIO::TypeDesc::FLOAT, true},
        {"dpx16 rgb", ".dpx", ".dpx", 3, OIIO::TypeDesc::UINT16, false},
        {"dpx10 rgb", ".dpx", ".dpx", 3, OIIO::TypeDesc::UINT16, false, {{"oiio:BitsPerSample", "10"}}},
        {"jpeg to png", ".jpg", ".png", 3, OIIO::TypeDesc::UINT8, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const fs::path in = dir / (std::string("in_") + std::to_string(&c - cases) + c.in_extension);
        const fs::path out = dir / (std::string("out_") + std::to_string(&c - cases) + c.out_extension);
        auto attributes = c.attributes;
        attributes.insert(attributes.end(), {{"oiio:ColorSpace", "Rec709"}, {"ImageDescription", "shot 12 plate"}});
        write_pattern(in, 37, 23, c.channels, c.format, c.hdr, attributes);
        const run_result r = render({"-i", in.string(), "-o", out.string(), "--threads", "1"});
        ASSERT_EQ(r.exit_code, 0) << r.err;
        const pixels source = read_pixels(in);
        const pixels result = read_pixels(out);
        EXPECT_EQ(result.format, source.format) << "the output keeps the input's depth";
        EXPECT_EQ(result.header.get_int_attribute("oiio:BitsPerSample"),
                  source.header.get_int_attribute("oiio:BitsPerSample"));
        EXPECT_EQ(result.channels, c.channels == 1 ? 3 : c.channels) << "grey becomes RGB, alpha stays";
        EXPECT_TRUE(matches_rule(source, result, neutral_look().rule));
        if (c.in_extension == std::string(c.out_extension)) {
            EXPECT_EQ(result.header.get_string_attribute("ImageDescription"), "shot 12 plate");
            // Each format keeps the tag it can store (EXR reads as Linear, TIFF has none).
            EXPECT_EQ(result.header.get_string_attribute("oiio:ColorSpace"),
                      source.header.get_string_attribute("oiio:ColorSpace"));
        }
    }
    EXPECT_EQ(read_pixels(dir / "out_0.png").header.get_string_attribute("oiio:ColorSpace"), "Rec709");
    EXPECT_EQ(read_pixels(dir / "out_8.dpx").header.get_string_attribute("oiio:ColorSpace"), "Rec709");
}

TEST_F(render_tool, DepthOptionAndOutputFormatDecideHowTheResultIsStored)
{
    const fs::path in = dir / "hdr.exr";
    write_pattern(in, 19, 11, 4, OIIO::TypeDesc::HALF, true);
    const run_result r = render({"-i", in.string(), "-o", (dir / "out8.tif").string(), "--depth", "8"});
    ASSERT_EQ(r.exit_code, 0) << r.err;
    const pixels result = read_pixels(dir / "out8.tif");
    EXPECT_EQ(result.format, OIIO::TypeDesc::UINT8);
    EXPECT_TRUE(matches_rule(read_pixels(in), result, identity_look())) << "8 bits hold 0..1";
    EXPECT_FALSE(contains(r.err, "note:")) << r.err;

    // A depth the format can't hold is named, with what is written instead.
    const run_result exr8 = render({"-i", in.string(), "-o", (dir / "out8.exr").string(), "--depth", "8"});
    ASSERT_EQ(exr8.exit_code, 0) << exr8.err;
    EXPECT_TRUE(contains(exr8.err, "note: openexr holds no 8-bit pixels; written as " +
                                       std::string(read_pixels(dir / "out8.exr").format == OIIO::TypeDesc::HALF
                                                       ? "half float"
                                                       : "float")))
        << exr8.err;
    const run_result png = render({"-i", in.string(), "-o", (dir / "float.png").string(), "--depth", "float"});
    ASSERT_EQ(png.exit_code, 0) << png.err;
    EXPECT_TRUE(contains(png.err, "note: png holds no float pixels; written as")) << png.err;
}

TEST_F(render_tool, SequencesFollowHashAndPrintfPatternsWithOneLinePerFrame)
{
    for (int f : {3, 4, 5, 6})
        write_pattern(dir / fmt::format("shot.{:04d}.exr", f), 12, 6, 3, OIIO::TypeDesc::HALF, f % 2 == 0);
    write_pattern(dir / "shot.7.exr", 12, 6, 3, OIIO::TypeDesc::HALF);  // not a #### name: not a frame

    const run_result all = render({"-i", (dir / "shot.####.exr").string(), "-o", (dir / "graded.%04d.exr").string()});
    ASSERT_EQ(all.exit_code, 0) << all.err;
    for (int f : {3, 4, 5, 6}) {
        SCOPED_TRACE(f);
        EXPECT_TRUE(matches_rule(read_pixels(dir / fmt::format("shot.{:04d}.exr", f)),
                                 read_pixels(dir / fmt::format("graded.{:04d}.exr", f)), neutral_look().rule));
    }
    EXPECT_FALSE(fs::exists(dir / "graded.0007.exr"));
    EXPECT_TRUE(contains(all.err, "1/4 ")) << all.err;
    EXPECT_TRUE(contains(all.err, "4/4 ")) << all.err;
    EXPECT_TRUE(contains(all.err, "fps")) << all.err;
    // Frame lists are read in render_parts and shown end to end in render_keys.
}

TEST_F(render_tool, ExportedLutsHoldTheGradedLatticeInEachFormat)
{
    // The reference: the lattice graded by the reference look, written by the same writers.
    // The lattice is rendered, never passed through, even when the look is the identity.
    vl1::render_tool::rgba_image lattice = vl1::render_tool::make_identity_lattice();
    const pixel_rule look = table_look(std::make_shared<const vl1::lut_argb<32>>());
    for (std::size_t i = 0; i < lattice.pixels.size(); i += 4) {
        const auto out = look({lattice.pixels[i], lattice.pixels[i + 1], lattice.pixels[i + 2], lattice.pixels[i + 3]});
        std::copy(out.begin(), out.end(), lattice.pixels.begin() + static_cast<std::ptrdiff_t>(i));
    }
    const vl1::lut_argb_variable reference = vl1::render_tool::lattice_to_lut(lattice);
    const fs::path ref_dir = hueloom_test::make_temp_dir("reference");
    ASSERT_TRUE(vl1::write_lut_cube(reference, (ref_dir / "look.cube").string(), "hueloom-render", ""));
    ASSERT_TRUE(vl1::write_lut_3dl(reference, (ref_dir / "look.3dl").string(), "hueloom-render", ""));

    for (const char* name : {"look.cube", "look.3dl"}) {
        SCOPED_TRACE(name);
        const run_result r = render({"--export-lut", (dir / name).string()});
        ASSERT_EQ(r.exit_code, 0) << r.err;
        EXPECT_EQ(hueloom_test::read_file(dir / name), hueloom_test::read_file(ref_dir / name));
    }
    EXPECT_TRUE(contains(hueloom_test::read_file(dir / "look.cube"), "TITLE \"look\"\n")) << "the title comes from the final name";
    EXPECT_EQ(render({"--export-lut", (dir / "look.lut").string()}).exit_code, 2);
}

// Trilinear sample of a table of any edge at `rgb` in 0..1.
std::array<float, 3> sample(const vl1::lut_argb_variable& table, const float* rgb)
{
    const std::size_t n = table.edge;
    std::size_t lo[3];
    float f[3];
    for (int c = 0; c < 3; ++c) {
        const float x = rgb[c] * static_cast<float>(n - 1);
        lo[c] = std::min(static_cast<std::size_t>(x), n - 2);
        f[c] = x - static_cast<float>(lo[c]);
    }
    std::array<float, 3> out{0, 0, 0};
    for (std::size_t corner = 0; corner < 8; ++corner) {
        const std::size_t up[3] = {corner & 1, (corner >> 1) & 1, corner >> 2};
        const float w = (up[0] ? f[0] : 1 - f[0]) * (up[1] ? f[1] : 1 - f[1]) * (up[2] ? f[2] : 1 - f[2]);
        const vl1::argb_float& e = table.data[vl1::lut_index(n, lo[0] + up[0], lo[1] + up[1], lo[2] + up[2])];
        out[0] += w * e.r;
        out[1] += w * e.g;
        out[2] += w * e.b;
    }
    return out;
}

TEST_F(render_tool, FineLutsFollowTheRenderClosely)
{
    const std::vector<std::string> look = {"--set", "Global Bypass=off", "--set", "Strength=90", "--set", "Angle=75"};
    const fs::path in = dir / "colours.exr";
    write_pattern(in, 61, 37, 3, OIIO::TypeDesc::FLOAT);
    ASSERT_EQ(render(joined({"-i", in.string(), "-o", (dir / "graded.exr").string()}, look)).exit_code, 0);
    const run_result r = render(joined({"--export-lut", (dir / "fine.cube").string(), "--lut-size", "65"}, look));
    ASSERT_EQ(r.exit_code, 0) << r.err;

    const vl1::lut_argb_variable table = vl1::read_lut_cube(hueloom_test::read_file(dir / "fine.cube"), "fine.cube");
    ASSERT_EQ(table.edge, 65u);
    const pixels source = read_pixels(in), graded = read_pixels(dir / "graded.exr");
    float worst = 0;
    for (int y = 0; y < source.height; ++y)
        for (int x = 0; x < source.width; ++x) {
            const auto sampled = sample(table, source.at(x, y));
            for (int c = 0; c < 3; ++c) worst = std::max(worst, std::fabs(sampled[c] - graded.at(x, y)[c]));
        }
    // Two trilinear tables whose grids don't align differ between their points: 65 points keep
    // that near a ten-thousandth (17 points with four decimals: over a thousandth).
    EXPECT_LT(worst, 1.5e-4f);

    EXPECT_EQ(render({"--export-lut", (dir / "fine.3dl").string(), "--lut-size", "33"}).exit_code, 2);
    EXPECT_EQ(render({"--export-lut", (dir / "odd.cube").string(), "--lut-size", "20"}).exit_code, 2);
}

TEST_F(render_tool, StateOutStartsTheNextShotAndVerbosityDecidesWhatIsPrinted)
{
    const fs::path in = dir / "in.png";
    write_pattern(in, 8, 8, 3, OIIO::TypeDesc::UINT8);
    const run_result r = render({"-i", in.string(), "-o", (dir / "out.png").string(), "--state-out",
                                 (dir / "look.txt").string(), "--verbose"});
    ASSERT_EQ(r.exit_code, 0) << r.err;
    const vl1::render_tool::state_file saved = vl1::render_tool::read_state_file(dir / "look.txt");
    EXPECT_TRUE(saved.state_text.empty() || vl1::render_tool::is_state_text(saved.state_text));
    EXPECT_TRUE(contains(r.err, "Hueloom: OFX action received: OfxImageEffectActionIsIdentity")) << r.err;
    EXPECT_TRUE(contains(r.err, "hueloom-render: frame 1: the look is the identity; the source passes through"))
        << r.err;
    EXPECT_TRUE(contains(r.err, "hueloom-render: plug-in com.varnlight.hueloomofx from ")) << r.err;

    const run_result next = render({"-i", in.string(), "-o", (dir / "next.png").string(), "--state-in",
                                    (dir / "look.txt").string(), "-q"});
    ASSERT_EQ(next.exit_code, 0) << next.err;
    EXPECT_EQ(next.err, "");
    EXPECT_EQ(next.out, "");
    EXPECT_TRUE(matches_rule(read_pixels(dir / "out.png"), read_pixels(dir / "next.png"), identity_look()));
}

TEST_F(render_tool, HelpAndCommandLineMistakes)
{
    const run_result help = run_render({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    EXPECT_TRUE(contains(help.out, "--export-lut")) << help.out;
    for (const std::vector<std::string>& bad : std::vector<std::vector<std::string>>{
             {}, {"--frobnicate"}, {"-i", "a.png"}, {"-i", "a.png", "-o", "b.png", "--quiet", "--verbose"},
             {"-i", "a.png", "-o", "b.png", "--threads", "0"}, {"-i", "a.png", "-o", "b.png", "--depth", "12"},
             {"-i", "a.png", "-o", "b.png", "--set"}}) {
        const run_result r = run_render(bad);
        EXPECT_EQ(r.exit_code, 2) << r.err;
        EXPECT_TRUE(contains(r.err, "hueloom-render: ")) << r.err;
    }
}

}  // namespace
