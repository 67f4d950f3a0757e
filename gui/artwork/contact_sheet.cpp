#include "gui/artwork/contact_sheet.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <vector>

namespace vl1::artwork {

namespace {

constexpr double sheet_width = 2000.0;
constexpr double margin = 24.0;
constexpr double label_height = 22.0;
constexpr colour sheet_ground = grey(30);

cairo_surface_t* find(const picture_set& pictures, const std::string& name)
{
    const auto it = pictures.find(name);
    if (it == pictures.end())
        throw std::runtime_error("contact sheet: picture " + name + " was not drawn");
    return it->second.get();
}

double width_of(cairo_surface_t* s)
{
    return cairo_image_surface_get_width(s);
}

double height_of(cairo_surface_t* s)
{
    return cairo_image_surface_get_height(s);
}

// Draws the part (sx, sy, sw, sh) of `picture`, in its pixels, into (x, y, w, h) of user space.
void draw_part(cairo_t* cr, cairo_surface_t* picture, double sx, double sy, double sw, double sh, double x,
               double y, double w, double h)
{
    cairo_save(cr);
    cairo_rectangle(cr, x, y, w, h);
    cairo_clip(cr);
    cairo_translate(cr, x, y);
    cairo_scale(cr, w / sw, h / sh);
    cairo_set_source_surface(cr, picture, -sx, -sy);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);
    cairo_paint(cr);
    cairo_restore(cr);
}

// A double-density picture at its size in points, in point space.
void draw_whole(cairo_t* cr, cairo_surface_t* picture, double x, double y)
{
    const double w = width_of(picture), h = height_of(picture);
    draw_part(cr, picture, 0, 0, w, h, x, y, w / px_per_point, h / px_per_point);
}

// Nine-part stretching with 6 pixels (3 points) fixed at each side, as the editor does it.
void draw_nine_part(cairo_t* cr, cairo_surface_t* picture, double x, double y, double w, double h)
{
    constexpr double border_px = 6.0, border_pt = border_px / px_per_point;
    const double pw = width_of(picture), ph = height_of(picture);
    const double src_x[] = {0, border_px, pw - border_px, pw}, src_y[] = {0, border_px, ph - border_px, ph};
    const double dst_x[] = {x, x + border_pt, x + w - border_pt, x + w};
    const double dst_y[] = {y, y + border_pt, y + h - border_pt, y + h};
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 3; ++col)
            draw_part(cr, picture, src_x[col], src_y[row], src_x[col + 1] - src_x[col], src_y[row + 1] - src_y[row],
                      dst_x[col], dst_y[row], dst_x[col + 1] - dst_x[col], dst_y[row + 1] - dst_y[row]);
}

// A menu field widened by keeping its quarters and repeating the column at the left quarter.
void draw_widened(cairo_t* cr, cairo_surface_t* picture, double x, double y, double width)
{
    const double pw = width_of(picture), ph = height_of(picture);
    const double quarter_px = std::floor(pw * 0.25), quarter_pt = quarter_px / px_per_point;
    const double h = ph / px_per_point;
    draw_part(cr, picture, 0, 0, quarter_px, ph, x, y, quarter_pt, h);
    draw_part(cr, picture, quarter_px, 0, 1, ph, x + quarter_pt, y, width - 2 * quarter_pt, h);
    draw_part(cr, picture, pw - quarter_px, 0, quarter_px, ph, x + width - quarter_pt, y, quarter_pt, h);
}

// An image button of `w` x 22 points with one state of its icon sheet, placed as the editor
// places it: the quarter centred and rounded to whole points.
void draw_button(cairo_t* cr, const picture_set& pictures, const std::string& background, const std::string& icon,
                 double x, double y, bool hovered, bool on)
{
    cairo_surface_t* back = find(pictures, background);
    cairo_surface_t* sheet = find(pictures, icon);
    const double bw = width_of(back) / px_per_point, bh = height_of(back) / px_per_point / 2;
    draw_part(cr, back, 0, 0, width_of(back), height_of(back) / 2, x, y, bw, bh);
    const double qw = width_of(sheet) / 2, qh = height_of(sheet) / 2;
    const double ix = std::floor(x + (bw - qw / px_per_point) * 0.5 + 0.5);
    const double iy = std::floor(y + (bh - qh / px_per_point) * 0.5 + 0.5);
    draw_part(cr, sheet, hovered ? qw : 0, on ? qh : 0, qw, qh, ix, iy, qw / px_per_point, qh / px_per_point);
}

