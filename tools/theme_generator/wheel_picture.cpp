#include "tools/theme_generator/wheel_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include <OpenImageIO/imageio.h>
#include <fmt/format.h>

#include "color/lut_sampling.h"

namespace vl1::themegen {

namespace {

using layout = wheel_picture_layout;

struct rgba {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 0.0f;
};

rgba mix(const rgba& under, const rgba& over, float coverage)
{
    return {under.r + (over.r - under.r) * coverage, under.g + (over.g - under.g) * coverage,
            under.b + (over.b - under.b) * coverage, under.a + (over.a - under.a) * coverage};
}

// How much of a one-pixel-wide sample lies inside a circle of `radius` pixels, from the
// sample centre's distance to the circle's: an anti-aliased edge.
float coverage(double distance, double radius)
{
    return static_cast<float>(std::clamp(radius - distance + 0.5, 0.0, 1.0));
}

// The grey that the disc is graded from: a little lighter in the middle, for depth.
float base_grey(double reach)
{
    return static_cast<float>(0.64 - 0.14 * reach);
}

// The theme's grading of the disc's greys at full strength, per degree of theme angle and
// per grey level; the picture interpolates between them and scales by the reach, which is
// what the blending does with strength (it is linear in strength while nothing clamps, and
// mid greys are far from the clamp).
class graded_grey_field {
public:
    static constexpr int angle_steps = 360;
    static constexpr int grey_levels = 9;
    static constexpr float lowest_grey = 0.48f;
    static constexpr float highest_grey = 0.66f;

    explicit graded_grey_field(const hueloom_theme_v1& theme) : colours(angle_steps * grey_levels)
    {
        lut_argb<32> blended;
        for (int step = 0; step < angle_steps; ++step) {
            fill_identity(blended);
            theme.apply_theme_luts(blended, static_cast<float>(step), 1.0f);
            for (int level = 0; level < grey_levels; ++level) {
                const float grey = grey_of(level);
                colours[step * grey_levels + level] = sample_lut(blended, {1.0f, grey, grey, grey});
            }
        }
    }

    rgba at(double rotation, double reach) const
    {
        const float grey = base_grey(reach);
        const double position = std::fmod(rotation, 360.0);
        const int step0 = static_cast<int>(position) % angle_steps;
        const int step1 = (step0 + 1) % angle_steps;
        const float f_angle = static_cast<float>(position - std::floor(position));
        const float level_position = (grey - lowest_grey) / (highest_grey - lowest_grey) * (grey_levels - 1);
        const int level0 = std::clamp(static_cast<int>(level_position), 0, grey_levels - 2);
        const float f_level = std::clamp(level_position - level0, 0.0f, 1.0f);

        auto lerp = [](const argb_float& x, const argb_float& y, float f) { return x + (y - x) * f; };
        const argb_float low = lerp(cell(step0, level0), cell(step1, level0), f_angle);
        const argb_float high = lerp(cell(step0, level0 + 1), cell(step1, level0 + 1), f_angle);
        const argb_float graded = lerp(low, high, f_level);
        const float strength = static_cast<float>(reach);
        return {grey + (graded.r - grey) * strength, grey + (graded.g - grey) * strength,
                grey + (graded.b - grey) * strength, 1.0f};
    }

private:
    std::vector<argb_float> colours;

