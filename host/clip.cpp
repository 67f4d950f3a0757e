#include "host/clip.h"

#include "ofx/api/ofx_image_effect.h"

namespace ofxhost {

clip::clip(std::string name, bool descriptor, effect* owner)
    : handle_tag(handle_kind::clip), name_(std::move(name)), descriptor_(descriptor), owner_(owner)
{
    props_.define_string(kOfxPropType, {kOfxTypeClip});
    props_.define_string(kOfxPropName, {name_});
    props_.protect(kOfxPropType);
    props_.protect(kOfxPropName);
    props_.define_string(kOfxPropLabel, {name_});
    props_.define_string(kOfxPropShortLabel, {name_});
    props_.define_string(kOfxPropLongLabel, {name_});
    props_.define_string(kOfxImageEffectPropSupportedComponents, {}, prop_dimension::variable);
    props_.define_int(kOfxImageEffectPropTemporalClipAccess, {0});
    props_.define_int(kOfxImageClipPropOptional, {0});
    props_.define_int(kOfxImageClipPropIsMask, {0});
    props_.define_int(kOfxImageEffectPropSupportsTiles, {1});
    props_.define_string("OfxImageClipPropFieldExtraction", {"OfxImageFieldDoubled"});
}

void clip::instantiate_from(const clip& descriptor)
{
    props_.copy_from(descriptor.props_);
    props_.define_string(kOfxImageEffectPropPixelDepth, {kOfxBitDepthNone});
    props_.define_string(kOfxImageEffectPropComponents, {kOfxImageComponentNone});
    props_.define_string(kOfxImageClipPropUnmappedPixelDepth, {kOfxBitDepthNone});
    props_.define_string(kOfxImageClipPropUnmappedComponents, {kOfxImageComponentNone});
    props_.define_string(kOfxImageEffectPropPreMultiplication, {kOfxImagePreMultiplied});
    props_.define_double(kOfxImagePropPixelAspectRatio, {1.0});
    props_.define_double(kOfxImageEffectPropFrameRate, {25.0});
    props_.define_double(kOfxImageEffectPropFrameRange, {0.0, 100.0});
    props_.define_double("OfxImageEffectPropUnmappedFrameRate", {25.0});
    props_.define_double("OfxImageEffectPropUnmappedFrameRange", {0.0, 100.0});
    props_.define_string("OfxImageClipPropFieldOrder", {kOfxImageFieldNone});
    props_.define_int(kOfxImageClipPropConnected, {0});
    props_.define_int("OfxImageClipPropContinuousSamples", {0});
    props_.set_access_mode(set_access::read_only);
}

void clip::attach(std::shared_ptr<image> img)
{
    image_ = std::move(img);
    const char* depth = image_ ? depth_name(image_->depth()) : kOfxBitDepthNone;
    const char* components = image_ ? kOfxImageComponentRGBA : kOfxImageComponentNone;
    props_.set_string(kOfxImageEffectPropPixelDepth, depth);
    props_.set_string(kOfxImageClipPropUnmappedPixelDepth, depth);
    props_.set_string(kOfxImageEffectPropComponents, components);
    props_.set_string(kOfxImageClipPropUnmappedComponents, components);
    props_.set_int(kOfxImageClipPropConnected, image_ ? 1 : 0);
    if (image_) {
        props_.set_string(kOfxImageEffectPropPreMultiplication, image_->premultiplication);
        props_.set_double(kOfxImagePropPixelAspectRatio, image_->pixel_aspect_ratio);
    }
}

OfxRectD clip::region_of_definition() const
{
    if (!image_) return {0, 0, 0, 0};
    const OfxRectI b = image_->bounds();
    return {double(b.x1), double(b.y1), double(b.x2), double(b.y2)};
}

}  // namespace ofxhost
