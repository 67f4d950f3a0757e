#include "color/lut_sampling.h"

#include <stdexcept>

#include "color/lut_sample_kernel.h"

namespace vl1 {

namespace {

void check_size(const lut_argb<32>& table)
{
    if (table.data.size() != lut_argb<32>::entry_count)
        throw std::out_of_range("vector");
}

}  // namespace

argb_float sample_lut(const lut_argb<32>& table, const argb_float& in)
{
    check_size(table);
    return detail::sample_lut_32(table.data.data(), in);
}

void map_lut_through(lut_argb<32>& target, const lut_argb<32>& map)
{
    check_size(target);
    check_size(map);
    std::vector<argb_float> mapped = target.data;
    for (argb_float& entry : mapped)
        entry = detail::sample_lut_32(map.data.data(), entry);
    target.data = std::move(mapped);
}

}  // namespace vl1
