// The render path of the real bundle: pixels graded exactly as the colour engine grades them
// for the built-in theme, in every depth and image layout a host may hand over, and the
// answers for missing images and aborts.
#include "tests/ofx/bundle_look.h"
#include "tests/ofx/bundle_test_support.h"

#include "color/lut_sampling.h"
#include "host/status.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace {

using namespace bundle_test;

class bundle_render : public bundle_fixture {
protected:
    vl1::ofxhost::plugin p = ready_plugin();
    std::shared_ptr<const vl1::hueloom_theme_v1> theme = builtin_theme();

    vl1::ofxhost::instance make(const look& values)
    {
        return p.create_instance(kOfxImageEffectContextFilter,
                                 {{"Angle", double(values.angle)},
                                  {"Strength", double(values.strength)},
                                  {"Hue", double(values.hue)},
                                  {"Chroma", double(values.chroma)},
                                  {"Luminance", double(values.luminance)},
                                  {"Global Bypass", values.bypass ? 1 : 0}});
    }

    /// A float image that covers the cube's corners, mid-tones and out-of-range values.
    static std::shared_ptr<vl1::ofxhost::image> test_card(OfxRectI bounds)
    {
        auto img = gradient_image(bounds);
        img->set_pixel(bounds.x1, bounds.y1, {1.5, -0.5, std::numeric_limits<double>::quiet_NaN(), 0.75});
        img->set_pixel(bounds.x1 + 1, bounds.y1, {1.0, 1.0, 1.0, 1.0});
        img->set_pixel(bounds.x1 + 2, bounds.y1, {0.0, 0.0, 0.0, 0.0});
        img->set_pixel(bounds.x1 + 3, bounds.y1, {0.9, 0.6, 0.45, 1.0});  // a skin tone
        return img;
    }
};

TEST_F(bundle_render, EveryPixelIsTheColourEnginesResultForTheBuiltInTheme)
{
    ASSERT_TRUE(theme->is_self_consistent());
    const look values[] = {{0, 0}, {0, 100}, {60, 100}, {137.5f, 65, 150, 40, 120}, {300, 100, 0, 200, 0}};
    for (const look& v : values) {
        SCOPED_TRACE(testing::Message() << "angle " << v.angle << " strength " << v.strength);
        vl1::ofxhost::instance inst = make(v);
        auto source = test_card({0, 0, 24, 16});
        auto output = render(inst, source);
        EXPECT_EQ(max_difference(*output, *graded(*source, table_for(*theme, v))), 0.0);
    }
}

TEST_F(bundle_render, BypassIsTheIdentityAndStrengthMatters)
{
    auto source = test_card({0, 0, 16, 8});
    vl1::ofxhost::instance bypassed = make({90, 100, 100, 100, 100, true});
    auto identity = render(bypassed, source);
    EXPECT_EQ(max_difference(*identity, *graded(*source, vl1::lut_argb<32>())), 0.0);

    vl1::ofxhost::instance strong = make({90, 100});
    EXPECT_GT(max_difference(*render(strong, source), *identity), 0.02) << "the theme must show";

    // Asked first, the plug-in sends the host to the source for the bypassed look alone, so
    // that values outside 0..1 pass untouched.
    const auto is_identity = [](vl1::ofxhost::instance& inst, double time) {
        vl1::ofxhost::property_set args(vl1::ofxhost::set_access::read_only);
        args.define_double(kOfxPropTime, {time});
        args.define_string(kOfxImageEffectPropFieldToRender, {kOfxImageFieldNone});
        args.define_int(kOfxImageEffectPropRenderWindow, {0, 0, 16, 8});
        args.define_double(kOfxImageEffectPropRenderScale, {1.0, 1.0});
        vl1::ofxhost::property_set answer(vl1::ofxhost::set_access::fixed);
        answer.define_string(kOfxPropName, {""});
        answer.define_double(kOfxPropTime, {-1.0});
        const OfxStatus st = inst.call_action(kOfxImageEffectActionIsIdentity, args.handle(), answer.handle());
        if (st != kOfxStatOK)
            return vl1::ofxhost::status_name(st);
        return answer.get_string(kOfxPropName) + "@" + std::to_string(answer.get_double(kOfxPropTime));
    };
    EXPECT_EQ(is_identity(bypassed, 3.0), std::string(kOfxImageEffectSimpleSourceClipName) + "@3.000000");
    EXPECT_EQ(is_identity(strong, 3.0), "kOfxStatReplyDefault");
    strong.param("Global Bypass").set_value_at(5.0, 1);  // keys: bypassed from frame 5 on
    strong.param("Global Bypass").set_value_at(1.0, 0);
    EXPECT_EQ(is_identity(strong, 1.0), "kOfxStatReplyDefault");
    EXPECT_EQ(is_identity(strong, 6.0), std::string(kOfxImageEffectSimpleSourceClipName) + "@6.000000");
}

