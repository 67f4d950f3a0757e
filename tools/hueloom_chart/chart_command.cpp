#include "tools/hueloom_chart/chart_command.h"

#include "tools/common/stop_signals.h"
#include "tools/hueloom_chart/test_chart.h"

#include <OpenImageIO/imageio.h>
#include <fmt/format.h>
#include <fmt/ostream.h>

#include <charconv>
#include <filesystem>
#include <optional>

namespace vl1::chart_tool {

namespace {

namespace fs = std::filesystem;

constexpr const char* usage =
    "usage: hueloom-chart OUT.(exr|tif|png|jpg|dpx) [--width W] [--height H]\n"
    "  Writes a test chart: a hue sweep, primaries and secondaries, skin tones, a grey ramp and\n"
    "  grey steps, as sRGB code values. EXR is written as half, TIFF and DPX as 16 bit, others as\n"
    "  8 bit. W and H from 64 to 16384 (default 1280 x 720).\n";

struct chart_options {
    std::string output;
    int width = default_chart_width;
    int height = default_chart_height;
    bool help = false;
};

std::optional<int> read_size(const std::string& text)
{
    int v = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
    if (ec != std::errc() || end != text.data() + text.size() || v < min_chart_size || v > max_chart_size)
        return std::nullopt;
    return v;
}

// The options, or the usage error's text.
std::string parse(const std::vector<std::string>& args, chart_options& o)
{
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "-h" || a == "--help") {
            o.help = true;
        } else if (a == "--width" || a == "--height") {
            if (i + 1 >= args.size())
                return a + " needs a value";
            const auto v = read_size(args[++i]);
            if (!v)
                return fmt::format("{} wants a whole number from {} to {}, not \"{}\"", a, min_chart_size,
                                   max_chart_size, args[i]);
            (a == "--width" ? o.width : o.height) = *v;
        } else if (!a.empty() && a[0] == '-') {
            return fmt::format("unknown option \"{}\"", a);
        } else if (o.output.empty()) {
            o.output = a;
        } else {
            return fmt::format("one output file only, not also \"{}\"", a);
        }
    }
    if (!o.help && o.output.empty())
        return "no output file given";
    return {};
}

OIIO::TypeDesc depth_for(const std::string& format)
{
    if (format == "openexr")
        return OIIO::TypeDesc::HALF;
    if (format == "tiff" || format == "dpx")
        return OIIO::TypeDesc::UINT16;
    return OIIO::TypeDesc::UINT8;
}

// The writer's failure text, or "".
std::string write_chart(const fs::path& path, const chart_image& chart)
{
    auto out = OIIO::ImageOutput::create(path.string());
    if (!out)
        return OIIO::geterror().empty() ? "no writer for this file type" : OIIO::geterror();
    OIIO::ImageSpec header(chart.width, chart.height, 3, depth_for(out->format_name()));
    header.attribute("oiio:ColorSpace", "sRGB");
    header.attribute("ImageDescription", "Hueloom test chart");
    header.attribute("Software", "hueloom-chart");
    // A signal that ends the process mid-write takes the half-written chart with it.
    const vl1::tools::partial_output partial(path);
    if (!out->open(path.string(), header))
        return out->geterror();
    const bool ok = out->write_image(OIIO::TypeDesc::FLOAT, chart.rgb.data());
    std::string failure = ok ? "" : out->geterror();
    if (!out->close() && failure.empty())
        failure = out->geterror();
    if (failure.empty())
        return {};
    std::error_code ignored;
    fs::remove(path, ignored);  // no half-written chart under the asked-for name
    return failure.empty() ? "write failed" : failure;
}

}  // namespace

int run_chart_command(const std::vector<std::string>& args, std::ostream& out, std::ostream& err)
{
    try {
        chart_options o;
        if (std::string problem = parse(args, o); !problem.empty()) {
            fmt::print(err, "hueloom-chart: {}\n{}", problem, usage);
            return 2;
        }
        if (o.help) {
            fmt::print(out, "{}", usage);
            return 0;
        }
        if (std::string failure = write_chart(o.output, make_test_chart(o.width, o.height)); !failure.empty()) {
            while (!failure.empty() && failure.back() == '\n')
                failure.pop_back();
            fmt::print(err, "hueloom-chart: cannot write {}: {}\n", o.output, failure);
            return 1;
        }
        fmt::print(out, "{}\n", o.output);
        return 0;
    } catch (const std::exception& e) {
        fmt::print(err, "hueloom-chart: {}\n", e.what());
        return 1;
    }
}

}  // namespace vl1::chart_tool
