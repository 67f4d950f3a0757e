#include "gui/artwork/paint.h"

#include <algorithm>
#include <numbers>
#include <stdexcept>
#include <string>

namespace vl1::artwork {

namespace {

void check_status(cairo_status_t status, std::string_view what)
{
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error(std::string(what) + ": " + cairo_status_to_string(status));
}

}  // namespace

surface_ptr make_surface(int width_px, int height_px)
{
    if (width_px < 1 || height_px < 1)
        throw std::runtime_error("picture size " + std::to_string(width_px) + "x" + std::to_string(height_px) +
                                 " is empty");
    surface_ptr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width_px, height_px));
    check_status(cairo_surface_status(surface.get()), "cannot make a picture surface");
    return surface;
}

context_ptr make_context(cairo_surface_t* surface)
{
    context_ptr cr(cairo_create(surface));
    check_status(cairo_status(cr.get()), "cannot draw on a picture surface");
    return cr;
}

void set_colour(cairo_t* cr, const colour& c)
{
    cairo_set_source_rgba(cr, c.r, c.g, c.b, c.a);
}

void set_vertical_gradient(cairo_t* cr, double y0, double y1, const colour& top, const colour& bottom)
{
    cairo_pattern_t* gradient = cairo_pattern_create_linear(0, y0, 0, y1);
    cairo_pattern_add_color_stop_rgba(gradient, 0, top.r, top.g, top.b, top.a);
    cairo_pattern_add_color_stop_rgba(gradient, 1, bottom.r, bottom.g, bottom.b, bottom.a);
    cairo_set_source(cr, gradient);
    cairo_pattern_destroy(gradient);
}

void rounded_rect(cairo_t* cr, double x, double y, double width, double height, double radius)
{
    radius = std::clamp(radius, 0.0, std::min(width, height) * 0.5);
    if (radius <= 0.0) {
        cairo_rectangle(cr, x, y, width, height);
        return;
    }
    constexpr double quarter = std::numbers::pi / 2.0;
    cairo_new_sub_path(cr);
    cairo_arc(cr, x + width - radius, y + radius, radius, -quarter, 0);
    cairo_arc(cr, x + width - radius, y + height - radius, radius, 0, quarter);
    cairo_arc(cr, x + radius, y + height - radius, radius, quarter, 2 * quarter);
    cairo_arc(cr, x + radius, y + radius, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(cr);
}

void icon_strokes(cairo_t* cr, double width_px)
{
    cairo_set_line_width(cr, width_px);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
}

void select_sans(cairo_t* cr, double size_px, bool bold)
{
    cairo_select_font_face(cr, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, size_px);
}

double text_width(cairo_t* cr, std::string_view text)
{
    const std::string line(text);
    cairo_text_extents_t extents;
    cairo_text_extents(cr, line.c_str(), &extents);
    return extents.x_advance;
}

void show_line_centred(cairo_t* cr, std::string_view text, double centre_x, double centre_y)
{
    // The height of a capital sets the line's middle, so that lines with and without
    // descenders or umlauts sit alike.
    cairo_text_extents_t capital;
    cairo_text_extents(cr, "H", &capital);
    const std::string line(text);
    cairo_move_to(cr, centre_x - text_width(cr, text) * 0.5, centre_y - capital.y_bearing * 0.5);
    cairo_show_text(cr, line.c_str());
}

void text_path_ink_centred(cairo_t* cr, std::string_view text, double centre_x, double centre_y)
{
    const std::string line(text);
    cairo_text_extents_t extents;
    cairo_text_extents(cr, line.c_str(), &extents);
    cairo_move_to(cr, centre_x - extents.x_bearing - extents.width * 0.5,
                  centre_y - extents.y_bearing - extents.height * 0.5);
    cairo_text_path(cr, line.c_str());
}

void write_png(cairo_surface_t* surface, const std::filesystem::path& path)
{
    cairo_surface_flush(surface);
    const cairo_status_t status = cairo_surface_write_to_png(surface, path.c_str());
    check_status(status, "cannot write " + path.string());
}

}  // namespace vl1::artwork
