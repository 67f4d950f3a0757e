// Rendering through the fixture plug-in, which inverts RGB and copies alpha: every depth, padded
// and bottom-up rows on either side, partial windows, threads and abort.
#include "tests/host/host_test_support.h"

#include <cstdint>
#include <memory>

namespace {

using host_test::fixture_test;
using host_test::record_of;
using vl1::ofxhost::image;
using vl1::ofxhost::image_layout;
using vl1::ofxhost::pixel_depth;

constexpr OfxRectI bounds{-3, 2, 5, 7};  // 8 x 5, off the origin so offsets matter

double max_of(pixel_depth depth)
{
    return depth == pixel_depth::byte ? 255.0 : depth == pixel_depth::short_int ? 65535.0 : 1.0;
}

// A different value in every channel of every pixel, so swapped rows or channels show.
std::shared_ptr<image> pattern(pixel_depth depth, image_layout layout)
{
    auto img = std::make_shared<image>(depth, bounds, layout);
    img->fill_bytes(0xAB);
    const double scale = max_of(depth) / 255.0;
    for (int y = bounds.y1; y < bounds.y2; ++y) {
        for (int x = bounds.x1; x < bounds.x2; ++x) {
            const int base = ((y - bounds.y1) * 8 + (x - bounds.x1)) * 4;
            img->set_pixel(x, y, {base * scale, (base + 1) * scale, (base + 2) * scale, (base + 3) * scale});
        }
    }
    return img;
}

class render_test : public fixture_test {
protected:
    vl1::ofxhost::instance inst = filter_instance();