TEST_F(bundle_render, HostValuesAreReadAtTheRenderTimeWithKeysAndClamped)
{
    vl1::ofxhost::instance inst = make({0, 100});
    inst.param("Angle").set_value_at(1.0, 0.0);
    inst.param("Angle").set_value_at(11.0, 200.0);
    auto source = test_card({0, 0, 8, 4});
    auto at_six = render(inst, source, 6.0);
    EXPECT_EQ(max_difference(*at_six, *graded(*source, table_for(*theme, {100, 100}))), 0.0);

    // The host's panel may hold a value beyond the range; the effect uses the bound.
    inst.param("Strength").set_constant(250.0);
    auto clamped = render(inst, source, 11.0);
    EXPECT_EQ(max_difference(*clamped, *graded(*source, table_for(*theme, {200, 100}))), 0.0);
    // What the effect clamped isn't written back: the host keeps what the user typed.
    EXPECT_EQ(inst.param("Strength").get_double(), 250.0);
    EXPECT_EQ(inst.param("Angle").key_times().size(), 2u);
}

TEST_F(bundle_render, EveryPairOfDepthsUsesItsScales)
{
    // The host offers clips of different depths (the plug-in declares it takes them).
    const look v{45, 100};
    const auto table = table_for(*theme, v);
    vl1::ofxhost::instance inst = make(v);
    using vl1::ofxhost::pixel_depth;
    for (pixel_depth in : {pixel_depth::byte, pixel_depth::short_int, pixel_depth::real}) {
        auto source = std::make_shared<vl1::ofxhost::image>(in, OfxRectI{0, 0, 6, 2});
        const double scale = in == pixel_depth::byte ? 255.0 : in == pixel_depth::short_int ? 32767.0 : 1.0;
        for (int x = 0; x < 6; ++x)
            for (int y = 0; y < 2; ++y)
                source->set_pixel(x, y, {x * scale / 5.0, (5 - x) * scale / 5.0, y * scale, 0.5 * scale});
        if (in == pixel_depth::short_int)
            source->set_pixel(5, 1, {65535, 40000, 32767, 32767});  // above 32767 saturates
        for (pixel_depth out : {pixel_depth::byte, pixel_depth::short_int, pixel_depth::real}) {
            SCOPED_TRACE(testing::Message() << vl1::ofxhost::depth_name(in) << " to " << vl1::ofxhost::depth_name(out));
            auto output = std::make_shared<vl1::ofxhost::image>(out, source->bounds());
            ASSERT_EQ(render_into(inst, source, output, source->bounds()), kOfxStatOK);
            EXPECT_EQ(max_difference(*output, *graded(*source, table, out)), 0.0);
        }
    }
}

TEST_F(bundle_render, AlphaPassesThroughPremultipliedOrNot)
{
    vl1::ofxhost::instance inst = make({120, 100});
    auto source = test_card({0, 0, 12, 4});
    const auto expected = graded(*source, table_for(*theme, {120, 100}));
    for (const char* premultiplication : {kOfxImagePreMultiplied, kOfxImageUnPreMultiplied}) {
        source->premultiplication = premultiplication;
        EXPECT_EQ(max_difference(*render(inst, source), *expected), 0.0) << premultiplication;
    }
}

