// The editor's preview on a scripted clock: the size of its passes, found from one timed full
// pass, and the loop that asks for them and hands the pictures on, with a window system of
// the test's own.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "framework/ccomponent.h"
#include "framework/chost.h"
#include "framework/iview.h"
#include "framework/window.h"
#include "ofx/ofx_gui_loop.h"
#include "ofx/ofx_preview.h"

namespace vl1 {
namespace {

/// A float RGBA frame of one colour, as a render action hands it over.
struct float_frame {
    std::vector<float> pixels;
    ofx_image_view view;

    float_frame(int width, int height) : pixels(std::size_t(width) * height * 4, 0.5f)
    {
        view.depth = 32;
        view.bounds = {0, 0, width, height};
        view.data = reinterpret_cast<uint8_t*>(pixels.data());
        view.row_bytes = std::ptrdiff_t(width) * 16;
    }
};

/// Each pass reads the clock twice; this one says every pass took `pass_ms`.
preview_renderer::clock_ms passes_taking(int64_t pass_ms)
{
    auto calls = std::make_shared<int64_t>(0);
    return [calls, pass_ms] { return (*calls)++ % 2 == 0 ? 0 : pass_ms; };
}

/// Records the width of every picture handed to the editor.
class picture_component : public ccomponent_v1 {
public:
    void notify(event e) override
    {
        if (e.type == event_render)
            if (auto result = e.result.lock())
                pictures.push_back(result->width);
    }
    std::shared_ptr<iview_v1> create_view() override { return editor; }

    std::shared_ptr<iview_v1> editor;
    std::vector<uint64_t> pictures;  // on the editor's thread only
};

TEST(Preview, ProxySizeFollowsTheTimedFullPass)
{
    struct {
        int width, height;
        int64_t full_pass_ms;
        uint64_t full_width, full_height, proxy_width;
    } const cases[] = {
        {1920, 20, 60, 1920, 20, 1920},   // fits the budget: the proxy is the full picture
        {3840, 20, 120, 3840, 20, 1920},  // twice the budget: half the side
        {3840, 20, 150, 3840, 20, 1920},  // 1536 would fit; 960 is below it, so back to 1920
        {7680, 40, 120, 3840, 20, 1920},  // wider than 3840: reduced first, timed on what is left
        {640, 360, 60, 640, 360, 640},    // a small frame is never enlarged
        {640, 360, 130, 640, 360, 320},
    };
    auto component = std::make_shared<picture_component>();
    auto host = std::make_shared<chost_v1>(component);
    component->initialize(host);
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << "x" << c.height << " in " << c.full_pass_ms << " ms");
        float_frame frame(c.width, c.height);
        preview_renderer preview(frame.view, component, host, passes_taking(c.full_pass_ms));
        preview.build_full_images();
        preview.request(false);
        preview.run_pass();
        const preview_images &full = preview.full_images(), &proxy = preview.proxy_images();
        ASSERT_TRUE(full.complete() && proxy.complete());
        EXPECT_EQ(full.source->width, c.full_width);
        EXPECT_EQ(full.source->height, c.full_height);
        EXPECT_EQ(proxy.source->width, c.proxy_width);
        EXPECT_EQ(proxy.source->height, c.full_height * c.proxy_width / c.full_width);
        EXPECT_EQ(proxy.source == full.source && proxy.result == full.result && proxy.display == full.display,
                  c.proxy_width == c.full_width)
            << "within the budget the proxy passes run on the full pictures themselves";
        EXPECT_EQ(preview.take_tasks().size(), 1u) << "one picture for the editor";
    }
}

// ---- The loop, with a window system that shows nothing -------------------------------------

class quiet_window : public window {
public:
    void begin_modal() override { modal = true; }
    void end_modal() override { modal = false; }
    bool is_modal() const override { return modal; }
    bool is_open() const override { return true; }
    void close() override {}
    bool pop_pending_messages() override { return true; }

private:
    bool modal = false;
};

