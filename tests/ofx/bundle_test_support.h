// A host with the real Hueloom bundle loaded, as every test of the OFX border uses it. The
// bundle's log is mirrored to stderr so that tests can read the lines it writes.
#pragma once

#include "host/host.h"
#include "ofx/api/ofx_image_effect.h"
#include "ofx/api/ofx_memory.h"
#include "ofx/api/ofx_message.h"
#include "ofx/api/ofx_multithread.h"
#include "ofx/api/ofx_param.h"
#include "ofx/api/ofx_property.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace bundle_test {

/// build/OFX/Plugins/Hueloom.ofx.bundle
std::filesystem::path bundle_path();

/// The bundle's binary inside it.
std::filesystem::path bundle_binary();

/// A float RGBA image over `bounds`, every pixel (r, g, b, a) a smooth function of x and y.
std::shared_ptr<vl1::ofxhost::image> gradient_image(OfxRectI bounds);

/// Hands `source` and `output` to the instance's clips and renders `window`; the status.
OfxStatus render_into(vl1::ofxhost::instance& inst, std::shared_ptr<vl1::ofxhost::image> source,
                      std::shared_ptr<vl1::ofxhost::image> output, OfxRectI window, OfxTime time = 0.0);

/// Collects what the plug-in writes to stderr while it lives.
class log_capture {
public:
    log_capture();
    ~log_capture();
    /// Stops capturing; whether a line seen so far holds `text`.
    bool contains(const std::string& text);

private:
    std::vector<std::string> lines();
    bool active_ = true;
    std::vector<std::string> lines_;
};

class bundle_fixture : public ::testing::Test {
protected:
    vl1::ofxhost::host h;

    /// Loads the plug-in record and runs OfxActionLoad; the status is checked by the caller.
    vl1::ofxhost::plugin load_plugin() { return h.load_plugin(bundle_path(), 0); }

    /// A loaded and described plug-in, ready for instances.
    vl1::ofxhost::plugin ready_plugin();

    /// Renders `inst` over the whole of `source`, into a fresh output of the same depth.
    std::shared_ptr<vl1::ofxhost::image> render(vl1::ofxhost::instance& inst, std::shared_ptr<vl1::ofxhost::image> source,
                                           OfxTime time = 0.0, OfxStatus expected = kOfxStatOK);
};

}  // namespace bundle_test
