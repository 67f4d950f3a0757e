// Channel-wise arithmetic on argb_float. All four channels take part, alpha included, in
// single precision, so that every caller gets the same bits for the same operation order.
#pragma once

#include "framework/argb_float.h"

namespace vl1 {

inline argb_float operator+(const argb_float& x, const argb_float& y)
{
    return {x.a + y.a, x.r + y.r, x.g + y.g, x.b + y.b};
}

inline argb_float operator-(const argb_float& x, const argb_float& y)
{
    return {x.a - y.a, x.r - y.r, x.g - y.g, x.b - y.b};
}

inline argb_float operator*(const argb_float& x, float factor)
{
    return {x.a * factor, x.r * factor, x.g * factor, x.b * factor};
}

/// Exact comparison in the order a, b, r, g. A NaN in any channel makes the values unequal,
/// and +0.0 equals -0.0, as with plain float comparison.
inline bool operator==(const argb_float& x, const argb_float& y)
{
    return x.a == y.a && x.b == y.b && x.r == y.r && x.g == y.g;
}

inline bool operator!=(const argb_float& x, const argb_float& y)
{
    return !(x == y);
}

}  // namespace vl1
