// Cross-checks of the LUT files against an independent implementation, OpenColorIO: it
// reads the files we write, and we read files it bakes; each side's trilinear result on a
// grid of colours must agree within a tolerance that the file format explains.
#include <gtest/gtest.h>

#include <OpenColorIO/OpenColorIO.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <fmt/format.h>

#include "color/lut_reader.h"
#include "color/lut_sampling.h"
#include "color/lut_writer_3dl.h"
#include "color/lut_writer_cube.h"
#include "tests/color/lut_test_support.h"

namespace OCIO = OCIO_NAMESPACE;

namespace vl1 {
namespace {

// OpenColorIO's own trilinear application of a LUT file.
class ocio_file_lut {
public:
    explicit ocio_file_lut(const std::string& path)
    {
        OCIO::FileTransformRcPtr transform = OCIO::FileTransform::Create();
        transform->setSrc(path.c_str());
        transform->setInterpolation(OCIO::INTERP_LINEAR);
        cpu = OCIO::Config::CreateRaw()->getProcessor(transform)->getOptimizedCPUProcessor(OCIO::OPTIMIZATION_NONE);
    }

    argb_float apply(const argb_float& in) const
    {
        float rgb[3] = {in.r, in.g, in.b};
        cpu->applyRGB(rgb);
        return {in.a, rgb[0], rgb[1], rgb[2]};
    }

private:
    OCIO::ConstCPUProcessorRcPtr cpu;
};

// Largest channel difference between OCIO and sample_lut over a 23-step grid of colours
// (not aligned with either table's grid) with a few points outside 0..1.
float largest_difference(const ocio_file_lut& ocio, const lut_argb<32>& ours)
{
    float worst = 0.0f;
    for (int r = -1; r <= 23; ++r)
        for (int g = -1; g <= 23; ++g)
            for (int b = -1; b <= 23; ++b) {
                const argb_float in{1.0f, r / 22.0f, g / 22.0f, b / 22.0f};
                const argb_float theirs = ocio.apply(in);
                const argb_float mine = sample_lut(ours, in);
                worst = std::max({worst, std::abs(theirs.r - mine.r), std::abs(theirs.g - mine.g),
                                  std::abs(theirs.b - mine.b)});
            }
    return worst;
}

// A table whose channels are multilinear in r, g and b, each with its own terms: trilinear
// interpolation reproduces such a function exactly on any grid, so resampling to the file's
// 17 points loses nothing and the comparison sees only the file's number format. Values
// stay inside 0..1.
lut_argb<32> multilinear_table()
{
    return test::make_lut_32([](float ri, float gi, float bi) {
        const float r = ri / 31.0f, g = gi / 31.0f, b = bi / 31.0f;
        return argb_float{1.0f, 0.1f + 0.6f * r + 0.2f * g * b, 0.05f + 0.5f * g + 0.3f * r * g * b,
                          0.2f + 0.3f * b + 0.4f * r * g - 0.1f * r};
    });
}

TEST(OcioReadsOurFiles, WithinWhatTheNumberFormatLoses)
{
    const lut_argb<32> table = multilinear_table();
    const std::filesystem::path dir = hueloom_test::make_temp_dir();
    // The .cube values carry four decimals: each is off by at most 5e-5, and trilinear
    // weights add up to 1, so the applied result is too; 1e-4 leaves room for float rounding.
    ASSERT_TRUE(write_lut_cube(test::as_export(table), (dir / "ours.cube").string(), "", ""));
    EXPECT_LT(largest_difference(ocio_file_lut((dir / "ours.cube").string()), table), 1e-4f);
    // The .3dl values are channel * 1023 truncated, up to one code (1/1023) low, which OCIO
    // divides by 1023 again: the results differ by less than 1/1023.
    ASSERT_TRUE(write_lut_3dl(test::as_export(table), (dir / "ours.3dl").string(), "", ""));
    const float worst = largest_difference(ocio_file_lut((dir / "ours.3dl").string()), table);
    EXPECT_LT(worst, 1.0f / 1023.0f);
    EXPECT_GT(worst, 0.0f);
}

// Bakes a CDL grade with OCIO's ociobakelut: slopes, offsets and powers per channel plus a
// desaturation that mixes the channels, kept inside 0..1 so no format clamps it.
std::string bake(const std::string& format, int cube_size, const std::string& file_name)
{
    const std::filesystem::path path = hueloom_test::make_temp_dir() / file_name;
    const std::string command = fmt::format(
        "\"{}\" --slope 0.9 0.85 0.7 --offset 0.05 0.03 0.08 --power 0.9 1.1 1.3 --sat 0.8 "
        "--format {} --cubesize {} \"{}\" > /dev/null 2>&1",
        HUELOOM_OCIOBAKELUT, format, cube_size, path.string());
    if (std::system(command.c_str()) != 0)
        return {};
    return path.string();
}

TEST(OurReaderOnBakedFiles, AgreesWithOcioWithinWhatTheFormatAndTheResamplingExplain)
{
    if (std::string(HUELOOM_OCIOBAKELUT).empty())
        GTEST_SKIP() << "ociobakelut (opencolorio-tools) is not installed";
    struct baked_case {
        const char* format;
        int size;
        const char* file_name;
        float below, above;
    };
    const baked_case cases[] = {
        // Both sides interpolate the same 32-point grid read from the same six-decimal text;
        // only the order of float operations differs.
        {"iridas_cube", 32, "baked.cube", 1e-6f, 0.0f},
        // 12-bit codes: our reader divides by 4096 (top + 1), OCIO by 4095, so a value v reads
        // v / 4096 here against v / 4095 there, at most 1/4096 apart, and the divisor shows;
        // nothing is resampled at 32 points.
        {"flame", 32, "baked.3dl", 1.0f / 4096.0f, 1e-6f},
        // 33 points resampled to 32: our table is a second piecewise-linear approximation on a
        // grid that doesn't line up with the file's, off from OCIO's by a fraction of the change
        // of slope within a cell (a few 1e-4 for these power curves near black), plus the
        // divisor's 1/4096.
        {"lustre", 33, "baked33.3dl", 1e-3f, 0.0f},
    };
    for (const baked_case& c : cases) {
        SCOPED_TRACE(c.file_name);
        const std::string path = bake(c.format, c.size, c.file_name);
        ASSERT_FALSE(path.empty());
        const auto ours = load_lut_from_file_or_resource("", path);
        ASSERT_TRUE(ours);
        const float worst = largest_difference(ocio_file_lut(path), *ours);
        EXPECT_LT(worst, c.below);
        if (c.above > 0.0f) {
            EXPECT_GT(worst, c.above) << "the divisor of 4096 should show";
        }
    }
}

}  // namespace
}  // namespace vl1
