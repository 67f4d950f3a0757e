#include "bench/bench_host_tiles.h"

#include <cstring>
#include <stdexcept>
#include <string>

#include "ofx/api/ofx_image_effect.h"

namespace vl1::bench {

host_frame_session::host_frame_session(const char* plugin_dir, const rgba_float_frame& frame,
                                       const effect_setting& setting)
    : bounds{0, 0, frame.width, frame.height}
{
    plugin.emplace(h.load_plugin(std::string(plugin_dir) + "/Hueloom.ofx.bundle", 0));
    if (plugin->load() != kOfxStatOK || plugin->describe() != kOfxStatOK ||
        plugin->describe_in_context(kOfxImageEffectContextFilter) != kOfxStatOK)
        throw std::runtime_error("the bundle in " + std::string(plugin_dir) + " won't load");
    instance.emplace(plugin->create_instance(kOfxImageEffectContextFilter, {{"Angle", double(setting.angle)},
                                                                           {"Strength", double(setting.strength)},
                                                                           {"Hue", double(setting.hue)},
                                                                           {"Chroma", double(setting.chroma)},
                                                                           {"Luminance", double(setting.luminance)}}));
    source = std::make_shared<ofxhost::image>(ofxhost::pixel_depth::real, bounds);
    output = std::make_shared<ofxhost::image>(ofxhost::pixel_depth::real, bounds);
    // Packed rows, bottom row first, as the frame's own.
    for (int y = 0; y < frame.height; ++y)
        std::memcpy(source->pixel_address(0, y), &frame.pixels[static_cast<std::size_t>(y) * frame.width * 4],
                    static_cast<std::size_t>(frame.width) * 16);
    instance->set_clip_image(kOfxImageEffectSimpleSourceClipName, source);
    instance->set_clip_image(kOfxImageEffectOutputClipName, output);
    render_whole();
}

void host_frame_session::render(const OfxRectI& window)
{
    if (instance->render(0.0, window) != kOfxStatOK)
        throw std::runtime_error("the bundle failed a render action");
}

void host_frame_session::render_whole()
{
    render(bounds);
}

void host_frame_session::render_tiles()
{
    const int w = bounds.x2 / tile_grid_side;
    const int h = bounds.y2 / tile_grid_side;
    for (int ty = 0; ty < tile_grid_side; ++ty)
        for (int tx = 0; tx < tile_grid_side; ++tx) {
            const int x2 = tx + 1 == tile_grid_side ? bounds.x2 : (tx + 1) * w;
            const int y2 = ty + 1 == tile_grid_side ? bounds.y2 : (ty + 1) * h;
            render(OfxRectI{tx * w, ty * h, x2, y2});
        }
}

}  // namespace vl1::bench
