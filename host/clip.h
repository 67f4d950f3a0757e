// A clip of a descriptor (what the plug-in declared) or of an instance (with the image a
// test attached to it). An instance clip's properties follow the attached image: pixel depth,
// components, premultiplication, pixel aspect ratio, connected.
#pragma once

#include "host/handle.h"
#include "host/image.h"
#include "host/property_set.h"

#include <memory>
#include <string>

namespace vl1::ofxhost {

class effect;

class clip : public handle_tag {
public:
    static constexpr handle_kind kind = handle_kind::clip;

    clip(std::string name, bool descriptor, effect* owner);

    OfxImageClipHandle handle() { return reinterpret_cast<OfxImageClipHandle>(this); }
    const std::string& name() const { return clip_name; }
    bool is_descriptor() const { return describes; }
    effect* owner() const { return owning_effect; }
    property_set& properties() { return props; }
    const property_set& properties() const { return props; }

    /// Copies a descriptor clip's properties and adds those of an instance, unconnected.
    void instantiate_from(const clip& descriptor);
    /// Attaches an image (or detaches with null); the image is shared with the test.
    void attach(std::shared_ptr<image> img);
    std::shared_ptr<image> attached() const { return image_attached; }
    /// The attached image's bounds; an empty rectangle without an image.
    OfxRectD region_of_definition() const;

private:
    std::string clip_name;
    bool describes;
    effect* owning_effect;
    property_set props;
    std::shared_ptr<image> image_attached;
};

}  // namespace vl1::ofxhost
