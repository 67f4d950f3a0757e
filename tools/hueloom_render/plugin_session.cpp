#include "tools/hueloom_render/plugin_session.h"

#include "host/property_set.h"
#include "host/status.h"
#include "ofx/api/ofx_image_effect.h"
#include "ofx/api/ofx_message.h"
#include "ofx/api/ofx_param.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstring>

namespace vl1::render_tool {

namespace {

namespace fs = std::filesystem;

std::string joined(const std::vector<fs::path>& folders)
{
    std::vector<std::string> names;
    for (const auto& f : folders)
        names.push_back(f.string());
    return fmt::format("{}", fmt::join(names, ":"));
}

bool has_filter_context(ofxhost::plugin& p)
{
    const auto contexts = p.info_without_contexts().contexts;
    return std::find(contexts.begin(), contexts.end(), kOfxImageEffectContextFilter) != contexts.end();
}

// Loads and describes one plug-in record; the reason it can't be used, or "".
std::string prepare(ofxhost::plugin& p)
{
    if (OfxStatus st = p.load(); !ofxhost::succeeded(st))
        return "OfxActionLoad failed with " + ofxhost::status_name(st);
    if (OfxStatus st = p.describe(); !ofxhost::succeeded(st)) {
        return "OfxActionDescribe failed with " + ofxhost::status_name(st);
    }
    if (!has_filter_context(p))
        return "it has no filter context";
    if (OfxStatus st = p.describe_in_context(kOfxImageEffectContextFilter); !ofxhost::succeeded(st)) {
        return "describing the filter context failed with " + ofxhost::status_name(st);
    }
    return {};
}

// Copies between the tool's rows (top first) and the host image (OFX rows count from the bottom).
void to_host(const rgba_image& img, ofxhost::image& out)
{
    for (int y = 0; y < img.height; ++y) {
        std::memcpy(out.pixel_address(0, img.height - 1 - y), img.pixel(0, y), sizeof(float) * 4 * img.width);
    }
}

void from_host(ofxhost::image& in, rgba_image& img)
{
    for (int y = 0; y < img.height; ++y) {
        std::memcpy(img.pixel(0, y), in.pixel_address(0, img.height - 1 - y), sizeof(float) * 4 * img.width);
    }
}

std::string error_messages(const std::vector<ofxhost::message_record>& messages)
{
    std::vector<std::string> texts;
    for (const auto& m : messages) {
        if (m.type == kOfxMessageError || m.type == kOfxMessageFatal)
            texts.push_back(m.text);
    }
    return texts.empty() ? "" : fmt::format(" ({})", fmt::join(texts, "; "));
}

}  // namespace

std::vector<fs::path> plugin_search_folders(const std::string& plugin_path, const fs::path& build_folder)
{
    if (!plugin_path.empty())
        return ofxhost::split_search_path(plugin_path);
    std::vector<fs::path> folders = ofxhost::default_search_path();
    if (!build_folder.empty()) folders.insert(folders.end() - 1, build_folder);  // before /usr/OFX/Plugins
    return folders;
}

plugin_session::plugin_session(const std::vector<fs::path>& folders, const std::string& identifier,
                               const session_settings& settings)
{
    ofx_host.state().cpu_count = settings.threads;
    ofx_host.echo_messages(settings.echo_messages);
    std::vector<std::string> problems;
    for (const auto& bundle : ofxhost::find_bundles(folders)) {
        try {
            const int count = ofx_host.plugin_count(bundle);
            for (int i = 0; i < count && !loaded_plugin; ++i) {
                ofxhost::plugin p = ofx_host.load_plugin(bundle, i);
                if (p.identifier() != identifier)
                    continue;
                if (std::string why = prepare(p); !why.empty()) {
                    problems.push_back(fmt::format("{}: {}", bundle.string(), why));
                    continue;
                }
                loaded_plugin.emplace(std::move(p));
                bundle_path = bundle;
            }
        } catch (const std::exception& e) {
            problems.push_back(e.what());
        }
        if (loaded_plugin)
            return;
    }
    std::string message = fmt::format("plug-in {} not found in {}", identifier, joined(folders));
    if (!problems.empty()) message += fmt::format("; {}", fmt::join(problems, "; "));
    throw render_error(exit_code::plugin, message);
}

plugin_session::~plugin_session()
{
    // The instance goes before the plug-in and the host it was made by.
    live_instance.reset();
    loaded_plugin.reset();
}

std::vector<std::string> plugin_session::parameter_names()
{
    std::vector<std::string> names;
    for (const auto& p : loaded_plugin->context_descriptor(kOfxImageEffectContextFilter)->params().params())
        names.push_back(p->name());
    return names;
}

ofxhost::instance& plugin_session::start(const std::string& state_text)
{
    ofxhost::initial_values values;
    if (!state_text.empty()) {
        if (loaded_plugin->context_descriptor(kOfxImageEffectContextFilter)->params().find(state_param_name) == nullptr) {
            throw render_error(exit_code::input, fmt::format("plug-in {} keeps no state parameter \"{}\"",
                                                             identifier(), state_param_name));
        }
        values.emplace_back(state_param_name, state_text);
    }
    try {
        live_instance.emplace(loaded_plugin->create_instance(kOfxImageEffectContextFilter, values));
    } catch (const std::exception& e) {
        throw render_error(exit_code::plugin,
                           fmt::format("creating an instance of {} failed: {}", identifier(), e.what()));
    }
    return *live_instance;
}

bool plugin_session::is_identity(double time, int width, int height)
{
    ofxhost::property_set args(ofxhost::set_access::read_only);
    args.define_double(kOfxPropTime, {time});
    args.define_string(kOfxImageEffectPropFieldToRender, {kOfxImageFieldNone});
    args.define_int(kOfxImageEffectPropRenderWindow, {0, 0, width, height});
    args.define_double(kOfxImageEffectPropRenderScale, {1.0, 1.0});
    ofxhost::property_set answer(ofxhost::set_access::fixed);
    answer.define_string(kOfxPropName, {""});
    answer.define_double(kOfxPropTime, {time});
    live_instance->set_time(time);
    const OfxStatus st = live_instance->call_action(kOfxImageEffectActionIsIdentity, args.handle(), answer.handle());
    return st == kOfxStatOK && answer.get_string(kOfxPropName) == kOfxImageEffectSimpleSourceClipName &&
           answer.get_double(kOfxPropTime) == time;
}

void plugin_session::render(rgba_image& img, double time, bool unassociated)
{
    const OfxRectI bounds{0, 0, img.width, img.height};
    const std::shared_ptr<ofxhost::image> source = clip_image(source_image, bounds);
    const std::shared_ptr<ofxhost::image> output = clip_image(output_image, bounds);
    output->fill_bytes(0);  // as a fresh image: nothing of the last frame where a plug-in writes nothing
    source->premultiplication = unassociated ? kOfxImageUnPreMultiplied : kOfxImagePreMultiplied;
    output->premultiplication = source->premultiplication;
    to_host(img, *source);
    live_instance->set_clip_image(kOfxImageEffectSimpleSourceClipName, source);
    live_instance->set_clip_image(kOfxImageEffectOutputClipName, output);
    live_instance->set_time(time);
    ofx_host.clear_messages();
    const OfxStatus st = live_instance->render(time, bounds);
    live_instance->set_clip_image(kOfxImageEffectSimpleSourceClipName, nullptr);
    live_instance->set_clip_image(kOfxImageEffectOutputClipName, nullptr);
    if (!ofxhost::succeeded(st)) {
        throw render_error(exit_code::frame_failed, fmt::format("the plug-in answered {}{}", ofxhost::status_name(st),
                                                                error_messages(ofx_host.messages())));
    }
    from_host(*output, img);
}

std::shared_ptr<ofxhost::image> plugin_session::clip_image(std::shared_ptr<ofxhost::image>& kept,
                                                           const OfxRectI& bounds)
{
    const bool fits = kept && kept->bounds().x1 == bounds.x1 && kept->bounds().y1 == bounds.y1 &&
                      kept->bounds().x2 == bounds.x2 && kept->bounds().y2 == bounds.y2;
    if (!fits)
        kept = std::make_shared<ofxhost::image>(ofxhost::pixel_depth::real, bounds);
    return kept;
}

void plugin_session::open_editor(rgba_image& img, double time)
{
    live_instance->set_time(time);
    live_instance->press_button(editor_button_name);
    render(img, time);
}

std::string plugin_session::capture_state(double time, bool press_editor)
{
    ofxhost::param* state = live_instance->fx().params().find(state_param_name);
    if (state == nullptr) {
        throw render_error(exit_code::usage, fmt::format("plug-in {} keeps no state parameter \"{}\" to save",
                                                         identifier(), state_param_name));
    }
    ofxhost::param* button = live_instance->fx().params().find(editor_button_name);
    if (press_editor && button != nullptr && std::strcmp(button->type(), kOfxParamTypePushButton) == 0) {
        live_instance->set_time(time);
        live_instance->press_button(editor_button_name);
        rgba_image pixel(1, 1);
        render(pixel, time);
    }
    return state->value().text;
}

}  // namespace vl1::render_tool
