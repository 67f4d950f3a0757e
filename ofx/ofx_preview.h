// The editor's preview thread: renders the frame at hand through the component whenever the
// editor asks, at full size or, while the user holds a control, at a proxy size found from one
// timed full pass. Finished pictures go back to the editor's thread as tasks.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "framework/icomponent.h"
#include "framework/ihost.h"
#include "ofx/ofx_preview_images.h"

namespace vl1 {

class preview_renderer {
public:
    /// Milliseconds of a monotonic clock; tests put a scripted one in.
    using clock_ms = std::function<int64_t()>;
    using task = std::function<void()>;

    /// `frame` must stay valid until the renderer is stopped (the render action that owns it
    /// waits for the editor). The images are built by the thread, not here.
    preview_renderer(const ofx_image_view& frame, std::shared_ptr<icomponent_v1> component,
                     std::shared_ptr<ihost_v1> host, clock_ms clock);
    ~preview_renderer();

    preview_renderer(const preview_renderer&) = delete;
    preview_renderer& operator=(const preview_renderer&) = delete;

    /// Starts the thread; throws std::system_error if it can't.
    void start();
    /// Ends the thread after its current pass; queued tasks are dropped with the object.
    void stop();

    /// Asks for a pass: at full size when the user isn't holding a control, else at proxy size
    /// (at full size too while no full pass has been timed yet).
    void request(bool editing);
    /// The last pass asked for was at proxy size and it is done; the full one is still owed.
    bool wants_next_proxy_pass() const { return want_proxy.load() && !wake.load(); }

    /// The tasks finished passes left for the editor's thread, oldest first.
    std::deque<task> take_tasks();

    /// What the thread does between two waits; public so tests can run passes without it.
    void build_full_images();
    void run_pass();

    const preview_images& full_images() const { return full; }
    const preview_images& proxy_images() const { return proxy; }

private:
    void thread_main();
    void render_rows(image& source, image& result);
    void time_full_pass(int64_t elapsed_ms);

    ofx_image_view frame;
    std::shared_ptr<icomponent_v1> component;
    std::shared_ptr<ihost_v1> host;
    clock_ms clock;

    std::atomic<bool> quit{false}, wake{false}, want_full{false}, want_proxy{false};
    std::mutex wake_mutex;
    std::condition_variable wake_signal;

    // Written only by the preview thread (or a test standing in for it).
    preview_images full, proxy;
    std::shared_ptr<image> display;

    std::mutex result_mutex;  // guards `display` while it's written or handed over, and `tasks`
    std::deque<task> tasks;
    std::thread worker;
};

/// The steady clock in milliseconds.
int64_t steady_clock_ms();

}  // namespace vl1
