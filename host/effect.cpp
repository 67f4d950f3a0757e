#include "host/effect.h"

#include "ofx/api/ofx_image_effect.h"

#include <cstdint>

namespace vl1::ofxhost {

namespace {

// Which effect lent which image, so clipReleaseImage, which gets only the image, finds it.
std::mutex registry_mutex;
std::map<OfxPropertySetHandle, effect*> lenders;

// Enough for every clip of an effect, each image fetched twice.
constexpr std::size_t max_spare_leases = 8;

void define_descriptor_properties(property_set& p)
{
    p.define_string(kOfxPropType, {kOfxTypeImageEffect});
    p.protect(kOfxPropType);
    p.define_string(kOfxPropLabel, {""});
    p.define_string(kOfxPropShortLabel, {""});
    p.define_string(kOfxPropLongLabel, {""});
    p.define_int(kOfxPropVersion, {}, prop_dimension::variable);
    p.define_string(kOfxPropVersionLabel, {""});
    p.define_string(kOfxPropPluginDescription, {""});
    p.define_string(kOfxImageEffectPluginPropGrouping, {""});
    p.define_string(kOfxImageEffectPropSupportedContexts, {}, prop_dimension::variable);
    p.define_string(kOfxImageEffectPropSupportedPixelDepths, {}, prop_dimension::variable);
    p.define_int(kOfxImageEffectPluginPropSingleInstance, {0});
    p.define_string(kOfxImageEffectPluginRenderThreadSafety, {kOfxImageEffectRenderInstanceSafe});
    p.define_int("OfxImageEffectPluginPropHostFrameThreading", {0});
    p.define_int(kOfxImageEffectPropSupportsMultiResolution, {1});
    p.define_int(kOfxImageEffectPropSupportsTiles, {1});
    p.define_int(kOfxImageEffectPropTemporalClipAccess, {0});
    p.define_int(kOfxImageEffectPropSupportsMultipleClipDepths, {0});
    p.define_int(kOfxImageEffectPropSupportsMultipleClipPARs, {0});
    p.define_int("OfxImageEffectPluginPropFieldRenderTwiceAlways", {1});
}

void define_instance_properties(property_set& p, const std::string& context)
{
    p.set_string(kOfxPropType, kOfxTypeImageEffectInstance);
    p.define_string(kOfxImageEffectPropContext, {context});
    p.protect(kOfxImageEffectPropContext);
    p.define_pointer(kOfxPropInstanceData, nullptr);
    p.define_double(kOfxImageEffectPropProjectSize, {1920.0, 1080.0});
    p.define_double(kOfxImageEffectPropProjectOffset, {0.0, 0.0});
    p.define_double(kOfxImageEffectPropProjectExtent, {1920.0, 1080.0});
    p.define_double(kOfxImageEffectPropProjectPixelAspectRatio, {1.0});
    p.define_double("OfxImageEffectInstancePropEffectDuration", {100.0});
    p.define_double(kOfxImageEffectPropFrameRate, {25.0});
    p.define_int(kOfxImageEffectInstancePropSequentialRender, {0});
    p.define_int(kOfxPropIsInteractive, {0});
    p.set_access_mode(set_access::fixed);
}

}  // namespace

effect::effect(effect_role role, std::string context)
    : handle_tag(handle_kind::effect),
      assigned_role(role),
      context_name(std::move(context)),
      param_list(role == effect_role::instance ? &current_time : nullptr)
{
    define_descriptor_properties(props);
    if (role == effect_role::context_descriptor) {
        props.define_string(kOfxImageEffectPropContext, {context_name});
    }
}

effect::~effect()
{
    std::lock_guard lock(registry_mutex);
    for (const auto& [h, lease] : leases)
        lenders.erase(h);
}

OfxStatus effect::define_clip(const char* name, clip** out)
{
    if (assigned_role != effect_role::context_descriptor)
        return kOfxStatErrUnsupported;
    if (name == nullptr || *name == '\0')
        return kOfxStatErrValue;
    if (find_clip(name) != nullptr)
        return kOfxStatErrExists;
    clip_list.push_back(std::make_unique<clip>(name, true, this));
    *out = clip_list.back().get();
    return kOfxStatOK;
}

clip* effect::find_clip(const std::string& name)
{
    for (auto& c : clip_list) {
        if (c->name() == name)
            return c.get();
    }
    return nullptr;
}

void effect::instantiate_from(const effect& descriptor)
{
    props.copy_from(descriptor.props);
    define_instance_properties(props, context_name);
    param_list.instantiate_from(descriptor.param_list);
    for (const auto& d : descriptor.clip_list) {
        auto c = std::make_unique<clip>(d->name(), false, this);
        c->instantiate_from(*d);
        clip_list.push_back(std::move(c));
    }
}

void effect::set_abort(bool aborting) { abort_after(aborting ? 0 : -1); }

void effect::abort_after(int calls)
{
    abort_call_count = 0;
    abort_countdown = calls < 0 ? -1 : calls;
}

int effect::answer_abort()
{
    const int seen = abort_call_count++;
    const int limit = abort_countdown;
    return limit >= 0 && seen >= limit ? 1 : 0;
}

OfxPropertySetHandle effect::lend_image(clip& c, OfxTime time)
{
    auto img = c.attached();
    if (!img)
        return nullptr;
    std::unique_ptr<image_lease> lease;
    {
        std::lock_guard lock(lease_mutex);
        if (!spare_leases.empty()) {
            lease = std::move(spare_leases.back());
            spare_leases.pop_back();
        }
    }
    if (lease)
        lease->props.revive(property_set::kind);
    else
        lease = std::make_unique<image_lease>();
    lease->img = img;
    property_set& p = lease->props;
    const auto& claims = img->claims;
    const OfxRectI b = claims.bounds.value_or(img->bounds());
    p.define_string(kOfxPropType, {kOfxTypeImage});
    p.define_pointer(kOfxImagePropData, claims.null_data ? nullptr : img->data());
    p.define_int(kOfxImagePropBounds, {b.x1, b.y1, b.x2, b.y2});
    p.define_int(kOfxImagePropRegionOfDefinition, {b.x1, b.y1, b.x2, b.y2});
    p.define_int(kOfxImagePropRowBytes, {claims.row_bytes.value_or(img->row_bytes())});
    p.define_string(kOfxImageEffectPropPixelDepth, {claims.pixel_depth.value_or(depth_name(img->depth()))});
    p.define_string(kOfxImageEffectPropComponents, {kOfxImageComponentRGBA});
    p.define_string(kOfxImageEffectPropPreMultiplication, {img->premultiplication});
    p.define_double(kOfxImageEffectPropRenderScale, {render_scale_xy[0], render_scale_xy[1]});
    p.define_double(kOfxImagePropPixelAspectRatio, {img->pixel_aspect_ratio});
    p.define_string(kOfxImagePropField, {img->field});
    const std::string id = img->unique_id.empty()
                               ? c.name() + "@" + std::to_string(time) + "#" + std::to_string(++lease_counter)
                               : img->unique_id;
    p.define_string(kOfxImagePropUniqueIdentifier, {id});

    OfxPropertySetHandle h = p.handle();
    {
        std::lock_guard lock(lease_mutex);
        leases[h] = std::move(lease);
    }
    std::lock_guard lock(registry_mutex);
    lenders[h] = this;
    ++lent_image_count;
    return h;
}

bool effect::release_image(OfxPropertySetHandle handle)
{
    effect* owner = nullptr;
    {
        std::lock_guard lock(registry_mutex);
        auto it = lenders.find(handle);
        if (it == lenders.end())
            return false;
        owner = it->second;
        lenders.erase(it);
    }
    std::lock_guard lock(owner->lease_mutex);
    auto it = owner->leases.find(handle);
    if (it == owner->leases.end())
        return true;
    std::unique_ptr<image_lease> lease = std::move(it->second);
    owner->leases.erase(it);
    lease->img.reset();
    lease->props.kill();
    if (owner->spare_leases.size() < max_spare_leases)
        owner->spare_leases.push_back(std::move(lease));
    return true;
}

int effect::outstanding_images() const
{
    std::lock_guard lock(lease_mutex);
    return static_cast<int>(leases.size());
}

}  // namespace vl1::ofxhost
