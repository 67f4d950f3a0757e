// Image files through OpenImageIO (EXR, TIFF, PNG, JPEG, DPX and the rest it knows), turned
// into the float RGBA that the plug-in takes, and written back in the input's layout, depth
// and metadata: the plug-in grades colour only, so alpha, depth and every other channel go
// to the output as the file stores them, under their own names.
#pragma once

#include "tools/hueloom_render/rgba_image.h"

#include <OpenImageIO/imageio.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vl1::render_tool {

/// The most pixels one image may have: the host's images are at most 2 GiB of float RGBA.
inline constexpr long long max_image_pixels = 1LL << 27;

struct image_file {
    rgba_image pixels;            // the colour to grade and the alpha
    std::vector<float> channels;  // every channel as stored, header.nchannels per pixel
    OIIO::ImageSpec header;       // as the file describes itself: size, depth, channels, metadata
    std::string format_name;    // OpenImageIO's name: "openexr", "png", "tiff", "dpx"...
    int alpha = -1;             // the alpha channel's index in `channels`; -1: none
    bool has_alpha = false;     // the file has an alpha channel
    bool unassociated_alpha = false;  // its colour is not multiplied by alpha (PNG, most TIFF)
};

/// Reads the first image of a file. One channel becomes grey, two grey and alpha, three or
/// more RGB from the first three, with the channel the file names as alpha (alpha 1 without
/// one). 8- and 16-bit integers become 0..1; half and float stay as they are. Colour that the
/// file stores apart from alpha is kept so. Throws render_error (input) for a missing,
/// unreadable or non-regular file, a deep or volume image or one of more than max_image_pixels.
image_file read_image_file(const std::filesystem::path& path);

enum class output_depth { as_input, uint8, uint16, half, real };

/// "" (as the input), "8", "16", "half" or "float"; as_input for anything else.
output_depth parse_output_depth(const std::string& text);

/// Writes the colour of `pixels` with every other channel of `source` as stored, with its
/// metadata and colour-space tags, its channel names (grey becomes RGB, since a grade may
/// colour it) and its depth unless `depth` says otherwise. The file appears under `path` only
/// when complete. Gives a note, or "", when the format can't hold what was asked: channels it
/// drops, a depth it writes instead. Throws render_error (output).
std::string write_image_file(const std::filesystem::path& path, const rgba_image& pixels, const image_file& source,
                             output_depth depth);

}  // namespace vl1::render_tool
