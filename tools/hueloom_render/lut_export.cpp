#include "tools/hueloom_render/lut_export.h"

#include "color/lut_writer_3dl.h"
#include "color/lut_writer_cube.h"
#include "framework/string_helpers.h"
#include "tools/hueloom_render/output_file.h"
#include "tools/hueloom_render/plugin_session.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>

namespace vl1::render_tool {

namespace {

namespace fs = std::filesystem;

/// The writers' "program" text: line 1 of the file names what made it.
constexpr const char* lut_program = "hueloom-render";

std::string extension_of(const fs::path& path) { return vl1::lowercase(path.extension().string()); }

}  // namespace

rgba_image make_identity_lattice(int n)
{
    rgba_image img(n * n, n);
    for (int g = 0; g < n; ++g) {
        for (int b = 0; b < n; ++b) {
            for (int r = 0; r < n; ++r) {
                float* p = img.pixel(b * n + r, g);
                p[0] = static_cast<float>(r) / static_cast<float>(n - 1);
                p[1] = static_cast<float>(g) / static_cast<float>(n - 1);
                p[2] = static_cast<float>(b) / static_cast<float>(n - 1);
                p[3] = 1.0f;
            }
        }
    }
    return img;
}

vl1::lut_argb_variable lattice_to_lut(const rgba_image& lattice, int n)
{
    vl1::lut_argb_variable lut;
    lut.edge = n;
    lut.data.assign(vl1::lut_entry_count(n), vl1::argb_float{0, 0, 0, 0});
    for (int r = 0; r < n; ++r) {
        for (int g = 0; g < n; ++g) {
            for (int b = 0; b < n; ++b) {
                const float* p = lattice.pixel(b * n + r, g);
                lut.data[vl1::lut_index(n, r, g, b)] = vl1::argb_float{p[3], p[0], p[1], p[2]};
            }
        }
    }
    return lut;
}

bool is_lut_path(const fs::path& path)
{
    const std::string ext = extension_of(path);
    return ext == ".cube" || ext == ".3dl";
}

void export_lut(plugin_session& session, double time, const fs::path& path, int size)
{
    if (!is_lut_path(path)) {
        throw render_error(exit_code::usage,
                           fmt::format("--export-lut {}: the file must end in .cube or .3dl", path.string()));
    }
    const bool fine = size != default_lut_size;
    if (fine && extension_of(path) != ".cube") {
        throw render_error(exit_code::usage, fmt::format("--export-lut {}: a .3dl file has {} points per axis; "
                                                         "--lut-size {} needs a .cube file",
                                                         path.string(), default_lut_size, size));
    }
    check_output_folder(path);
    const int edge = fine ? size : lattice_edge;
    rgba_image lattice = make_identity_lattice(edge);
    try {
        session.render(lattice, time);
    } catch (const render_error& e) {
        throw render_error(e.code(), fmt::format("LUT lattice at frame {}: {}", time, e.what()));
    }
    const vl1::lut_argb_variable lut = lattice_to_lut(lattice, edge);
    const std::string file = path.string();
    std::string problem;
    const bool written = fine                              ? vl1::write_lut_cube_exact(lut, file, lut_program, "", problem)
                         : extension_of(path) == ".cube" ? vl1::write_lut_cube(lut, file, lut_program, "", problem)
                                                         : vl1::write_lut_3dl(lut, file, lut_program, "", problem);
    if (!written)
        throw render_error(exit_code::output, problem);
}

}  // namespace vl1::render_tool
