#include "fuzz/harness/theme_compare.h"

#include <cstring>

#include <fmt/format.h>

namespace vl1::fuzz {

namespace {

bool same_bits(float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// Empty if the tables match; null tables match only each other.
std::string table_difference(const lut_argb<32>* a, const lut_argb<32>* b, const theme_compare_options& options)
{
    if (a == nullptr || b == nullptr)
        return a == b ? std::string() : fmt::format("one table is missing ({} / {})", a != nullptr, b != nullptr);
    if (a->data.size() != b->data.size())
        return fmt::format("tables of {} and {} cells", a->data.size(), b->data.size());
    for (std::size_t i = 0; i < a->data.size(); ++i) {
        const argb_float& x = a->data[i];
        const argb_float& y = b->data[i];
        if (!same_bits(x.r, y.r) || !same_bits(x.g, y.g) || !same_bits(x.b, y.b) ||
            (options.compare_alpha && !same_bits(x.a, y.a)))
            return fmt::format("cell {} is ({}, {}, {}, {}) against ({}, {}, {}, {})", i, x.a, x.r, x.g, x.b, y.a, y.r,
                               y.g, y.b);
    }
    return {};
}

}  // namespace

std::string first_theme_difference(const hueloom_theme_v1& a, const hueloom_theme_v1& b,
                                   theme_compare_options options)
{
    if (a.uid != b.uid)
        return fmt::format("uid {:08x} against {:08x}", a.uid, b.uid);
    if (a.version != b.version)
        return fmt::format("version {} against {}", a.version, b.version);
    if (a.name != b.name)
        return fmt::format("name of {} bytes against {} bytes, or different bytes", a.name.size(), b.name.size());
    if (a.background_data != b.background_data)
        return fmt::format("background of {} bytes against {} bytes, or different bytes", a.background_data.size(),
                           b.background_data.size());
    if (a.luts.size() != b.luts.size())
        return fmt::format("{} wheel LUTs against {}", a.luts.size(), b.luts.size());
    for (std::size_t i = 0; i < a.luts.size(); ++i) {
        if (!same_bits(a.luts[i].rotation, b.luts[i].rotation))
            return fmt::format("wheel LUT {} at {} degrees against {}", i, a.luts[i].rotation, b.luts[i].rotation);
        const std::string table = table_difference(a.luts[i].lut.get(), b.luts[i].lut.get(), options);
        if (!table.empty())
            return fmt::format("wheel LUT {}: {}", i, table);
    }
    const std::string post = table_difference(a.post_processing_lut.get(), b.post_processing_lut.get(), options);
    return post.empty() ? post : "post-processing LUT: " + post;
}

}  // namespace vl1::fuzz
