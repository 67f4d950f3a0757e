// The icon sheets: 2 x 2 states (columns normal | hovered, rows off | on) of 23 x 22 pixels,
// shown at 11.5 x 11 points in the middle of a 23 x 22 point button.
//
// The button places the quarter at whole points, floor(x + 0.5): at (6, 6) points in the
// button, half a pixel right of and a pixel below the exact middle. The glyphs are therefore
// centred on the pixel corner (11, 10) of their cell, which puts them in the middle of the
// button and lets 2-pixel strokes on whole coordinates stay sharp.
#include <cmath>
#include <numbers>

#include "gui/artwork/artwork.h"
#include "gui/artwork/paint.h"

namespace vl1::artwork {

namespace {

constexpr double cell_width = 23.0;
constexpr double cell_height = 22.0;
constexpr double glyph_centre_x = 11.0;
constexpr double glyph_centre_y = 10.0;
constexpr double stroke_px = 2.0;

constexpr double degrees(double d)
{
    return d * std::numbers::pi / 180.0;
}

// Off row: light grey, white under the mouse. On row (a kick button while pressed): a little
// brighter still, so that the press shows.
colour standard_ink(icon_state state)
{
    if (state.on)
        return state.hovered ? palette::ink_hover : grey(232);
    return state.hovered ? palette::ink_hover : palette::ink;
}

// The bypass button is on while the effect is active: then its symbol is lit green.
colour bypass_ink(icon_state state)
{
    if (state.on)
        return state.hovered ? rgb(84, 226, 56) : palette::active_green;
    return standard_ink(state);
}

colour dimmed_ink(icon_state)
{
    return palette::ink_dimmed;
}

using glyph = void (*)(cairo_t*);

void question_mark(cairo_t* cr)
{
    select_sans(cr, 21.0, true);
    text_path_ink_centred(cr, "?", 0.0, 0.0);
    cairo_fill(cr);
}

void tray_with_arrow(cairo_t* cr)
{
    cairo_move_to(cr, -7, 2);
    cairo_line_to(cr, -7, 7);
    cairo_line_to(cr, 7, 7);
    cairo_line_to(cr, 7, 2);
    cairo_stroke(cr);
    cairo_move_to(cr, 0, -8);
    cairo_line_to(cr, 0, 3);
    cairo_stroke(cr);
    cairo_move_to(cr, -4, -1);
    cairo_line_to(cr, 0, 3);
    cairo_line_to(cr, 4, -1);
    cairo_stroke(cr);
}

void trash_can(cairo_t* cr)
{
    cairo_move_to(cr, -7, -5);
    cairo_line_to(cr, 7, -5);
    cairo_stroke(cr);
    cairo_move_to(cr, -3, -5);
    cairo_line_to(cr, -3, -8);
    cairo_line_to(cr, 3, -8);
    cairo_line_to(cr, 3, -5);
    cairo_stroke(cr);
    cairo_move_to(cr, -5.5, -5);
    cairo_line_to(cr, -4.5, 7);
    cairo_line_to(cr, 4.5, 7);
    cairo_line_to(cr, 5.5, -5);
    cairo_stroke(cr);
    cairo_set_line_width(cr, 1.5);
    for (double x : {-1.75, 1.75}) {
        cairo_move_to(cr, x, -2);
        cairo_line_to(cr, x, 4);
    }
    cairo_stroke(cr);
}

// A hooked arrow pointing left: the undo symbol; redo is its mirror image.
void undo_arrow(cairo_t* cr)
{
    cairo_move_to(cr, -7, -4);
    cairo_line_to(cr, 1, -4);
    cairo_arc(cr, 1, 1, 5, degrees(-90), degrees(90));
    cairo_line_to(cr, -3, 6);
    cairo_stroke(cr);
    cairo_move_to(cr, -3.5, -7.5);
    cairo_line_to(cr, -7, -4);
    cairo_line_to(cr, -3.5, -0.5);
    cairo_stroke(cr);
}

void redo_arrow(cairo_t* cr)
{
    cairo_scale(cr, -1, 1);
    undo_arrow(cr);
}

void x_in_circle(cairo_t* cr)
{
    cairo_arc(cr, 0, 0, 8, 0, 2 * std::numbers::pi);
    cairo_stroke(cr);
    cairo_move_to(cr, -3.5, -3.5);
    cairo_line_to(cr, 3.5, 3.5);
    cairo_move_to(cr, 3.5, -3.5);
    cairo_line_to(cr, -3.5, 3.5);
    cairo_stroke(cr);
}

// A circle running counter-clockwise that ends at the top in an arrowhead pointing left.
void circular_arrow(cairo_t* cr)
{
    constexpr double radius = 7.0;
    constexpr double end = degrees(-78);
    cairo_new_path(cr);
    cairo_arc_negative(cr, 0, 0.5, radius, degrees(205), end);
    cairo_stroke(cr);
    // The head: its base straddles the arc's end, its tip lies ahead along the tangent.
    const double ex = radius * std::cos(end), ey = 0.5 + radius * std::sin(end);
    const double tx = std::sin(end), ty = -std::cos(end);  // direction of travel
    const double nx = -ty, ny = tx;
    cairo_move_to(cr, ex + tx * 4.5, ey + ty * 4.5);
    cairo_line_to(cr, ex + nx * 4.0 - tx * 0.5, ey + ny * 4.0 - ty * 0.5);
    cairo_line_to(cr, ex - nx * 4.0 - tx * 0.5, ey - ny * 4.0 - ty * 0.5);
    cairo_close_path(cr);
    cairo_fill(cr);
}

void power_symbol(cairo_t* cr)
{
    cairo_arc(cr, 0, 1, 7, degrees(-55), degrees(235));
    cairo_stroke(cr);
    cairo_move_to(cr, 0, -8);
    cairo_line_to(cr, 0, -1);
    cairo_stroke(cr);
}

void folder_with_plus(cairo_t* cr)
{
    cairo_move_to(cr, -8, 7);
    cairo_line_to(cr, -8, -6);
    cairo_line_to(cr, -3, -6);
    cairo_line_to(cr, -1, -4);
    cairo_line_to(cr, 8, -4);
    cairo_line_to(cr, 8, 7);
    cairo_close_path(cr);
    cairo_stroke(cr);
    cairo_move_to(cr, -3, 2);
    cairo_line_to(cr, 3, 2);
    cairo_move_to(cr, 0, -1);
    cairo_line_to(cr, 0, 5);
    cairo_stroke(cr);
}

picture icon_sheet(const char* file_name, glyph draw_glyph, colour (*ink)(icon_state))
{
    return {file_name, 46, 44, [draw_glyph, ink](cairo_t* cr) {
                for_each_state(cr, cell_width, cell_height, [&](icon_state state) {
                    cairo_translate(cr, glyph_centre_x, glyph_centre_y);
                    icon_strokes(cr, stroke_px);
                    set_colour(cr, ink(state));
                    draw_glyph(cr);
                });
            }};
}

// "LUT" and a small arrow pointing out to the upper right, in cells of 40 x 22 pixels that
// the 46 x 22 point button shows at exact points (13, 6): centred on (20, 10).
void lut_export_cell(cairo_t* cr, icon_state state)
{
    set_colour(cr, standard_ink(state));
    select_sans(cr, 13.5, true);
    constexpr double arrow_size = 5.0, gap = 1.5;
    const double text = text_width(cr, "LUT");
    const double left = 20.0 - (text + gap + arrow_size) * 0.5;
    show_line_centred(cr, "LUT", left + text * 0.5, 10.0);
    const double ax = left + text + gap, ay = 10.0 + arrow_size * 0.5;
    icon_strokes(cr, 1.75);
    cairo_move_to(cr, ax, ay);
    cairo_line_to(cr, ax + arrow_size, ay - arrow_size);
    cairo_move_to(cr, ax + 1.0, ay - arrow_size);
    cairo_line_to(cr, ax + arrow_size, ay - arrow_size);
    cairo_line_to(cr, ax + arrow_size, ay - 1.0);
    cairo_stroke(cr);
}

}  // namespace

std::vector<picture> icon_pictures()
{
    return {
        icon_sheet("help.png", question_mark, standard_ink),
        icon_sheet("save.png", tray_with_arrow, standard_ink),
        icon_sheet("delete.png", trash_can, standard_ink),
        icon_sheet("delete_disabled.png", trash_can, dimmed_ink),
        icon_sheet("step_back.png", undo_arrow, standard_ink),
        icon_sheet("step_forward.png", redo_arrow, standard_ink),
        icon_sheet("close.png", x_in_circle, standard_ink),
        icon_sheet("reset.png", circular_arrow, standard_ink),
        icon_sheet("bypass.png", power_symbol, bypass_ink),
        icon_sheet("icon_load.png", folder_with_plus, standard_ink),
        {"lut_export.png", 80, 44,
         [](cairo_t* cr) {
             for_each_state(cr, 40.0, 22.0, [&](icon_state state) { lut_export_cell(cr, state); });
         }},
    };
}

}  // namespace vl1::artwork
