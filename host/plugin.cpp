#include "host/plugin.h"

#include "host/status.h"
#include "ofx/api/ofx_image_effect.h"

namespace vl1::ofxhost {

plugin::plugin(std::shared_ptr<library> lib, OfxPlugin* record, int index)
    : binary(std::move(lib)), plugin_record(record), record_index(index)
{
}

OfxStatus plugin::call_action(const char* action, const void* handle, OfxPropertySetHandle in_args,
                              OfxPropertySetHandle out_args)
{
    return plugin_record->mainEntry(action, handle, in_args, out_args);
}

OfxStatus plugin::load() { return call_action(kOfxActionLoad, nullptr, nullptr, nullptr); }

OfxStatus plugin::unload()
{
    const OfxStatus st = call_action(kOfxActionUnload, nullptr, nullptr, nullptr);
    main_descriptor.reset();
    context_descriptors.clear();
    return st;
}

plugin_info plugin::scan()
{
    const auto fail = [&](const char* action, OfxStatus st) {
        return host_error(identifier() + ": " + action + " failed with " + status_name(st));
    };
    if (OfxStatus st = load(); !succeeded(st))
        throw fail(kOfxActionLoad, st);
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
    main_descriptor = std::make_unique<effect>(effect_role::descriptor, "");
    return call_action(kOfxActionDescribe, main_descriptor->handle(), nullptr, nullptr);
}

OfxStatus plugin::describe_in_context(const std::string& context)
{
    if (!main_descriptor) {
        if (OfxStatus st = describe(); !succeeded(st))
            return st;
    }
    auto d = std::make_unique<effect>(effect_role::context_descriptor, context);
    d->properties().copy_from(main_descriptor->properties());
    d->properties().set_string(kOfxImageEffectPropContext, context);
    property_set in_args(set_access::read_only);
    in_args.define_string(kOfxImageEffectPropContext, {context});
    const OfxStatus st = call_action(kOfxImageEffectActionDescribeInContext, d->handle(), in_args.handle(), nullptr);
    if (succeeded(st))
        context_descriptors[context] = std::move(d);
    return st;
}

effect* plugin::context_descriptor(const std::string& context)
{
    auto it = context_descriptors.find(context);
    return it == context_descriptors.end() ? nullptr : it->second.get();
}

plugin_info plugin::info_without_contexts()
{
    if (!main_descriptor)
        describe();
    return describe_plugin(identifier(), version_major(), version_minor(), *main_descriptor);
}

plugin_info plugin::info()
{
    plugin_info out = info_without_contexts();
    for (const auto& context : out.contexts) {
        if (!context_descriptor(context))
            describe_in_context(context);
        if (effect* d = context_descriptor(context))
            out.per_context.push_back(describe_context(*d));
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
        if (p == nullptr)
            throw host_error(identifier() + " has no parameter \"" + name + "\"");
        p->set_constant(value);
    }
    instance inst(binary, plugin_record, std::move(e));
    const OfxStatus st = call_action(kOfxActionCreateInstance, inst.handle(), nullptr, nullptr);
    if (!succeeded(st)) {
        inst.forget();
        throw host_error(identifier() + ": creating an instance failed with " + status_name(st));
    }
    return inst;
}

}  // namespace vl1::ofxhost