TEST_F(bundle_render, HalfScaleProxiesAndTilesGradeEveryPixelOnce)
{
    const look v{250, 90};
    vl1::ofxhost::instance inst = make(v);
    // Proxy mode: images and window at half the frame's size.
    inst.set_render_scale(0.5, 0.5);
    const OfxRectI proxy = vl1::ofxhost::scaled_bounds({0, 0, 33, 17}, 0.5);
    ASSERT_EQ(proxy.x2, 17);
    auto small = test_card(proxy);
    EXPECT_EQ(max_difference(*render(inst, small), *graded(*small, table_for(*theme, v))), 0.0);

    // A tiling host: each tile its own output image, and a lone tile leaves the rest alone.
    inst.set_render_scale(1.0, 1.0);
    auto source = test_card({-4, 3, 29, 20});
    auto output = std::make_shared<vl1::ofxhost::image>(vl1::ofxhost::pixel_depth::real, source->bounds());
    inst.set_clip_image(kOfxImageEffectSimpleSourceClipName, source);
    ASSERT_EQ(inst.render_tiles(0.0, output, 8, 5), kOfxStatOK);
    const auto expected = graded(*source, table_for(*theme, v));
    EXPECT_EQ(max_difference(*output, *expected), 0.0);
    const std::array<double, 4> untouched{0.25, 0.25, 0.25, 0.25};
    output->fill(untouched);
    ASSERT_EQ(inst.render(0.0, {4, 8, 12, 13}), kOfxStatOK);
    for (int y = 3; y < 20; ++y)
        for (int x = -4; x < 29; ++x) {
            const bool in_tile = x >= 4 && x < 12 && y >= 8 && y < 13;
            ASSERT_EQ(output->pixel(x, y), in_tile ? expected->pixel(x, y) : untouched) << x << "," << y;
        }
}

TEST_F(bundle_render, PaddedAndBottomUpRowsAreHonoured)
{
    const look v{200, 80};
    const auto packed_source = test_card({0, 0, 12, 6});
    const auto expected = graded(*packed_source, table_for(*theme, v));
    vl1::ofxhost::instance inst = make(v);
    for (vl1::ofxhost::image_layout layout : {vl1::ofxhost::image_layout{64, false}, vl1::ofxhost::image_layout{0, true},
                                         vl1::ofxhost::image_layout{48, true}}) {
        auto source = std::make_shared<vl1::ofxhost::image>(vl1::ofxhost::pixel_depth::real, packed_source->bounds(), layout);
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 12; ++x)
                source->set_pixel(x, y, packed_source->pixel(x, y));
        auto output = std::make_shared<vl1::ofxhost::image>(vl1::ofxhost::pixel_depth::real, source->bounds(), layout);
        output->fill_bytes(0xAB);
        const auto padding_before = output->padding_bytes();
        ASSERT_EQ(render_into(inst, source, output, source->bounds()), kOfxStatOK);
        EXPECT_EQ(max_difference(*output, *expected), 0.0) << layout.row_padding_bytes << " " << layout.bottom_up;
        EXPECT_EQ(output->padding_bytes(), padding_before) << "padding must stay untouched";
    }
}

TEST_F(bundle_render, WindowsBeyondTheImagesWriteOnlyWhereBothExist)
{
    vl1::ofxhost::instance inst = make({30, 100});
    auto source = test_card({2, 0, 8, 4});  // narrower than the output
    auto output = std::make_shared<vl1::ofxhost::image>(vl1::ofxhost::pixel_depth::real, OfxRectI{0, 0, 10, 4});
    output->fill({0.25, 0.25, 0.25, 0.25});
    ASSERT_EQ(render_into(inst, source, output, {-5, -3, 20, 9}), kOfxStatOK);
    const auto expected = graded(*source, table_for(*theme, {30, 100}));
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 10; ++x) {
            if (x >= 2 && x < 8)
                EXPECT_EQ(output->pixel(x, y), expected->pixel(x, y));
            else
                EXPECT_EQ(output->pixel(x, y), (std::array<double, 4>{0.25, 0.25, 0.25, 0.25}));
        }
    }
}

TEST_F(bundle_render, AFailedFetchAnswersByTheAbortState)
{
    vl1::ofxhost::instance inst = make({});
    auto source = test_card({0, 0, 4, 4});
    h.fail_call(vl1::ofxhost::failing("clipGetImage").for_argument(kOfxImageEffectSimpleSourceClipName));
    EXPECT_EQ(render_into(inst, source, std::make_shared<vl1::ofxhost::image>(source->depth(), source->bounds()),
                          source->bounds()),
              kOfxStatFailed);
    inst.set_abort(true);
    EXPECT_EQ(inst.render(0.0, source->bounds()), kOfxStatOK);
    EXPECT_EQ(inst.outstanding_images(), 0) << "the output image is given back";
}

}  // namespace
