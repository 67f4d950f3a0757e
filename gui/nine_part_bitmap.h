// A panel background: a small picture whose borders stay as drawn and whose middle stretches,
// rendered once for each size a panel has and drawn from that cache afterwards.
#pragma once

#include <map>
#include <memory>
#include <utility>

#include "gui/cvl_bitmap.h"

namespace vl1::gui {

class CCachedNinePartTiledBitmap {
public:
    /// `border` points on every side stay fixed.
    CCachedNinePartTiledBitmap(std::shared_ptr<CVLBitmap> source, double border = 3.0);

    /// Renders the background for a panel of `width` x `height` points at `density` pixels per
    /// point, unless that size is cached already. Sizes below 1 render nothing.
    void render_size(double width, double height, double density = 2.0);
    /// Draws the cached rendering of the rectangle's size; magenta for a size nobody rendered,
    /// so a forgotten render_size shows at once.
    void draw(cairo_t* cr, double x, double y, double width, double height) const;

    std::size_t cached_sizes() const { return cache.size(); }

private:
    std::shared_ptr<CVLBitmap> source;
    double border;
    std::map<std::pair<double, double>, std::shared_ptr<CVLBitmap>> cache;
};

}  // namespace vl1::gui
