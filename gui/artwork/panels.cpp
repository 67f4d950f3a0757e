// Backgrounds: the nine-part panels, the buttons, the menu fields and the slider handle.
#include "gui/artwork/artwork.h"
#include "gui/artwork/paint.h"

namespace vl1::artwork {

namespace {

// A nine-part panel is stretched with 6 pixels fixed at each side; its edges are one point
// (2 pixels) wide so that they stay one pixel at scale 1.
constexpr int panel_px = 48;
constexpr double edge_px = 2.0;

struct bevel {
    colour ground;
    colour top;
    colour left;
    colour bottom;
    colour right;
};

void draw_panel(cairo_t* cr, const bevel& b)
{
    const double size = panel_px;
    set_colour(cr, b.ground);
    cairo_paint(cr);
    // Light edges first, dark ones over them: the corners belong to the shadow.
    set_colour(cr, b.top);
    cairo_rectangle(cr, 0, 0, size, edge_px);
    cairo_fill(cr);
    set_colour(cr, b.left);
    cairo_rectangle(cr, 0, 0, edge_px, size);
    cairo_fill(cr);
    set_colour(cr, b.bottom);
    cairo_rectangle(cr, 0, size - edge_px, size, edge_px);
    cairo_fill(cr);
    set_colour(cr, b.right);
    cairo_rectangle(cr, size - edge_px, 0, edge_px, size);
    cairo_fill(cr);
}

// One button state of width x height pixels, its frame a point wide inside the edge.
void draw_button_state(cairo_t* cr, double width, double height, bool pressed)
{
    constexpr double frame_px = 2.0;
    constexpr double radius_px = 7.0;
    const double inset = frame_px * 0.5;
    rounded_rect(cr, inset, inset, width - frame_px, height - frame_px, radius_px);
    if (pressed)
        set_vertical_gradient(cr, 0, height, grey(102), grey(114));
    else
        set_vertical_gradient(cr, 0, height, grey(92), grey(83));
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, frame_px);
    set_colour(cr, pressed ? grey(122) : palette::frame);
    cairo_stroke(cr);
    if (pressed) {
        // A faint shadow under the top edge: the button sits a little deeper.
        cairo_rectangle(cr, frame_px + 3, frame_px, width - 2 * frame_px - 6, 1);
        set_colour(cr, grey(0, 0.18));
        cairo_fill(cr);
    }
}

// Two rows: normal above pressed.
void draw_button(cairo_t* cr, double width, double height)
{
    const double state_height = height / 2;
    draw_button_state(cr, width, state_height, false);
    cairo_save(cr);
    cairo_translate(cr, 0, state_height);
    draw_button_state(cr, width, state_height, true);
    cairo_restore(cr);
}

// The width of the part at the right that opens the menu: 17 points.
constexpr double menu_opener_px = 34.0;

void draw_menu_field(cairo_t* cr, double width, double height, bool clicked)
{
    constexpr double frame_px = 2.0;
    constexpr double radius_px = 6.0;
    rounded_rect(cr, 1, 1, width - frame_px, height - frame_px, radius_px);
    set_colour(cr, clicked ? grey(54) : palette::field);
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, frame_px);
    set_colour(cr, palette::frame);
    cairo_stroke(cr);

    const double opener_left = width - menu_opener_px;
    cairo_rectangle(cr, opener_left, 9, 1.5, height - 18);
    set_colour(cr, grey(clicked ? 90 : 72));
    cairo_fill(cr);

    // A small triangle pointing down, centred in the opener.
    const double cx = opener_left + menu_opener_px * 0.5;
    const double cy = height * 0.5;
    cairo_move_to(cr, cx - 6.0, cy - 3.0);
    cairo_line_to(cr, cx + 6.0, cy - 3.0);
    cairo_line_to(cr, cx, cy + 4.0);
    cairo_close_path(cr);
    set_colour(cr, clicked ? palette::ink_hover : palette::ink);
    cairo_fill(cr);
}

void draw_slider_handle(cairo_t* cr, double width, double height)
{
    const double x = 1.5, y = 2.5;
    const double w = width - 3.0, h = height - 5.0;
    rounded_rect(cr, x, y, w, h, 9.0);
    set_vertical_gradient(cr, y, y + h, grey(218), grey(182));
    cairo_fill_preserve(cr);
    cairo_set_line_width(cr, 1.5);
    set_colour(cr, grey(128));
    cairo_stroke(cr);
    // Two grip lines in the middle.
    for (double line_x : {width * 0.5 - 3.0, width * 0.5 + 2.0}) {
        cairo_rectangle(cr, line_x, height * 0.5 - 6.0, 1.0, 12.0);
        set_colour(cr, grey(150));
        cairo_fill(cr);
    }
}

}  // namespace

std::vector<picture> panel_pictures()
{
    return {
        {"panel.png", panel_px, panel_px,
         [](cairo_t* cr) { draw_panel(cr, {palette::ground, grey(40), grey(40), grey(40), grey(40)}); }},
        {"panel_first.png", panel_px, panel_px,
         [](cairo_t* cr) { draw_panel(cr, {palette::ground, grey(58), grey(54), grey(37), grey(39)}); }},
        {"panel_top.png", panel_px, panel_px,
         [](cairo_t* cr) { draw_panel(cr, {grey(54), grey(66), grey(60), grey(34), grey(44)}); }},
        {"button.png", 46, 88, [](cairo_t* cr) { draw_button(cr, 46, 88); }},
        {"button_lut.png", 92, 88, [](cairo_t* cr) { draw_button(cr, 92, 88); }},
        {"preset_menu.png", 320, 44, [](cairo_t* cr) { draw_menu_field(cr, 320, 44, false); }},
        {"preset_menu_clicked.png", 320, 44, [](cairo_t* cr) { draw_menu_field(cr, 320, 44, true); }},
        {"slider_handle.png", 28, 44, [](cairo_t* cr) { draw_slider_handle(cr, 28, 44); }},
    };
}

std::vector<picture> all_pictures()
{
    std::vector<picture> pictures = panel_pictures();
    for (auto&& list : {icon_pictures(), large_pictures()})
        pictures.insert(pictures.end(), list.begin(), list.end());
    return pictures;
}

}  // namespace vl1::artwork
