// The frame through the built bundle in our own host, as a host calls it: one render action
// over the whole frame, or one render action per tile of an 8 x 8 grid, each with the whole
// output image and the tile as its render window.
#pragma once

#include <memory>
#include <optional>

#include "bench/bench_frame.h"
#include "bench/bench_scene.h"
#include "host/host.h"

namespace vl1::bench {

/// Tiles per side of the grid.
inline constexpr int tile_grid_side = 8;

class host_frame_session {
public:
    /// Loads the bundle from `plugin_dir`, makes an instance of the built-in theme with
    /// `setting` and hands it `frame` as its source. Throws std::runtime_error when the bundle
    /// won't load or render.
    host_frame_session(const char* plugin_dir, const rgba_float_frame& frame, const effect_setting& setting);

    void render_whole();
    void render_tiles();

private:
    void render(const OfxRectI& window);

    ofxhost::host h;
    std::optional<ofxhost::plugin> plugin;
    std::optional<ofxhost::instance> instance;
    std::shared_ptr<ofxhost::image> source, output;
    OfxRectI bounds{0, 0, 0, 0};
};

}  // namespace vl1::bench
