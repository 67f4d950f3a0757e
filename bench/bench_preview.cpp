#include "bench/bench_preview.h"

#include <stdexcept>
#include <string>

#include "gui/display_pixels.h"

namespace vl1::bench {

namespace {

std::shared_ptr<cparameter_continuous_v1> angle_parameter(hueloom& effect)
{
    auto parameter = std::dynamic_pointer_cast<cparameter_continuous_v1>(effect.get_parameter(std::string("Angle")));
    if (!parameter)
        throw std::runtime_error("the effect has no continuous parameter Angle");
    return parameter;
}

}  // namespace

preview_session::preview_session(rgba_float_frame& frame, std::shared_ptr<hueloom> effect)
    : effect(effect), renderer(float_image_view(frame), effect, effect->get_host(), steady_clock_ms),
      angle(angle_parameter(*effect)->get_value())
{
    renderer.build_full_images();
    renderer.request(false);
    renderer.run_pass();  // the timed full pass that sets the proxy size
    renderer.take_tasks();
    if (!renderer.proxy_images().complete())
        throw std::runtime_error("the preview made no proxy pictures");
}

void preview_session::nudged_pass(bool editing)
{
    nudged = !nudged;
    angle_parameter(*effect)->set_value(nudged ? angle + 0.5f : angle, true);
    renderer.request(editing);
    renderer.run_pass();
    renderer.take_tasks();
}

void preview_session::proxy_pass() { nudged_pass(true); }

void preview_session::full_pass() { nudged_pass(false); }

void preview_session::build_full_images() { renderer.build_full_images(); }

void preview_session::convert_for_display(int reduction)
{
    gui::convert_to_display(*renderer.full_images().display, shown, reduction);
}

uint64_t preview_session::full_width() const { return renderer.full_images().source->width; }
uint64_t preview_session::full_height() const { return renderer.full_images().source->height; }
uint64_t preview_session::proxy_width() const { return renderer.proxy_images().source->width; }
uint64_t preview_session::proxy_height() const { return renderer.proxy_images().source->height; }

}  // namespace vl1::bench
