// hueloom-bench: how fast the render path grades a 4K float frame, measured against
// OpenColorIO applying the same table and against a plain memory pass over the same
// buffers; how long the table of one render setup takes to build, and to reuse; the frame
// through the built bundle in our own host as one render action and as 64 tiles; the
// editor's preview pass at proxy size; how large the saved state's text is and how long
// writing and reading it take; and what one editing step costs the undo ring with the
// built-in theme. Names the row kernel it measured, and ends with one line
//   summary: render_vs_ocio_1t=R render_vs_memory_all=F rebuild_us=T tiles_vs_frame=X
//            state_text_mb=S state_text_ms=W preview_full_ms=P preview_proxy_ms=Q
//            preview_images_ms=B preview_8bit_ms=C preview_8bit_fit_ms=D
// of this run's figures; its three ratios come from passes timed in alternation. Google
// Benchmark's own flags (--benchmark_filter, ...) apply.
#include <benchmark/benchmark.h>
#include <fmt/core.h>
#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>

#include "bench/bench_frame.h"
#include "bench/bench_host_tiles.h"
#include "bench/bench_memory_pass.h"
#include "bench/bench_ocio.h"
#include "bench/bench_preview.h"
#include "bench/bench_results.h"
#include "bench/bench_scene.h"
#include "bench/bench_state_text.h"
#include "bench/bench_undo.h"
#include "color/lut_row_kernels.h"
#include "ofx/ofx_render_rows.h"

namespace vl1::bench {

namespace {

constexpr int frame_width = 3840;
constexpr int frame_height = 2160;
constexpr int repetitions = 3;
// Rows compared between the effect and OpenColorIO before anything is timed.
constexpr int checked_rows = 64;
// Both interpolate trilinearly in single precision, but in their own operation order.
constexpr float agreement_tolerance = 1e-4f;

constexpr const char* render_1t = "render_effect_1_thread";
constexpr const char* render_all = "render_effect_all_threads";
constexpr const char* per_pixel_1t = "render_per_pixel_1_thread";
constexpr const char* ocio_1t = "ocio_lut3d_1_thread";
constexpr const char* memory_all = "memory_pass_all_threads";
constexpr const char* rebuild = "table_rebuild_render_setup";
constexpr const char* reuse = "table_reuse_render_setup";
constexpr const char* host_frame = "host_whole_frame_all_threads";
constexpr const char* host_tiles = "host_64_tiles_all_threads";
constexpr const char* windows_all = "render_effect_64_windows_all_threads";
constexpr const char* preview = "preview_proxy_pass";
constexpr const char* preview_full = "preview_full_pass";
constexpr const char* preview_images = "preview_build_images";
constexpr const char* preview_8bit = "preview_8bit_conversion";
constexpr const char* preview_8bit_fit = "preview_8bit_conversion_fitted";
constexpr const char* state_text_prefix = "state_text_write_read/";
constexpr const char* undo_step = "undo_gesture_builtin_theme";
// The goals' ratios, each timed from two passes that alternate within every iteration.
constexpr const char* paired_vs_ocio = "paired_effect_then_ocio_1_thread";
constexpr const char* paired_vs_memory = "paired_effect_then_memory_pass_all_threads";
constexpr const char* paired_tiles = "paired_host_whole_frame_then_64_tiles";

// The effect's vault keeps themes under HOME: the benchmark gives it a fresh folder and
// removes it again, so the user's own theme folders are never touched.
class disposable_home {
public:
    disposable_home()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "hueloom-bench-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("can't create a temporary HOME");
        path = pattern;
        setenv("HOME", path.c_str(), 1);
    }
    ~disposable_home()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    disposable_home(const disposable_home&) = delete;
    disposable_home& operator=(const disposable_home&) = delete;

private:
    std::filesystem::path path;

public:
    const std::filesystem::path& folder() const { return path; }
};

struct scene {
    rgba_float_frame source = make_source_frame(frame_width, frame_height);
    rgba_float_frame result = make_blank_frame(source);
    std::shared_ptr<const hueloom_theme_v1> theme = make_bench_theme();
    std::shared_ptr<hueloom> effect = make_bench_effect(theme, bench_setting());
    std::shared_ptr<per_pixel_component> reference = std::make_shared<per_pixel_component>(theme, bench_setting());
    OfxRectI window{0, 0, frame_width, frame_height};
    tbb::task_arena one_thread{1, 1, tbb::task_arena::priority::high};
    std::shared_ptr<cparameter_continuous_v1> angle =
        std::dynamic_pointer_cast<cparameter_continuous_v1>(effect->get_parameter(std::string("Angle")));
    std::unique_ptr<host_frame_session> host;
    std::unique_ptr<preview_session> preview;

