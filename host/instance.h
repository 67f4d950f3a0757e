// An effect instance: the handle the plug-in got in OfxActionCreateInstance, with the C++ side
// a test needs to drive it: parameter values and keys, clip images, render, button presses,
// the abort answer, and destruction. Destroying sends OfxActionDestroyInstance once; the handle
// then stays recognisable as dead, so later suite calls with it answer kOfxStatErrBadHandle.
#pragma once

#include "host/effect.h"
#include "host/image.h"
#include "host/loader.h"
#include "host/param.h"

#include <array>
#include <memory>
#include <string>

namespace vl1::ofxhost {

class instance {
public:
    instance(std::shared_ptr<library> lib, OfxPlugin* record, std::unique_ptr<effect> fx);
    instance(instance&&) noexcept;
    instance& operator=(instance&& other) noexcept;
    /// Destroys the instance if it is still alive.
    ~instance();

    OfxImageEffectHandle handle() { return effect_instance->handle(); }
    effect& fx() { return *effect_instance; }
    property_set& properties() { return effect_instance->properties(); }
    const std::string& context() const { return effect_instance->context(); }
    /// kOfxPropInstanceData as the plug-in set it.
    void* instance_data() const;

    /// Throws host_error for an unknown name.
    ofxhost::param& param(const std::string& name);
    ofxhost::clip& clip(const std::string& name);

    void set_time(OfxTime time) { effect_instance->set_time(time); }
    OfxTime time() const { return effect_instance->time(); }
    /// Renders from now on run at this scale, with images that the test makes to match
    /// (scaled_bounds); 1 is full size, 0.5 a half-size proxy.
    void set_render_scale(double x, double y) { effect_instance->set_render_scale({x, y}); }
    /// Attaches an image to a clip (null detaches); throws host_error for an unknown clip.
    void set_clip_image(const std::string& clip_name, std::shared_ptr<image> img);
    void set_abort(bool aborting) { effect_instance->set_abort(aborting); }
    void abort_after(int calls) { effect_instance->abort_after(calls); }
    /// Images lent through clipGetImage and not given back.
    int outstanding_images() const { return effect_instance->outstanding_images(); }

    /// Begin sequence, render of one frame, end sequence; the render's status, or the begin
    /// action's when that failed. Throws host_error when Source and Output differ in depth
    /// and the plug-in didn't declare that it takes clips of several depths.
    OfxStatus render(OfxTime time, OfxRectI window);
    /// Renders `output`'s bounds tile by tile, as a host with tiled images does: each tile is
    /// an output image of its own, `tile_width` x `tile_height` at most, copied into `output`
    /// when rendered. The first status that isn't kOfxStatOK ends it and is returned.
    OfxStatus render_tiles(OfxTime time, const std::shared_ptr<image>& output, int tile_width, int tile_height);
    /// OfxActionInstanceChanged for a parameter, inside the begin/end bracket, at the current
    /// time; the status of OfxActionInstanceChanged. Throws host_error for an unknown name.
    OfxStatus param_changed(const std::string& name, const char* reason = kOfxChangeUserEdited);
    OfxStatus press_button(const std::string& name) { return param_changed(name); }

    /// OfxActionDestroyInstance; kOfxStatErrBadHandle when destroyed before.
    OfxStatus destroy();
    bool alive() const { return is_alive; }
    /// Marks the instance dead without telling the plug-in (its creation failed).
    void forget();

    /// Any action, for hostile-host tests; the handle defaults to this instance's.
    OfxStatus call_action(const char* action, const void* handle, OfxPropertySetHandle in_args,
                          OfxPropertySetHandle out_args);
    OfxStatus call_action(const char* action, OfxPropertySetHandle in_args = nullptr,
                          OfxPropertySetHandle out_args = nullptr);

private:
    struct render_arguments;
    OfxStatus render_with(render_arguments& arguments, OfxTime time, OfxRectI window);

    std::shared_ptr<library> binary;
    OfxPlugin* plugin_record = nullptr;
    std::unique_ptr<effect> effect_instance;
    bool is_alive = true;
    // The argument sets of the render actions, built once and refilled: a tiling host renders
    // many times a frame. A render that finds them taken by another thread builds its own.
    std::unique_ptr<render_arguments> render_sets;
};

}  // namespace vl1::ofxhost
