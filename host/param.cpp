#include "host/param.h"

#include "ofx/api/ofx_param.h"

#include <cmath>
#include <cstring>
#include <iterator>

namespace vl1::ofxhost {

namespace {

// Times closer than this are the same key; times are frames, so this is far below any step.
constexpr double key_tolerance = 1e-7;

}  // namespace

param::param(const param_kind& kind, std::string name, const OfxTime* clock)
    : handle_tag(handle_kind::param), param_type(&kind), param_name(std::move(name)), clock(clock)
{
    define_param_properties(props, kind, param_name);
}

param_value param::default_value() const
{
    param_value v;
    if (!props.has(kOfxParamPropDefault))
        return v;
    switch (props.type_of(kOfxParamPropDefault)) {
    case prop_type::string: v.text = props.get_string(kOfxParamPropDefault); break;
    case prop_type::real: {
        const auto d = props.get_doubles(kOfxParamPropDefault);
        for (std::size_t i = 0; i < d.size() && i < 4; ++i)
            v.numbers[i] = d[i];
        break;
    }
    case prop_type::integer: {
        const auto d = props.get_ints(kOfxParamPropDefault);
        for (std::size_t i = 0; i < d.size() && i < 4; ++i)
            v.numbers[i] = d[i];
        break;
    }
    case prop_type::pointer: break;
    }
    return v;
}

param_value param::normalised(param_value value) const
{
    if (param_type->shape == value_shape::integers) {
        for (int i = 0; i < param_type->count; ++i)
            value.numbers[i] = std::round(value.numbers[i]);
        if (std::strcmp(param_type->type, kOfxParamTypeBoolean) == 0)
            value.numbers[0] = value.numbers[0] != 0.0;
    }
    if (param_type->shape != value_shape::text)
        value.text.clear();
    return value;
}

bool param::animates() const
{
    if (!props.has(kOfxParamPropAnimates) || props.type_of(kOfxParamPropAnimates) != prop_type::integer)
        return true;
    return props.get_int(kOfxParamPropAnimates) != 0;
}

param::key_map::const_iterator param::find_key(OfxTime time) const
{
    auto it = keys.lower_bound(time - key_tolerance);
    if (it != keys.end() && std::fabs(it->first - time) <= key_tolerance)
        return it;
    return keys.end();
}

param_value param::interpolate(OfxTime time) const
{
    if (keys.empty())
        return constant;
    auto next = keys.upper_bound(time);
    if (next == keys.begin())
        return next->second;
    auto prev = std::prev(next);
    if (next == keys.end() || param_type->interp == interpolation::step)
        return prev->second;
    const double f = (time - prev->first) / (next->first - prev->first);
    param_value v = prev->second;
    for (int i = 0; i < param_type->count; ++i) {
        const double low = prev->second.numbers[i];
        const double high = next->second.numbers[i];
        v.numbers[i] = (high - low) * f + low;
        if (param_type->interp == interpolation::linear_rounded)
            v.numbers[i] = std::round(v.numbers[i]);
    }
    return v;
}

param_value param::value() const { return value_at(current_time()); }

param_value param::value_at(OfxTime time) const
{
    std::lock_guard lock(value_mutex);
    return interpolate(time);
}

const std::string& param::text_at(OfxTime time) const
{
    std::lock_guard lock(value_mutex);
    if (keys.empty())
        return constant.text;
    auto next = keys.upper_bound(time);
    return next == keys.begin() ? next->second.text : std::prev(next)->second.text;
}

void param::set_value(param_value value)
{
    std::lock_guard lock(value_mutex);
    if (keys.empty()) {
        constant = normalised(std::move(value));
    } else {
        set_value_at(current_time(), std::move(value));
    }
}

void param::set_value_at(OfxTime time, param_value value)
{
    std::lock_guard lock(value_mutex);
    if (!animates()) {
        constant = normalised(std::move(value));
        return;
    }
    auto it = find_key(time);
    if (it != keys.end()) {
        keys.erase(it);
    }
    keys[time] = normalised(std::move(value));
}

void param::set_constant(param_value value)
{
    std::lock_guard lock(value_mutex);
    constant = normalised(std::move(value));
}

std::vector<OfxTime> param::key_times() const
{
    std::lock_guard lock(value_mutex);
    std::vector<OfxTime> times;
    for (const auto& [t, v] : keys)
        times.push_back(t);
    return times;
}

bool param::has_key_at(OfxTime time) const
{
    std::lock_guard lock(value_mutex);
    return find_key(time) != keys.end();
}

// The last key's value stays as the constant, so deleting keys doesn't change the value at that time.
bool param::delete_key(OfxTime time)
{
    std::lock_guard lock(value_mutex);
    auto it = find_key(time);
    if (it == keys.end())
        return false;
    if (keys.size() == 1)
        constant = it->second;
    keys.erase(it);
    return true;
}

void param::delete_all_keys()
{
    std::lock_guard lock(value_mutex);
    constant = interpolate(current_time());
    keys.clear();
}

std::optional<int> param::key_index(OfxTime time, int direction) const
{
    std::lock_guard lock(value_mutex);
    int index = 0;
    std::optional<int> found;
    for (const auto& [t, v] : keys) {
        if (direction == 0 && std::fabs(t - time) <= key_tolerance)
            return index;
        if (direction < 0 && t < time - key_tolerance)
            found = index;
        if (direction > 0 && t > time + key_tolerance)
            return index;
        ++index;
    }
    return direction < 0 ? found : std::nullopt;
}

std::array<double, 4> param::derivative(OfxTime time) const
{
    std::lock_guard lock(value_mutex);
    std::array<double, 4> slope{};
    if (keys.size() < 2 || time < keys.begin()->first || time > keys.rbegin()->first)
        return slope;
    auto next = keys.upper_bound(time);
    if (next == keys.end())
        next = std::prev(keys.end());
    auto prev = std::prev(next);
    for (int i = 0; i < param_type->count; ++i) {
        slope[i] = (next->second.numbers[i] - prev->second.numbers[i]) / (next->first - prev->first);
    }
    return slope;
}

// Exact for values that are linear between keys and constant outside them: the trapezoid rule
// on the pieces between the keys that lie inside the interval.
std::array<double, 4> param::integral(OfxTime t1, OfxTime t2) const
{
    std::lock_guard lock(value_mutex);
    const double sign = t2 < t1 ? -1.0 : 1.0;
    const double a = std::fmin(t1, t2);
    const double b = std::fmax(t1, t2);
    std::vector<double> points{a};
    for (auto it = keys.upper_bound(a); it != keys.end() && it->first < b; ++it)
        points.push_back(it->first);
    points.push_back(b);
    std::array<double, 4> sum{};
    for (std::size_t p = 0; p + 1 < points.size(); ++p) {
        const param_value lo = interpolate(points[p]);
        const param_value hi = interpolate(points[p + 1]);
        for (int i = 0; i < param_type->count; ++i) {
            sum[i] += (points[p + 1] - points[p]) * (lo.numbers[i] + hi.numbers[i]) / 2.0;
        }
    }
    for (double& s : sum)
        s *= sign;
    return sum;
}

void param::copy_from(const param& from, OfxTime offset, const OfxRangeD* range)
{
    if (&from == this)
        return;
    std::scoped_lock lock(value_mutex, from.value_mutex);
    if (range == nullptr) {
        constant = from.constant;
        keys.clear();
        for (const auto& [t, v] : from.keys)
            keys[t + offset] = v;
        return;
    }
    std::erase_if(keys, [&](const auto& key) {
        return key.first >= range->min + offset && key.first <= range->max + offset;
    });
    for (const auto& [t, v] : from.keys) {
        if (t >= range->min && t <= range->max)
            keys[t + offset] = v;
    }
}

}  // namespace vl1::ofxhost
