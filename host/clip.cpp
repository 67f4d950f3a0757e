#include "host/clip.h"

#include "ofx/api/ofx_image_effect.h"

namespace vl1::ofxhost {

clip::clip(std::string name, bool descriptor, effect* owner)
    : handle_tag(handle_kind::clip), clip_name(std::move(name)), describes(descriptor), owning_effect(owner)
{
    props.define_string(kOfxPropType, {kOfxTypeClip});
    props.define_string(kOfxPropName, {clip_name});
    props.protect(kOfxPropType);
    props.protect(kOfxPropName);
    props.define_string(kOfxPropLabel, {clip_name});
    props.define_string(kOfxPropShortLabel, {clip_name});
    props.define_string(kOfxPropLongLabel, {clip_name});
    props.define_string(kOfxImageEffectPropSupportedComponents, {}, prop_dimension::variable);
    props.define_int(kOfxImageEffectPropTemporalClipAccess, {0});
    props.define_int(kOfxImageClipPropOptional, {0});
    props.define_int(kOfxImageClipPropIsMask, {0});
    props.define_int(kOfxImageEffectPropSupportsTiles, {1});
    props.define_string("OfxImageClipPropFieldExtraction", {"OfxImageFieldDoubled"});
}

void clip::instantiate_from(const clip& descriptor)
{
    props.copy_from(descriptor.props);
    props.define_string(kOfxImageEffectPropPixelDepth, {kOfxBitDepthNone});
    props.define_string(kOfxImageEffectPropComponents, {kOfxImageComponentNone});
    props.define_string(kOfxImageClipPropUnmappedPixelDepth, {kOfxBitDepthNone});
    props.define_string(kOfxImageClipPropUnmappedComponents, {kOfxImageComponentNone});
    props.define_string(kOfxImageEffectPropPreMultiplication, {kOfxImagePreMultiplied});
    props.define_double(kOfxImagePropPixelAspectRatio, {1.0});
    props.define_double(kOfxImageEffectPropFrameRate, {25.0});
    props.define_double(kOfxImageEffectPropFrameRange, {0.0, 100.0});
    props.define_double("OfxImageEffectPropUnmappedFrameRate", {25.0});
    props.define_double("OfxImageEffectPropUnmappedFrameRange", {0.0, 100.0});
    props.define_string("OfxImageClipPropFieldOrder", {kOfxImageFieldNone});
    props.define_int(kOfxImageClipPropConnected, {0});
    props.define_int("OfxImageClipPropContinuousSamples", {0});
    props.set_access_mode(set_access::read_only);
}

void clip::attach(std::shared_ptr<image> img)
{
    image_attached = std::move(img);
    const char* depth = image_attached ? depth_name(image_attached->depth()) : kOfxBitDepthNone;
    const char* components = image_attached ? kOfxImageComponentRGBA : kOfxImageComponentNone;
    props.set_string(kOfxImageEffectPropPixelDepth, depth);
    props.set_string(kOfxImageClipPropUnmappedPixelDepth, depth);
    props.set_string(kOfxImageEffectPropComponents, components);
    props.set_string(kOfxImageClipPropUnmappedComponents, components);
    props.set_int(kOfxImageClipPropConnected, image_attached ? 1 : 0);
    if (image_attached) {
        props.set_string(kOfxImageEffectPropPreMultiplication, image_attached->premultiplication);
        props.set_double(kOfxImagePropPixelAspectRatio, image_attached->pixel_aspect_ratio);
    }
}

OfxRectD clip::region_of_definition() const
{
    if (!image_attached)
        return {0, 0, 0, 0};
    const OfxRectI b = image_attached->bounds();
    return {double(b.x1), double(b.y1), double(b.x2), double(b.y2)};
}

}  // namespace vl1::ofxhost
