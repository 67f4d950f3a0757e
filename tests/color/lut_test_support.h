// Tables with recognisable contents, the small LUT samples of tests/data/lut (and one line of
// them changed), and reading back what the LUT writers wrote.
#pragma once

#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "color/lut_argb.h"
#include "tests/support/test_paths.h"

namespace vl1::test {

/// A table of edge n (any n >= 2) whose entry at grid point (r, g, b) is make(r, g, b).
inline lut_argb_variable make_lut_variable(std::size_t n, const std::function<argb_float(float, float, float)>& make)
{
    lut_argb_variable lut;
    lut.edge = n;
    lut.data.resize(lut_entry_count(n));
    for (std::size_t r = 0; r < n; ++r)
        for (std::size_t g = 0; g < n; ++g)
            for (std::size_t b = 0; b < n; ++b)
                lut.data[lut_index(n, r, g, b)] =
                    make(static_cast<float>(r), static_cast<float>(g), static_cast<float>(b));
    return lut;
}

inline lut_argb<32> make_lut_32(const std::function<argb_float(float, float, float)>& make)
{
    lut_argb<32> lut;
    lut.data = make_lut_variable(32, make).data;
    return lut;
}

/// A table of edge 32 as an export hands it to the writers.
inline lut_argb_variable as_export(const lut_argb<32>& lut) { return {32, lut.data, ""}; }

inline std::string lut_sample_path(const std::string& name)
{
    return (hueloom_test::data_dir() / "lut" / name).string();
}

inline std::string read_text(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

inline std::string read_lut_sample(const std::string& name) { return read_text(lut_sample_path(name)); }

inline std::vector<std::string> file_lines(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

/// `text` with its first occurrence of `from` replaced by `to`; `from` must occur.
inline std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    if (at == std::string::npos)
        throw std::invalid_argument("sample lacks '" + from + "'");
    return text.replace(at, from.size(), to);
}

/// What `read` throws, as its kind ("invalid_argument", "out_of_range" or "logic_error"),
/// ": " and its message; "no failure" if it returns.
inline std::string failure_of(const std::function<void()>& read)
{
    try {
        read();
    } catch (const std::invalid_argument& e) {
        return std::string("invalid_argument: ") + e.what();
    } catch (const std::out_of_range& e) {
        return std::string("out_of_range: ") + e.what();
    } catch (const std::logic_error& e) {
        return std::string("logic_error: ") + e.what();
    }
    return "no failure";
}

}  // namespace vl1::test
