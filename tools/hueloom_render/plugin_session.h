// The plug-in as hueloom-render drives it: found by identifier among the bundles of a search
// path, loaded and described as a host does, one filter instance, and renders of float RGBA
// images through it. Everything reaches the plug-in through OFX; nothing here knows the
// effect's classes.
#pragma once

#include "host/host.h"
#include "tools/hueloom_render/rgba_image.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vl1::render_tool {

/// The hidden parameter in which the plug-in keeps its state as base64 text.
inline constexpr const char* state_param_name = "binaryStateParam";
/// The button that asks the plug-in for its editor; closing the editor saves the state.
inline constexpr const char* editor_button_name = "Open GUI";
/// The hidden counter the button raises so that a host renders and the editor opens.
inline constexpr const char* editor_request_name = "editorRequest";

/// Folders searched for the plug-in: `plugin_path` (':'-separated) when it isn't empty,
/// otherwise OFX_PLUGIN_PATH, then `build_folder` (the build's own OFX/Plugins, when given),
/// then /usr/OFX/Plugins.
std::vector<std::filesystem::path> plugin_search_folders(const std::string& plugin_path,
                                                        const std::filesystem::path& build_folder);

struct session_settings {
    unsigned threads = 0;        // what the thread suite reports as CPUs; 0: the machine's
    bool echo_messages = false;  // print the plug-in's OFX messages to stderr
};

class plugin_session {
public:
    /// Loads and describes the first plug-in with this identifier that has the filter context.
    /// Throws render_error (plugin) naming the folders searched and what went wrong.
    plugin_session(const std::vector<std::filesystem::path>& folders, const std::string& identifier,
                   const session_settings& settings);
    ~plugin_session();
    plugin_session(const plugin_session&) = delete;
    plugin_session& operator=(const plugin_session&) = delete;

    const std::filesystem::path& bundle() const { return bundle_path; }
    std::string identifier() const { return loaded_plugin->identifier(); }

    /// The names of the parameters the plug-in defines in the filter context, in order.
    std::vector<std::string> parameter_names();

    /// Creates the filter instance; `state_text`, when not empty, is the value the state
    /// parameter has when the plug-in creates its instance, as when a host opens a project.
    /// Throws render_error (plugin), or (input) when the plug-in has no state parameter.
    ofxhost::instance& start(const std::string& state_text);
    /// The instance made by start().
    ofxhost::instance& instance() { return *live_instance; }

    /// Whether the plug-in answers OfxImageEffectActionIsIdentity for a frame of this size at
    /// `time` with its source clip at that time: the output is then the source, untouched.
    /// False when it declines or fails (the render then has its say).
    bool is_identity(double time, int width, int height);

    /// Grades `img` in place at `time`; `unassociated` tells the plug-in that colour is not
    /// multiplied by alpha. Throws render_error (frame_failed) with the plug-in's answer and
    /// its error messages.
    void render(rgba_image& img, double time, bool unassociated = false);

    /// The state text the plug-in gives its host. The plug-in hands its state over when its
    /// editor closes, so the button is pressed and a one-pixel frame rendered at `time` first,
    /// which a host does in the same order. Throws render_error (usage) when the plug-in keeps
    /// no state, (frame_failed) when that render fails.
    /// With `press_editor` the plug-in is asked to save through "Open GUI" and a render
    /// first; without, the parameter's text as it stands (after the editor closed).
    std::string capture_state(double time, bool press_editor = true);
    /// Presses "Open GUI" and renders `img` at `time`: the plug-in's editor opens on the
    /// picture, and the render returns when the user closes it.
    void open_editor(rgba_image& img, double time);

private:
    /// An image of `bounds` for the clip, the last frame's when it has the size: a sequence
    /// then doesn't map fresh pages for every frame.
    std::shared_ptr<ofxhost::image> clip_image(std::shared_ptr<ofxhost::image>& kept, const OfxRectI& bounds);

    ofxhost::host ofx_host;
    std::filesystem::path bundle_path;
    std::optional<ofxhost::plugin> loaded_plugin;
    std::optional<ofxhost::instance> live_instance;
    std::shared_ptr<ofxhost::image> source_image, output_image;
};

}  // namespace vl1::render_tool
