#include "fuzz/harness/fuzz_bytes.h"

#include <algorithm>

namespace vl1::fuzz {

std::vector<uint8_t> repeat_to_size(const uint8_t* data, std::size_t data_size, std::size_t size)
{
    std::vector<uint8_t> out(size, 0);
    if (data_size == 0)
        return out;
    for (std::size_t at = 0; at < size; at += data_size)
        std::copy_n(data, std::min(data_size, size - at), out.begin() + static_cast<std::ptrdiff_t>(at));
    return out;
}

}  // namespace vl1::fuzz
