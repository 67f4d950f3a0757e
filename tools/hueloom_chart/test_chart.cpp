#include "tools/hueloom_chart/test_chart.h"

#include <algorithm>
#include <cmath>

namespace vl1::chart_tool {

namespace {

// Rows of the chart as fractions of its height, top down.
constexpr double sweep_top = 0.03, sweep_bottom = 0.30;
constexpr double primaries_top = 0.33, primaries_bottom = 0.50;
constexpr double skin_top = 0.53, skin_bottom = 0.73;
constexpr double ramp_top = 0.76, ramp_bottom = 0.86;
constexpr double steps_top = 0.88, steps_bottom = 0.97;
constexpr double margin = 0.02;    // left and right, of the width
constexpr double gap = 0.12;       // between patches, of a patch's share of the row
constexpr float ground = 0.18f;

struct named_colour {
    const char* name;
    std::array<float, 3> rgb;
};

constexpr named_colour primaries[] = {
    {"red", {1, 0, 0}},  {"yellow", {1, 1, 0}}, {"green", {0, 1, 0}},
    {"cyan", {0, 1, 1}}, {"blue", {0, 0, 1}},   {"magenta", {1, 0, 1}},
};

// From very light to deep skin, as sRGB code values.
constexpr named_colour skins[] = {
    {"skin 1", {0.97f, 0.84f, 0.75f}}, {"skin 2", {0.91f, 0.74f, 0.62f}}, {"skin 3", {0.82f, 0.62f, 0.49f}},
    {"skin 4", {0.70f, 0.50f, 0.36f}}, {"skin 5", {0.52f, 0.35f, 0.24f}}, {"skin 6", {0.33f, 0.22f, 0.15f}},
};

int row(double fraction, int height) { return static_cast<int>(std::lround(fraction * height)); }

// `count` patches side by side across the usable width of a row.
void add_row(std::vector<chart_patch>& out, int width, int height, double top, double bottom,
             const std::vector<named_colour>& colours)
{
    const double left = margin * width;
    const double share = (width - 2.0 * left) / static_cast<double>(colours.size());
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const double x = left + share * static_cast<double>(i);
        chart_patch p{colours[i].name, static_cast<int>(std::lround(x + share * gap / 2)), row(top, height),
                      static_cast<int>(std::lround(x + share * (1.0 - gap / 2))), row(bottom, height), colours[i].rgb};
        out.push_back(p);
    }
}

std::array<float, 3> hsv_to_rgb(double hue_degrees, double saturation, double value)
{
    const double h = std::fmod(hue_degrees, 360.0) / 60.0;
    const int sector = static_cast<int>(h);
    const double f = h - sector;
    const double p = value * (1 - saturation), q = value * (1 - saturation * f), t = value * (1 - saturation * (1 - f));
    double r = value, g = t, b = p;
    switch (sector) {
    case 1: r = q, g = value, b = p; break;
    case 2: r = p, g = value, b = t; break;
    case 3: r = p, g = q, b = value; break;
    case 4: r = t, g = p, b = value; break;
    case 5: r = value, g = p, b = q; break;
    default: break;
    }
    return {static_cast<float>(r), static_cast<float>(g), static_cast<float>(b)};
}

void paint(chart_image& img, int x, int y, const std::array<float, 3>& c)
{
    float* p = img.rgb.data() + (static_cast<std::size_t>(y) * img.width + x) * 3;
    p[0] = c[0], p[1] = c[1], p[2] = c[2];
}

double position(int i, int first, int last)
{
    return last > first + 1 ? double(i - first) / double(last - 1 - first) : 0.0;
}

}  // namespace

std::vector<chart_patch> chart_patches(int width, int height)
{
    std::vector<chart_patch> out;
    add_row(out, width, height, primaries_top, primaries_bottom, {std::begin(primaries), std::end(primaries)});
    add_row(out, width, height, skin_top, skin_bottom, {std::begin(skins), std::end(skins)});
    std::vector<named_colour> steps;
    static const char* const step_names[] = {"grey 0", "grey 1", "grey 2", "grey 3", "grey 4", "grey 5",
                                             "grey 6", "grey 7", "grey 8", "grey 9", "grey 10"};
    for (int i = 0; i <= 10; ++i) {
        const float v = static_cast<float>(i) / 10.0f;
        steps.push_back({step_names[i], {v, v, v}});
    }
    add_row(out, width, height, steps_top, steps_bottom, steps);
    return out;
}

chart_band hue_sweep_band(int width, int height)
{
    return {row(margin, width), row(sweep_top, height), width - row(margin, width), row(sweep_bottom, height)};
}

chart_band grey_ramp_band(int width, int height)
{
    return {row(margin, width), row(ramp_top, height), width - row(margin, width), row(ramp_bottom, height)};
}

chart_image make_test_chart(int width, int height)
{
    chart_image img;
    img.width = std::clamp(width, min_chart_size, max_chart_size);
    img.height = std::clamp(height, min_chart_size, max_chart_size);
    img.rgb.assign(static_cast<std::size_t>(img.width) * img.height * 3, ground);
    const chart_band sweep = hue_sweep_band(img.width, img.height);
    for (int y = sweep.y1; y < sweep.y2; ++y) {
        const double saturation = 1.0 - 0.75 * position(y, sweep.y1, sweep.y2);
        for (int x = sweep.x1; x < sweep.x2; ++x) {
            paint(img, x, y, hsv_to_rgb(360.0 * position(x, sweep.x1, sweep.x2), saturation, 0.9));
        }
    }
    const chart_band ramp = grey_ramp_band(img.width, img.height);
    for (int y = ramp.y1; y < ramp.y2; ++y) {
        for (int x = ramp.x1; x < ramp.x2; ++x) {
            const float v = static_cast<float>(position(x, ramp.x1, ramp.x2));
            paint(img, x, y, {v, v, v});
        }
    }
    for (const auto& p : chart_patches(img.width, img.height)) {
        for (int y = p.y1; y < p.y2; ++y) {
            for (int x = p.x1; x < p.x2; ++x)
                paint(img, x, y, p.colour);
        }
    }
    return img;
}

}  // namespace vl1::chart_tool
