// Small drawing helpers shared by all pictures of hueloom-artwork: colours told as 0..255
// greys, owned cairo objects, rounded rectangles, the one sans face, sheets of states and the
// PNG writer. All coordinates are pixels of the picture being drawn (two per point).
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include <cairo.h>

namespace vl1::artwork {

/// Every picture is drawn at double density: one point of the editor is two pixels.
inline constexpr double px_per_point = 2.0;

/// A colour as cairo takes it: channels and alpha from 0 to 1, not premultiplied.
struct colour {
    double r = 0.0, g = 0.0, b = 0.0, a = 1.0;
};

/// A grey of the editor's palette, `level` from 0 to 255.
constexpr colour grey(int level, double alpha = 1.0)
{
    return {level / 255.0, level / 255.0, level / 255.0, alpha};
}

constexpr colour rgb(int red, int green, int blue, double alpha = 1.0)
{
    return {red / 255.0, green / 255.0, blue / 255.0, alpha};
}

/// The greys that every picture is built from, so that they look like one product.
namespace palette {
inline constexpr colour ground = grey(47);      // window and panel ground
inline constexpr colour frame = grey(100);      // frames of buttons and fields
inline constexpr colour button = grey(87);      // button fill
inline constexpr colour field = grey(40);       // the ground of menus
inline constexpr colour ink = grey(200);        // text and icons
inline constexpr colour ink_hover = grey(255);  // icons under the mouse
inline constexpr colour ink_dimmed = grey(118); // icons of a control that is not offered
inline constexpr colour active_green = rgb(26, 186, 0);
}  // namespace palette

struct surface_release {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct context_release {
    void operator()(cairo_t* cr) const { cairo_destroy(cr); }
};
using surface_ptr = std::unique_ptr<cairo_surface_t, surface_release>;
using context_ptr = std::unique_ptr<cairo_t, context_release>;

/// A transparent 32-bit ARGB surface; throws std::runtime_error if cairo can't make it.
surface_ptr make_surface(int width_px, int height_px);
/// A drawing context on `surface`; throws std::runtime_error on failure.
context_ptr make_context(cairo_surface_t* surface);

void set_colour(cairo_t* cr, const colour& c);
/// A vertical linear gradient from `top` at `y0` to `bottom` at `y1` as the source.
void set_vertical_gradient(cairo_t* cr, double y0, double y1, const colour& top, const colour& bottom);

/// Adds a closed rounded rectangle to the path; a radius of 0 gives a plain rectangle.
void rounded_rect(cairo_t* cr, double x, double y, double width, double height, double radius);

/// Round caps and joins and the given line width: the strokes of every icon.
void icon_strokes(cairo_t* cr, double width_px);

/// The one sans face of the pictures (DejaVu Sans from fonts-dejavu-core).
void select_sans(cairo_t* cr, double size_px, bool bold);
/// The advance width of `text` in the current face.
double text_width(cairo_t* cr, std::string_view text);
/// Draws one line of text whose capital letters are centred vertically on `centre_y` and
/// whose advance is centred on `centre_x`, in the current face and source.
void show_line_centred(cairo_t* cr, std::string_view text, double centre_x, double centre_y);
/// Adds the outline of `text` to the path with its ink box centred on the point: for single
/// glyphs such as "?", where the ink and not the line decides the balance.
void text_path_ink_centred(cairo_t* cr, std::string_view text, double centre_x, double centre_y);

/// The state of one cell of a 2 x 2 icon sheet: columns normal | hovered, rows off | on.
struct icon_state {
    bool hovered = false;
    bool on = false;
};

/// Calls `draw(state)` for the four cells of a 2 x 2 state sheet, with the context moved to
/// the cell's top left corner and clipped to the cell.
template <class Draw>
void for_each_state(cairo_t* cr, double cell_width, double cell_height, Draw&& draw)
{
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 2; ++column) {
            cairo_save(cr);
            cairo_translate(cr, column * cell_width, row * cell_height);
            cairo_rectangle(cr, 0, 0, cell_width, cell_height);
            cairo_clip(cr);
            draw(icon_state{column == 1, row == 1});
            cairo_restore(cr);
        }
    }
}

/// Writes `surface` as PNG; throws std::runtime_error naming the path if that fails.
void write_png(cairo_surface_t* surface, const std::filesystem::path& path);

}  // namespace vl1::artwork
