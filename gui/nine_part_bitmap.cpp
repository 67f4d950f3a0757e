#include "gui/nine_part_bitmap.h"

#include <cmath>

namespace vl1::gui {

CCachedNinePartTiledBitmap::CCachedNinePartTiledBitmap(std::shared_ptr<CVLBitmap> source, double border)
    : source(std::move(source)), border(border)
{
}

void CCachedNinePartTiledBitmap::render_size(double width, double height, double density)
{
    if (width < 1 || height < 1 || !source || source->empty() || cache.count({width, height}) != 0)
        return;
    const int pw = static_cast<int>(std::ceil(width * density));
    const int ph = static_cast<int>(std::ceil(height * density));
    cairo_surface_t* target = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pw, ph);
    if (cairo_surface_status(target) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(target);
        return;
    }
    cairo_t* cr = cairo_create(target);
    cairo_scale(cr, density, density);
    // Source and target in points; the nine parts: corners as they are, edges stretched
    // along one axis, the middle along both.
    const double sw = source->width(), sh = source->height(), b = border;
    const double xs[4] = {0, b, width - b, width}, sxs[4] = {0, b, sw - b, sw};
    const double ys[4] = {0, b, height - b, height}, sys[4] = {0, b, sh - b, sh};
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 3; ++col) {
            const double dw = xs[col + 1] - xs[col], dh = ys[row + 1] - ys[row];
            const double srcw = sxs[col + 1] - sxs[col], srch = sys[row + 1] - sys[row];
            if (dw <= 0 || dh <= 0 || srcw <= 0 || srch <= 0)
                continue;
            cairo_save(cr);
            cairo_rectangle(cr, xs[col], ys[row], dw, dh);
            cairo_clip(cr);
            cairo_translate(cr, xs[col], ys[row]);
            cairo_scale(cr, dw / srcw / source->scale(), dh / srch / source->scale());
            cairo_set_source_surface(cr, source->cairo_surface(), -sxs[col] * source->scale(), -sys[row] * source->scale());
            cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);
            cairo_paint(cr);
            cairo_restore(cr);
        }
    }
    cairo_destroy(cr);
    cache[{width, height}] = std::make_shared<CVLBitmap>(target, density);
}

void CCachedNinePartTiledBitmap::draw(cairo_t* cr, double x, double y, double width, double height) const
{
    const auto found = cache.find({width, height});
    if (found == cache.end()) {
        cairo_save(cr);
        cairo_set_source_rgb(cr, 1.0, 0.0, 1.0);
        cairo_rectangle(cr, x, y, width, height);
        cairo_fill(cr);
        cairo_restore(cr);
        return;
    }
    found->second->draw(cr, x, y, width, height);
}

}  // namespace vl1::gui
