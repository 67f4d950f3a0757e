#include "host/plugin.h"

#include "host/status.h"
#include "ofx/api/ofx_image_effect.h"

namespace ofxhost {

plugin::plugin(std::shared_ptr<library> lib, OfxPlugin* record, int index)
    : lib_(std::move(lib)), record_(record), index_(index)
{
}

OfxStatus plugin::call_action(const char* action, const void* handle, OfxPropertySetHandle in_args,
                              OfxPropertySetHandle out_args)
{
    return record_->mainEntry(action, handle, in_args, out_args);
}

OfxStatus plugin::load() { return call_action(kOfxActionLoad, nullptr, nullptr, nullptr); }

OfxStatus plugin::unload()
{
    const OfxStatus st = call_action(kOfxActionUnload, nullptr, nullptr, nullptr);
    descriptor_.reset();
    contexts_.clear();
    return st;
}

plugin_info plugin::scan()
{
    const auto fail = [&](const char* action, OfxStatus st) {
        return host_error(identifier() + ": " + action + " failed with " + status_name(st));
    };
    if (OfxStatus st = load(); !succeeded(st)) throw fail(kOfxActionLoad, st);
    if (OfxStatus st = describe(); !succeeded(st)) {
        unload();
        throw fail(kOfxActionDescribe, st);
    }
    plugin_info info = info_without_contexts();
    unload();
    return info;
}

OfxStatus plugin::describe()
{
    descriptor_ = std::make_unique<effect>(effect_role::descriptor, "");
    return call_action(kOfxActionDescribe, descriptor_->handle(), nullptr, nullptr);
}

OfxStatus plugin::describe_in_context(const std::string& context)
{
    if (!descriptor_) {
        if (OfxStatus st = describe(); !succeeded(st)) return st;
    }
    auto d = std::make_unique<effect>(effect_role::context_descriptor, context);
    d->properties().copy_from(descriptor_->properties());
    d->properties().set_string(kOfxImageEffectPropContext, context);
    property_set in_args(set_access::read_only);
    in_args.define_string(kOfxImageEffectPropContext, {context});
    const OfxStatus st = call_action(kOfxImageEffectActionDescribeInContext, d->handle(), in_args.handle(), nullptr);
    if (succeeded(st)) contexts_[context] = std::move(d);
    return st;
}

effect* plugin::context_descriptor(const std::string& context)
{
    auto it = contexts_.find(context);
    return it == contexts_.end() ? nullptr : it->second.get();
}

plugin_info plugin::info_without_contexts()
{
    if (!descriptor_) describe();
    return describe_plugin(identifier(), version_major(), version_minor(), *descriptor_);
}

plugin_info plugin::info()
{
    plugin_info out = info_without_contexts();
    for (const auto& context : out.contexts) {
        if (!context_descriptor(context)) describe_in_context(context);
        if (effect* d = context_descriptor(context)) out.per_context.push_back(describe_context(*d));
    }
    return out;
}

instance plugin::create_instance(const std::string& context, const initial_values& values)
{
    effect* d = context_descriptor(context);
    if (d == nullptr) {
        const OfxStatus st = describe_in_context(context);
        d = context_descriptor(context);
        if (d == nullptr) {
            throw host_error(identifier() + ": describing in context " + context + " failed with " + status_name(st));
        }
    }
    auto e = std::make_unique<effect>(effect_role::instance, context);
    e->instantiate_from(*d);
    for (const auto& [name, value] : values) {
        param* p = e->params().find(name);
        if (p == nullptr) throw host_error(identifier() + " has no parameter \"" + name + "\"");
        p->set_constant(value);
    }
    instance inst(lib_, record_, std::move(e));
    const OfxStatus st = call_action(kOfxActionCreateInstance, inst.handle(), nullptr, nullptr);
    if (!succeeded(st)) {
        inst.forget();
        throw host_error(identifier() + ": creating an instance failed with " + status_name(st));
    }
    return inst;
}

}  // namespace ofxhost
