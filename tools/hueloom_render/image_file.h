// Image files through OpenImageIO (EXR, TIFF, PNG, JPEG, DPX and the rest it knows), turned
// into the float RGBA that the plug-in takes, and written back in the input's layout, depth
// and metadata.
#pragma once

#include "tools/hueloom_render/rgba_image.h"

#include <OpenImageIO/imageio.h>

#include <filesystem>
#include <string>

namespace hueloom_render {

/// The most pixels one image may have: the host's images are at most 2 GiB of float RGBA.
inline constexpr long long max_image_pixels = 1LL << 27;

struct image_file {
    rgba_image pixels;
    OIIO::ImageSpec header;       // as the file describes itself: size, depth, channels, metadata
    std::string format_name;    // OpenImageIO's name: "openexr", "png", "tiff", "dpx"...
    bool has_alpha = false;     // the file has an alpha channel
    bool unassociated_alpha = false;  // its colour is not multiplied by alpha (PNG, most TIFF)
};

/// Reads the first image of a file. One channel becomes grey, two grey and alpha, three RGB
/// with alpha 1, more the first three colour channels and the alpha channel. 8- and 16-bit
/// integers become 0..1; half and float stay as they are. Colour that the file stores apart
/// from alpha is kept so. Throws render_error (input) for a missing or unreadable file, a
/// deep or volume image or one of more than max_image_pixels.
image_file read_image_file(const std::filesystem::path& path);

enum class output_depth { as_input, uint8, uint16, half, real };

/// "" (as the input), "8", "16", "half" or "float"; as_input for anything else.
output_depth parse_output_depth(const std::string& text);

/// Writes `pixels` with the metadata and colour-space tags of `source`, its channel layout
/// (grey becomes RGB, since a grade may colour it; alpha is kept where the format has it) and
/// its depth unless `depth` says otherwise. The file appears under `path` only when complete.
/// Throws render_error (output).
void write_image_file(const std::filesystem::path& path, const rgba_image& pixels, const image_file& source,
                      output_depth depth);

}  // namespace hueloom_render
