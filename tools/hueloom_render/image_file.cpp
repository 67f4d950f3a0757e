#include "tools/hueloom_render/image_file.h"

#include "tools/hueloom_render/output_file.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>

#include <algorithm>

namespace hueloom_render {

namespace {

namespace fs = std::filesystem;

/// Channels a file may have; the renderer reads at most up to its alpha channel.
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
    while (!e.empty() && e.back() == '\n') e.pop_back();
    return e.empty() ? fallback : e;
}

// Where r, g, b and alpha come from among the file's channels; -1: none (alpha 1).
struct channel_map {
    int r = 0, g = 0, b = 0, a = -1;
    int count = 1;  // channels to read, from 0
};

channel_map map_channels(const OIIO::ImageSpec& header)
{
    channel_map m;
    const int n = header.nchannels;
    if (n == 1) return m;
    if (n == 2) {
        m.a = header.alpha_channel >= 0 ? header.alpha_channel : 1;
        m.r = m.g = m.b = 1 - m.a;
        m.count = 2;
        return m;
    }
    m.g = 1, m.b = 2;
    m.a = header.alpha_channel >= 0 && header.alpha_channel < n ? header.alpha_channel : (n >= 4 ? 3 : -1);
    if (m.a >= 0 && m.a <= 2) m.a = -1;  // an alpha among the first three isn't one we can separate
    m.count = std::max(3, m.a + 1);
    return m;
}

void check_readable_spec(const fs::path& path, const OIIO::ImageSpec& header)
{
    if (header.deep) throw input_error(path, "deep images are not supported");
    if (header.depth > 1) throw input_error(path, "volume images are not supported");
    if (header.width < 1 || header.height < 1 || header.nchannels < 1) throw input_error(path, "the image is empty");
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

// The image description to write: the source's metadata with the layout and depth of the output.
OIIO::ImageSpec output_spec(const image_file& source, const OIIO::ImageOutput& out, OIIO::TypeDesc type, int channels)
{
    OIIO::ImageSpec header = source.header;
    header.nchannels = channels;
    header.channelnames = {"R", "G", "B"};
    if (channels == 4) header.channelnames.push_back("A");
    header.alpha_channel = channels == 4 ? 3 : -1;
    header.z_channel = -1;
    header.channelformats.clear();
    header.format = type;
    const bool same_format = source.format_name == out.format_name();
    // Facts of the source's encoding that another format or depth would misread.
    if (!same_format || type != source.header.format) header.erase_attribute("oiio:BitsPerSample");
    if (!same_format) {
        header.erase_attribute("compression");
        header.erase_attribute("Compression");
    }
    header.erase_attribute("oiio:UnassociatedAlpha");
    if (channels == 4 && source.unassociated_alpha) header.attribute("oiio:UnassociatedAlpha", 1);
    return header;
}

// The float data of `channels` channels per pixel that the writer takes.
std::vector<float> output_pixels(const rgba_image& img, int channels, bool premultiply)
{
    const std::size_t count = static_cast<std::size_t>(img.width) * img.height;
    std::vector<float> data(count * channels);
    for (std::size_t i = 0; i < count; ++i) {
        const float* p = img.pixels.data() + i * 4;
        const float factor = premultiply ? p[3] : 1.0f;
        for (int c = 0; c < 3; ++c) data[i * channels + c] = p[c] * factor;
        if (channels == 4) data[i * channels + 3] = p[3];
    }
    return data;
}

}  // namespace

image_file read_image_file(const fs::path& path)
{
    std::error_code ec;
    if (!fs::exists(path, ec)) throw input_error(path, "the file does not exist");
    if (fs::is_directory(path, ec)) throw input_error(path, "it is a folder");
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);  // keep the file's colour values as stored
    auto in = OIIO::ImageInput::open(path.string(), &config);
    if (!in) throw input_error(path, oiio_error("not an image OpenImageIO can read"));

    image_file file;
    file.header = in->spec();
    file.format_name = in->format_name();
    check_readable_spec(path, file.header);
    const channel_map m = map_channels(file.header);
    file.has_alpha = m.a >= 0;
    file.unassociated_alpha = file.has_alpha && file.header.get_int_attribute("oiio:UnassociatedAlpha") != 0;

    const int w = file.header.width, h = file.header.height;
    std::vector<float> raw(static_cast<std::size_t>(w) * h * m.count);
    if (!in->read_image(0, 0, 0, m.count, OIIO::TypeDesc::FLOAT, raw.data())) {
        throw input_error(path, oiio_error("the pixels don't read"));
    }
    in->close();
    file.pixels = rgba_image(w, h);
    for (std::size_t i = 0, n = static_cast<std::size_t>(w) * h; i < n; ++i) {
        const float* src = raw.data() + i * m.count;
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
    if (text == "8") return output_depth::uint8;
    if (text == "16") return output_depth::uint16;
    if (text == "half") return output_depth::half;
    if (text == "float") return output_depth::real;
    return output_depth::as_input;
}

void write_image_file(const fs::path& path, const rgba_image& pixels, const image_file& source, output_depth depth)
{
    if (path.filename().empty()) throw output_error(path, "the path names no file");
    auto out = OIIO::ImageOutput::create(path.string());
    if (!out) throw output_error(path, oiio_error("OpenImageIO has no writer for this file type"));
    const int channels = source.has_alpha && out->supports("alpha") ? 4 : 3;
    OIIO::ImageSpec header = output_spec(source, *out, type_for(depth, source.header.format), channels);
    // EXR stores colour multiplied by alpha; colour read unmultiplied must be brought to that.
    const bool premultiply = channels == 4 && source.unassociated_alpha && std::string(out->format_name()) == "openexr";
    if (premultiply) header.erase_attribute("oiio:UnassociatedAlpha");
    const std::vector<float> data = output_pixels(pixels, channels, premultiply);

    pending_output pending(path);
    if (!out->open(pending.temp_path().string(), header)) throw output_error(path, oiio_error(out->geterror()));
    const bool written = out->write_image(OIIO::TypeDesc::FLOAT, data.data());
    const std::string write_failure = written ? "" : oiio_error(out->geterror());
    const bool closed = out->close();
    if (!written) throw output_error(path, write_failure);
    if (!closed) throw output_error(path, oiio_error(out->geterror()));
    pending.commit();
}

}  // namespace hueloom_render
