// "OfxImageEffectActionRender": brings the component up to the host's values for the frame,
// lets it prepare its table, and sends every pixel of the render window through it, rows in
// parallel.
#include <cstdint>

#include "framework/image.h"
#include "framework/log.h"
#include "ofx/ofx_actions.h"
#include "ofx/ofx_gui_loop.h"
#include "ofx/ofx_image_view.h"
#include "ofx/ofx_param_bridge.h"
#include "ofx/ofx_plugin_state.h"
#include "ofx/ofx_render_rows.h"
#include "ofx/ofx_state_bridge.h"

namespace vl1 {
namespace {

/// The frame's pixel work: steps between fetching the images and releasing them.
void render_pixels(icomponent_v1& component, const host_suites& s, const OfxRectI& window,
                   OfxPropertySetHandle source, OfxPropertySetHandle output)
{
    // In 64 bits: a host may send a window from INT_MIN to INT_MAX.
    const int64_t w = int64_t(window.x2) - window.x1;
    const int64_t h = int64_t(window.y2) - window.y1;
    if (w <= 0 || h < 1)
        throw NoImageEx{};
    const ofx_image_view src = read_image_view(*s.property, source);
    const ofx_image_view dst = read_image_view(*s.property, output);

    log_text("Notify event_render_setup");
    component.notify(event(event_render_setup));
    log("OFX Render {0} {1} {2} ", w, h, static_cast<int32_t>((h << 16) + (w & 0x7fff) * 2 + 1));
    render_window_rows(component, window, src, dst, render_arena(s.thread_limit()));
    log_text("Notify event_render");
    component.notify(event(event_render));
    log_text("Notify event_render_setdown");
    component.notify(event(event_render_setdown));
}

/// The editor runs here, on the render thread, while the host waits for the frame.
void open_editor_if_asked(ofx_instance_data& record, const std::shared_ptr<icomponent_v1>& component,
                          const host_suites& s, OfxImageEffectHandle effect, double time,
                          OfxPropertySetHandle source)
{
    if (!record.open_gui.exchange(false))
        return;
    if (auto host = component->get_host()) {
        const ofx_image_view src = read_image_view(*s.property, source);
        if (src.depth == 0)
            log_text("Unsupported source image type!");
        else
            RunGUILoop(src, component, host);
    }
    PushDirtyParamsToHost(s, time, effect, component);
    SaveStateToHost(s, effect, component);
}
}  // namespace

OfxStatus action_render(OfxImageEffectHandle effect, OfxPropertySetHandle in_args)
{
    auto& state = ofx_plugin_state::get();
    const host_suites& s = state.suites;

    const instance_entry entry = state.find_entry(effect);
    if (!entry.record) {
        log_text("Component not found! Token was ");
        return kOfxStatFailed;
    }
    const std::shared_ptr<icomponent_v1> component = entry.component;
    if (!component)
        return kOfxStatFailed;

    double time = 0.0;
    int window_values[4] = {0, 0, 0, 0};
    s.property->propGetDouble(in_args, kOfxPropTime, 0, &time);
    s.property->propGetIntN(in_args, kOfxImageEffectPropRenderWindow, 4, window_values);
    const OfxRectI window{window_values[0], window_values[1], window_values[2], window_values[3]};
    SetAllParamsToComponent(s, time, effect, component);

    OfxImageClipHandle output_clip = nullptr, source_clip = nullptr;
    s.effect->clipGetHandle(effect, kOfxImageEffectOutputClipName, &output_clip, nullptr);
    s.effect->clipGetHandle(effect, kOfxImageEffectSimpleSourceClipName, &source_clip, nullptr);

    OfxPropertySetHandle output = nullptr, source = nullptr;
    OfxStatus status = kOfxStatOK;
    try {
        if (s.effect->clipGetImage(output_clip, time, nullptr, &output) != kOfxStatOK || output == nullptr)
            throw NoImageEx{};
        if (s.effect->clipGetImage(source_clip, time, nullptr, &source) != kOfxStatOK || source == nullptr)
            throw NoImageEx{};
        open_editor_if_asked(*entry.record, component, s, effect, time, source);
        render_pixels(*component, s, window, source, output);
    } catch (const NoImageEx&) {
        status = s.effect->abort(effect) ? kOfxStatOK : kOfxStatFailed;
    } catch (const bad_image_error& e) {
        log("Render refused: {0}", e.what());
        status = kOfxStatErrImageFormat;
    } catch (const std::exception&) {
        log_text("Exception: ");
        status = kOfxStatOK;
    }
    if (source != nullptr)
        s.effect->clipReleaseImage(source);
    if (output != nullptr)
        s.effect->clipReleaseImage(output);
    return status;
}

}  // namespace vl1
