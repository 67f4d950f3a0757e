// The render path's pixel loop: pixel by pixel through process_pixel, or a row at a time
// through a component's irow_processor_v1, with the same bytes either way.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>
#include <random>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "color/lut_row_kernels.h"
#include "color/lut_sampling.h"
#include "framework/ccomponent.h"
#include "framework/irow_processor.h"
#include "host/host.h"
#include "ofx/ofx_render_rows.h"
#include "ofx/ofx_suites.h"

namespace vl1 {
namespace {

enum class row_face { none, offered, declining };

// Grades through a fixed table; counts how it was called.
class table_component : public ccomponent_v1, public irow_processor_v1 {
public:
    table_component(const lut_argb<32>& table, row_face face) : table(table), face(face) {}

    bool query_interface(const std::string& name, iobject** out) override
    {
        if (face != row_face::none && out != nullptr && uid(name) == irow_processor_v1::ifc_id) {
            *out = static_cast<irow_processor_v1*>(this);
            return true;
        }
        return ccomponent_v1::query_interface(name, out);
    }

    void process_pixel(int, int, const argb_float& in, argb_float* out) override
    {
        ++pixel_calls;
        *out = sample_lut(table, in);
    }

    bool process_row(int, int, int in_depth, const uint8_t* in, int out_depth, uint8_t* out, int count) override
    {
        ++row_calls;
        return face == row_face::offered && apply_lut_row_bits(table, in_depth, in, out_depth, out, count);
    }

    std::atomic<int> pixel_calls{0};
    std::atomic<int> row_calls{0};

private:
    lut_argb<32> table;
    row_face face;
};

// Finite values beyond 0..1, so that writing saturates; no NaN, whose payload no rule fixes.
lut_argb<32> graded_table()
{
    std::mt19937 rng(3);
    std::uniform_real_distribution<float> wide(-0.3f, 1.3f);
    lut_argb<32> table;
    for (argb_float& e : table.data)
        e = {wide(rng), wide(rng), wide(rng), wide(rng)};
    return table;
}

// RGBA rows of one depth, filled with every kind of value the depth can hold: for floats NaN,
// infinities, -0.0 and HDR values among ordinary ones. Rows may carry padding behind the
// pixels, and may be stored bottom-up (a negative row stride); padding holds noise too.
struct test_image {
    int depth;
    OfxRectI bounds;
    std::ptrdiff_t stride;  // bytes from one row to the next, padding included
    bool bottom_up;
    std::vector<uint8_t> bytes;

    test_image(int depth, OfxRectI bounds, uint32_t seed, int padding = 0, bool bottom_up = false)
        : depth(depth), bounds(bounds), bottom_up(bottom_up)
    {
        stride = static_cast<std::ptrdiff_t>(bounds.x2 - bounds.x1) * (depth == 0 ? 16 : depth / 2) + padding;
        bytes.resize(static_cast<std::size_t>(stride) * (bounds.y2 - bounds.y1));
        std::mt19937 rng(seed);
        if (depth != 32) {
            for (uint8_t& b : bytes)
                b = static_cast<uint8_t>(rng());
            return;
        }
        const float inf = std::numeric_limits<float>::infinity();
        const float specials[] = {std::nanf(""), -0.0f, 1.0f, 2.0f, -1.0f, 0.5f, inf, -inf, 7.5f, 1e30f};
        std::uniform_real_distribution<float> unit(-0.1f, 1.1f);
        for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
            const float v = rng() % 5 == 0 ? specials[rng() % std::size(specials)] : unit(rng);
            std::memcpy(&bytes[i], &v, 4);
        }
    }

