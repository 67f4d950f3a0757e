// Pictures of the editor: PNG resources of the bundle, drawn at double density and shown at
// their size in points (pixels / scale), scaled by cairo on the way to the screen.
#pragma once

#include <cairo/cairo.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Fl_RGB_Image;

namespace vl1::gui {

class CVLBitmap {
public:
    /// Loads the bundle resource `name` ("button.png"). A missing or unreadable resource
    /// gives an empty bitmap: it draws nothing and its size reads 0.
    CVLBitmap(const std::string& name, double scale);
    /// From PNG bytes in memory (a theme's wheel picture).
    CVLBitmap(const std::vector<uint8_t>& png, double scale);
    /// A picture made in memory, owned by the bitmap.
    CVLBitmap(cairo_surface_t* surface, double scale);
    ~CVLBitmap();
    CVLBitmap(const CVLBitmap&) = delete;
    CVLBitmap& operator=(const CVLBitmap&) = delete;

    bool empty() const { return surface == nullptr; }
    /// Size in points.
    double width() const;
    double height() const;
    int pixel_width() const;
    int pixel_height() const;
    double scale() const { return scale_factor; }
    cairo_surface_t* cairo_surface() const { return surface; }

    /// Draws the part of the picture at `source_x`, `source_y` (points) into the rectangle
    /// (`x`, `y`, `w`, `h`) at its own size, with `alpha`.
    void draw(cairo_t* cr, double x, double y, double w, double h, double source_x = 0, double source_y = 0,
              double alpha = 1.0) const;
    /// The whole picture stretched into the rectangle.
    void draw_stretched(cairo_t* cr, double x, double y, double w, double h, double alpha = 1.0) const;

    /// The picture for toolkit calls that want an image of their own (the window icon).
    const Fl_RGB_Image* toolkit_image();

private:
    cairo_surface_t* surface = nullptr;
    double scale_factor = 1.0;
    std::unique_ptr<Fl_RGB_Image> rgb_image;
    std::vector<uint8_t> rgb_pixels;
};

/// A cairo image surface from PNG bytes; null for anything that isn't a readable PNG.
cairo_surface_t* decode_png(const std::vector<uint8_t>& png);

}  // namespace vl1::gui

namespace vl1::gui {

/// `source` widened to `width` points without distorting its ends: the outer quarters stay
/// as they are, the column at the left quarter's edge fills the middle. Same scale as the
/// source; an empty source gives an empty bitmap.
std::shared_ptr<CVLBitmap> createScaledBitmap(const CVLBitmap& source, int width);

}  // namespace vl1::gui
