#include "host/instance.h"

#include "host/status.h"
#include "ofx/api/ofx_image_effect.h"

namespace ofxhost {

instance::instance(std::shared_ptr<library> lib, OfxPlugin* record, std::unique_ptr<effect> fx)
    : lib_(std::move(lib)), record_(record), fx_(std::move(fx))
{
}

instance& instance::operator=(instance&& other) noexcept
{
    if (this != &other) {
        if (fx_ && alive_) destroy();
        lib_ = std::move(other.lib_);
        record_ = other.record_;
        fx_ = std::move(other.fx_);
        alive_ = other.alive_;
        render_scale_ = other.render_scale_;
    }
    return *this;
}

instance::~instance()
{
    if (fx_ && alive_) destroy();
}

void* instance::instance_data() const { return fx_->properties().get_pointer(kOfxPropInstanceData); }

param& instance::param(const std::string& name)
{
    ofxhost::param* p = fx_->params().find(name);
    if (p == nullptr) throw host_error("no parameter \"" + name + "\"");
    return *p;
}

clip& instance::clip(const std::string& name)
{
    ofxhost::clip* c = fx_->find_clip(name);
    if (c == nullptr) throw host_error("no clip \"" + name + "\"");
    return *c;
}

void instance::set_clip_image(const std::string& clip_name, std::shared_ptr<image> img)
{
    clip(clip_name).attach(std::move(img));
}

OfxStatus instance::render(OfxTime time, OfxRectI window)
{
    property_set sequence(set_access::read_only);
    sequence.define_double(kOfxImageEffectPropFrameRange, {time, time});
    sequence.define_double("OfxImageEffectPropFrameStep", {1.0});
    sequence.define_int(kOfxPropIsInteractive, {0});
    sequence.define_double(kOfxImageEffectPropRenderScale, {render_scale_[0], render_scale_[1]});

    property_set args(set_access::read_only);
    args.define_double(kOfxPropTime, {time});
    args.define_string(kOfxImageEffectPropFieldToRender, {kOfxImageFieldNone});
    args.define_int(kOfxImageEffectPropRenderWindow, {window.x1, window.y1, window.x2, window.y2});
    args.define_double(kOfxImageEffectPropRenderScale, {render_scale_[0], render_scale_[1]});
    args.define_int("OfxImageEffectPropSequentialRenderStatus", {0});
    args.define_int("OfxImageEffectPropInteractiveRenderStatus", {0});
    args.define_int("OfxImageEffectPropRenderQualityDraft", {0});

    const OfxStatus begin = call_action(kOfxImageEffectActionBeginSequenceRender, sequence.handle(), nullptr);
    if (begin != kOfxStatOK && begin != kOfxStatReplyDefault) return begin;
    const OfxStatus st = call_action(kOfxImageEffectActionRender, args.handle(), nullptr);
    call_action(kOfxImageEffectActionEndSequenceRender, sequence.handle(), nullptr);
    return st;
}

OfxStatus instance::param_changed(const std::string& name, const char* reason)
{
    param(name);  // an unknown name is the caller's mistake, not the plug-in's
    property_set bracket(set_access::read_only);
    bracket.define_string(kOfxPropChangeReason, {reason});
    property_set args(set_access::read_only);
    args.define_string(kOfxPropType, {kOfxTypeParameter});
    args.define_string(kOfxPropName, {name});
    args.define_string(kOfxPropChangeReason, {reason});
    args.define_double(kOfxPropTime, {time()});
    args.define_double(kOfxImageEffectPropRenderScale, {render_scale_[0], render_scale_[1]});

    call_action(kOfxActionBeginInstanceChanged, bracket.handle(), nullptr);
    const OfxStatus st = call_action(kOfxActionInstanceChanged, args.handle(), nullptr);
    call_action(kOfxActionEndInstanceChanged, bracket.handle(), nullptr);
    return st;
}

OfxStatus instance::destroy()
{
    if (!alive_) return kOfxStatErrBadHandle;
    const OfxStatus st = call_action(kOfxActionDestroyInstance, nullptr, nullptr);
    forget();
    return st;
}

void instance::forget()
{
    alive_ = false;
    fx_->kill();
}

OfxStatus instance::call_action(const char* action, const void* handle, OfxPropertySetHandle in_args,
                                OfxPropertySetHandle out_args)
{
    return record_->mainEntry(action, handle, in_args, out_args);
}

OfxStatus instance::call_action(const char* action, OfxPropertySetHandle in_args, OfxPropertySetHandle out_args)
{
    return call_action(action, fx_->handle(), in_args, out_args);
}

}  // namespace ofxhost
