#include "host/property_suite.h"

#include "host/host_state.h"
#include "host/property_set.h"

#include <exception>
#include <new>
#include <string>
#include <vector>

namespace vl1::ofxhost {

namespace {

// Every entry point runs its body through here: handle checks, injected failures, and no
// exception ever reaching the plug-in.
template <class Body>
OfxStatus run(const char* function, OfxPropertySetHandle handle, const char* property, Body&& body)
{
    try {
        if (auto st = injected(function, property))
            return *st;
        property_set* set = from_handle<property_set>(handle);
        if (set == nullptr)
            return kOfxStatErrBadHandle;
        if (property == nullptr)
            return kOfxStatErrValue;
        return body(*set);
    } catch (const std::bad_alloc&) {
        return kOfxStatErrMemory;
    } catch (...) {
        return kOfxStatFailed;
    }
}

template <class T>
OfxStatus set_one(const char* function, OfxPropertySetHandle h, const char* property, int index, T value)
{
    return run(function, h, property, [&](property_set& set) { return set.plugin_set(property, index, value); });
}

OfxStatus set_string(OfxPropertySetHandle h, const char* property, int index, const char* value)
{
    if (value == nullptr)
        return kOfxStatErrValue;
    return set_one("propSetString", h, property, index, std::string(value));
}

template <class T, class In>
OfxStatus set_many(const char* function, OfxPropertySetHandle h, const char* property, int count, const In* values)
{
    return run(function, h, property, [&](property_set& set) {
        if (values == nullptr)
            return kOfxStatErrValue;
        if (count <= 0)
            return kOfxStatErrBadIndex;
        std::vector<prop_value> converted;
        for (int i = 0; i < count; ++i) {
            if constexpr (std::is_same_v<T, std::string>) {
                if (values[i] == nullptr)
                    return kOfxStatErrValue;
            }
            converted.emplace_back(T(values[i]));
        }
        return set.plugin_set_n(property, converted);
    });
}

// Reads one value into *out; strings come back as pointers into the set's own storage.
template <class T, class Out>
void store(const prop_value& value, Out* out)
{
    if constexpr (std::is_same_v<T, std::string>) {
        *out = const_cast<char*>(std::get<std::string>(value).c_str());
    } else {
        *out = std::get<T>(value);
    }
}

template <class T, class Out>
OfxStatus get_one(const char* function, OfxPropertySetHandle h, const char* property, prop_type type, int index,
                  Out* out)
{
    return run(function, h, property, [&](property_set& set) {
        if (out == nullptr)
            return kOfxStatErrValue;
        const prop_value* value = nullptr;
        OfxStatus st = set.plugin_get(property, index, type, &value);
        if (st == kOfxStatOK)
            store<T>(*value, out);
        return st;
    });
}

template <class T, class Out>
OfxStatus get_many(const char* function, OfxPropertySetHandle h, const char* property, prop_type type, int count,
                   Out* out)
{
    return run(function, h, property, [&](property_set& set) {
        if (out == nullptr)
            return kOfxStatErrValue;
        std::vector<const prop_value*> values;
        OfxStatus st = set.plugin_get_n(property, count, type, values);
        if (st != kOfxStatOK)
            return st;
        for (int i = 0; i < count; ++i)
            store<T>(*values[i], out + i);
        return kOfxStatOK;
    });
}

OfxStatus prop_set_pointer(OfxPropertySetHandle h, const char* p, int index, void* value)
{
    return set_one("propSetPointer", h, p, index, value);
}
OfxStatus prop_set_string(OfxPropertySetHandle h, const char* p, int index, const char* value)
{
    return set_string(h, p, index, value);
}
OfxStatus prop_set_double(OfxPropertySetHandle h, const char* p, int index, double value)
{
    return set_one("propSetDouble", h, p, index, value);
}
OfxStatus prop_set_int(OfxPropertySetHandle h, const char* p, int index, int value)
{
    return set_one("propSetInt", h, p, index, value);
}
OfxStatus prop_set_pointer_n(OfxPropertySetHandle h, const char* p, int count, void* const* values)
{
    return set_many<void*>("propSetPointerN", h, p, count, values);
}
OfxStatus prop_set_string_n(OfxPropertySetHandle h, const char* p, int count, const char* const* values)
{
    return set_many<std::string>("propSetStringN", h, p, count, values);
}
OfxStatus prop_set_double_n(OfxPropertySetHandle h, const char* p, int count, const double* values)
{
    return set_many<double>("propSetDoubleN", h, p, count, values);
}
OfxStatus prop_set_int_n(OfxPropertySetHandle h, const char* p, int count, const int* values)
{
    return set_many<int>("propSetIntN", h, p, count, values);
}
OfxStatus prop_get_pointer(OfxPropertySetHandle h, const char* p, int index, void** value)
{
    return get_one<void*>("propGetPointer", h, p, prop_type::pointer, index, value);
}
OfxStatus prop_get_string(OfxPropertySetHandle h, const char* p, int index, char** value)
{
    return get_one<std::string>("propGetString", h, p, prop_type::string, index, value);
}
OfxStatus prop_get_double(OfxPropertySetHandle h, const char* p, int index, double* value)
{
    return get_one<double>("propGetDouble", h, p, prop_type::real, index, value);
}
OfxStatus prop_get_int(OfxPropertySetHandle h, const char* p, int index, int* value)
{
    return get_one<int>("propGetInt", h, p, prop_type::integer, index, value);
}
OfxStatus prop_get_pointer_n(OfxPropertySetHandle h, const char* p, int count, void** values)
{
    return get_many<void*>("propGetPointerN", h, p, prop_type::pointer, count, values);
}
OfxStatus prop_get_string_n(OfxPropertySetHandle h, const char* p, int count, char** values)
{
    return get_many<std::string>("propGetStringN", h, p, prop_type::string, count, values);
}
OfxStatus prop_get_double_n(OfxPropertySetHandle h, const char* p, int count, double* values)
{
    return get_many<double>("propGetDoubleN", h, p, prop_type::real, count, values);
}
OfxStatus prop_get_int_n(OfxPropertySetHandle h, const char* p, int count, int* values)
{
    return get_many<int>("propGetIntN", h, p, prop_type::integer, count, values);
}
OfxStatus prop_reset(OfxPropertySetHandle h, const char* p)
{
    return run("propReset", h, p, [&](property_set& set) { return set.plugin_reset(p); });
}
OfxStatus prop_get_dimension(OfxPropertySetHandle h, const char* p, int* count)
{
    return run("propGetDimension", h, p, [&](property_set& set) {
        return count == nullptr ? kOfxStatErrValue : set.plugin_dimension(p, count);
    });
}

const OfxPropertySuiteV1 suite = {
    prop_set_pointer,   prop_set_string,   prop_set_double,   prop_set_int,      prop_set_pointer_n,
    prop_set_string_n,  prop_set_double_n, prop_set_int_n,    prop_get_pointer,  prop_get_string,
    prop_get_double,    prop_get_int,      prop_get_pointer_n, prop_get_string_n, prop_get_double_n,
    prop_get_int_n,     prop_reset,        prop_get_dimension,
};

}  // namespace

const OfxPropertySuiteV1* property_suite() { return &suite; }

}  // namespace vl1::ofxhost
