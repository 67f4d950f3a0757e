#include "tools/hueloom_render/image_file.h"

#include "tools/hueloom_render/file_checks.h"
#include "tools/hueloom_render/output_file.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace vl1::render_tool {

namespace {

namespace fs = std::filesystem;

/// Channels a file may have.
constexpr int max_channels = 64;

render_error input_error(const fs::path& path, const std::string& why)
{
    return render_error(exit_code::input, fmt::format("cannot read {}: {}", path.string(), why));
}

render_error output_error(const fs::path& path, const std::string& why)
{
    return render_error(exit_code::output, fmt::format("cannot write {}: {}", path.string(), why));
}

std::string oiio_error(const std::string& fallback)
{
    std::string e = OIIO::geterror();
    while (!e.empty() && e.back() == '\n')
        e.pop_back();
    return e.empty() ? fallback : e;
}

// Where r, g, b and alpha come from among the file's channels; -1: none (alpha 1).
struct channel_map {
    int r = 0, g = 0, b = 0, a = -1;
};

bool is_alpha_name(const std::string& name) { return name == "A" || name == "a" || name == "Alpha" || name == "alpha"; }

channel_map map_channels(const OIIO::ImageSpec& header)
{
    channel_map m;
    const int n = header.nchannels;
    if (n == 1)
        return m;
    if (n == 2) {
        m.a = header.alpha_channel >= 0 ? header.alpha_channel : 1;
        m.r = m.g = m.b = 1 - m.a;
        return m;
    }
    m.g = 1, m.b = 2;
    // Only a channel the file calls alpha is one: a fourth channel may as well be depth.
    if (header.alpha_channel >= 3 && header.alpha_channel < n)
        m.a = header.alpha_channel;
    for (int c = 3; c < n && m.a < 0; ++c) {
        if (c < static_cast<int>(header.channelnames.size()) && is_alpha_name(header.channelnames[c]))
            m.a = c;
    }
    return m;
}

void check_readable_spec(const fs::path& path, const OIIO::ImageSpec& header)
{
    if (header.deep)
        throw input_error(path, "deep images are not supported");
    if (header.depth > 1)
        throw input_error(path, "volume images are not supported");
    if (header.width < 1 || header.height < 1 || header.nchannels < 1)
        throw input_error(path, "the image is empty");
    if (header.nchannels > max_channels) {
        throw input_error(path,
                          fmt::format("{} channels are more than the {} supported", header.nchannels, max_channels));
    }
    const long long pixels = static_cast<long long>(header.width) * header.height;
    if (pixels > max_image_pixels) {
        throw input_error(path, fmt::format("{} x {} pixels is more than the {} supported", header.width, header.height,
                                            max_image_pixels));
    }
}

OIIO::TypeDesc type_for(output_depth depth, const OIIO::TypeDesc& input)
{
    switch (depth) {
    case output_depth::uint8: return OIIO::TypeDesc::UINT8;
    case output_depth::uint16: return OIIO::TypeDesc::UINT16;
    case output_depth::half: return OIIO::TypeDesc::HALF;
    case output_depth::real: return OIIO::TypeDesc::FLOAT;
    case output_depth::as_input: break;
    }
    return input;
}

// Which of the source's channels the output has, in order; -1 stands for a colour channel
// that a grey source lacks (the grade may colour grey). Colour always comes first.
struct output_layout {
    std::vector<int> from;  // source channel of each output channel, or -1
    std::vector<std::string> names;
    int alpha = -1;         // output index of alpha
    std::vector<std::string> dropped;
};

output_layout layout_for(const image_file& source, const OIIO::ImageOutput& out)
{
    const OIIO::ImageSpec& in = source.header;
    output_layout l;
    const bool grey = in.nchannels < 3;
    for (int c = 0; c < 3; ++c) {
        l.from.push_back(grey ? -1 : c);
        l.names.push_back(grey ? std::string(1, "RGB"[c]) : std::string(in.channel_name(c)));
    }
    const bool alpha_fits = out.supports("alpha");
    const bool extras_fit = out.supports("nchannels");
    for (int c = grey ? 0 : 3; c < in.nchannels; ++c) {
        const bool is_alpha = c == source.alpha;
        if (grey && !is_alpha) continue;  // the grey channel itself became R, G and B
        const bool fits = is_alpha ? alpha_fits && (extras_fit || l.from.size() == 3) : extras_fit;
        if (!fits) {
            const std::string name(in.channel_name(c));
            l.dropped.push_back(name.empty() ? fmt::format("channel {}", c) : name);
            continue;
        }
        if (is_alpha)
            l.alpha = static_cast<int>(l.from.size());
        l.from.push_back(c);
        l.names.push_back(is_alpha && grey ? std::string("A") : std::string(in.channel_name(c)));
    }
    return l;
}

// The image description to write: the source's metadata with the layout and depth of the output.
OIIO::ImageSpec output_spec(const image_file& source, const OIIO::ImageOutput& out, OIIO::TypeDesc type,
                            const output_layout& layout, bool keep_channel_formats)
{
    OIIO::ImageSpec header = source.header;
    header.nchannels = static_cast<int>(layout.from.size());
    header.channelnames = layout.names;
    header.alpha_channel = layout.alpha;
    header.z_channel = -1;
    header.channelformats.clear();
    for (std::size_t c = 0; c < layout.from.size(); ++c) {
        const int from = layout.from[c];
        if (from >= 0 && from == source.header.z_channel)
            header.z_channel = static_cast<int>(c);
        if (keep_channel_formats)
            header.channelformats.push_back(source.header.channelformat(std::max(from, 0)));
    }
    header.format = type;
    const bool same_format = source.format_name == out.format_name();
    // Facts of the source's encoding that another format or depth would misread.
    if (!same_format || type != source.header.format)
        header.erase_attribute("oiio:BitsPerSample");
    if (!same_format) {
        header.erase_attribute("compression");
        header.erase_attribute("Compression");
    }
    header.erase_attribute("oiio:UnassociatedAlpha");
    if (layout.alpha >= 0 && source.unassociated_alpha)
        header.attribute("oiio:UnassociatedAlpha", 1);
    return header;
}

// The float data the writer takes: graded colour, every other channel as the source stores it.
std::vector<float> output_pixels(const rgba_image& img, const image_file& source, const output_layout& layout,
                                 bool premultiply)
{
    const std::size_t count = static_cast<std::size_t>(img.width) * img.height;
    const std::size_t n = layout.from.size();
    const std::size_t in_n = static_cast<std::size_t>(source.header.nchannels);
    std::vector<float> data(count * n);
    for (std::size_t i = 0; i < count; ++i) {
        const float* p = img.pixels.data() + i * 4;
        const float* raw = source.channels.data() + i * in_n;
        const float factor = premultiply ? raw[source.alpha] : 1.0f;
        for (std::size_t c = 0; c < n; ++c)
            data[i * n + c] = c < 3 ? p[c] * factor : raw[layout.from[c]];
    }
    return data;
}

std::string type_name(OIIO::TypeDesc type)
{
    if (type == OIIO::TypeDesc::UINT8)
        return "8-bit";
    if (type == OIIO::TypeDesc::UINT16)
        return "16-bit";
    if (type == OIIO::TypeDesc::HALF)
        return "half float";
    if (type == OIIO::TypeDesc::FLOAT)
        return "float";
    return type.c_str();
}

// What the output holds other than what was asked, for the user; "" when it holds it all.
std::string output_note(const OIIO::ImageOutput& out, const output_layout& layout, output_depth depth,
                        OIIO::TypeDesc asked)
{
    std::vector<std::string> notes;
    if (depth != output_depth::as_input && out.spec().format != asked) {
        notes.push_back(fmt::format("{} holds no {} pixels; written as {}", out.format_name(), type_name(asked),
                                    type_name(out.spec().format)));
    }
    if (!layout.dropped.empty()) {
        notes.push_back(fmt::format("{} holds no channel {}; left out", out.format_name(),
                                    fmt::join(layout.dropped, ", ")));
    }
    return fmt::format("{}", fmt::join(notes, "; "));
}

}  // namespace