    void expect_inverted(const image& src, const image& out, OfxRectI window)
    {
        const double max = max_of(src.depth());
        for (int y = bounds.y1; y < bounds.y2; ++y) {
            for (int x = bounds.x1; x < bounds.x2; ++x) {
                const bool inside = x >= window.x1 && x < window.x2 && y >= window.y1 && y < window.y2;
                const auto in = src.pixel(x, y);
                const auto got = out.pixel(x, y);
                for (int c = 0; c < 3; ++c) {
                    const double want = inside ? max - in[c] : 0.0;
                    ASSERT_NEAR(got[c], want, 1e-6) << "pixel " << x << "," << y << " channel " << c;
                }
                ASSERT_EQ(got[3], inside ? in[3] : 0.0);
            }
        }
    }
};

TEST_F(render_test, InvertsEveryDepthWithPaddedAndBottomUpRows)
{
    const image_layout layouts[] = {{}, {.row_padding_bytes = 12}, {.row_padding_bytes = 0, .bottom_up = true},
                                    {.row_padding_bytes = 4, .bottom_up = true}};
    for (pixel_depth depth : {pixel_depth::byte, pixel_depth::short_int, pixel_depth::real}) {
        for (const auto& src_layout : layouts) {
            const image_layout& out_layout = layouts[3 - (&src_layout - layouts)];
            SCOPED_TRACE(std::string(vl1::ofxhost::depth_name(depth)) + " padding " +
                         std::to_string(src_layout.row_padding_bytes) + (src_layout.bottom_up ? " bottom-up" : ""));
            auto src = pattern(depth, src_layout);
            auto out = std::make_shared<image>(depth, bounds, out_layout);
            out->fill_bytes(0xAB);
            out->fill({0, 0, 0, 0});
            inst.set_clip_image("Source", src);
            inst.set_clip_image("Output", out);
            ASSERT_EQ(inst.render(0.0, bounds), kOfxStatOK);
            expect_inverted(*src, *out, bounds);
            EXPECT_EQ(out->padding_bytes(), std::vector<std::uint8_t>(out->padding_bytes().size(), 0xAB));
            EXPECT_EQ(inst.outstanding_images(), 0);
        }
    }
}

TEST_F(render_test, WindowLimitsTheWrittenPixels)
{
    auto src = pattern(pixel_depth::real, {});
    auto out = std::make_shared<image>(pixel_depth::real, bounds);
    inst.set_clip_image("Source", src);
    inst.set_clip_image("Output", out);
    const OfxRectI window{0, 3, 2, 6};
    ASSERT_EQ(inst.render(0.0, window), kOfxStatOK);
    expect_inverted(*src, *out, window);
    EXPECT_EQ(record_of(inst).rows_done, 3);

    // A window reaching past the images is clipped to them.
    ASSERT_EQ(inst.render(0.0, {-100, -100, 100, 100}), kOfxStatOK);
    expect_inverted(*src, *out, bounds);
}

TEST_F(render_test, RowsRunOnSpawnedThreadsAndAbortStopsThem)
{
    auto src = pattern(pixel_depth::real, {});
    auto out = std::make_shared<image>(pixel_depth::real, bounds);
    inst.set_clip_image("Source", src);
    inst.set_clip_image("Output", out);
    ASSERT_EQ(inst.render(0.0, bounds), kOfxStatOK);
    auto& record = record_of(inst);
    EXPECT_EQ(record.rows_done, 5);
    EXPECT_EQ(record.rows_on_spawned_threads, 5);
    EXPECT_EQ(record.mutex_lock_failures, 0);

    inst.set_abort(true);
    out->fill({0, 0, 0, 0});
    ASSERT_EQ(inst.render(0.0, bounds), kOfxStatOK);
    EXPECT_EQ(record.rows_done, 5);
    EXPECT_EQ(record.aborted_renders, 1);
    EXPECT_EQ(out->pixel(0, 4), (std::array<double, 4>{0, 0, 0, 0}));
    EXPECT_EQ(inst.outstanding_images(), 0);

    // Abort after a number of calls: the fixture asks once per row.
    inst.abort_after(2);
    ASSERT_EQ(inst.render(0.0, bounds), kOfxStatOK);
    EXPECT_EQ(record.rows_done, 7);
    EXPECT_EQ(record.aborted_renders, 2);
}

TEST_F(render_test, ImagesCarryTheirPropertiesToThePlugin)
{
    auto src = pattern(pixel_depth::short_int, {.row_padding_bytes = 8, .bottom_up = true});
    src->premultiplication = kOfxImageUnPreMultiplied;
    src->pixel_aspect_ratio = 2.0;
    inst.set_clip_image("Source", src);
    const auto& props = inst.clip("Source").properties();
    EXPECT_EQ(props.get_string(kOfxImageEffectPropPixelDepth), kOfxBitDepthShort);
    EXPECT_EQ(props.get_int(kOfxImageClipPropConnected), 1);

    const auto* es = static_cast<const OfxImageEffectSuiteV1*>(h.fetch_suite(kOfxImageEffectSuite, 1));
    const auto* ps = static_cast<const OfxPropertySuiteV1*>(h.fetch_suite(kOfxPropertySuite, 1));
    OfxImageClipHandle clip = nullptr;
    ASSERT_EQ(es->clipGetHandle(inst.handle(), "Source", &clip, nullptr), kOfxStatOK);
    OfxPropertySetHandle img = nullptr;
    ASSERT_EQ(es->clipGetImage(clip, 3.0, nullptr, &img), kOfxStatOK);
    int row_bytes = 0, b[4] = {};
    void* data = nullptr;
    char* premult = nullptr;
    double par = 0, scale[2] = {};
    EXPECT_EQ(ps->propGetInt(img, kOfxImagePropRowBytes, 0, &row_bytes), kOfxStatOK);
    EXPECT_EQ(row_bytes, -(8 * 8 + 8));
    EXPECT_EQ(ps->propGetIntN(img, kOfxImagePropBounds, 4, b), kOfxStatOK);
    EXPECT_EQ(b[2], bounds.x2);
    EXPECT_EQ(ps->propGetPointer(img, kOfxImagePropData, 0, &data), kOfxStatOK);
    EXPECT_EQ(data, src->data());
    EXPECT_EQ(ps->propGetString(img, kOfxImageEffectPropPreMultiplication, 0, &premult), kOfxStatOK);
    EXPECT_STREQ(premult, kOfxImageUnPreMultiplied);
    EXPECT_EQ(ps->propGetDouble(img, kOfxImagePropPixelAspectRatio, 0, &par), kOfxStatOK);
    EXPECT_EQ(par, 2.0);
    EXPECT_EQ(ps->propGetDoubleN(img, kOfxImageEffectPropRenderScale, 2, scale), kOfxStatOK);
    EXPECT_EQ(ps->propSetInt(img, kOfxImagePropRowBytes, 0, 1), kOfxStatErrUnsupported);
    OfxRectD rod{};
    EXPECT_EQ(es->clipGetRegionOfDefinition(clip, 0.0, &rod), kOfxStatOK);
    EXPECT_EQ(rod.y2, 7.0);
    EXPECT_EQ(inst.outstanding_images(), 1);
    EXPECT_EQ(es->clipReleaseImage(img), kOfxStatOK);
    EXPECT_EQ(es->clipReleaseImage(img), kOfxStatErrBadHandle);
    EXPECT_EQ(ps->propGetInt(img, kOfxImagePropRowBytes, 0, &row_bytes), kOfxStatErrBadHandle);
    EXPECT_EQ(inst.outstanding_images(), 0);

    // The next image lent carries its own values, not those of the one given back.
    auto byte_src = pattern(pixel_depth::byte, {});
    inst.set_clip_image("Source", byte_src);
    ASSERT_EQ(es->clipGetImage(clip, 0.0, nullptr, &img), kOfxStatOK);
    char* depth = nullptr;
    EXPECT_EQ(ps->propGetString(img, kOfxImageEffectPropPixelDepth, 0, &depth), kOfxStatOK);
    EXPECT_STREQ(depth, kOfxBitDepthByte);
    EXPECT_EQ(ps->propGetInt(img, kOfxImagePropRowBytes, 0, &row_bytes), kOfxStatOK);
    EXPECT_EQ(row_bytes, byte_src->row_bytes());
    EXPECT_EQ(ps->propGetPointer(img, kOfxImagePropData, 0, &data), kOfxStatOK);
    EXPECT_EQ(data, byte_src->data());
    EXPECT_EQ(es->clipReleaseImage(img), kOfxStatOK);

    inst.set_clip_image("Source", nullptr);
    EXPECT_EQ(es->clipGetImage(clip, 0.0, nullptr, &img), kOfxStatFailed);
}

}  // namespace
