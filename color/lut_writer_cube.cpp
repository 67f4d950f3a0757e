#include "color/lut_writer_cube.h"

#include <fmt/format.h>

#include "color/lut_file_header.h"

namespace vl1 {

bool write_lut_cube(const lut_argb_variable& lut, const std::string& path, const std::string& program,
                    const std::string& author, std::string& problem)
{
    lut_argb_variable table;
    if (!lut_for_file(lut, table)) {
        problem = no_table_problem(path, lut);
        return false;
    }

    fmt::memory_buffer out;
    fmt::format_to(std::back_inserter(out), "{}TITLE \"{}\"\nLUT_3D_SIZE 17\n", lut_generated_by_line(program, author),
                   lut_title_of(path));
    // The file runs red fastest; the table has blue fastest. fmt's fixed notation ignores
    // the process locale, so the decimal point is always '.'.
    for (std::size_t b = 0; b < 17; ++b)
        for (std::size_t g = 0; g < 17; ++g)
            for (std::size_t r = 0; r < 17; ++r) {
                const argb_float& e = table.data[lut_index(17, r, g, b)];
                fmt::format_to(std::back_inserter(out), "{:.4f} {:.4f} {:.4f}\n", e.r, e.g, e.b);
            }
    return write_lut_text(path, out, problem);
}

bool write_lut_cube_exact(const lut_argb_variable& lut, const std::string& path, const std::string& program,
                          const std::string& author, std::string& problem)
{
    const std::size_t n = lut.edge;
    if (n < 2 || lut.data.size() != lut_entry_count(n)) {
        problem = no_table_problem(path, lut);
        return false;
    }
    fmt::memory_buffer out;
    fmt::format_to(std::back_inserter(out), "{}TITLE \"{}\"\nLUT_3D_SIZE {}\n", lut_generated_by_line(program, author),
                   lut_title_of(path), n);
    // fmt's "{}" of a float is its shortest round-trip form, independent of the locale.
    for (std::size_t b = 0; b < n; ++b)
        for (std::size_t g = 0; g < n; ++g)
            for (std::size_t r = 0; r < n; ++r) {
                const argb_float& e = lut.data[lut_index(n, r, g, b)];
                fmt::format_to(std::back_inserter(out), "{} {} {}\n", e.r, e.g, e.b);
            }
    return write_lut_text(path, out, problem);
}

bool write_lut_cube(const lut_argb_variable& lut, const std::string& path, const std::string& program,
                    const std::string& author)
{
    std::string ignored;
    return write_lut_cube(lut, path, program, author, ignored);
}

bool write_lut_cube_exact(const lut_argb_variable& lut, const std::string& path, const std::string& program,
                          const std::string& author)
{
    std::string ignored;
    return write_lut_cube_exact(lut, path, program, author, ignored);
}

}  // namespace vl1