void label(cairo_t* cr, const std::string& text, double x, double y)
{
    select_sans(cr, 13.0, false);
    set_colour(cr, grey(170));
    cairo_move_to(cr, x, y + 15);
    cairo_show_text(cr, text.c_str());
}

// The toolbar, 494 x 64 points, in point space.
void toolbar_mockup(cairo_t* cr, const picture_set& p)
{
    draw_nine_part(cr, find(p, "panel_top.png"), 0, 0, 494, 32);
    draw_whole(cr, find(p, "logo_small.png"), 20, 5);
    draw_button(cr, p, "button.png", "help.png", 451, 5, false, false);
    draw_nine_part(cr, find(p, "panel_first.png"), 0, 32, 494, 32);
    draw_whole(cr, find(p, "preset_menu.png"), 20, 37);
    select_sans(cr, 11.0, false);
    set_colour(cr, grey(100));
    show_line_centred(cr, "Preset:", 20 + 5 + 2 + text_width(cr, "Preset:") * 0.5, 48);
    draw_button(cr, p, "button.png", "save.png", 184, 37, false, false);
    draw_button(cr, p, "button.png", "delete_disabled.png", 211, 37, false, false);
    draw_button(cr, p, "button_lut.png", "lut_export.png", 238, 37, false, false);
    const char* right_icons[] = {"bypass.png", "reset.png", "close.png", "step_forward.png", "step_back.png"};
    double right = 474;
    for (const char* icon : right_icons) {
        const bool bypass = std::string(icon) == "bypass.png";
        draw_button(cr, p, "button.png", icon, right - 23, 37, false, bypass);
        right -= 23 + 4;
    }
}

void slider_mockup(cairo_t* cr, cairo_surface_t* handle, const char* name, double top)
{
    constexpr double left = 16, right = 467;
    const double handle_w = width_of(handle) / px_per_point, handle_h = height_of(handle) / px_per_point;
    const double track_top = top + 14, track_bottom = top + 14 + handle_h;
    const double position = std::floor(0.5 * (right - handle_w - left)) + left;
    set_colour(cr, grey(100));
    cairo_set_line_width(cr, 2);
    cairo_move_to(cr, position + handle_w * 0.5, track_top - 4);
    cairo_line_to(cr, position + handle_w * 0.5, track_bottom + 4);
    cairo_stroke(cr);
    rounded_rect(cr, left, track_top, right - left, handle_h, handle_h * 0.5);
    set_colour(cr, grey(35));
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, 1);
    set_colour(cr, grey(100));
    cairo_stroke(cr);
    draw_whole(cr, handle, position, track_top);
    select_sans(cr, 10, false);
    set_colour(cr, grey(150));
    cairo_move_to(cr, left, top + 9);
    cairo_show_text(cr, (std::string(name) + ":").c_str());
    const double name_width = text_width(cr, std::string(name) + ":");
    cairo_move_to(cr, right - text_width(cr, "200.00"), top + 9);
    cairo_show_text(cr, "200.00");
    set_colour(cr, grey(255));
    cairo_move_to(cr, left + name_width, top + 9);
    cairo_show_text(cr, " 100.00");
}

// The panel under the toolbar, 482 x 760 points, with the fallback wheel picture.
void panel_mockup(cairo_t* cr, const picture_set& p)
{
    draw_nine_part(cr, find(p, "panel_first.png"), 0, 0, 482, 760);
    draw_widened(cr, find(p, "preset_menu.png"), 0.5, 40, 450);
    select_sans(cr, 11.0, false);
    set_colour(cr, grey(200));
    show_line_centred(cr, "Select theme here", 0.5 + 5 + text_width(cr, "Select theme here") * 0.5, 51);
    draw_button(cr, p, "button.png", "icon_load.png", 457.5, 40, false, false);
    draw_whole(cr, find(p, "theme_not_available.png"), 16, 108);
    cairo_arc(cr, 241.5, 333.5, 6, 0, 2 * std::numbers::pi);  // the wheel's marker ring
    cairo_set_line_width(cr, 3);
    set_colour(cr, grey(87));
    cairo_stroke(cr);
    cairo_surface_t* handle = find(p, "slider_handle.png");
    slider_mockup(cr, handle, "Hue", 599);
    slider_mockup(cr, handle, "Chroma", 659);
    slider_mockup(cr, handle, "Luminance", 719);
}

