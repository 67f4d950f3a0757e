#include "host/param_set.h"

#include "ofx/api/ofx_param.h"

namespace vl1::ofxhost {

param_set::param_set(const OfxTime* clock) : handle_tag(handle_kind::param_set), clock(clock)
{
    props.set_access_mode(clock == nullptr ? set_access::open : set_access::fixed);
}

OfxStatus param_set::define(const char* type, const char* name, param** out)
{
    if (!is_descriptor())
        return kOfxStatErrUnsupported;
    if (name == nullptr || *name == '\0')
        return kOfxStatErrValue;
    const param_kind* kind = find_param_kind(type);
    if (kind == nullptr)
        return kOfxStatErrUnknown;
    if (find(name) != nullptr)
        return kOfxStatErrExists;
    param_list.push_back(std::make_unique<param>(*kind, name, nullptr));
    *out = param_list.back().get();
    return kOfxStatOK;
}

param* param_set::find(const std::string& name)
{
    for (auto& p : param_list) {
        if (p->name() == name)
            return p.get();
    }
    return nullptr;
}

const param* param_set::find(const std::string& name) const
{
    return const_cast<param_set*>(this)->find(name);
}

void param_set::instantiate_from(const param_set& descriptor)
{
    props.copy_from(descriptor.props);
    for (const auto& d : descriptor.param_list) {
        auto p = std::make_unique<param>(d->kind_of(), d->name(), clock);
        p->properties().copy_from(d->properties());
        p->properties().set_string(kOfxPropType, kOfxTypeParameterInstance);
        p->properties().set_access_mode(set_access::fixed);
        if (p->has_value())
            p->set_constant(p->default_value());
        param_list.push_back(std::move(p));
    }
}

OfxStatus param_set::edit_begin(const char* name)
{
    if (edit_open)
        return kOfxStatFailed;
    edit_open = true;
    edit_name = name == nullptr ? "" : name;
    return kOfxStatOK;
}

OfxStatus param_set::edit_end()
{
    if (!edit_open)
        return kOfxStatFailed;
    edit_open = false;
    closed_edit_names.push_back(edit_name);
    return kOfxStatOK;
}

}  // namespace vl1::ofxhost
