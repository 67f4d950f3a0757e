#include "ofx/ofx_gui_loop.h"

#include <mutex>

#include "framework/iview.h"
#include "framework/log.h"
#include "framework/window.h"

namespace vl1 {
namespace {

/// The toolkit serves one thread at a time, so one editor runs per process; a second render
/// thread that asks meanwhile renders without it rather than wait for a user.
std::mutex editor_mutex;

/// Steps of the loop, one turn each: ask for passes, run what the preview left, idle. While
/// the user holds a control a pass follows each change, and once it is let go one full pass
/// follows the last proxy pass. Passes while nothing changed would only repeat the picture,
/// and take the cores the editor needs to show the last one.
void run_editor_turns(iview_v1& view, icomponent_v1& component, ihost_v1& host, preview_renderer& preview)
{
    for (bool first = true; view.is_open(); first = false) {
        const bool editing = !first && view.is_editing();
        if (first || host.component_is_dirty() || (preview.wants_next_proxy_pass() && !editing))
            preview.request(editing);
        for (auto& task : preview.take_tasks())
            task();
        component.idle();
        view.idle();
    }
}

}  // namespace

void RunGUILoop(const ofx_image_view& frame, const std::shared_ptr<icomponent_v1>& component,
                const std::shared_ptr<ihost_v1>& host, preview_renderer::clock_ms clock)
{
    std::unique_lock editor_lock(editor_mutex, std::try_to_lock);
    if (!editor_lock.owns_lock()) {
        log_text("Another editor is open in this process.");
        return;
    }
    const std::string title = component->get_vendor() + " - " + component->get_name();
    void* parent = nullptr;
    if (!host->get_host_window(&parent) || parent == nullptr) {
        log_text("No parent window handle.");
        return;
    }
    const std::shared_ptr<iview_v1> view = component->create_view();
    if (!view) {
        log_text("No view window handle.");
        return;
    }
    const rect size = view->get_rect();
    log("Obtained size: {0}, {1}", size.width, size.height);
    window_factory* factory = window_factory::get_instance("vl_icon");
    std::shared_ptr<window> editor_window = factory ? factory->create_window(size, title, parent) : nullptr;
    if (!editor_window) {
        log_text("No window created.");
        return;
    }

    preview_renderer preview(frame, component, host, std::move(clock));
    preview.start();
    log_text("GUI window: before open.");
    view->open(editor_window);
    log_text("GUI window: open.");
    editor_window->begin_modal();
    log_text("GUI window: begin modal.");

    try {
        run_editor_turns(*view, *component, *host, preview);
    } catch (...) {
        // Close the window and stop the thread before the failure goes on to the render guard.
        preview.stop();
        editor_window->end_modal();
        view->close();
        throw;
    }
    preview.stop();
    if (editor_window->is_modal())
        editor_window->end_modal();
    view->close();
}

}  // namespace vl1
