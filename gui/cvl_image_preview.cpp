#include "gui/cvl_image_preview.h"

#include <tbb/parallel_for.h>

#include <algorithm>

#include "gui/canvas.h"
#include "gui/display_pixels.h"
#include "gui/monitor_profile.h"
#include "gui/zoom.h"

namespace vl1::gui {

CVLImagePreview::CVLImagePreview(int x, int y, int w, int h, std::shared_ptr<const monitor_profile_transform> monitor)
    : Fl_Widget(x, y, w, h), monitor(std::move(monitor))
{
    box(FL_NO_BOX);
}

CVLImagePreview::~CVLImagePreview()
{
    if (shown != nullptr)
        cairo_surface_destroy(shown);
}

CVLScrollView* CVLImagePreview::scroller() const { return dynamic_cast<CVLScrollView*>(parent()); }

void CVLImagePreview::set_preview_image(const vl1::image& source)
{
    picture.copy_from(source);
    if (full_width == 0) {
        full_width = static_cast<int>(picture.width);
        full_height = static_cast<int>(picture.height);
    }
    if (CVLScrollView* view = scroller(); view != nullptr && view->zoom() <= 0.0)
        view->set_zoom(view->fit_factor() * 0.91);
    picture_changed = true;
}

int CVLImagePreview::wanted_reduction() const
{
    // Converted at most as fine as the screen shows it: a k-th of the picture's width or less
    // on screen takes a mean of k x k pixels per word.
    return std::max(1, static_cast<int>(picture.width / static_cast<uint64_t>(std::max(1, w()))));
}

void CVLImagePreview::update_preview()
{
    const int wanted = wanted_reduction();
    if (!picture_changed && wanted == reduction)
        return;
    picture_changed = false;
    if (picture.format == pixel_format::empty || picture.data == nullptr)
        return;
    reduction = wanted;
    const display_size size = convert_to_display(picture, pixels, reduction);
    if (convert_to_monitor && monitor && monitor->active()) {
        tbb::parallel_for(std::size_t{0}, size.height,
                          [&](std::size_t y) { monitor->convert(pixels.data() + y * size.width, size.width); });
    }
    if (shown != nullptr)
        cairo_surface_destroy(shown);
    const int w = static_cast<int>(size.width), h = static_cast<int>(size.height);
    shown = cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_RGB24, w,
                                                h, w * 4);
    redraw();
}

void CVLImagePreview::get_image_rect(int& width, int& height) const
{
    width = full_width;
    height = full_height;
}

void CVLImagePreview::set_convert_to_monitor(bool convert)
{
    if (convert != convert_to_monitor) {
        convert_to_monitor = convert;
        picture_changed = true;
    }
}

void CVLImagePreview::draw()
{
    if (shown == nullptr)
        return;
    canvas cr(this);
    const point_box b = points_of(this);
    const int pw = cairo_image_surface_get_width(shown), ph = cairo_image_surface_get_height(shown);
    cairo_translate(cr, b.x, b.y);
    cairo_scale(cr, b.w / pw, b.h / ph);
    cairo_set_source_surface(cr, shown, 0, 0);
    // Nearest above 1:1 so pixels stay pixels when zoomed in; filtered when reduced.
    cairo_pattern_set_filter(cairo_get_source(cr), w() >= pw ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
    cairo_paint(cr);
}

}  // namespace vl1::gui