struct cursor {
    double x = margin, y = margin, row_height = 0;

    // Moves to the next place for a tile of w x h, wrapping to a new row when needed.
    void place(double w, double h)
    {
        if (x + w > sheet_width - margin && x > margin)
            new_row();
        row_height = std::max(row_height, h);
    }
    void advance(double w) { x += w + margin; }
    void new_row()
    {
        x = margin;
        y += row_height + margin;
        row_height = 0;
    }
};

// Each picture as drawn and, beside it, at scale 1; on the editor's ground.
void picture_tiles(cairo_t* cr, const picture_set& pictures, cursor& at, bool draw)
{
    for (const auto& [name, surface] : pictures) {
        const double w = width_of(surface.get()), h = height_of(surface.get());
        const double shown = w >= 600 ? 0.5 : 1.0;  // the large ones at half size only
        const double tile_w = std::max(w * shown + (shown == 1.0 ? w * 0.5 + 12 : 0) + 16, 200.0);
        const double tile_h = label_height + h * shown + 16;
        at.place(tile_w, tile_h);
        if (draw) {
            label(cr, name + "  " + std::to_string(int(w)) + "x" + std::to_string(int(h)), at.x, at.y);
            cairo_rectangle(cr, at.x, at.y + label_height, tile_w, h * shown + 16);
            set_colour(cr, palette::ground);
            cairo_fill(cr);
            draw_part(cr, surface.get(), 0, 0, w, h, at.x + 8, at.y + label_height + 8, w * shown, h * shown);
            if (shown == 1.0)
                draw_part(cr, surface.get(), 0, 0, w, h, at.x + 8 + w + 12, at.y + label_height + 8, w * 0.5,
                          h * 0.5);
        }
        at.advance(tile_w);
    }
    at.new_row();
}

// Lays out everything; with `draw` false it only measures the height.
double lay_out(cairo_t* cr, const picture_set& pictures, bool draw)
{
    cursor at;
    if (draw)
        label(cr, "Each picture as drawn (2 pixels per point) and at scale 1; below, toolbar and panel put together",
              at.x, at.y);
    at.y += label_height + 8;
    picture_tiles(cr, pictures, at, draw);
    for (double scale : {2.0, 1.0}) {
        at.place(494 * scale, 64 * scale + label_height);
        if (draw) {
            label(cr, scale == 2.0 ? "Toolbar at scale 2" : "Toolbar at scale 1", at.x, at.y);
            cairo_save(cr);
            cairo_translate(cr, at.x, at.y + label_height);
            cairo_scale(cr, scale, scale);
            toolbar_mockup(cr, pictures);
            cairo_restore(cr);
        }
        at.advance(494 * scale);
    }
    at.new_row();
    at.place(482, 760 + label_height);
    if (draw) {
        label(cr, "Panel at scale 1", at.x, at.y);
        cairo_save(cr);
        cairo_translate(cr, at.x, at.y + label_height);
        panel_mockup(cr, pictures);
        cairo_restore(cr);
    }
    at.new_row();
    return at.y;
}

}  // namespace

void write_contact_sheet(const picture_set& pictures, const std::filesystem::path& path)
{
    const surface_ptr probe = make_surface(1, 1);
    const context_ptr probe_cr = make_context(probe.get());
    const double height = lay_out(probe_cr.get(), pictures, false);

    const surface_ptr sheet = make_surface(static_cast<int>(sheet_width), static_cast<int>(std::ceil(height)));
    const context_ptr cr = make_context(sheet.get());
    set_colour(cr.get(), sheet_ground);
    cairo_paint(cr.get());
    lay_out(cr.get(), pictures, true);
    write_png(sheet.get(), path);
}

}  // namespace vl1::artwork