image_file read_image_file(const fs::path& path)
{
    std::error_code ec;
    if (!fs::exists(path, ec))
        throw input_error(path, "the file does not exist");
    require_regular_input(path, fmt::format("cannot read {}", path.string()));
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);  // keep the file's colour values as stored
    auto in = OIIO::ImageInput::open(path.string(), &config);
    if (!in)
        throw input_error(path, oiio_error("not an image OpenImageIO can read"));

    image_file file;
    file.header = in->spec();
    file.format_name = in->format_name();
    check_readable_spec(path, file.header);
    const channel_map m = map_channels(file.header);
    file.alpha = m.a;
    file.has_alpha = m.a >= 0;
    file.unassociated_alpha = file.has_alpha && file.header.get_int_attribute("oiio:UnassociatedAlpha") != 0;

    const int w = file.header.width, h = file.header.height, n = file.header.nchannels;
    file.channels.resize(static_cast<std::size_t>(w) * h * n);
    if (!in->read_image(0, 0, 0, n, OIIO::TypeDesc::FLOAT, file.channels.data())) {
        throw input_error(path, oiio_error("the pixels don't read"));
    }
    in->close();
    file.pixels = rgba_image(w, h);
    for (std::size_t i = 0, count = static_cast<std::size_t>(w) * h; i < count; ++i) {
        const float* src = file.channels.data() + i * n;
        float* dst = file.pixels.pixels.data() + i * 4;
        dst[0] = src[m.r];
        dst[1] = src[m.g];
        dst[2] = src[m.b];
        dst[3] = m.a >= 0 ? src[m.a] : 1.0f;
    }
    return file;
}

