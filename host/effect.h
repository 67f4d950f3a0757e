// An image effect as the plug-in sees it through an OfxImageEffectHandle: the descriptor made
// for OfxActionDescribe, one descriptor per context for OfxImageEffectActionDescribeInContext,
// and instances. It owns its property set, parameters and clips, the images it has lent out
// through clipGetImage, the instance's current time and the answer to the abort question.
#pragma once

#include "host/clip.h"
#include "host/handle.h"
#include "host/param_set.h"
#include "host/property_set.h"

#include <array>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace vl1::ofxhost {

enum class effect_role { descriptor, context_descriptor, instance };

class effect : public handle_tag {
public:
    static constexpr handle_kind kind = handle_kind::effect;

    /// `context` is empty for the plain descriptor.
    effect(effect_role role, std::string context);
    ~effect();

    OfxImageEffectHandle handle() { return reinterpret_cast<OfxImageEffectHandle>(this); }
    effect_role role() const { return assigned_role; }
    const std::string& context() const { return context_name; }
    property_set& properties() { return props; }
    const property_set& properties() const { return props; }
    param_set& params() { return param_list; }
    const param_set& params() const { return param_list; }

    /// clipDefine: only on a context descriptor (kOfxStatErrUnsupported elsewhere);
    /// kOfxStatErrExists for a name defined before.
    OfxStatus define_clip(const char* name, clip** out);
    clip* find_clip(const std::string& name);
    const std::vector<std::unique_ptr<clip>>& clips() const { return clip_list; }

    /// Builds an instance's properties, parameters and clips from a context descriptor.
    void instantiate_from(const effect& descriptor);

    /// The instance's current time: what paramGetValue and paramSetValue use.
    void set_time(OfxTime time) { current_time = time; }
    OfxTime time() const { return current_time; }
    /// The scale renders run at (below 1 in proxy mode); lent images carry it.
    void set_render_scale(std::array<double, 2> scale) { render_scale_xy = scale; }
    std::array<double, 2> render_scale() const { return render_scale_xy; }

    /// What abort() answers: never (the default), always, or yes once `calls` calls have been
    /// answered no. Both restart the count of abort calls.
    void set_abort(bool aborting);
    void abort_after(int calls);
    int answer_abort();
    int abort_calls() const { return abort_call_count; }

    /// Lends the clip's image as a read-only image property set; null without an image.
    OfxPropertySetHandle lend_image(clip& c, OfxTime time);
    /// Gives back an image lent by any live effect; false if the handle isn't one.
    static bool release_image(OfxPropertySetHandle handle);
    int outstanding_images() const;
    int images_lent() const { return lent_image_count; }

    /// Marks the handle as gone: suite calls with it answer kOfxStatErrBadHandle from now on.

private:
    struct image_lease {
        property_set props{set_access::read_only};
        std::shared_ptr<image> img;
    };

    effect_role assigned_role;
    std::string context_name;
    OfxTime current_time = 0.0;
    std::array<double, 2> render_scale_xy{1.0, 1.0};
    property_set props;
    param_set param_list;
    std::vector<std::unique_ptr<clip>> clip_list;

    std::atomic<int> abort_countdown{-1};  // -1: never abort
    std::atomic<int> abort_call_count{0};

    mutable std::mutex lease_mutex;
    std::map<OfxPropertySetHandle, std::unique_ptr<image_lease>> leases;
    // Given-back leases, their handles dead, kept for the next images: refilling a set costs
    // a fraction of building one, and a tiling host asks for two images per tile.
    std::vector<std::unique_ptr<image_lease>> spare_leases;
    std::atomic<int> lent_image_count{0};
    std::atomic<long> lease_counter{0};
};

}  // namespace vl1::ofxhost