    static float grey_of(int level) { return lowest_grey + (highest_grey - lowest_grey) * level / (grey_levels - 1); }
    const argb_float& cell(int step, int level) const { return colours[step * grey_levels + level]; }
};

// A small scene that shows what a look does to typical content, in coordinates u, v of
// -1..1 across the scene's circle (v downwards): sky, a grey ramp, foliage, a skin tone,
// a saturated red, and the grey patch in the middle.
rgba sample_scene(double u, double v, double pixel)
{
    rgba colour;
    if (v < -0.2) {
        const float t = static_cast<float>((v + 1.0) / 0.8);
        colour = mix({0.18f, 0.34f, 0.66f, 1.0f}, {0.66f, 0.78f, 0.88f, 1.0f}, t);
    } else if (v <= 0.45) {
        const float grey = static_cast<float>(0.1 + 0.8 * (u + 1.0) * 0.5);
        colour = {grey, grey, grey, 1.0f};
    } else {
        const float t = static_cast<float>((v - 0.45) / 0.55);
        colour = mix({0.22f, 0.45f, 0.16f, 1.0f}, {0.09f, 0.22f, 0.07f, 1.0f}, t);
    }
    auto disc = [&](double cu, double cv, double radius, const rgba& fill) {
        colour = mix(colour, fill, coverage(std::hypot(u - cu, v - cv) / pixel, radius / pixel));
    };
    const float shade = static_cast<float>(1.0 - 0.2 * std::clamp(v, -1.0, 1.0));
    disc(-0.52, 0.12, 0.25, {0.87f * shade, 0.66f * shade, 0.52f * shade, 1.0f});
    disc(0.52, 0.12, 0.25, {0.80f * shade, 0.15f * shade, 0.12f * shade, 1.0f});
    const float grey = layout::grey_patch_value;
    disc(0.0, 0.0, layout::grey_patch_share + 0.04, {0.15f, 0.15f, 0.15f, 1.0f});
    disc(0.0, 0.0, layout::grey_patch_share, {grey, grey, grey, 1.0f});
    return colour;
}

struct placed_sample {
    picture_point centre;
    double radius_px = 0.0;
    const lut_argb<32>* lut = nullptr;
};

std::vector<placed_sample> place_samples(const hueloom_theme_v1& theme, int size_px)
{
    const double wheel_radius = size_px * layout::wheel_radius_share;
    const std::size_t count = std::max<std::size_t>(theme.luts.size(), 2);
    const double fitting = layout::sample_centre_reach * std::sin(std::numbers::pi / count) * 0.9;
    const double radius = std::min(layout::sample_radius_max, fitting) * wheel_radius;
    std::vector<placed_sample> samples;
    for (const theme_lut_slot& slot : theme.luts)
        if (slot.lut)
            samples.push_back({wheel_point(size_px, slot.rotation, layout::sample_centre_reach), radius, slot.lut.get()});
    return samples;
}

rgba pixel_colour(const graded_grey_field& field, const std::vector<placed_sample>& samples, int size_px, double x,
                  double y)
{
    const double centre = size_px * 0.5;
    const double wheel_radius = size_px * layout::wheel_radius_share;
    const double dx = x - centre;
    const double dy = y - centre;
    const double distance = std::hypot(dx, dy);
    const float inside = coverage(distance, wheel_radius);
    if (inside <= 0.0f)
        return {};

    double rotation = std::atan2(dx, -dy) * 180.0 / std::numbers::pi;
    if (rotation < 0.0)
        rotation += 360.0;
    rgba colour = field.at(rotation, std::min(distance / wheel_radius, 1.0));

    for (const placed_sample& sample : samples) {
        const double sx = x - sample.centre.x;
        const double sy = y - sample.centre.y;
        const double d = std::hypot(sx, sy);
        if (d > sample.radius_px + 3.0)
            continue;
        const rgba scene = sample_scene(sx / sample.radius_px, sy / sample.radius_px, 1.0 / sample.radius_px);
        const argb_float graded = sample_lut(*sample.lut, {1.0f, scene.r, scene.g, scene.b});
        colour = mix(colour, {0.12f, 0.12f, 0.12f, 1.0f}, coverage(d, sample.radius_px + 2.0));
        colour = mix(colour, {graded.r, graded.g, graded.b, 1.0f}, coverage(d, sample.radius_px));
    }
    colour.a = inside;
    return colour;
}

uint8_t to_byte(float value)
{
    return static_cast<uint8_t>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f));
}

}  // namespace

picture_point wheel_point(int size_px, double rotation, double reach)
{
    const double radians = rotation * std::numbers::pi / 180.0;
    const double radius = size_px * layout::wheel_radius_share * reach;
    const double centre = size_px * 0.5;
    return {centre + radius * std::sin(radians), centre - radius * std::cos(radians)};
}

bool write_wheel_picture(const hueloom_theme_v1& theme, int size_px, const std::string& path, std::string& error)
{
    const graded_grey_field field(theme);
    const std::vector<placed_sample> samples = place_samples(theme, size_px);
    std::vector<uint8_t> pixels(static_cast<std::size_t>(size_px) * size_px * 4);
    for (int y = 0; y < size_px; ++y)
        for (int x = 0; x < size_px; ++x) {
            const rgba c = pixel_colour(field, samples, size_px, x + 0.5, y + 0.5);
            uint8_t* p = &pixels[(static_cast<std::size_t>(y) * size_px + x) * 4];
            p[0] = to_byte(c.r);
            p[1] = to_byte(c.g);
            p[2] = to_byte(c.b);
            p[3] = to_byte(c.a);
        }

    std::unique_ptr<OIIO::ImageOutput> out = OIIO::ImageOutput::create(path);
    if (!out) {
        error = fmt::format("cannot write '{}': {}", path, OIIO::geterror());
        return false;
    }
    OIIO::ImageSpec header(size_px, size_px, 4, OIIO::TypeDesc::UINT8);
    // The colours above are not multiplied by alpha, which is what PNG stores.
    header.attribute("oiio:UnassociatedAlpha", 1);
    if (!out->open(path, header) || !out->write_image(OIIO::TypeDesc::UINT8, pixels.data()) || !out->close()) {
        error = fmt::format("cannot write '{}': {}", path, out->geterror());
        return false;
    }
    return true;
}

}  // namespace vl1::themegen
