// The look as a 3D LUT for other software, made through the plug-in itself: an identity
// lattice of colours laid out as an image goes through a render, and the graded lattice is
// written with the colour engine's .cube or .3dl writer. The default file has 17 points per
// axis, resampled from a lattice of 32 (the plug-in's own table edge); a finer file (33 or 65
// points, .cube only) comes from a lattice of its own size, written with full float precision,
// so that other software sampling it follows the render closely.
//
// Lattice layout for edge n, n² x n pixels: grid point (r, g, b) with indices 0..n-1 stands at
// column b * n + r and row g (rows counted from the top), with the colour (r, g, b)/(n-1), 1.
#pragma once

#include "color/lut_argb.h"
#include "tools/hueloom_render/rgba_image.h"

#include <filesystem>

namespace vl1::render_tool {

class plugin_session;

inline constexpr int lattice_edge = 32;
/// Points per axis of an exported file: the default, and the finer sizes that --lut-size takes.
inline constexpr int default_lut_size = 17;
inline constexpr int fine_lut_sizes[] = {33, 65};

/// The identity lattice image of edge `n`.
rgba_image make_identity_lattice(int n = lattice_edge);

/// The lattice image read back as a table of edge `n` (red slowest, blue fastest), alpha
/// included. The image must be the lattice's size.
vl1::lut_argb_variable lattice_to_lut(const rgba_image& lattice, int n = lattice_edge);

/// Whether the path ends in .cube or .3dl (any case).
bool is_lut_path(const std::filesystem::path& path);

/// Renders the lattice at `time` and writes the table of `size` points per axis to `path`,
/// which appears only when complete. Throws render_error: (usage) for another extension or a
/// size other than the default in a .3dl file, (frame_failed) when the render fails, (output)
/// when the file can't be written.
void export_lut(plugin_session& session, double time, const std::filesystem::path& path,
                int size = default_lut_size);

}  // namespace vl1::render_tool
