#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "framework/cparameter.h"

namespace vl1 {

namespace {

// (int) of a float, truncating like the machine does, but defined for every input:
// a NaN or a value below the int range gives INT32_MIN, one above it INT32_MAX.
int32_t truncate_to_int(float f) noexcept
{
    if (!(f >= -2147483648.0f))
        return std::numeric_limits<int32_t>::min();
    if (f >= 2147483648.0f)
        return std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(f);
}

}  // namespace

// ---- continuous ----

cparameter_continuous_v1::cparameter_continuous_v1(std::weak_ptr<icomponent_v1> owner, std::string param_name,
                                                   float min, float max, float default_value)
    : cparameter_v1(std::move(owner), std::move(param_name), param_type::continuous)
{
    value.default_value.f = default_value;
    value.value.f = default_value;
    value.min.f = min;
    value.max.f = max;
    finish_construction();
}

float cparameter_continuous_v1::get_value()
{
    return value.value.f;
}

void cparameter_continuous_v1::set_value(float v, bool from_host)
{
    param_value next = value;
    next.value.f = v;
    set_param_value(next, from_host);
}

float cparameter_continuous_v1::get_value_normalized()
{
    return (value.value.f - value.min.f) / (value.max.f - value.min.f);
}

void cparameter_continuous_v1::set_value_normalized(float n, bool from_host)
{
    set_value((value.max.f - value.min.f) * n + value.min.f, from_host);
}

// ---- integral ----

cparameter_integral_v1::cparameter_integral_v1(std::weak_ptr<icomponent_v1> owner, std::string param_name,
                                               int min, int max, int default_value)
    : cparameter_v1(std::move(owner), std::move(param_name), param_type::integral)
{
    value.default_value.i = default_value;
    value.value.i = default_value;
    value.min.i = min;
    value.max.i = max;
    finish_construction();
}

int cparameter_integral_v1::get_value()
{
    return value.value.i;
}

void cparameter_integral_v1::set_value(int v, bool from_host)
{
    param_value next = value;
    next.value.i = v;
    set_param_value(next, from_host);
}

float cparameter_integral_v1::get_value_normalized()
{
    // Differences in 64 bits: the same as int arithmetic where that doesn't overflow.
    const int64_t offset = int64_t{value.value.i} - value.min.i;
    const int64_t range = int64_t{value.max.i} - value.min.i;
    return static_cast<float>(offset) / static_cast<float>(range);
}

void cparameter_integral_v1::set_value_normalized(float n, bool from_host)
{
    const float range = static_cast<float>(int64_t{value.max.i} - value.min.i);
    set_value(truncate_to_int(range * n + static_cast<float>(value.min.i)), from_host);
}

// ---- boolean ----

cparameter_boolean_v1::cparameter_boolean_v1(std::weak_ptr<icomponent_v1> owner, std::string param_name,
                                             bool default_value)
    : cparameter_v1(std::move(owner), std::move(param_name), param_type::boolean)
{
    value.default_value.b = default_value ? 1 : 0;
    value.value.b = default_value ? 1 : 0;
    finish_construction();
}

bool cparameter_boolean_v1::get_value()
{
    return value.value.b != 0;
}

void cparameter_boolean_v1::set_value(bool v, bool from_host)
{
    param_value next = value;
    next.value.b = v ? 1 : 0;
    set_param_value(next, from_host);
}

float cparameter_boolean_v1::get_value_normalized()
{
    return get_value() ? 1.0f : 0.0f;
}

void cparameter_boolean_v1::set_value_normalized(float n, bool from_host)
{
    set_value(n > 0.5f, from_host);
}

// ---- colour ----

cparameter_color_v1::cparameter_color_v1(std::weak_ptr<icomponent_v1> owner, std::string param_name,
                                         param_argb default_value)
    : cparameter_v1(std::move(owner), std::move(param_name), param_type::color)
{
    value.default_value.argb = default_value;
    value.value.argb = default_value;
    finish_construction();
}

param_argb cparameter_color_v1::get_value()
{
    return value.value.argb;
}

void cparameter_color_v1::set_value(param_argb v, bool from_host)
{
    param_value next = value;
    next.value.argb = v;
    set_param_value(next, from_host);
}

}  // namespace vl1
