// "OfxImageEffectActionIsIdentity": when the look leaves every pixel as it is, the host is
// told to take the source clip at the same time, so that values outside 0..1 and everything
// the render path would quantise pass through untouched. The component decides; one without
// the identity check is always rendered.
#include "framework/iidentity_check.h"
#include "ofx/ofx_actions.h"
#include "ofx/ofx_param_bridge.h"
#include "ofx/ofx_plugin_state.h"

namespace vl1 {

OfxStatus action_is_identity(OfxImageEffectHandle effect, OfxPropertySetHandle in_args, OfxPropertySetHandle out_args)
{
    auto& state = ofx_plugin_state::get();
    const host_suites& s = state.suites;
    if (in_args == nullptr || out_args == nullptr)
        return kOfxStatReplyDefault;
    const instance_entry entry = state.find_entry(effect);
    // A pending "Open GUI" is served by the render action, which must run.
    if (!entry.record || !entry.component || entry.record->open_gui)
        return kOfxStatReplyDefault;
    iobject* face = nullptr;
    if (!entry.component->query_interface("iidentity_check_v1", &face) || face == nullptr)
        return kOfxStatReplyDefault;

    double time = 0.0;
    s.property->propGetDouble(in_args, kOfxPropTime, 0, &time);
    SetAllParamsToComponent(s, time, effect, entry.component);
    if (!static_cast<iidentity_check_v1*>(face)->is_identity())
        return kOfxStatReplyDefault;
    if (s.property->propSetString(out_args, kOfxPropName, 0, kOfxImageEffectSimpleSourceClipName) != kOfxStatOK)
        return kOfxStatReplyDefault;
    s.property->propSetDouble(out_args, kOfxPropTime, 0, time);
    return kOfxStatOK;
}

}  // namespace vl1