    scene()
    {
        effect->notify(event(event_render_setup));
        reference->notify(event(event_render_setup));
    }

    // The bundle and the editor's preview, after the effect's own checks.
    void open_host_and_preview()
    {
        host = std::make_unique<host_frame_session>(HUELOOM_BENCH_PLUGIN_DIR, source, bench_setting());
        preview = std::make_unique<preview_session>(source, make_bench_effect(theme, bench_setting()));
    }

    // What the render action does between render setup and render: the adapter's own loop.
    void render(tbb::task_arena& arena, icomponent_v1& component)
    {
        render_window_rows(component, window, float_image_view(source), float_image_view(result), arena);
    }

    // The same loop over the tiles of the host's grid, without the host: what tiling costs
    // the rows themselves.
    void render_windows(tbb::task_arena& arena, icomponent_v1& component)
    {
        const int w = frame_width / tile_grid_side, h = frame_height / tile_grid_side;
        for (int ty = 0; ty < tile_grid_side; ++ty)
            for (int tx = 0; tx < tile_grid_side; ++tx) {
                const OfxRectI tile{tx * w, ty * h, tx + 1 == tile_grid_side ? frame_width : (tx + 1) * w,
                                    ty + 1 == tile_grid_side ? frame_height : (ty + 1) * h};
                render_window_rows(component, tile, float_image_view(source), float_image_view(result), arena);
            }
    }

