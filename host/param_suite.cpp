#include "host/param_suite.h"

#include "host/host_state.h"
#include "host/param_set.h"

#include <cstdarg>
#include <new>

namespace vl1::ofxhost {

namespace {

template <class Body>
OfxStatus guarded(Body&& body)
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return kOfxStatErrMemory;
    } catch (...) {
        return kOfxStatFailed;
    }
}

// Finds the parameter for a value call and applies the checks every value call shares.
OfxStatus value_param(const char* function, OfxParamHandle handle, param** out)
{
    param* p = from_handle<param>(handle);
    if (p == nullptr)
        return kOfxStatErrBadHandle;
    if (auto st = injected(function, p->name().c_str()))
        return *st;
    if (p->is_descriptor())
        return kOfxStatErrBadHandle;
    if (!p->has_value())
        return kOfxStatErrUnsupported;
    *out = p;
    return kOfxStatOK;
}

// Setter tails carry values: doubles, ints or one const char*, by the kind's shape.
OfxStatus read_values(const param& p, std::va_list ap, param_value& out)
{
    const param_kind& kind = p.kind_of();
    for (int i = 0; i < kind.count; ++i) {
        out.numbers[i] = kind.shape == value_shape::reals ? va_arg(ap, double) : va_arg(ap, int);
    }
    if (kind.shape == value_shape::text) {
        const char* text = va_arg(ap, const char*);
        if (text == nullptr)
            return kOfxStatErrValue;
        out.text = text;
    }
    return kOfxStatOK;
}

// Getter tails carry pointers; text comes back as a pointer to the host's stored value.
OfxStatus write_values(const param& p, const param_value& value, const std::string* text, std::va_list ap)
{
    const param_kind& kind = p.kind_of();
    for (int i = 0; i < kind.count; ++i) {
        if (kind.shape == value_shape::reals) {
            double* d = va_arg(ap, double*);
            if (d == nullptr)
                return kOfxStatErrValue;
            *d = value.numbers[i];
        } else {
            int* n = va_arg(ap, int*);
            if (n == nullptr)
                return kOfxStatErrValue;
            *n = static_cast<int>(value.numbers[i]);
        }
    }
    if (kind.shape == value_shape::text) {
        char** t = va_arg(ap, char**);
        if (t == nullptr)
            return kOfxStatErrValue;
        *t = const_cast<char*>(text->c_str());
    }
    return kOfxStatOK;
}

OfxStatus get_at(const char* function, OfxParamHandle h, const OfxTime* time, std::va_list ap)
{
    return guarded([&] {
        param* p = nullptr;
        if (OfxStatus st = value_param(function, h, &p); st != kOfxStatOK)
            return st;
        const OfxTime t = time ? *time : p->current_time();
        if (p->kind_of().shape == value_shape::text)
            return write_values(*p, {}, &p->text_at(t), ap);
        return write_values(*p, p->value_at(t), nullptr, ap);
    });
}

OfxStatus set_at(const char* function, OfxParamHandle h, const OfxTime* time, std::va_list ap)
{
    return guarded([&] {
        param* p = nullptr;
        if (OfxStatus st = value_param(function, h, &p); st != kOfxStatOK)
            return st;
        param_value v;
        if (OfxStatus st = read_values(*p, ap, v); st != kOfxStatOK)
            return st;
        if (time) {
            p->set_value_at(*time, std::move(v));
        } else {
            p->set_value(std::move(v));
        }
        return kOfxStatOK;
    });
}

OfxStatus write_reals(const param& p, const std::array<double, 4>& values, std::va_list ap)
{
    param_value v;
    v.numbers = values;
    return write_values(p, v, nullptr, ap);
}

OfxStatus param_define(OfxParamSetHandle set, const char* type, const char* name, OfxPropertySetHandle* props)
{
    return guarded([&] {
        if (auto st = injected("paramDefine", name))
            return *st;
        param_set* s = from_handle<param_set>(set);
        if (s == nullptr)
            return kOfxStatErrBadHandle;
        param* p = nullptr;
        OfxStatus st = s->define(type, name, &p);
        if (st == kOfxStatOK && props != nullptr)
            *props = p->properties().handle();
        return st;
    });
}