output_depth parse_output_depth(const std::string& text)
{
    if (text == "8")
        return output_depth::uint8;
    if (text == "16")
        return output_depth::uint16;
    if (text == "half")
        return output_depth::half;
    if (text == "float")
        return output_depth::real;
    return output_depth::as_input;
}

std::string write_image_file(const fs::path& path, const rgba_image& pixels, const image_file& source,
                             output_depth depth)
{
    if (path.filename().empty())
        throw output_error(path, "the path names no file");
    auto out = OIIO::ImageOutput::create(path.string());
    if (!out)
        throw output_error(path, oiio_error("OpenImageIO has no writer for this file type"));
    const output_layout layout = layout_for(source, *out);
    const OIIO::TypeDesc type = type_for(depth, source.header.format);
    const bool keep_channel_formats = depth == output_depth::as_input && !source.header.channelformats.empty() &&
                                      out->supports("channelformats");
    OIIO::ImageSpec header = output_spec(source, *out, type, layout, keep_channel_formats);
    // EXR stores colour multiplied by alpha; colour read unmultiplied must be brought to that.
    const bool premultiply =
        layout.alpha >= 0 && source.unassociated_alpha && std::string(out->format_name()) == "openexr";
    if (premultiply)
        header.erase_attribute("oiio:UnassociatedAlpha");
    const std::vector<float> data = output_pixels(pixels, source, layout, premultiply);

    pending_output pending(path);
    if (!out->open(pending.temp_path().string(), header))
        throw output_error(path, oiio_error(out->geterror()));
    const std::string note = output_note(*out, layout, depth, type);
    const bool written = out->write_image(OIIO::TypeDesc::FLOAT, data.data());
    const std::string write_failure = written ? "" : oiio_error(out->geterror());
    const bool closed = out->close();
    if (!written)
        throw output_error(path, write_failure);
    if (!closed)
        throw output_error(path, oiio_error(out->geterror()));
    pending.commit();
    return note;
}

}  // namespace vl1::render_tool
