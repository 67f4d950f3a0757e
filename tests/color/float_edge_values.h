// Floats for checking that two forms of one colour operation agree bit for bit: mostly
// ordinary values around 0..1, mixed with the values where forms usually part ways (NaN,
// infinities, signed zeros, subnormals, the unit range's ends and their neighbours, grid
// points and values far outside).
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "framework/argb_float.h"

namespace vl1::test {

class edge_float_source {
public:
    explicit edge_float_source(uint32_t seed) : rng(seed) {}

    /// One in four an edge value, else uniform in `low`..`high`.
    float next(float low = -0.25f, float high = 1.25f)
    {
        if (rng() % 4 != 0)
            return std::uniform_real_distribution<float>(low, high)(rng);
        constexpr float inf = std::numeric_limits<float>::infinity();
        constexpr float edges[] = {std::numeric_limits<float>::quiet_NaN(), inf, -inf, 0.0f, -0.0f,
                                   std::numeric_limits<float>::denorm_min(), -std::numeric_limits<float>::min(),
                                   1.0f, 0.99999994f, 1.0000001f, 0.5f, 1.0f / 31.0f, 30.0f / 31.0f, -1.0f, 2.0f,
                                   1e30f, -1e30f};
        return edges[rng() % std::size(edges)];
    }

    argb_float colour(float low = -0.25f, float high = 1.25f)
    {
        return {next(low, high), next(low, high), next(low, high), next(low, high)};
    }

private:
    std::mt19937 rng;
};

inline bool same_bits(float a, float b) { return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b); }

inline bool same_bits(const argb_float& x, const argb_float& y)
{
    return same_bits(x.a, y.a) && same_bits(x.r, y.r) && same_bits(x.g, y.g) && same_bits(x.b, y.b);
}

/// The same bits, except that any two NaNs count as equal. Where both operands of an
/// addition are NaN, x86 keeps the payload of the first one, and a compiler may order the
/// operands of a commutative operation either way: the payload (and sign) of a NaN made
/// from two NaNs belongs to no rule, and no writer of a pixel or a file reads it.
inline bool same_result(float a, float b) { return same_bits(a, b) || (std::isnan(a) && std::isnan(b)); }

inline bool same_result(const argb_float& x, const argb_float& y)
{
    return same_result(x.a, y.a) && same_result(x.r, y.r) && same_result(x.g, y.g) && same_result(x.b, y.b);
}

}  // namespace vl1::test
