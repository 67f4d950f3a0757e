#include "color/lut_reader.h"

#include <filesystem>
#include <stdexcept>

#include "color/lut_reader_3dl.h"
#include "color/lut_reader_cube.h"
#include "color/lut_resample.h"
#include "framework/io/read_bounded_file.h"
#include "framework/string_helpers.h"

namespace vl1 {

namespace {

// Far above any real LUT (a 65-point .cube is about 8 MiB), and small enough that reading
// a wrongly named file whole can't exhaust memory.
constexpr std::uintmax_t largest_lut_file_bytes = 256u << 20;

lut_argb_variable parse(lut_file_type type, std::string_view bytes, const std::string& name)
{
    return type == lut_file_type::cube ? read_lut_cube(bytes, name) : read_lut_3dl(bytes, name);
}

std::shared_ptr<lut_argb<32>> to_shared_32(const lut_argb_variable& lut)
{
    return std::make_shared<lut_argb<32>>(resample_lut_to_32(lut));
}

}  // namespace

lut_file_type lut_file_type_of(std::string_view file_name)
{
    const std::size_t dot = file_name.rfind('.');
    const std::string extension = lowercase(std::string(dot == std::string_view::npos ? file_name : file_name.substr(dot + 1)));
    if (extension == "cube")
        return lut_file_type::cube;
    if (extension == "3dl")
        return lut_file_type::three_dl;
    return lut_file_type::unknown;
}

std::shared_ptr<lut_argb<32>> load_lut_from_memory(std::string_view bytes, const std::string& file_name)
{
    const lut_file_type type = lut_file_type_of(file_name);
    if (type == lut_file_type::unknown)
        return nullptr;
    return to_shared_32(parse(type, bytes, file_name));
}

std::shared_ptr<lut_argb<32>> load_lut_from_file_or_resource(std::string folder, std::string file_name)
{
    const lut_file_type type = lut_file_type_of(file_name);
    if (type == lut_file_type::unknown)
        return nullptr;

    const std::filesystem::path path = std::filesystem::path(folder) / file_name;
    // Only regular files: opening a named pipe blocks until a writer comes, and a device may
    // never end.
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored))
        return nullptr;
    std::string bytes;
    std::string problem;
    if (!read_bounded_file(path, largest_lut_file_bytes, bytes, problem))
        throw std::length_error(problem);
    return to_shared_32(parse(type, bytes, path.string()));
}

}  // namespace vl1