    ofx_image_view view()
    {
        ofx_image_view v;
        v.depth = depth;
        v.bounds = bounds;
        v.data = bytes.data() + (bottom_up ? static_cast<std::ptrdiff_t>(bytes.size()) - stride : 0);
        v.row_bytes = bottom_up ? -stride : stride;
        return v;
    }
};

std::vector<uint8_t> render(table_component& component, const OfxRectI& window, test_image source, test_image output)
{
    tbb::task_arena arena(2);
    render_window_rows(component, window, source.view(), output.view(), arena);
    return output.bytes;
}

TEST(RenderRows, RowWiseComponentGivesThePerPixelBytesForEveryPairOfDepthsAndLayout)
{
    // The row kernel is the one chosen at load; ctest runs this once per kernel the CPU has.
    const lut_argb<32> table = graded_table();
    const OfxRectI bounds{0, 0, 37, 9};
    struct layout {
        int padding;
        bool bottom_up;
    };
    for (const layout l : {layout{0, false}, layout{12, false}, layout{0, true}, layout{20, true}}) {
        for (const int in_depth : {8, 16, 32}) {
            for (const int out_depth : {8, 16, 32}) {
                SCOPED_TRACE(testing::Message() << in_depth << " to " << out_depth << " bits, padding " << l.padding
                                                << (l.bottom_up ? ", bottom-up" : ""));
                const test_image source(in_depth, bounds, 100 + in_depth, l.padding, l.bottom_up);
                const test_image output(out_depth, bounds, 200 + out_depth, l.padding, l.bottom_up);
                table_component per_pixel(table, row_face::none);
                table_component row_wise(table, row_face::offered);
                const std::vector<uint8_t> expected = render(per_pixel, bounds, source, output);
                EXPECT_EQ(render(row_wise, bounds, source, output), expected);
                EXPECT_EQ(per_pixel.pixel_calls, 37 * 9);
                EXPECT_EQ(row_wise.pixel_calls, 0);
                EXPECT_EQ(row_wise.row_calls, 9);
                // Every pixel written, no padding byte touched.
                const std::size_t row_pixels = std::size_t(37) * (out_depth / 2);
                for (std::size_t at = 0; at < expected.size(); at += output.stride) {
                    EXPECT_NE(std::memcmp(&expected[at], &output.bytes[at], row_pixels), 0);
                    EXPECT_TRUE(std::equal(expected.begin() + at + row_pixels, expected.begin() + at + output.stride,
                                           output.bytes.begin() + at + row_pixels));
                }
            }
        }
    }
}

TEST(RenderRows, RowsKeepToTheOverlapOfWindowAndBothImages)
{
    // The window reaches past the output on the left and bottom, the source is narrower on
    // the right: only the overlap is written, and both forms agree on it.
    const lut_argb<32> table = graded_table();
    const test_image source(32, OfxRectI{-5, -2, 20, 12}, 7);
    const test_image output(16, OfxRectI{0, 0, 30, 10}, 8);
    const OfxRectI window{-10, -3, 30, 10};
    table_component per_pixel(table, row_face::none);
    table_component row_wise(table, row_face::offered);
    const std::vector<uint8_t> expected = render(per_pixel, window, source, output);
    EXPECT_EQ(render(row_wise, window, source, output), expected);
    EXPECT_EQ(per_pixel.pixel_calls, 20 * 10);
    EXPECT_EQ(row_wise.row_calls, 10);
    for (int y = 0; y < 10; ++y)
        for (int x = 20; x < 30; ++x) {
            const std::size_t at = (static_cast<std::size_t>(y) * 30 + x) * 8;
            ASSERT_EQ(std::memcmp(&expected[at], &output.bytes[at], 8), 0) << "pixel " << x << ", " << y;
        }
}

TEST(RenderRows, DeclinedRowsFallBackToPixelsAndUnknownDepthsAskNothing)
{
    const lut_argb<32> table = graded_table();
    const OfxRectI bounds{0, 0, 8, 4};
    const test_image source(8, bounds, 1);
    const test_image output(32, bounds, 2);
    table_component per_pixel(table, row_face::none);
    table_component declining(table, row_face::declining);
    EXPECT_EQ(render(declining, bounds, source, output), render(per_pixel, bounds, source, output));
    EXPECT_EQ(declining.row_calls, 4);
    EXPECT_EQ(declining.pixel_calls, 8 * 4);

    // An unknown depth on either side writes nothing and asks nothing.
    for (const auto& [in_depth, out_depth] : {std::pair{32, 0}, std::pair{0, 16}}) {
        const test_image in(in_depth, bounds, 1);
        const test_image out(out_depth, bounds, 2);
        table_component row_wise(table, row_face::offered);
        EXPECT_EQ(render(row_wise, bounds, in, out), out.bytes);
        EXPECT_EQ(row_wise.pixel_calls + row_wise.row_calls, 0);
    }
}

// Notes which threads run its pixels and how many at once.
class thread_probe : public ccomponent_v1 {
public:
    void process_pixel(int, int, const argb_float& in, argb_float* out) override
    {
        const int now = ++active;
        for (int seen = most.load(); now > seen && !most.compare_exchange_weak(seen, now);) {
        }
        {
            std::lock_guard lock(mutex);
            threads.insert(std::this_thread::get_id());
        }
        // Some work, so that rows of other threads overlap with this one.
        float v = in.r;
        for (int i = 0; i < 2000; ++i)
            v = v * 0.999f + 0.001f;
        *out = {in.a, v, in.g, in.b};
        --active;
    }

    std::atomic<int> active{0};
    std::atomic<int> most{0};
    std::mutex mutex;
    std::set<std::thread::id> threads;
};

TEST(RenderThreads, TheHostsCpuCountBoundsTheRowsThreads)
{
    ofxhost::host h;
    host_suites suites;
    EXPECT_EQ(suites.thread_limit(), 0u) << "without the suite the choice is ours";
    suites.multi_thread = static_cast<const OfxMultiThreadSuiteV1*>(h.fetch_suite(kOfxMultiThreadSuite, 1));
    const OfxRectI bounds{0, 0, 64, 256};
    for (const unsigned cpus : {1u, 3u}) {
        h.state().cpu_count = cpus;
        ASSERT_EQ(suites.thread_limit(), cpus);
        test_image source(32, bounds, 1), output(32, bounds, 2);
        thread_probe probe;
        render_window_rows(probe, bounds, source.view(), output.view(), render_arena(suites.thread_limit()));
        EXPECT_LE(probe.most, int(cpus));
        if (cpus == 1) {
            EXPECT_EQ(probe.threads, std::set<std::thread::id>{std::this_thread::get_id()})
                << "one CPU: the host's own thread does every row";
        }
    }
    h.fail_call(ofxhost::failing("multiThreadNumCPUs"));
    EXPECT_EQ(suites.thread_limit(), 0u);
}

}  // namespace
}  // namespace vl1
