#include "tools/hueloom_render/render_command.h"

#include "host/description.h"
#include "ofx/api/ofx_image_effect.h"
#include "tools/hueloom_render/command_line.h"
#include "tools/hueloom_render/frame_plan.h"
#include "tools/hueloom_render/image_file.h"
#include "tools/hueloom_render/look_options.h"
#include "tools/hueloom_render/lut_export.h"
#include "tools/hueloom_render/output_file.h"
#include "tools/hueloom_render/param_setting.h"
#include "tools/hueloom_render/plugin_session.h"
#include "tools/hueloom_render/progress_report.h"
#include "tools/hueloom_render/render_error.h"
#include "tools/hueloom_render/state_file.h"

#include <OpenImageIO/imageio.h>
#include <fmt/format.h>
#include <fmt/ostream.h>
#include <tbb/global_control.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>
#include <set>

namespace hueloom_render {

namespace {

namespace fs = std::filesystem;

volatile std::sig_atomic_t stop_flag = 0;

struct command_context {
    const render_options& options;
    std::ostream& out;
    std::ostream& err;
    bool err_is_terminal;
    fs::path build_plugin_folder;
};

void say(const command_context& c, const std::string& text)
{
    if (c.options.verbose) fmt::print(c.err, "hueloom-render: {}\n", text);
}

// Process-wide limits that last as long as the command: oneTBB (which the plug-in's render
// loop shares with this process), OpenImageIO's pool, and the plug-in's log on stderr.
std::unique_ptr<tbb::global_control> apply_process_settings(const render_options& o)
{
    if (o.verbose) setenv("HUELOOM_LOG", "stderr", 1);
    if (o.quiet) unsetenv("HUELOOM_LOG");
    if (o.threads <= 0) return nullptr;
    OIIO::attribute("threads", o.threads);
    return std::make_unique<tbb::global_control>(tbb::global_control::max_allowed_parallelism,
                                                 static_cast<std::size_t>(o.threads));
}

// Every output is checked before the plug-in is loaded, so a wrong folder costs no render.
void check_outputs(const render_options& o, const std::vector<frame_job>& jobs)
{
    std::set<fs::path> folders;
    for (const auto& job : jobs) {
        const fs::path p(job.output);
        if (folders.insert(p.has_parent_path() ? p.parent_path() : fs::path(".")).second) check_output_folder(p);
    }
    if (!o.state_out.empty()) check_output_folder(o.state_out);
    if (!o.export_lut.empty()) {
        if (!is_lut_path(o.export_lut)) {
            throw render_error(exit_code::usage,
                               fmt::format("--export-lut {}: the file must end in .cube or .3dl", o.export_lut));
        }
        check_output_folder(o.export_lut);
    }
}

void list_params(const command_context& c, plugin_session& session)
{
    ofxhost::instance& inst = session.start("");
    fmt::print(c.out, "Plug-in {} from {}\n", session.identifier(), session.bundle().string());
    for (const auto& p : inst.fx().params().params()) {
        if (!is_settable(*p)) continue;
        const ofxhost::param_info info = ofxhost::describe_param(*p);
        std::string line = fmt::format("  {:<20} {:<8} default {}", info.name, info.type, info.default_value);
        if (!info.min.empty() || !info.max.empty()) line += fmt::format("  range {} .. {}", info.min, info.max);
        if (!info.options.empty()) line += fmt::format("  options {}", fmt::join(info.options, ", "));
        if (info.secret) line += "  hidden";
        fmt::print(c.out, "{}\n", line);
    }
}

/// The state text the instance is created with: --state-in's, or the preset's, with the
/// theme of --theme put into it.
start_look starting_look(const command_context& c, plugin_session& session, const state_file& state)
{
    start_look look{state.state_text, {}};
    if (!c.options.preset.empty()) {
        look = read_preset_option(c.options.preset, session.parameter_names());
        say(c, fmt::format("preset {}", c.options.preset));
    }
    if (!c.options.theme.empty()) {
        look.state_text = state_text_with_theme(look.state_text, c.options.theme, session.parameter_names(),
                                                session.bundle());
        say(c, fmt::format("theme {}", c.options.theme));
    }
    return look;
}

void apply_look(const command_context& c, ofxhost::instance& inst, const state_file& state, const start_look& look)
{
    for (const auto& s : look.settings) {
        try {
            apply_setting(inst, s);
        } catch (const render_error& e) {
            throw render_error(e.code(), fmt::format("preset {}: {}", c.options.preset, e.what()));
        }
    }
    for (const auto& s : state.settings) {
        try {
            apply_setting(inst, s);
        } catch (const render_error& e) {
            throw render_error(e.code(), fmt::format("state file {}: {}", c.options.state_in, e.what()));
        }
    }
    for (const auto& s : c.options.settings) {
        try {
            apply_setting(inst, s);
        } catch (const render_error& e) {
            throw render_error(e.code(), fmt::format("--set {}", e.what()));
        }
        say(c, fmt::format("set {}", s));
    }
}

void render_job(plugin_session& session, const frame_job& job, std::optional<image_file>& still, bool input_is_still,
                output_depth depth)
{
    image_file source = still ? *still : read_image_file(job.input);
    if (input_is_still && !still) still = source;
    session.render(source.pixels, job.frame, source.unassociated_alpha);
    write_image_file(job.output, source.pixels, source, depth);
}

void render_all(const command_context& c, plugin_session& session, const std::vector<frame_job>& jobs)
{
    const progress_style style = c.options.quiet ? progress_style::quiet
                                 : c.err_is_terminal && jobs.size() > 1 ? progress_style::bar
                                                                        : progress_style::lines;
    progress_report progress(c.err, style, static_cast<int>(jobs.size()));
    const bool input_is_still = jobs.size() > 1 && jobs.front().input == jobs.back().input;
    const output_depth depth = parse_output_depth(c.options.depth);
    std::optional<image_file> still_image;
    for (const auto& job : jobs) {
        if (stop_flag) {
            progress.interrupt();
            throw render_error(exit_code::interrupted, fmt::format("interrupted before frame {}", job.frame));
        }
        try {
            render_job(session, job, still_image, input_is_still, depth);
        } catch (const render_error& e) {
            progress.interrupt();
            if (jobs.size() == 1) throw;
            throw render_error(e.code(), fmt::format("frame {}: {}", job.frame, e.what()));
        }
        progress.frame_done(fmt::format("{} -> {}", job.input, job.output));
    }
    progress.finish();
}

int run(const command_context& c)
{
    const render_options& o = c.options;
    const auto process_limits = apply_process_settings(o);
    std::vector<frame_job> jobs;
    if (!o.input.empty() && !o.output.empty()) jobs = plan_frames(o.input, o.output, o.frames);
    const int look_frame = jobs.empty() ? first_frame(o.frames) : jobs.front().frame;
    const state_file state = o.state_in.empty() ? state_file{} : read_state_file(o.state_in);
    check_outputs(o, jobs);

    plugin_session session(plugin_search_folders(o.plugin_path, c.build_plugin_folder), o.plugin_id,
                           {static_cast<unsigned>(o.threads), o.verbose});
    say(c, fmt::format("plug-in {} from {}", session.identifier(), session.bundle().string()));
    if (o.list_params) {
        list_params(c, session);
        return 0;
    }
    const start_look look = starting_look(c, session, state);
    ofxhost::instance& inst = session.start(look.state_text);
    apply_look(c, inst, state, look);
    if (o.open_editor) {
        image_file picture = read_image_file(jobs.empty() ? o.input : jobs.front().input);
        session.open_editor(picture.pixels, look_frame);
    }
    if (!jobs.empty()) render_all(c, session, jobs);
    if (!o.export_lut.empty()) {
        export_lut(session, look_frame, o.export_lut);
        if (!o.quiet) fmt::print(c.err, "hueloom-render: LUT written to {}\n", o.export_lut);
    }
    if (!o.state_out.empty()) {
        state_file saved{session.capture_state(jobs.empty() ? look_frame : jobs.back().frame, !o.open_editor), {}};
        for (const auto& p : inst.fx().params().params()) {
            if (std::string s = format_setting(*p); !s.empty()) saved.settings.push_back(s);
        }
        write_state_file(o.state_out, saved);
        say(c, fmt::format("state written to {}", o.state_out));
    }
    return 0;
}

}  // namespace

void request_stop() noexcept { stop_flag = 1; }

int run_render_command(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                       bool err_is_terminal, const fs::path& build_plugin_folder, bool open_editor)
{
    const char* program = open_editor ? "hueloom-look" : "hueloom-render";
    try {
        parsed_command parsed = parse_command_line(args);
        parsed.options.open_editor = open_editor;
        if (parsed.error.empty() && !parsed.options.help && open_editor && parsed.options.input.empty())
            parsed.error = "the editor needs a picture: -i FILE";
        if (!parsed.error.empty()) {
            fmt::print(err, "{0}: {1}\nTry '{0} --help'.\n", program, parsed.error);
            return static_cast<int>(exit_code::usage);
        }
        if (parsed.options.help) {
            fmt::print(out, "{}", open_editor ? look_usage : render_usage);
            return 0;
        }
        return run({parsed.options, out, err, err_is_terminal, build_plugin_folder});
    } catch (const render_error& e) {
        fmt::print(err, "{}: {}\n", program, e.what());
        return static_cast<int>(e.code());
    } catch (const std::exception& e) {
        fmt::print(err, "{}: {}\n", program, e.what());
        return static_cast<int>(exit_code::frame_failed);
    } catch (...) {
        fmt::print(err, "{}: unexpected failure\n", program);
        return static_cast<int>(exit_code::frame_failed);
    }
}

}  // namespace hueloom_render
