// The catalogue of the editor's pictures: the name of each PNG in the bundle's Resources,
// its size in pixels (twice its size in points) and how to draw it.
//
// Layouts that the editor relies on:
// - nine-part backgrounds keep 6 pixels (3 points) fixed on each side and stretch a flat
//   middle;
// - button backgrounds hold the normal state above the pressed one;
// - icons are sheets of 2 x 2 states: columns normal | hovered, rows off | on;
// - menu fields are widened by keeping their left and right quarters and repeating the
//   column at the left quarter, so everything between the quarters is uniform across.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <cairo.h>

namespace vl1::artwork {

struct picture {
    std::string file_name;
    int width_px = 0;
    int height_px = 0;
    /// Draws the picture on a transparent surface of exactly width_px by height_px.
    std::function<void(cairo_t*)> draw;
};

/// Panel backgrounds, button backgrounds, menu fields and the slider handle.
std::vector<picture> panel_pictures();
/// The toolbar's and the panel's icon sheets.
std::vector<picture> icon_pictures();
/// The logo, the fallback wheel pictures and the window icon.
std::vector<picture> large_pictures();

/// All pictures, in the order above.
std::vector<picture> all_pictures();

}  // namespace vl1::artwork
