// Reading back what the LUT writers wrote.
#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "color/lut_argb.h"

namespace vl1::test {

inline std::vector<std::string> file_lines(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

/// The identity of lut_argb<32> as the table an export hands to the writers.
inline lut_argb_variable exported_identity()
{
    lut_argb_variable lut;
    lut.edge = 32;
    lut.data = lut_argb<32>().data;
    return lut;
}

}  // namespace vl1::test
