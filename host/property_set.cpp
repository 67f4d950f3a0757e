#include "host/property_set.h"

#include "host/status.h"

#include <cstdio>

namespace vl1::ofxhost {

namespace {

// The variant's alternatives are declared in the order of prop_type.
prop_type type_of_value(const prop_value& value) { return static_cast<prop_type>(value.index()); }

std::string format_value(const prop_value& value)
{
    char buffer[64];
    switch (type_of_value(value)) {
    case prop_type::integer: return std::to_string(std::get<int>(value));
    case prop_type::real: std::snprintf(buffer, sizeof buffer, "%g", std::get<double>(value)); return buffer;
    case prop_type::string: return "\"" + std::get<std::string>(value) + "\"";
    case prop_type::pointer:
        if (std::get<void*>(value) == nullptr)
            return "null";
        std::snprintf(buffer, sizeof buffer, "%p", std::get<void*>(value));
        return buffer;
    }
    return {};
}

}  // namespace

const char* prop_type_name(prop_type type)
{
    switch (type) {
    case prop_type::integer: return "int";
    case prop_type::real: return "double";
    case prop_type::string: return "string";
    case prop_type::pointer: return "pointer";
    }
    return "?";
}

property_set::property_set(set_access access) : handle_tag(kind), access_mode(access) {}

void property_set::define(std::string_view name, prop_type type, std::vector<prop_value> defaults,
                          prop_dimension dimension, bool plugin_writable)
{
    std::lock_guard lock(values_mutex);
    for (const auto& v : defaults) {
        if (type_of_value(v) != type)
            throw host_error("property " + std::string(name) + ": default of the wrong type");
    }
    auto it = by_name.lower_bound(name);
    if (it == by_name.end() || it->first != name) {
        it = by_name.try_emplace(it, std::string(name));
        definition_order.push_back(&it->first);
    }
    property& p = it->second;
    p.type = type;
    p.dimension = dimension;
    p.plugin_writable = plugin_writable;
    p.values.assign(defaults.begin(), defaults.end());
    p.defaults = std::move(defaults);
}

void property_set::define_int(std::string_view name, std::vector<int> values, prop_dimension dimension)
{
    define(name, prop_type::integer, {values.begin(), values.end()}, dimension);
}

void property_set::define_double(std::string_view name, std::vector<double> values, prop_dimension dimension)
{
    define(name, prop_type::real, {values.begin(), values.end()}, dimension);
}

void property_set::define_string(std::string_view name, std::vector<std::string> values,
                                 prop_dimension dimension)
{
    define(name, prop_type::string, {values.begin(), values.end()}, dimension);
}

void property_set::define_pointer(std::string_view name, void* value)
{
    define(name, prop_type::pointer, {value});
}

void property_set::protect(std::string_view name)
{
    std::lock_guard lock(values_mutex);
    auto it = by_name.find(name);
    if (it != by_name.end())
        it->second.plugin_writable = false;
}

void property_set::copy_from(const property_set& other)
{
    if (&other == this)
        return;
    std::scoped_lock lock(values_mutex, other.values_mutex);
    for (const std::string* name : other.definition_order) {
        auto [it, inserted] = by_name.insert_or_assign(*name, other.by_name.find(*name)->second);
        if (inserted)
            definition_order.push_back(&it->first);
    }
}

bool property_set::has(std::string_view name) const
{
    std::lock_guard lock(values_mutex);
    return by_name.count(name) != 0;
}

int property_set::dimension(std::string_view name) const
{
    std::lock_guard lock(values_mutex);
    auto it = by_name.find(name);
    if (it == by_name.end())
        throw host_error("no property " + std::string(name));
    return static_cast<int>(it->second.values.size());
}

prop_type property_set::type_of(std::string_view name) const
{
    std::lock_guard lock(values_mutex);
    auto it = by_name.find(name);
    if (it == by_name.end())
        throw host_error("no property " + std::string(name));
    return it->second.type;
}

std::vector<std::string> property_set::names() const
{
    std::lock_guard lock(values_mutex);
    std::vector<std::string> out;
    out.reserve(definition_order.size());
    for (const std::string* name : definition_order)
        out.push_back(*name);
    return out;
}

const property_set::property& property_set::find(std::string_view name, prop_type type, int index) const
{
    auto it = by_name.find(name);
    if (it == by_name.end())
        throw host_error("no property " + std::string(name));
    if (it->second.type != type) {
        throw host_error("property " + std::string(name) + " is of type " + prop_type_name(it->second.type) + ", not " +
                         prop_type_name(type));
    }
    if (index < 0 || index >= static_cast<int>(it->second.values.size())) {
        throw host_error("property " + std::string(name) + " has no index " + std::to_string(index));
    }
    return it->second;
}

int property_set::get_int(std::string_view name, int index) const
{
    std::lock_guard lock(values_mutex);
    return std::get<int>(find(name, prop_type::integer, index).values[index]);
}

double property_set::get_double(std::string_view name, int index) const
{
    std::lock_guard lock(values_mutex);
    return std::get<double>(find(name, prop_type::real, index).values[index]);
}

std::string property_set::get_string(std::string_view name, int index) const
{
    std::lock_guard lock(values_mutex);
    return std::get<std::string>(find(name, prop_type::string, index).values[index]);
}

void* property_set::get_pointer(std::string_view name, int index) const
{
    std::lock_guard lock(values_mutex);
    return std::get<void*>(find(name, prop_type::pointer, index).values[index]);
}

template <class T>
static std::vector<T> all_of(const std::deque<prop_value>& values)
{
    std::vector<T> out;
    for (const auto& v : values)
        out.push_back(std::get<T>(v));
    return out;
}

std::vector<int> property_set::get_ints(std::string_view name) const
{
    std::lock_guard lock(values_mutex);
    return all_of<int>(find(name, prop_type::integer, 0).values);
}

std::vector<double> property_set::get_doubles(std::string_view name) const
{
    std::lock_guard lock(values_mutex);
    return all_of<double>(find(name, prop_type::real, 0).values);
}

std::vector<std::string> property_set::get_strings(std::string_view name) const
{
    std::lock_guard lock(values_mutex);
    auto it = by_name.find(name);
    if (it == by_name.end() || it->second.type != prop_type::string)
        throw host_error("no string property " + std::string(name));
    return all_of<std::string>(it->second.values);
}

void property_set::host_set(std::string_view name, prop_type type, prop_value value, int index)
{
    std::lock_guard lock(values_mutex);
    auto it = by_name.find(name);
    if (it == by_name.end()) {
        define(name, type, {}, prop_dimension::variable);
        it = by_name.find(name);
    }
    property& p = it->second;
    if (p.type != type)
        throw host_error("property " + std::string(name) + " is of type " + prop_type_name(p.type));
    if (index < 0 || index > static_cast<int>(p.values.size())) {
        throw host_error("property " + std::string(name) + " has no index " + std::to_string(index));
    }
    assign(p, index, std::move(value));
}

void property_set::set_int(std::string_view name, int value, int index)
{
    host_set(name, prop_type::integer, value, index);
}

void property_set::set_double(std::string_view name, double value, int index)
{
    host_set(name, prop_type::real, value, index);
}

void property_set::set_string(std::string_view name, const std::string& value, int index)
{
    host_set(name, prop_type::string, value, index);
}

void property_set::set_pointer(std::string_view name, void* value, int index)
{
    host_set(name, prop_type::pointer, value, index);
}

std::string property_set::format(std::string_view name) const
{
    std::lock_guard lock(values_mutex);
    auto it = by_name.find(name);
    if (it == by_name.end())
        return {};
    std::string out;
    for (const auto& v : it->second.values) {
        if (!out.empty())
            out += ", ";
        out += format_value(v);
    }
    return out;
}

// An equal string is left in place, so a pointer handed out for it stays valid.
void property_set::assign(property& p, int index, prop_value value)
{
    if (index == static_cast<int>(p.values.size())) {
        p.values.push_back(std::move(value));
    } else if (p.values[index] != value) {
        p.values[index] = std::move(value);
    }
}

OfxStatus property_set::check_writable(const char* name, prop_type type, property** out)
{
    auto it = by_name.find(name);
    if (it == by_name.end()) {
        if (access_mode != set_access::open)
            return kOfxStatErrUnknown;
        it = by_name.try_emplace(std::string(name)).first;
        definition_order.push_back(&it->first);
        it->second.type = type;
        it->second.dimension = prop_dimension::variable;
    }
    if (access_mode == set_access::read_only || !it->second.plugin_writable)
        return kOfxStatErrUnsupported;
    if (it->second.type != type)
        return kOfxStatErrValue;
    *out = &it->second;
    return kOfxStatOK;
}

OfxStatus property_set::plugin_set(const char* name, int index, prop_value value)
{
    std::lock_guard lock(values_mutex);
    property* p = nullptr;
    if (OfxStatus st = check_writable(name, type_of_value(value), &p); st != kOfxStatOK)
        return st;
    const int size = static_cast<int>(p->values.size());
    const int limit = p->dimension == prop_dimension::variable ? size : size - 1;
    if (index < 0 || index > limit)
        return kOfxStatErrBadIndex;
    assign(*p, index, std::move(value));
    return kOfxStatOK;
}

OfxStatus property_set::plugin_set_n(const char* name, const std::vector<prop_value>& values)
{
    std::lock_guard lock(values_mutex);
    if (values.empty())
        return kOfxStatErrBadIndex;
    property* p = nullptr;
    if (OfxStatus st = check_writable(name, type_of_value(values.front()), &p); st != kOfxStatOK)
        return st;
    const auto count = values.size();
    if (p->dimension == prop_dimension::fixed && count > p->values.size())
        return kOfxStatErrBadIndex;
    for (std::size_t i = 0; i < count; ++i)
        assign(*p, static_cast<int>(i), values[i]);
    if (p->dimension == prop_dimension::variable)
        p->values.resize(count);
    return kOfxStatOK;
}

OfxStatus property_set::find_for_plugin(const char* name, prop_type type, const property** out) const
{
    auto it = by_name.find(name);
    if (it == by_name.end())
        return kOfxStatErrUnknown;
    if (it->second.type != type)
        return kOfxStatErrValue;
    *out = &it->second;
    return kOfxStatOK;
}

OfxStatus property_set::plugin_get(const char* name, int index, prop_type type, const prop_value** out) const
{
    std::lock_guard lock(values_mutex);
    const property* p = nullptr;
    if (OfxStatus st = find_for_plugin(name, type, &p); st != kOfxStatOK)
        return st;
    if (index < 0 || index >= static_cast<int>(p->values.size()))
        return kOfxStatErrBadIndex;
    *out = &p->values[index];
    return kOfxStatOK;
}

OfxStatus property_set::plugin_get_n(const char* name, int count, prop_type type,
                                     std::vector<const prop_value*>& out) const
{
    std::lock_guard lock(values_mutex);
    const property* p = nullptr;
    if (OfxStatus st = find_for_plugin(name, type, &p); st != kOfxStatOK)
        return st;
    if (count <= 0 || count > static_cast<int>(p->values.size()))
        return kOfxStatErrBadIndex;
    out.clear();
    for (int i = 0; i < count; ++i)
        out.push_back(&p->values[i]);
    return kOfxStatOK;
}

OfxStatus property_set::plugin_reset(const char* name)
{
    std::lock_guard lock(values_mutex);
    auto it = by_name.find(name);
    if (it == by_name.end())
        return kOfxStatErrUnknown;
    if (access_mode == set_access::read_only || !it->second.plugin_writable)
        return kOfxStatErrUnsupported;
    property& p = it->second;
    p.values.resize(p.defaults.size());
    for (std::size_t i = 0; i < p.defaults.size(); ++i)
        assign(p, static_cast<int>(i), p.defaults[i]);
    return kOfxStatOK;
}

OfxStatus property_set::plugin_dimension(const char* name, int* count) const
{
    std::lock_guard lock(values_mutex);
    auto it = by_name.find(name);
    if (it == by_name.end())
        return kOfxStatErrUnknown;
    *count = static_cast<int>(it->second.values.size());
    return kOfxStatOK;
}

}  // namespace vl1::ofxhost
