#include "gui/cvl_image_preview.h"

#include <tbb/parallel_for.h>

#include <algorithm>
#include <cmath>

#include "gui/canvas.h"
#include "gui/monitor_profile.h"

namespace vl1::gui {
namespace {

uint8_t to_byte(float v)
{
    return static_cast<uint8_t>(std::isnan(v) ? 0.0f : std::clamp(v, 0.0f, 1.0f) * 255.0f);
}

}  // namespace

void convert_to_display(const vl1::image& picture, std::vector<uint32_t>& out)
{
    const auto w = static_cast<std::size_t>(picture.width), h = static_cast<std::size_t>(picture.height);
    out.resize(w * h);
    tbb::parallel_for(std::size_t{0}, h, [&](std::size_t y) {
        uint32_t* row = out.data() + y * w;
        for (std::size_t x = 0; x < w; ++x) {
            const argb_float p = picture.read_pixel(x, y);
            row[x] = 0xff000000u | uint32_t(to_byte(p.r)) << 16 | uint32_t(to_byte(p.g)) << 8 | to_byte(p.b);
        }
    });
}

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

void CVLImagePreview::update_preview()
{
    if (!picture_changed)
        return;
    picture_changed = false;
    if (picture.format == pixel_format::empty || picture.data == nullptr)
        return;
    convert_to_display(picture, pixels);
    if (convert_to_monitor && monitor && monitor->active()) {
        tbb::parallel_for(uint64_t{0}, picture.height,
                          [&](uint64_t y) { monitor->convert(pixels.data() + y * picture.width, picture.width); });
    }
    if (shown != nullptr)
        cairo_surface_destroy(shown);
    const int w = static_cast<int>(picture.width), h = static_cast<int>(picture.height);
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

uint32_t CVLImagePreview::displayed_pixel(int x, int y) const
{
    const auto w = static_cast<int>(picture.width), h = static_cast<int>(picture.height);
    if (x < 0 || y < 0 || x >= w || y >= h || pixels.size() < std::size_t(w) * h)
        return 0;
    return pixels[std::size_t(y) * w + x] & 0xffffffu;
}

void CVLImagePreview::draw()
{
    if (shown == nullptr)
        return;
    canvas cr;
    const int pw = cairo_image_surface_get_width(shown), ph = cairo_image_surface_get_height(shown);
    cairo_translate(cr, x(), y());
    cairo_scale(cr, double(w()) / pw, double(h()) / ph);
    cairo_set_source_surface(cr, shown, 0, 0);
    // Nearest above 1:1 so pixels stay pixels when zoomed in; filtered when reduced.
    cairo_pattern_set_filter(cairo_get_source(cr), w() >= pw ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
    cairo_paint(cr);
}

}  // namespace vl1::gui
