// The large pictures: the small logo of the toolbar, the wheel's fallback picture in English
// and German, and the window icon. All three share one colour-wheel disc, so the product
// shows one motif everywhere.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string_view>

#include "gui/artwork/artwork.h"
#include "gui/artwork/paint.h"

namespace vl1::artwork {

namespace {

// How a wheel disc is toned: hue runs clockwise from the top, saturation grows from a
// neutral centre to `rim_saturation`, brightness goes from `centre_value` to `rim_value`.
struct wheel_tone {
    double rim_saturation = 0.0;
    double centre_value = 0.0;
    double rim_value = 0.0;
};

colour hsv(double hue_degrees, double saturation, double value)
{
    const double h = std::fmod(hue_degrees / 60.0 + 6.0, 6.0);
    const double c = value * saturation;
    const double x = c * (1.0 - std::fabs(std::fmod(h, 2.0) - 1.0));
    const double m = value - c;
    double r = 0, g = 0, b = 0;
    switch (static_cast<int>(h)) {
    case 0: r = c, g = x; break;
    case 1: r = x, g = c; break;
    case 2: g = c, b = x; break;
    case 3: g = x, b = c; break;
    case 4: r = x, b = c; break;
    default: r = c, b = x; break;
    }
    return {r + m, g + m, b + m, 1.0};
}

uint32_t premultiplied_argb(const colour& c, double coverage)
{
    const auto channel = [coverage](double v) {
        return static_cast<uint32_t>(std::lround(std::clamp(v * coverage, 0.0, 1.0) * 255.0));
    };
    return channel(1.0) << 24 | channel(c.r) << 16 | channel(c.g) << 8 | channel(c.b);
}

// A square surface with a round colour wheel on it, transparent outside, its edge
// anti-aliased by the share of each pixel that lies inside the circle.
surface_ptr colour_wheel_disc(int diameter_px, const wheel_tone& tone)
{
    surface_ptr surface = make_surface(diameter_px, diameter_px);
    cairo_surface_flush(surface.get());
    unsigned char* data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    const double radius = diameter_px * 0.5;
    for (int y = 0; y < diameter_px; ++y) {
        auto* row = reinterpret_cast<uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * stride);
        for (int x = 0; x < diameter_px; ++x) {
            const double dx = x + 0.5 - radius, dy = y + 0.5 - radius;
            const double distance = std::hypot(dx, dy);
            const double coverage = std::clamp(radius - distance + 0.5, 0.0, 1.0);
            if (coverage <= 0.0) {
                row[x] = 0;
                continue;
            }
            const double reach = std::min(distance / radius, 1.0);
            const double hue = std::atan2(dx, -dy) * 180.0 / std::numbers::pi;
            const double saturation = tone.rim_saturation * std::pow(reach, 0.8);
            const double value = tone.centre_value + (tone.rim_value - tone.centre_value) * reach;
            row[x] = premultiplied_argb(hsv(hue, saturation, value), coverage);
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

void paint_disc(cairo_t* cr, int diameter_px, const wheel_tone& tone, double left, double top)
{
    const surface_ptr disc = colour_wheel_disc(diameter_px, tone);
    cairo_set_source_surface(cr, disc.get(), left, top);
    cairo_paint(cr);
}

// The wheel control's marker: a ring, here light with a dark outline so it reads on any hue.
void marker_ring(cairo_t* cr, double cx, double cy, double radius, double width)
{
    cairo_arc(cr, cx, cy, radius, 0, 2 * std::numbers::pi);
    cairo_set_line_width(cr, width + 2.0);
    set_colour(cr, grey(0, 0.45));
    cairo_stroke_preserve(cr);
    cairo_set_line_width(cr, width);
    set_colour(cr, grey(245));
    cairo_stroke(cr);
}

void draw_logo(cairo_t* cr, double width, double height)
{
    constexpr int glyph_px = 30;
    constexpr double left = 4.0, gap = 10.0, letter_spacing = 2.0;
    const double top = (height - glyph_px) * 0.5;
    paint_disc(cr, glyph_px, {0.5, 0.78, 0.82}, left, top);
    cairo_arc(cr, left + glyph_px * 0.5, top + glyph_px * 0.5, glyph_px * 0.5 - 0.75, 0, 2 * std::numbers::pi);
    cairo_set_line_width(cr, 1.5);
    set_colour(cr, grey(0, 0.35));
    cairo_stroke(cr);

    constexpr std::string_view name = "HUELOOM";
    select_sans(cr, 21.0, true);
    set_colour(cr, palette::ink);
    cairo_text_extents_t capital;
    cairo_text_extents(cr, "H", &capital);
    double x = left + glyph_px + gap;
    const double baseline = height * 0.5 - capital.y_bearing * 0.5;
    for (char letter : name) {
        const char text[2] = {letter, '\0'};
        cairo_move_to(cr, x, baseline);
        cairo_show_text(cr, text);
        x += text_width(cr, std::string_view(text, 1)) + letter_spacing;
    }
    (void)width;
}

// The wheel's picture while no usable theme is there: a dark, nearly grey wheel with the
// message in two lines around the middle, which the wheel's marker ring keeps for itself.
void draw_theme_missing(cairo_t* cr, int size_px, std::string_view first_line, std::string_view second_line)
{
    const double centre = size_px * 0.5;
    const int diameter = static_cast<int>(std::lround(size_px * 0.99));
    const double radius = diameter * 0.5;
    const double left = (size_px - diameter) * 0.5;
    paint_disc(cr, diameter, {0.24, 0.2, 0.31}, left, left);

    // Faint spokes and rings: the wheel's structure, without its colours.
    set_colour(cr, grey(255, 0.05));
    cairo_set_line_width(cr, 2.0);
    for (int spoke = 0; spoke < 12; ++spoke) {
        const double a = spoke * std::numbers::pi / 6.0;
        cairo_move_to(cr, centre + std::sin(a) * radius * 0.36, centre - std::cos(a) * radius * 0.36);
        cairo_line_to(cr, centre + std::sin(a) * radius * 0.97, centre - std::cos(a) * radius * 0.97);
    }
    cairo_stroke(cr);
    for (double share : {0.36, 0.67}) {
        cairo_arc(cr, centre, centre, radius * share, 0, 2 * std::numbers::pi);
        cairo_stroke(cr);
    }
    // A calm middle for the text.
    cairo_pattern_t* shade = cairo_pattern_create_radial(centre, centre, 0, centre, centre, radius * 0.62);
    cairo_pattern_add_color_stop_rgba(shade, 0.0, 0, 0, 0, 0.36);
    cairo_pattern_add_color_stop_rgba(shade, 0.6, 0, 0, 0, 0.26);
    cairo_pattern_add_color_stop_rgba(shade, 1.0, 0, 0, 0, 0.0);
    cairo_set_source(cr, shade);
    cairo_pattern_destroy(shade);
    cairo_arc(cr, centre, centre, radius, 0, 2 * std::numbers::pi);
    cairo_fill(cr);
    // The rim, in the frame grey.
    cairo_arc(cr, centre, centre, radius - 2.0, 0, 2 * std::numbers::pi);
    cairo_set_line_width(cr, 4.0);
    set_colour(cr, grey(87));
    cairo_stroke(cr);

    select_sans(cr, 46.0, false);
    set_colour(cr, palette::ink);
    constexpr double line_offset = 52.0;
    show_line_centred(cr, first_line, centre, centre - line_offset);
    show_line_centred(cr, second_line, centre, centre + line_offset);
}

void draw_window_icon(cairo_t* cr, double size)
{
    rounded_rect(cr, 2, 2, size - 4, size - 4, 26);
    set_vertical_gradient(cr, 0, size, grey(62), grey(36));
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, 2.0);
    set_colour(cr, grey(87));
    cairo_stroke(cr);

    constexpr int disc_px = 94;
    const double left = (size - disc_px) * 0.5;
    paint_disc(cr, disc_px, {0.62, 0.84, 0.9}, left, left);
    cairo_arc(cr, size * 0.5, size * 0.5, disc_px * 0.5, 0, 2 * std::numbers::pi);
    cairo_set_line_width(cr, 2.0);
    set_colour(cr, grey(0, 0.4));
    cairo_stroke(cr);
    marker_ring(cr, size * 0.5 + disc_px * 0.2, size * 0.5 - disc_px * 0.2, 9.0, 3.0);
}

}  // namespace

std::vector<picture> large_pictures()
{
    return {
        {"logo_small.png", 260, 44, [](cairo_t* cr) { draw_logo(cr, 260, 44); }},
        {"theme_not_available.png", 900, 900,
         [](cairo_t* cr) { draw_theme_missing(cr, 900, "Theme", "not available"); }},
        {"theme_nicht_verfuegbar.png", 900, 900,
         [](cairo_t* cr) { draw_theme_missing(cr, 900, "Theme", "nicht verfügbar"); }},
        {"vl_icon.png", 128, 128, [](cairo_t* cr) { draw_window_icon(cr, 128); }},
    };
}

}  // namespace vl1::artwork