    lut_argb<32> effect_table() const
    {
        lut_argb_variable exported;
        effect->get_lut(&exported);
        lut_argb<32> table;
        table.data = exported.data;
        return table;
    }
};

// The largest difference in r, g, b between the effect's result and OpenColorIO's over the
// first rows.
bool agrees_with_ocio(scene& s, const ocio_lut_processor& ocio)
{
    s.render(s.one_thread, *s.effect);
    rgba_float_frame theirs = make_blank_frame(s.source);
    ocio.apply(s.source, theirs, 0, checked_rows);
    float worst = 0.0f;
    const std::size_t floats = static_cast<std::size_t>(checked_rows) * frame_width * 4;
    for (std::size_t i = 0; i < floats; ++i)
        if (i % 4 != 3)
            worst = std::max(worst, std::fabs(s.result.pixels[i] - theirs.pixels[i]));
    fmt::print("check: largest |effect - OpenColorIO| over {} rows: {:.3g} (allowed {:.3g})\n", checked_rows, worst,
               agreement_tolerance);
    return worst <= agreement_tolerance;
}

// The effect, row-wise on all threads, must give the bytes of the independent per-pixel
// grader on one thread: same table, same conversions, same sampling bits.
bool agrees_with_per_pixel(scene& s)
{
    s.render(s.one_thread, *s.reference);
    const std::vector<float> per_pixel = s.result.pixels;
    std::fill(s.result.pixels.begin(), s.result.pixels.end(), 0.0f);
    s.render(render_arena(), *s.effect);
    const bool same = std::memcmp(per_pixel.data(), s.result.pixels.data(), per_pixel.size() * sizeof(float)) == 0;
    fmt::print("check: the effect on all threads {} the per-pixel grader byte for byte\n",
               same ? "matches" : "DOES NOT MATCH");
    return same;
}

template <typename Work>
void register_frame_pass(const char* name, const scene& s, Work work)
{
    const double mpixels = static_cast<double>(s.source.pixel_count()) * 1e-6;
    benchmark::RegisterBenchmark(name, [=](benchmark::State& state) mutable {
        for (auto _ : state)
            work();
        state.counters["Mpixel"] = benchmark::Counter(mpixels, benchmark::Counter::kIsIterationInvariantRate);
    })->UseRealTime()->Unit(benchmark::kMillisecond)->Repetitions(repetitions)->ReportAggregatesOnly(true);
}

// Times `first` and `second` one after the other in every iteration, and reports the time of
// `second` per time of `first` as the counter "ratio". Load from other processes comes and
// goes within seconds; alternating the two passes every few milliseconds lets it slow both
// alike, where two benchmarks run apart would each meet different load.
template <typename First, typename Second>
void register_pair(const char* name, First first, Second second)
{
    benchmark::RegisterBenchmark(name, [=](benchmark::State& state) mutable {
        using clock = std::chrono::steady_clock;
        clock::duration first_time{}, second_time{};
        for (auto _ : state) {
            const auto start = clock::now();
            first();
            const auto middle = clock::now();
            second();
            first_time += middle - start;
            second_time += clock::now() - middle;
        }
        state.counters["ratio"] = std::chrono::duration<double>(second_time).count() /
                                  std::chrono::duration<double>(first_time).count();
    })->UseRealTime()->Unit(benchmark::kMillisecond)->Repetitions(repetitions)->ReportAggregatesOnly(true);
}

void register_state_text(const std::vector<state_case>& cases)
{
    for (const state_case& c : cases) {
        benchmark::RegisterBenchmark((state_text_prefix + c.name).c_str(), [&c](benchmark::State& state) {
            for (auto _ : state)
                write_and_read(c);
        })->UseRealTime()->Unit(benchmark::kMillisecond)->Repetitions(repetitions)->ReportAggregatesOnly(true);
    }
}

void register_undo(undo_rig& undo)
{
    benchmark::RegisterBenchmark(undo_step, [&undo](benchmark::State& state) {
        for (auto _ : state)
            undo.gesture();
    })->UseRealTime()->Unit(benchmark::kMillisecond)->Repetitions(repetitions)->ReportAggregatesOnly(true);
}

template <typename Work>
void register_preview(const char* name, Work work)
{
    benchmark::RegisterBenchmark(name, [=](benchmark::State& state) mutable {
        for (auto _ : state)
            work();
    })->UseRealTime()->Unit(benchmark::kMillisecond)->Repetitions(repetitions)->ReportAggregatesOnly(true);
}

void register_benchmarks(scene& s, const ocio_lut_processor& ocio)
{
    register_frame_pass(render_1t, s, [&s] { s.render(s.one_thread, *s.effect); });
    register_frame_pass(render_all, s, [&s] { s.render(render_arena(), *s.effect); });
    register_frame_pass(windows_all, s, [&s] { s.render_windows(render_arena(), *s.effect); });
    register_frame_pass(per_pixel_1t, s, [&s] { s.render(s.one_thread, *s.reference); });
    register_frame_pass(ocio_1t, s, [&s, &ocio] { ocio.apply(s.source, s.result, 0, frame_height); });
    register_frame_pass(memory_all, s, [&s] { memory_pass(s.source, s.result, render_arena()); });
    // A setup whose angle differs from the last one's builds the table; an unchanged one reuses it.
    benchmark::RegisterBenchmark(rebuild, [&s](benchmark::State& state) {
        bool nudged = false;
        for (auto _ : state) {
            nudged = !nudged;
            s.angle->set_value(bench_setting().angle + (nudged ? 0.5f : 0.0f), true);
            s.effect->notify(event(event_render_setup));
        }
        s.angle->set_value(bench_setting().angle, true);
        s.effect->notify(event(event_render_setup));
    })->UseRealTime()->Unit(benchmark::kMicrosecond)->Repetitions(repetitions)->ReportAggregatesOnly(true);
    benchmark::RegisterBenchmark(reuse, [&s](benchmark::State& state) {
        for (auto _ : state)
            s.effect->notify(event(event_render_setup));
    })->UseRealTime()->Unit(benchmark::kMicrosecond)->Repetitions(repetitions)->ReportAggregatesOnly(true);
    register_frame_pass(host_frame, s, [&s] { s.host->render_whole(); });
    register_frame_pass(host_tiles, s, [&s] { s.host->render_tiles(); });
    register_pair(paired_vs_ocio, [&s] { s.render(s.one_thread, *s.effect); },
                  [&s, &ocio] { ocio.apply(s.source, s.result, 0, frame_height); });
    register_pair(paired_vs_memory, [&s] { s.render(render_arena(), *s.effect); },
                  [&s] { memory_pass(s.source, s.result, render_arena()); });
    register_pair(paired_tiles, [&s] { s.host->render_whole(); }, [&s] { s.host->render_tiles(); });
    register_preview(preview, [&s] { s.preview->proxy_pass(); });
    register_preview(preview_full, [&s] { s.preview->full_pass(); });
    register_preview(preview_images, [&s] { s.preview->build_full_images(); });
    register_preview(preview_8bit, [&s] { s.preview->convert_for_display(1); });
    register_preview(preview_8bit_fit, [&s] { s.preview->convert_for_display(4); });
}

std::string figure(std::optional<double> value, const char* format)
{
    return value ? fmt::format(fmt::runtime(format), *value) : std::string("n/a");
}

// Other processes take cores from the threads measured here; say so beside the figures.
void print_load_note()
{
    double load[1] = {0.0};
    const unsigned cores = std::thread::hardware_concurrency();
    if (getloadavg(load, 1) == 1 && cores > 0 && load[0] > 0.5 * cores)
        fmt::print("note: load average {:.1f} on {} cores during this run: other work shared the machine, and "
                   "the figures (all-threads ones most) are lower than an idle machine gives\n",
                   load[0], cores);
}

void print_state_text(const figure_collector& figures, const std::vector<state_case>& cases)
{
    fmt::print("\nSaved state text (\"binaryStateParam\"), written and read back as the adapter does\n");
    for (const state_case& c : cases) {
        const auto t = figures.seconds_per_iteration(state_text_prefix + c.name);
        fmt::print("  {:<16} {:>9} bytes of state: {:>9} bytes of text (plain base64 {:>9}), write + read {} ms\n",
                   c.name, c.blob.size(), c.packed_text_bytes, c.plain_text_bytes,
                   figure(t ? std::optional<double>(*t * 1e3) : std::nullopt, "{:.1f}"));
    }
    fmt::print("  targets for the built-in theme: at most 2.0 MB of text, at most 40 ms to write and read\n");
}

std::optional<double> scaled(std::optional<double> value, double factor)
{
    return value ? std::optional<double>(*value * factor) : std::nullopt;
}

void print_undo(const figure_collector& figures, const undo_rig& undo)
{
    const auto t = figures.seconds_per_iteration(undo_step);
    fmt::print("\nUndo ring with the built-in theme, {} entries of {} bytes\n", undo_ring_size, undo.state_bytes());
    fmt::print("  one editing step: {} ms; the ring holds {:.2f} MB (target at most 10 MB)\n",
               figure(scaled(t, 1e3), "{:.2f}"),
               double(undo.ring_bytes()) / (1024.0 * 1024.0));
}

void print_summary(const figure_collector& figures, const scene& s, const std::vector<state_case>& cases)
{
    const double mpixels = static_cast<double>(s.source.pixel_count()) * 1e-6;
    const auto rate = [&](const char* name) -> std::optional<double> {
        const auto t = figures.seconds_per_iteration(name);
        return t ? std::optional<double>(mpixels / *t) : std::nullopt;
    };
    const auto ours_1t = rate(render_1t);
    const auto ours_all = rate(render_all);
    const auto theirs_1t = rate(ocio_1t);
    const auto memory = rate(memory_all);
    const auto rebuild_us = scaled(figures.seconds_per_iteration(rebuild), 1e6);
    const auto reuse_us = scaled(figures.seconds_per_iteration(reuse), 1e6);
    const auto frame_ms = scaled(figures.seconds_per_iteration(host_frame), 1e3);
    const auto tiles_ms = scaled(figures.seconds_per_iteration(host_tiles), 1e3);
    const auto preview_ms = scaled(figures.seconds_per_iteration(preview), 1e3);
    const auto preview_full_ms = scaled(figures.seconds_per_iteration(preview_full), 1e3);
    const auto preview_images_ms = scaled(figures.seconds_per_iteration(preview_images), 1e3);
    const auto preview_8bit_ms = scaled(figures.seconds_per_iteration(preview_8bit), 1e3);
    const auto preview_8bit_fit_ms = scaled(figures.seconds_per_iteration(preview_8bit_fit), 1e3);
    const auto vs_ocio = figures.ratio(paired_vs_ocio);
    const auto vs_memory = figures.ratio(paired_vs_memory);
    const auto tiles_vs_frame = figures.ratio(paired_tiles);

    fmt::print("\n{}x{} RGBA float, one table of edge 32, {} threads in the render arena, row kernel {}\n",
               s.source.width, s.source.height, render_arena().max_concurrency(),
               row_kernel_name(chosen_row_kernel_path()));
    fmt::print("  effect, 1 thread:                    {} Mpixel/s\n", figure(ours_1t, "{:.1f}"));
    fmt::print("  effect, all threads:                 {} Mpixel/s\n", figure(ours_all, "{:.1f}"));
    fmt::print("  per-pixel grader, 1 thread:          {} Mpixel/s\n", figure(rate(per_pixel_1t), "{:.1f}"));
    fmt::print("  OpenColorIO Lut3D, 1 thread:         {} Mpixel/s\n", figure(theirs_1t, "{:.1f}"));
    fmt::print("  memory pass, all threads:            {} Mpixel/s\n", figure(memory, "{:.1f}"));
    fmt::print("  effect / OpenColorIO, 1 thread:      {} (goal at least 8)\n", figure(vs_ocio, "{:.2f}"));
    fmt::print("  effect / memory pass, all threads:   {} (goal at least 0.60)\n", figure(vs_memory, "{:.2f}"));
    fmt::print("  table rebuild of one render setup:   {} us (goal at most 300)\n", figure(rebuild_us, "{:.0f}"));
    fmt::print("  render setup reusing the table:      {} us\n", figure(reuse_us, "{:.1f}"));
    fmt::print("  effect, all threads, in {} windows:  {} Mpixel/s\n", tile_grid_side * tile_grid_side,
               figure(rate(windows_all), "{:.1f}"));
    fmt::print("  bundle in our host, whole frame:     {} ms\n", figure(frame_ms, "{:.1f}"));
    fmt::print("  bundle in our host, {} tiles:        {} ms, {} of the whole frame (goal at most 1.1)\n",
               tile_grid_side * tile_grid_side, figure(tiles_ms, "{:.1f}"), figure(tiles_vs_frame, "{:.2f}"));
    fmt::print("  editor preview, full pass at {}x{}: {} ms\n", s.preview->full_width(), s.preview->full_height(),
               figure(preview_full_ms, "{:.1f}"));
    fmt::print("  editor preview pass at {}x{}:      {} ms (goal at most 60)\n", s.preview->proxy_width(),
               s.preview->proxy_height(), figure(preview_ms, "{:.1f}"));
    fmt::print("  editor preview pictures from frame: {} ms (build_images, limit 3840)\n",
               figure(preview_images_ms, "{:.1f}"));
    fmt::print("  editor preview, 8-bit conversion:   {} ms of one full picture at 1:1, {} ms fitted (4 x 4 "
               "pixels a word)\n",
               figure(preview_8bit_ms, "{:.1f}"), figure(preview_8bit_fit_ms, "{:.1f}"));
    print_state_text(figures, cases);
    print_load_note();
    const state_case& builtin = cases.front();
    const auto state_ms = scaled(figures.seconds_per_iteration(state_text_prefix + builtin.name), 1e3);
    fmt::print("summary: render_vs_ocio_1t={} render_vs_memory_all={} rebuild_us={} tiles_vs_frame={} "
               "state_text_mb={:.2f} state_text_ms={} preview_full_ms={} preview_proxy_ms={} preview_images_ms={} "
               "preview_8bit_ms={} preview_8bit_fit_ms={}\n",
               figure(vs_ocio, "{:.2f}"), figure(vs_memory, "{:.2f}"), figure(rebuild_us, "{:.0f}"),
               figure(tiles_vs_frame, "{:.2f}"), double(builtin.packed_text_bytes) * 1e-6,
               figure(state_ms, "{:.1f}"), figure(preview_full_ms, "{:.1f}"), figure(preview_ms, "{:.1f}"),
               figure(preview_images_ms, "{:.1f}"), figure(preview_8bit_ms, "{:.1f}"),
               figure(preview_8bit_fit_ms, "{:.1f}"));
}

int run(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    const disposable_home home;
    fmt::print("preparing a {}x{} frame, the theme and the effect...\n", frame_width, frame_height);
    scene s;
    const ocio_lut_processor ocio(s.effect_table());
    if (!agrees_with_ocio(s, ocio) || !agrees_with_per_pixel(s)) {
        fmt::print(stderr, "hueloom-bench: the render path gives wrong results; nothing was timed\n");
        return 1;
    }
    const std::filesystem::path import_folder = home.folder() / "imported-theme";
    std::filesystem::create_directories(import_folder);
    const std::vector<state_case> cases = make_state_cases(HUELOOM_BENCH_BUILTIN_THEME, import_folder);
    s.open_host_and_preview();
    register_benchmarks(s, ocio);
    register_state_text(cases);
    undo_rig undo(HUELOOM_BENCH_BUILTIN_THEME);
    register_undo(undo);
    figure_collector figures;
    benchmark::RunSpecifiedBenchmarks(&figures);
    print_undo(figures, undo);
    print_summary(figures, s, cases);
    benchmark::Shutdown();
    return 0;
}

}  // namespace

}  // namespace vl1::bench

int main(int argc, char** argv)
{
    try {
        return vl1::bench::run(argc, argv);
    } catch (const std::exception& e) {
        fmt::print(stderr, "hueloom-bench: {}\n", e.what());
        return 1;
    }
}
