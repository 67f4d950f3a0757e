// Reading the small LUT samples of tests/data/lut and changing one line of them.
#pragma once

#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/test_paths.h"

namespace vl1::test {

inline std::string lut_sample_path(const std::string& name)
{
    return (hueloom_test::data_dir() / "lut" / name).string();
}

inline std::string read_lut_sample(const std::string& name)
{
    std::ifstream file(lut_sample_path(name), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// `text` with its first occurrence of `from` replaced by `to`; `from` must occur.
inline std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    if (at == std::string::npos)
        throw std::invalid_argument("sample lacks '" + from + "'");
    return text.replace(at, from.size(), to);
}

}  // namespace vl1::test
