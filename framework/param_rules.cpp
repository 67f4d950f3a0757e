#include "framework/param_rules.h"

#include <cstring>

namespace vl1::param_rules {

namespace {

bool in_unit_range(float c) noexcept
{
    return c >= 0.0f && c <= 1.0f;
}

bool floats_differ(float a, float b) noexcept
{
    return !(a == b);
}

}  // namespace

bool is_known_type(param_type type) noexcept
{
    return type == param_type::continuous || type == param_type::integral ||
           type == param_type::boolean || type == param_type::color;
}

void clamp(param_value& v) noexcept
{
    if (v.type == param_type::continuous) {
        if (v.value.f < v.min.f)
            v.value.f = v.min.f;
        if (v.value.f > v.max.f)
            v.value.f = v.max.f;
    } else if (v.type == param_type::integral) {
        if (v.value.i < v.min.i)
            v.value.i = v.min.i;
        if (v.value.i > v.max.i)
            v.value.i = v.max.i;
    }
}

bool admits(const param_value& v) noexcept
{
    switch (v.type) {
    case param_type::continuous:
        return v.min.f <= v.value.f && v.value.f <= v.max.f;
    case param_type::integral:
        return v.min.i <= v.value.i && v.value.i <= v.max.i;
    case param_type::boolean:
        return true;
    case param_type::color:
        return in_unit_range(v.value.argb.a) && in_unit_range(v.value.argb.r) &&
               in_unit_range(v.value.argb.g) && in_unit_range(v.value.argb.b);
    default:
        return false;
    }
}

bool data_differs(param_type type, const param_data& a, const param_data& b) noexcept
{
    switch (type) {
    case param_type::continuous:
        return floats_differ(a.f, b.f);
    case param_type::integral:
        return a.i != b.i;
    case param_type::boolean:
        return a.b != b.b;
    case param_type::color:
        return floats_differ(a.argb.a, b.argb.a) || floats_differ(a.argb.r, b.argb.r) ||
               floats_differ(a.argb.g, b.argb.g) || floats_differ(a.argb.b, b.argb.b);
    default:
        return std::memcmp(a.bytes, b.bytes, sizeof(a.bytes)) != 0;
    }
}

bool value_differs(const param_value& a, const param_value& b) noexcept
{
    return a.type != b.type || data_differs(a.type, a.value, b.value);
}

}  // namespace vl1::param_rules
