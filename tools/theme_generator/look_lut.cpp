#include "tools/theme_generator/look_lut.h"

#include <iterator>

#include <fmt/format.h>

#include "framework/io/write_file_atomically.h"
#include "tools/theme_generator/look_grade.h"

namespace vl1::themegen {

lut_argb<32> build_look_lut(const look_params& look)
{
    lut_argb<32> lut;
    constexpr std::size_t n = lut_argb<32>::edge;
    for (std::size_t r = 0; r < n; ++r)
        for (std::size_t g = 0; g < n; ++g)
            for (std::size_t b = 0; b < n; ++b) {
                const rgb_d in{r / 31.0, g / 31.0, b / 31.0};
                const rgb_d out = grade_colour(look, in);
                lut.data[lut_index(n, r, g, b)] = {1.0f, static_cast<float>(out.r), static_cast<float>(out.g),
                                                   static_cast<float>(out.b)};
            }
    return lut;
}

bool write_cube_32(const lut_argb<32>& lut, const std::string& path, const std::string& title, std::string& error)
{
    constexpr std::size_t n = lut_argb<32>::edge;
    fmt::memory_buffer text;
    fmt::format_to(std::back_inserter(text), "# Hueloom look, made by hueloom-theme-gen\nTITLE \"{}\"\nLUT_3D_SIZE {}\n",
                   title, n);
    // .cube files run red fastest; the table runs blue fastest. {fmt} ignores the locale,
    // so the decimal point is always '.'.
    for (std::size_t b = 0; b < n; ++b)
        for (std::size_t g = 0; g < n; ++g)
            for (std::size_t r = 0; r < n; ++r) {
                const argb_float& e = lut.data[lut_index(n, r, g, b)];
                fmt::format_to(std::back_inserter(text), "{:.6f} {:.6f} {:.6f}\n", e.r, e.g, e.b);
            }
    return write_file_atomically(path, std::string_view(text.data(), text.size()), error);
}

}  // namespace vl1::themegen
