#include "tests/ofx/bundle_test_support.h"

#include "tests/support/test_paths.h"

#include <cstdlib>
#include <sstream>

namespace bundle_test {

namespace {

// The bundle reads HUELOOM_LOG once, at its first log line: set it before any test loads it.
const bool log_to_stderr = [] { return setenv("HUELOOM_LOG", "stderr", 1) == 0; }();

}  // namespace

std::filesystem::path bundle_path()
{
    return hueloom_test::plugin_dir() / "Hueloom.ofx.bundle";
}

std::filesystem::path bundle_binary()
{
    return bundle_path() / "Contents" / "Linux-x86-64" / "Hueloom.ofx";
}

std::shared_ptr<vl1::ofxhost::image> gradient_image(OfxRectI bounds)
{
    auto img = std::make_shared<vl1::ofxhost::image>(vl1::ofxhost::pixel_depth::real, bounds);
    const double w = bounds.x2 - bounds.x1, h = bounds.y2 - bounds.y1;
    for (int y = bounds.y1; y < bounds.y2; ++y) {
        for (int x = bounds.x1; x < bounds.x2; ++x) {
            const double u = (x - bounds.x1 + 0.5) / w, v = (y - bounds.y1 + 0.5) / h;
            img->set_pixel(x, y, {u, v, 1.0 - 0.5 * (u + v), 0.25 + 0.5 * u});
        }
    }
    return img;
}

OfxStatus render_into(vl1::ofxhost::instance& inst, std::shared_ptr<vl1::ofxhost::image> source,
                      std::shared_ptr<vl1::ofxhost::image> output, OfxRectI window, OfxTime time)
{
    inst.set_clip_image(kOfxImageEffectSimpleSourceClipName, std::move(source));
    inst.set_clip_image(kOfxImageEffectOutputClipName, std::move(output));
    return inst.render(time, window);
}

log_capture::log_capture()
{
    (void)log_to_stderr;
    testing::internal::CaptureStderr();
}

log_capture::~log_capture()
{
    if (active_)
        testing::internal::GetCapturedStderr();
}

std::vector<std::string> log_capture::lines()
{
    if (active_) {
        active_ = false;
        std::istringstream in(testing::internal::GetCapturedStderr());
        for (std::string line; std::getline(in, line);)
            lines_.push_back(line);
    }
    return lines_;
}

bool log_capture::contains(const std::string& text)
{
    for (const auto& line : lines())
        if (line.find(text) != std::string::npos)
            return true;
    return false;
}

vl1::ofxhost::plugin bundle_fixture::ready_plugin()
{
    vl1::ofxhost::plugin p = load_plugin();
    EXPECT_EQ(p.load(), kOfxStatOK);
    EXPECT_EQ(p.describe(), kOfxStatOK);
    EXPECT_EQ(p.describe_in_context(kOfxImageEffectContextFilter), kOfxStatOK);
    return p;
}

std::shared_ptr<vl1::ofxhost::image> bundle_fixture::render(vl1::ofxhost::instance& inst,
                                                       std::shared_ptr<vl1::ofxhost::image> source,
                                                       OfxTime time, OfxStatus expected)
{
    auto output = std::make_shared<vl1::ofxhost::image>(source->depth(), source->bounds());
    output->fill({0.0, 0.0, 0.0, 0.0});
    EXPECT_EQ(render_into(inst, source, output, source->bounds(), time), expected);
    EXPECT_EQ(inst.outstanding_images(), 0);
    return output;
}

}  // namespace bundle_test
