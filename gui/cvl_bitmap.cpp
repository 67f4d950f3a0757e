#include "gui/cvl_bitmap.h"

#include <FL/Fl_RGB_Image.H>

#include <algorithm>
#include <cstring>

#include "framework/iutils.h"

namespace vl1::gui {
namespace {

struct png_reader {
    const std::vector<uint8_t>* bytes;
    std::size_t offset = 0;
};

cairo_status_t read_png_chunk(void* closure, unsigned char* data, unsigned int length)
{
    auto* reader = static_cast<png_reader*>(closure);
    if (reader->bytes->size() - reader->offset < length)
        return CAIRO_STATUS_READ_ERROR;
    std::memcpy(data, reader->bytes->data() + reader->offset, length);
    reader->offset += length;
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

cairo_surface_t* decode_png(const std::vector<uint8_t>& png)
{
    if (png.size() < 8)
        return nullptr;
    png_reader reader{&png};
    cairo_surface_t* s = cairo_image_surface_create_from_png_stream(read_png_chunk, &reader);
    if (cairo_surface_status(s) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(s);
        return nullptr;
    }
    return s;
}

CVLBitmap::CVLBitmap(const std::string& name, double scale) : scale_factor(scale)
{
    std::vector<uint8_t> bytes;
    if (iutils::get_instance().get_resource(name, bytes))
        surface = decode_png(bytes);
}

CVLBitmap::CVLBitmap(const std::vector<uint8_t>& png, double scale) : surface(decode_png(png)), scale_factor(scale) {}

CVLBitmap::CVLBitmap(cairo_surface_t* owned, double scale) : surface(owned), scale_factor(scale) {}

CVLBitmap::~CVLBitmap()
{
    if (surface != nullptr)
        cairo_surface_destroy(surface);
}

int CVLBitmap::pixel_width() const { return surface ? cairo_image_surface_get_width(surface) : 0; }
int CVLBitmap::pixel_height() const { return surface ? cairo_image_surface_get_height(surface) : 0; }
double CVLBitmap::width() const { return pixel_width() / scale_factor; }
double CVLBitmap::height() const { return pixel_height() / scale_factor; }

void CVLBitmap::draw(cairo_t* cr, double x, double y, double w, double h, double source_x, double source_y,
                     double alpha) const
{
    if (surface == nullptr || w <= 0 || h <= 0)
        return;
    cairo_save(cr);
    cairo_rectangle(cr, x, y, w, h);
    cairo_clip(cr);
    cairo_translate(cr, x - source_x, y - source_y);
    cairo_scale(cr, 1.0 / scale_factor, 1.0 / scale_factor);
    cairo_set_source_surface(cr, surface, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint_with_alpha(cr, alpha);
    cairo_restore(cr);
}

void CVLBitmap::draw_stretched(cairo_t* cr, double x, double y, double w, double h, double alpha) const
{
    if (surface == nullptr || w <= 0 || h <= 0)
        return;
    cairo_save(cr);
    cairo_rectangle(cr, x, y, w, h);
    cairo_clip(cr);
    cairo_translate(cr, x, y);
    cairo_scale(cr, w / pixel_width(), h / pixel_height());
    cairo_set_source_surface(cr, surface, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
    cairo_paint_with_alpha(cr, alpha);
    cairo_restore(cr);
}

const Fl_RGB_Image* CVLBitmap::toolkit_image()
{
    if (surface == nullptr)
        return nullptr;
    if (!rgb_image) {
        // cairo holds premultiplied native-endian ARGB; the toolkit wants straight RGBA bytes.
        cairo_surface_flush(surface);
        const int w = pixel_width(), h = pixel_height(), stride = cairo_image_surface_get_stride(surface);
        const unsigned char* data = cairo_image_surface_get_data(surface);
        rgb_pixels.resize(std::size_t(w) * h * 4);
        for (int y = 0; y < h; ++y) {
            const auto* row = reinterpret_cast<const uint32_t*>(data + std::ptrdiff_t(y) * stride);
            for (int x = 0; x < w; ++x) {
                const uint32_t p = row[x];
                const unsigned a = p >> 24;
                uint8_t* out = &rgb_pixels[(std::size_t(y) * w + x) * 4];
                for (int c = 0; c < 3; ++c) {
                    const unsigned v = (p >> (16 - 8 * c)) & 0xff;
                    out[c] = static_cast<uint8_t>(a == 0 ? 0 : std::min(255u, v * 255 / a));
                }
                out[3] = static_cast<uint8_t>(a);
            }
        }
        rgb_image = std::make_unique<Fl_RGB_Image>(rgb_pixels.data(), w, h, 4);
    }
    return rgb_image.get();
}

}  // namespace vl1::gui

namespace vl1::gui {

std::shared_ptr<CVLBitmap> createScaledBitmap(const CVLBitmap& source, int width)
{
    if (source.empty() || width <= 0)
        return std::make_shared<CVLBitmap>(static_cast<cairo_surface_t*>(nullptr), source.scale());
    // Worked in pixels of the source, so a double-density picture stays sharp.
    const double scale = source.scale();
    const int target = static_cast<int>(width * scale);
    const int source_width = source.pixel_width(), height = source.pixel_height();
    const int quarter = source_width / 4;
    cairo_surface_t* out = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, target, height);
    cairo_t* cr = cairo_create(out);
    auto copy = [&](int from_x, int to_x, int w) {
        cairo_save(cr);
        cairo_rectangle(cr, to_x, 0, w, height);
        cairo_clip(cr);
        cairo_set_source_surface(cr, source.cairo_surface(), to_x - from_x, 0);
        cairo_paint(cr);
        cairo_restore(cr);
    };
    copy(0, 0, quarter);
    if (target - quarter > quarter) {
        for (int x = quarter; x < target - quarter; ++x)
            copy(quarter, x, 1);
    }
    copy(source_width - quarter, target - quarter, quarter);
    cairo_destroy(cr);
    cairo_surface_flush(out);
    return std::make_shared<CVLBitmap>(out, scale);
}

}  // namespace vl1::gui
