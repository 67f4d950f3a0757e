#include "ofx/ofx_preview.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <chrono>
#include <system_error>

#include "framework/irow_processor.h"
#include "framework/log.h"
#include "framework/io/pixel_codec.h"
#include "ofx/ofx_render_rows.h"

namespace vl1 {

int64_t steady_clock_ms()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

preview_renderer::preview_renderer(const ofx_image_view& frame, std::shared_ptr<icomponent_v1> component,
                                   std::shared_ptr<ihost_v1> host, clock_ms clock)
    : frame(frame), component(std::move(component)), host(std::move(host)), clock(std::move(clock))
{
}

preview_renderer::~preview_renderer() { stop(); }

void preview_renderer::start()
{
    try {
        worker = std::thread([this] { thread_main(); });
    } catch (const std::system_error&) {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again),
                                "thread constructor failed");
    }
}

void preview_renderer::stop()
{
    {
        std::lock_guard lock(wake_mutex);
        quit = true;
    }
    wake_signal.notify_all();
    if (worker.joinable())
        worker.join();
}

void preview_renderer::request(bool editing)
{
    {
        // Set under the lock, so a request can't slip between the thread's check and its wait.
        std::lock_guard lock(wake_mutex);
        want_full = !editing;
        want_proxy = editing;
        wake = true;
    }
    wake_signal.notify_one();
}

std::deque<preview_renderer::task> preview_renderer::take_tasks()
{
    std::lock_guard lock(result_mutex);
    return std::exchange(tasks, {});
}

void preview_renderer::thread_main()
{
    try {
        build_full_images();
        for (;;) {
            {
                std::unique_lock lock(wake_mutex);
                wake_signal.wait(lock, [&] { return wake.load() || quit.load(); });
            }
            if (quit)
                return;
            run_pass();
        }
    } catch (const std::exception& e) {
        // The editor stays usable without a preview; nothing may escape a thread.
        log("Preview stopped: {0}", e.what());
    }
}

void preview_renderer::build_full_images() { full = build_images(frame, preview_full_limit); }

void preview_renderer::render_rows(image& source, image& result)
{
    irow_processor_v1* const rows = find_row_processor(*component);
    const auto width = static_cast<int>(source.width);
    render_arena().execute([&] {
        tbb::parallel_for(tbb::blocked_range<uint64_t>(0, source.height, 1), [&](const tbb::blocked_range<uint64_t>& r) {
            for (uint64_t y = r.begin(); y < r.end(); ++y) {
                const uint8_t* in = source.row(y);
                uint8_t* out = result.row(y);
                if (rows != nullptr && rows->process_row(0, static_cast<int>(y), 32, in, 32, out, width))
                    continue;
                for (int x = 0; x < width; ++x) {
                    argb_float px = read_rgba_pixel(rgba_depth::f32, in + 16 * x);
                    component->process_pixel(x, static_cast<int>(y), px, &px);
                    write_rgba_pixel(rgba_depth::f32, out + 16 * x, px);
                }
            }
        });
    });
}

void preview_renderer::run_pass()
{
    // Until a full pass has been timed there are no proxy pictures: a drag that starts that
    // early gets full ones (and the pass that sizes the proxy) rather than none at all.
    const bool proxy_pass = want_proxy && proxy.complete();
    const bool full_pass = !proxy_pass && (want_full || want_proxy) && full.complete();
    const preview_images* pass = proxy_pass ? &proxy : (full_pass ? &full : nullptr);
    if (pass != nullptr) {
        const int64_t t0 = clock();
        event setup(event_render_setup);
        setup.source = pass->source;
        host->notify(setup);
        render_rows(*pass->source, *pass->result);
        const int64_t t1 = clock();

        std::shared_ptr<image> source = pass->source;
        {
            std::lock_guard lock(result_mutex);
            display = proxy_pass ? proxy.display : full.display;
            display->copy_from(*pass->result);
            tasks.push_back([this, source, shown = display] {
                log_text("even render.");
                event rendered(event_render);
                rendered.source = source;
                rendered.result = shown;
                {
                    // The view copies the picture; the next pass must not write it meanwhile.
                    std::lock_guard lock(result_mutex);
                    host->notify(rendered);
                }
                host->notify(event(event_render_setdown));
            });
        }
        if (pass == &full && !proxy.complete())
            time_full_pass(t1 - t0);
    }
    std::lock_guard lock(wake_mutex);
    wake = false;
}

void preview_renderer::time_full_pass(int64_t elapsed_ms)
{
    const int side = proxy_long_side(full.source->width, full.source->height, elapsed_ms);
    proxy = side == 0 ? full : build_images(frame, side);
    if (proxy.complete())
        log("Preview proxy size: {0}x{1}, from a full pass of {2} ms", proxy.source->width, proxy.source->height,
            elapsed_ms);
}

}  // namespace vl1