OfxStatus param_get_handle(OfxParamSetHandle set, const char* name, OfxParamHandle* out, OfxPropertySetHandle* props)
{
    return guarded([&] {
        if (auto st = injected("paramGetHandle", name))
            return *st;
        param_set* s = from_handle<param_set>(set);
        if (s == nullptr)
            return kOfxStatErrBadHandle;
        if (name == nullptr || out == nullptr)
            return kOfxStatErrValue;
        param* p = s->find(name);
        if (p == nullptr)
            return kOfxStatErrUnknown;
        *out = p->handle();
        if (props != nullptr)
            *props = p->properties().handle();
        return kOfxStatOK;
    });
}

OfxStatus param_set_get_property_set(OfxParamSetHandle set, OfxPropertySetHandle* props)
{
    return guarded([&] {
        if (auto st = injected("paramSetGetPropertySet"))
            return *st;
        param_set* s = from_handle<param_set>(set);
        if (s == nullptr)
            return kOfxStatErrBadHandle;
        if (props == nullptr)
            return kOfxStatErrValue;
        *props = s->properties().handle();
        return kOfxStatOK;
    });
}

OfxStatus param_get_property_set(OfxParamHandle h, OfxPropertySetHandle* props)
{
    return guarded([&] {
        param* p = from_handle<param>(h);
        if (p == nullptr)
            return kOfxStatErrBadHandle;
        if (auto st = injected("paramGetPropertySet", p->name().c_str()))
            return *st;
        if (props == nullptr)
            return kOfxStatErrValue;
        *props = p->properties().handle();
        return kOfxStatOK;
    });
}

OfxStatus param_get_value(OfxParamHandle h, ...)
{
    std::va_list ap;
    va_start(ap, h);
    OfxStatus st = get_at("paramGetValue", h, nullptr, ap);
    va_end(ap);
    return st;
}

OfxStatus param_get_value_at_time(OfxParamHandle h, OfxTime time, ...)
{
    std::va_list ap;
    va_start(ap, time);
    OfxStatus st = get_at("paramGetValueAtTime", h, &time, ap);
    va_end(ap);
    return st;
}

OfxStatus param_get_derivative(OfxParamHandle h, OfxTime time, ...)
{
    std::va_list ap;
    va_start(ap, time);
    OfxStatus st = guarded([&] {
        param* p = nullptr;
        if (OfxStatus s = value_param("paramGetDerivative", h, &p); s != kOfxStatOK)
            return s;
        if (p->kind_of().shape != value_shape::reals)
            return kOfxStatErrValue;
        return write_reals(*p, p->derivative(time), ap);
    });
    va_end(ap);
    return st;
}

OfxStatus param_get_integral(OfxParamHandle h, OfxTime t1, OfxTime t2, ...)
{
    std::va_list ap;
    va_start(ap, t2);
    OfxStatus st = guarded([&] {
        param* p = nullptr;
        if (OfxStatus s = value_param("paramGetIntegral", h, &p); s != kOfxStatOK)
            return s;
        if (p->kind_of().shape != value_shape::reals)
            return kOfxStatErrValue;
        return write_reals(*p, p->integral(t1, t2), ap);
    });
    va_end(ap);
    return st;
}

OfxStatus param_set_value(OfxParamHandle h, ...)
{
    std::va_list ap;
    va_start(ap, h);
    OfxStatus st = set_at("paramSetValue", h, nullptr, ap);
    va_end(ap);
    return st;
}

OfxStatus param_set_value_at_time(OfxParamHandle h, OfxTime time, ...)
{
    std::va_list ap;
    va_start(ap, time);
    OfxStatus st = set_at("paramSetValueAtTime", h, &time, ap);
    va_end(ap);
    return st;
}