class quiet_factory : public window_factory {
public:
    std::shared_ptr<window> create_window(rect, const std::string&, void*) override
    {
        return std::make_shared<quiet_window>();
    }
    bool get_host_window(void**) override { return false; }
    void set_icon_name(const std::string&) override {}
};

/// A host with a window to stand in front of.
class windowed_host : public chost_v1 {
public:
    using chost_v1::chost_v1;
    bool get_host_window(void** out) override
    {
        *out = this;
        return true;
    }
};

/// An editor whose user is the test: `on_idle` runs at each turn of the loop.
class scripted_view : public iview_v1 {
public:
    bool query_interface(const std::string&, iobject**) override { return false; }
    rect get_rect() const override { return {1024, 528}; }
    bool open(std::shared_ptr<window>) override { return true; }
    void close() override { open_flag = false; }
    bool is_open() override { return open_flag; }
    bool is_editing() override { return editing; }
    bool idle() override
    {
        on_idle();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return true;
    }
    void set_control_from_parameter(std::shared_ptr<iparameter_v1>, bool) override {}
    void set_preview_image(image&) override {}

    std::atomic<bool> open_flag{true};
    bool editing = false;
    std::function<void()> on_idle = [] {};
};

class PreviewLoop : public testing::Test {
protected:
    void SetUp() override
    {
        window_factory::install(&factory);
        component->editor = view;
        component->initialize(host);
    }
    void TearDown() override { window_factory::install(nullptr); }

    quiet_factory factory;
    float_frame frame{3840, 20};
    std::shared_ptr<picture_component> component = std::make_shared<picture_component>();
    std::shared_ptr<windowed_host> host = std::make_shared<windowed_host>(component);
    std::shared_ptr<scripted_view> view = std::make_shared<scripted_view>();
};

TEST_F(PreviewLoop, TheFirstTurnRendersFullADragGetsProxiesAndLettingGoOneFullPicture)
{
    // The user holds a control from the start: moves it for three pictures, holds it still a
    // while, lets go, and closes the editor a while later.
    view->editing = true;
    enum { moving, holding, let_go } phase = moving;
    int turns = 0;
    std::size_t pictures_held = 0;
    view->on_idle = [&] {
        ++turns;
        if (phase == moving) {
            host->schedule_render();  // a changed parameter
            if (component->pictures.size() >= 3 || turns > 5000)
                phase = holding, turns = 0;
        } else if (phase == holding && turns == 200) {
            pictures_held = component->pictures.size();
            view->editing = false;
            phase = let_go, turns = 0;
        } else if (phase == let_go && turns == 200) {
            view->open_flag = false;
        }
    };
    RunGUILoop(frame.view, component, host, passes_taking(120));
    const std::vector<uint64_t>& widths = component->pictures;
    ASSERT_GE(pictures_held, 3u);
    EXPECT_EQ(widths[0], 3840u) << "the editor opens on the full picture";
    EXPECT_EQ(std::count(widths.begin(), widths.begin() + pictures_held, 1920u), pictures_held - 1)
        << "proxies while the control is held";
    ASSERT_EQ(widths.size(), pictures_held + 1) << "holding still renders nothing, letting go once";
    EXPECT_EQ(widths.back(), 3840u);
}

TEST_F(PreviewLoop, ClosingDuringAPassWaitsForItAndDropsItsPicture)
{
    std::atomic<bool> pass_started{false}, closed{false};
    std::atomic<int> readings{0};
    auto clock = [&]() -> int64_t {
        if (readings++ == 0) {
            pass_started = true;
            while (!closed)
                std::this_thread::yield();
        }
        return 0;
    };
    view->on_idle = [&] {
        while (!pass_started)
            std::this_thread::yield();
        view->open_flag = false;
        closed = true;
    };
    RunGUILoop(frame.view, component, host, clock);
    EXPECT_EQ(readings, 2) << "the pass ran to its end before the loop returned";
    EXPECT_TRUE(component->pictures.empty()) << "its picture never reached the closed editor";
}

}  // namespace
}  // namespace vl1
