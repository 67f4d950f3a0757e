// The look as a 3D LUT for other software, made through the plug-in itself: an identity
// lattice of 32³ colours laid out as an image goes through a render, and the graded lattice
// is written with the colour engine's .cube or .3dl writer.
//
// Lattice layout, 1024 x 32 pixels: grid point (r, g, b) with indices 0..31 stands at column
// b * 32 + r and row g (rows counted from the top), with the colour (r/31, g/31, b/31, 1).
#pragma once

#include "color/lut_argb.h"
#include "tools/hueloom_render/rgba_image.h"

#include <filesystem>

namespace hueloom_render {

class plugin_session;

inline constexpr int lattice_edge = 32;

/// The identity lattice image.
rgba_image make_identity_lattice();

/// The lattice image read back as a table of edge 32 (red slowest, blue fastest), alpha
/// included. The image must be the lattice's size.
vl1::lut_argb_variable lattice_to_lut(const rgba_image& lattice);

/// Whether the path ends in .cube or .3dl (any case).
bool is_lut_path(const std::filesystem::path& path);

/// Renders the lattice at `time` and writes the table to `path`, which appears only when
/// complete. Throws render_error: (usage) for another extension, (frame_failed) when the
/// render fails, (output) when the file can't be written.
void export_lut(plugin_session& session, double time, const std::filesystem::path& path);

}  // namespace hueloom_render
