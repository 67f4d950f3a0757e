#include "host/instance.h"

#include "host/status.h"
#include "ofx/api/ofx_image_effect.h"

#include <algorithm>
#include <mutex>

namespace vl1::ofxhost {

struct instance::render_arguments {
    render_arguments();
    void update(OfxTime time, OfxRectI window, const std::array<double, 2>& scale);

    std::mutex in_use;
    property_set sequence{set_access::read_only};
    property_set render{set_access::read_only};
};

instance::render_arguments::render_arguments()
{
    sequence.define_double(kOfxImageEffectPropFrameRange, {0.0, 0.0});
    sequence.define_double("OfxImageEffectPropFrameStep", {1.0});
    sequence.define_int(kOfxPropIsInteractive, {0});
    sequence.define_double(kOfxImageEffectPropRenderScale, {1.0, 1.0});

    render.define_double(kOfxPropTime, {0.0});
    render.define_string(kOfxImageEffectPropFieldToRender, {kOfxImageFieldNone});
    render.define_int(kOfxImageEffectPropRenderWindow, {0, 0, 0, 0});
    render.define_double(kOfxImageEffectPropRenderScale, {1.0, 1.0});
    render.define_int("OfxImageEffectPropSequentialRenderStatus", {0});
    render.define_int("OfxImageEffectPropInteractiveRenderStatus", {0});
    render.define_int("OfxImageEffectPropRenderQualityDraft", {0});
}

void instance::render_arguments::update(OfxTime time, OfxRectI window, const std::array<double, 2>& scale)
{
    sequence.set_double(kOfxImageEffectPropFrameRange, time, 0);
    sequence.set_double(kOfxImageEffectPropFrameRange, time, 1);
    render.set_double(kOfxPropTime, time);
    const int corners[4] = {window.x1, window.y1, window.x2, window.y2};
    for (int i = 0; i < 4; ++i)
        render.set_int(kOfxImageEffectPropRenderWindow, corners[i], i);
    for (int i = 0; i < 2; ++i) {
        sequence.set_double(kOfxImageEffectPropRenderScale, scale[i], i);
        render.set_double(kOfxImageEffectPropRenderScale, scale[i], i);
    }
}

instance::instance(std::shared_ptr<library> lib, OfxPlugin* record, std::unique_ptr<effect> fx)
    : binary(std::move(lib)),
      plugin_record(record),
      effect_instance(std::move(fx)),
      render_sets(std::make_unique<render_arguments>())
{
}

instance::instance(instance&&) noexcept = default;

instance& instance::operator=(instance&& other) noexcept
{
    if (this != &other) {
        if (effect_instance && is_alive)
            destroy();
        binary = std::move(other.binary);
        plugin_record = other.plugin_record;
        effect_instance = std::move(other.effect_instance);
        is_alive = other.is_alive;
        render_sets = std::move(other.render_sets);
    }
    return *this;
}

instance::~instance()
{
    if (effect_instance && is_alive)
        destroy();
}

void* instance::instance_data() const { return effect_instance->properties().get_pointer(kOfxPropInstanceData); }

param& instance::param(const std::string& name)
{
    ofxhost::param* p = effect_instance->params().find(name);
    if (p == nullptr)
        throw host_error("no parameter \"" + name + "\"");
    return *p;
}

clip& instance::clip(const std::string& name)
{
    ofxhost::clip* c = effect_instance->find_clip(name);
    if (c == nullptr)
        throw host_error("no clip \"" + name + "\"");
    return *c;
}

void instance::set_clip_image(const std::string& clip_name, std::shared_ptr<image> img)
{
    clip(clip_name).attach(std::move(img));
}

namespace {

// Hosts give every clip the same depth unless the plug-in declared that it takes several.
void check_clip_depths(effect& fx)
{
    const property_set& props = fx.properties();
    if (props.has(kOfxImageEffectPropSupportsMultipleClipDepths) &&
        props.get_int(kOfxImageEffectPropSupportsMultipleClipDepths) != 0)
        return;
    std::string first;
    for (const auto& c : fx.clips()) {
        if (!c->attached())
            continue;
        const std::string depth = depth_name(c->attached()->depth());
        if (first.empty())
            first = depth;
        if (depth != first) {
            throw host_error("the plug-in takes all clips at one depth, but clip " + c->name() + " is " + depth +
                             " and another " + first);
        }
    }
}

}  // namespace

OfxStatus instance::render(OfxTime time, OfxRectI window)
{
    check_clip_depths(*effect_instance);
    std::unique_lock reuse(render_sets->in_use, std::try_to_lock);
    if (reuse.owns_lock())
        return render_with(*render_sets, time, window);
    render_arguments own;
    return render_with(own, time, window);
}

OfxStatus instance::render_with(render_arguments& arguments, OfxTime time, OfxRectI window)
{
    arguments.update(time, window, effect_instance->render_scale());
    const OfxStatus begin = call_action(kOfxImageEffectActionBeginSequenceRender, arguments.sequence.handle(), nullptr);
    if (begin != kOfxStatOK && begin != kOfxStatReplyDefault)
        return begin;
    const OfxStatus st = call_action(kOfxImageEffectActionRender, arguments.render.handle(), nullptr);
    call_action(kOfxImageEffectActionEndSequenceRender, arguments.sequence.handle(), nullptr);
    return st;
}

OfxStatus instance::render_tiles(OfxTime time, const std::shared_ptr<image>& output, int tile_width,
                                 int tile_height)
{
    if (tile_width < 1 || tile_height < 1)
        throw host_error("tiles must be at least one pixel");
    const OfxRectI b = output->bounds();
    OfxStatus st = kOfxStatOK;
    for (int y = b.y1; y < b.y2 && st == kOfxStatOK; y += tile_height) {
        for (int x = b.x1; x < b.x2 && st == kOfxStatOK; x += tile_width) {
            const OfxRectI tile{x, y, std::min(x + tile_width, b.x2), std::min(y + tile_height, b.y2)};
            auto piece = std::make_shared<image>(output->depth(), tile);
            piece->copy_pixels_from(*output);
            set_clip_image(kOfxImageEffectOutputClipName, piece);
            st = render(time, tile);
            output->copy_pixels_from(*piece);
        }
    }
    set_clip_image(kOfxImageEffectOutputClipName, output);
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
    args.define_double(kOfxImageEffectPropRenderScale, {effect_instance->render_scale()[0], effect_instance->render_scale()[1]});

    call_action(kOfxActionBeginInstanceChanged, bracket.handle(), nullptr);
    const OfxStatus st = call_action(kOfxActionInstanceChanged, args.handle(), nullptr);
    call_action(kOfxActionEndInstanceChanged, bracket.handle(), nullptr);
    return st;
}

OfxStatus instance::destroy()
{
    if (!is_alive)
        return kOfxStatErrBadHandle;
    const OfxStatus st = call_action(kOfxActionDestroyInstance, nullptr, nullptr);
    forget();
    return st;
}

void instance::forget()
{
    is_alive = false;
    effect_instance->kill();
}

OfxStatus instance::call_action(const char* action, const void* handle, OfxPropertySetHandle in_args,
                                OfxPropertySetHandle out_args)
{
    return plugin_record->mainEntry(action, handle, in_args, out_args);
}

OfxStatus instance::call_action(const char* action, OfxPropertySetHandle in_args, OfxPropertySetHandle out_args)
{
    return call_action(action, effect_instance->handle(), in_args, out_args);
}

}  // namespace vl1::ofxhost