OfxStatus param_get_num_keys(OfxParamHandle h, unsigned int* count)
{
    return guarded([&] {
        param* p = nullptr;
        if (OfxStatus st = value_param("paramGetNumKeys", h, &p); st != kOfxStatOK)
            return st;
        if (count == nullptr)
            return kOfxStatErrValue;
        *count = static_cast<unsigned int>(p->key_times().size());
        return kOfxStatOK;
    });
}

OfxStatus param_get_key_time(OfxParamHandle h, unsigned int nth, OfxTime* time)
{
    return guarded([&] {
        param* p = nullptr;
        if (OfxStatus st = value_param("paramGetKeyTime", h, &p); st != kOfxStatOK)
            return st;
        if (time == nullptr)
            return kOfxStatErrValue;
        const auto times = p->key_times();
        if (nth >= times.size())
            return kOfxStatErrBadIndex;
        *time = times[nth];
        return kOfxStatOK;
    });
}

OfxStatus param_get_key_index(OfxParamHandle h, OfxTime time, int direction, int* index)
{
    return guarded([&] {
        param* p = nullptr;
        if (OfxStatus st = value_param("paramGetKeyIndex", h, &p); st != kOfxStatOK)
            return st;
        if (index == nullptr)
            return kOfxStatErrValue;
        const auto found = p->key_index(time, direction);
        if (!found)
            return kOfxStatFailed;
        *index = *found;
        return kOfxStatOK;
    });
}

OfxStatus param_delete_key(OfxParamHandle h, OfxTime time)
{
    return guarded([&] {
        param* p = nullptr;
        if (OfxStatus st = value_param("paramDeleteKey", h, &p); st != kOfxStatOK)
            return st;
        return p->delete_key(time) ? kOfxStatOK : kOfxStatErrBadIndex;
    });
}

OfxStatus param_delete_all_keys(OfxParamHandle h)
{
    return guarded([&] {
        param* p = nullptr;
        if (OfxStatus st = value_param("paramDeleteAllKeys", h, &p); st != kOfxStatOK)
            return st;
        p->delete_all_keys();
        return kOfxStatOK;
    });
}

OfxStatus param_copy(OfxParamHandle to, OfxParamHandle from, OfxTime offset, const OfxRangeD* range)
{
    return guarded([&] {
        param* dst = nullptr;
        if (OfxStatus st = value_param("paramCopy", to, &dst); st != kOfxStatOK)
            return st;
        param* src = from_handle<param>(from);
        if (src == nullptr || src->is_descriptor())
            return kOfxStatErrBadHandle;
        if (&src->kind_of() != &dst->kind_of())
            return kOfxStatErrValue;
        dst->copy_from(*src, offset, range);
        return kOfxStatOK;
    });
}

OfxStatus param_edit_begin(OfxParamSetHandle set, const char* name)
{
    return guarded([&] {
        if (auto st = injected("paramEditBegin", name))
            return *st;
        param_set* s = from_handle<param_set>(set);
        return s == nullptr ? kOfxStatErrBadHandle : s->edit_begin(name);
    });
}

OfxStatus param_edit_end(OfxParamSetHandle set)
{
    return guarded([&] {
        if (auto st = injected("paramEditEnd"))
            return *st;
        param_set* s = from_handle<param_set>(set);
        return s == nullptr ? kOfxStatErrBadHandle : s->edit_end();
    });
}

const OfxParameterSuiteV1 suite = {
    param_define,         param_get_handle,        param_set_get_property_set, param_get_property_set,
    param_get_value,      param_get_value_at_time, param_get_derivative,       param_get_integral,
    param_set_value,      param_set_value_at_time, param_get_num_keys,         param_get_key_time,
    param_get_key_index,  param_delete_key,        param_delete_all_keys,      param_copy,
    param_edit_begin,     param_edit_end,
};

}  // namespace

const OfxParameterSuiteV1* parameter_suite() { return &suite; }

}  // namespace vl1::ofxhost
