#include "tools/hueloom_render/render_command.h"

#include "framework/string_helpers.h"
#include "host/description.h"
#include "ofx/api/ofx_image_effect.h"
#include "tools/common/stop_signals.h"
#include "tools/hueloom_render/command_line.h"
#include "tools/hueloom_render/file_checks.h"
#include "tools/hueloom_render/frame_plan.h"
#include "tools/hueloom_render/image_file.h"
#include "tools/hueloom_render/look_options.h"
#include "tools/hueloom_render/lut_export.h"
#include "tools/hueloom_render/output_file.h"
#include "tools/hueloom_render/param_setting.h"
#include "tools/hueloom_render/plugin_session.h"
#include "tools/hueloom_render/progress_report.h"
#include "tools/hueloom_render/render_error.h"
#include "tools/hueloom_render/state_blob.h"
#include "tools/hueloom_render/state_file.h"

#include <OpenImageIO/imageio.h>
#include <fmt/format.h>
#include <fmt/ostream.h>
#include <tbb/global_control.h>

#include <cstdlib>
#include <future>
#include <memory>
#include <optional>
#include <set>

namespace vl1::render_tool {

namespace {

namespace fs = std::filesystem;

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
    if (o.verbose)
        setenv("HUELOOM_LOG", "stderr", 1);
    if (o.quiet)
        unsetenv("HUELOOM_LOG");
    if (o.threads <= 0)
        return nullptr;
    OIIO::attribute("threads", o.threads);
    return std::make_unique<tbb::global_control>(tbb::global_control::max_allowed_parallelism,
                                                 static_cast<std::size_t>(o.threads));
}

// Every file is checked before the plug-in is loaded, so a mistake costs no render, and an
// input that is no regular file is refused before anything opens it.
void check_files(const render_options& o, const std::vector<frame_job>& jobs)
{
    std::vector<fs::path> paths;
    for (const auto& job : jobs) {
        if (!paths.empty() && paths.back() == job.input)
            continue;
        require_regular_input(job.input, fmt::format("cannot read {}", job.input));
        paths.emplace_back(job.input);
    }
    const input_files inputs(paths);
    for (const auto& job : jobs)
        check_output_file(job.output, inputs);
    if (!o.state_out.empty())
        check_output_file(o.state_out, inputs, true);
    if (!o.export_lut.empty()) {
        if (!is_lut_path(o.export_lut)) {
            throw render_error(exit_code::usage,
                               fmt::format("--export-lut {}: the file must end in .cube or .3dl", o.export_lut));
        }
        if (o.lut_size != default_lut_size && vl1::lowercase(fs::path(o.export_lut).extension().string()) != ".cube") {
            throw render_error(exit_code::usage,
                               fmt::format("--lut-size {} needs a .cube file; a .3dl file has 17 points per axis",
                                           o.lut_size));
        }
        check_output_file(o.export_lut, inputs, true);
    }
}

void list_params(const command_context& c, plugin_session& session)
{
    ofxhost::instance& inst = session.start("");
    fmt::print(c.out, "Plug-in {} from {}\n", session.identifier(), session.bundle().string());
    for (const auto& p : inst.fx().params().params()) {
        if (!is_settable(*p))
            continue;
        const ofxhost::param_info info = ofxhost::describe_param(*p);
        std::string line = fmt::format("  {:<20} {:<8} default {}", info.name, info.type, info.default_value);
        if (!info.min.empty() || !info.max.empty()) line += fmt::format("  range {} .. {}", info.min, info.max);
        if (!info.options.empty()) line += fmt::format("  options {}", fmt::join(info.options, ", "));
        if (info.secret)
            line += "  hidden";
        fmt::print(c.out, "{}\n", line);
    }
}

/// The state text the instance is created with: --state-in's, or the preset's, with the
/// theme of --theme put into it.
start_look starting_look(const command_context& c, plugin_session& session, const state_file& state)
{
    start_look look{state.state_text, {}};
    std::string source = fmt::format("state file {}", c.options.state_in);
    if (!c.options.preset.empty()) {
        look = read_preset_option(c.options.preset, session.parameter_names());
        source = fmt::format("--preset {}", c.options.preset);
        say(c, fmt::format("preset {}", c.options.preset));
    }
    // The layout of the state is Hueloom's; another plug-in's state is its own affair.
    if (!look.state_text.empty() && session.identifier() == default_plugin_id) {
        const std::vector<uint8_t> blob = decode_state(look.state_text);
        const std::string problem = blob.empty() ? "its state text is no base64"
                                                 : state_problem(blob, component_parameter_count(session.parameter_names()));
        if (!problem.empty())
            throw render_error(exit_code::input, fmt::format("{}: the plug-in can't take this state: {}", source, problem));
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

// Grades one frame's pixels in place, unless the look leaves them as they are.
void grade(const command_context& c, plugin_session& session, const frame_job& job, image_file& source)
{
    if (session.is_identity(job.frame, source.pixels.width, source.pixels.height))
        say(c, fmt::format("frame {}: the look is the identity; the source passes through", job.frame));
    else
        session.render(source.pixels, job.frame, source.unassociated_alpha);
}

// Frames overlap: while one frame renders, the next is read and the one before written, each
// on a thread of its own, so that grading a sequence costs little more than copying it. What
// the user sees (notes, progress, errors naming their frame) still comes in frame order. At
// most three frames are held at once; a still input is read once and copied for each frame.
void render_all(const command_context& c, plugin_session& session, const std::vector<frame_job>& jobs)
{
    const progress_style style = c.options.quiet ? progress_style::quiet
                                 : c.err_is_terminal && jobs.size() > 1 ? progress_style::bar
                                                                        : progress_style::lines;
    progress_report progress(c.err, style, static_cast<int>(jobs.size()));
    const bool input_is_still = jobs.size() > 1 && jobs.front().input == jobs.back().input;
    const output_depth depth = parse_output_depth(c.options.depth);
    std::optional<image_file> still_image;
    std::set<std::string> notes_given;

    // A failure inside a frame's step names the frame.
    const auto in_frame = [&](const frame_job& job, auto&& step) {
        try {
            return step();
        } catch (const render_error& e) {
            progress.interrupt();
            if (jobs.size() == 1)
                throw;
            throw render_error(e.code(), fmt::format("frame {}: {}", job.frame, e.what()));
        }
    };
    const auto start_read = [&](const frame_job& job) {
        if (still_image)
            return std::async(std::launch::deferred, [copy = *still_image] { return copy; });
        return std::async(std::launch::async, [path = job.input] { return read_image_file(path); });
    };
    const auto finish_write = [&](const frame_job& job, std::future<std::string>& writing) {
        const std::string note = in_frame(job, [&] { return writing.get(); });
        if (!note.empty() && !c.options.quiet && notes_given.insert(note).second) {
            progress.interrupt();
            fmt::print(c.err, "hueloom-render: note: {}\n", note);
        }
        progress.frame_done(fmt::format("{} -> {}", job.input, job.output));
    };

    std::future<image_file> reading = start_read(jobs.front());
    std::future<std::string> writing;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const frame_job& job = jobs[i];
        if (vl1::tools::stop_requested()) {
            if (writing.valid()) finish_write(jobs[i - 1], writing);  // the file at hand
            progress.interrupt();
            throw render_error(static_cast<exit_code>(vl1::tools::stop_exit_code()),
                               fmt::format("interrupted before frame {}", job.frame));
        }
        auto source = std::make_shared<image_file>(in_frame(job, [&] { return reading.get(); }));
        if (input_is_still && !still_image)
            still_image = *source;
        if (i + 1 < jobs.size())
            reading = start_read(jobs[i + 1]);
        in_frame(job, [&] { grade(c, session, job, *source); });
        if (writing.valid())
            finish_write(jobs[i - 1], writing);
        writing = std::async(std::launch::async, [&job, source, depth] {
            return write_image_file(job.output, source->pixels, *source, depth);
        });
    }
    finish_write(jobs.back(), writing);
    progress.finish();
}

int run(const command_context& c)
{
    const render_options& o = c.options;
    const auto process_limits = apply_process_settings(o);
    std::vector<frame_job> jobs;
    if (!o.input.empty() && !o.output.empty())
        jobs = plan_frames(o.input, o.output, o.frames);
    const int look_frame = jobs.empty() ? first_frame(o.frames) : jobs.front().frame;
    check_files(o, jobs);
    const state_file state = o.state_in.empty() ? state_file{} : read_state_file(o.state_in);

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
    if (!jobs.empty())
        render_all(c, session, jobs);
    if (vl1::tools::stop_requested())
        throw render_error(static_cast<exit_code>(vl1::tools::stop_exit_code()), "interrupted");
    if (!o.export_lut.empty()) {
        export_lut(session, look_frame, o.export_lut, o.lut_size);
        if (!o.quiet) fmt::print(c.err, "hueloom-render: LUT written to {}\n", o.export_lut);
    }
    if (!o.state_out.empty()) {
        state_file saved{session.capture_state(jobs.empty() ? look_frame : jobs.back().frame, !o.open_editor), {}};
        for (const auto& p : inst.fx().params().params()) {
            if (std::string s = format_setting(*p); !s.empty())
                saved.settings.push_back(s);
        }
        write_state_file(o.state_out, saved);
        say(c, fmt::format("state written to {}", o.state_out));
    }
    return 0;
}

}  // namespace

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

}  // namespace vl1::render_tool
