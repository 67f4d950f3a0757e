// The left side of the editor: the latest graded picture of the preview thread, and the view
// around it that zooms and pans.
#pragma once

#include <FL/Fl_Group.H>
#include <FL/Fl_Widget.H>

#include <cairo/cairo.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "framework/image.h"

class Fl_Scrollbar;

namespace vl1::gui {

class monitor_profile_transform;

/// What the scroll view needs of the picture it holds.
class CVLScrollViewContentView {
public:
    virtual ~CVLScrollViewContentView() = default;
    /// Width and height of the picture in pixels; 0 before the first.
    virtual void get_image_rect(int& width, int& height) const = 0;
    virtual void set_convert_to_monitor(bool convert) = 0;
};

class CVLScrollView;

class CVLImagePreview : public Fl_Widget, public CVLScrollViewContentView {
public:
    CVLImagePreview(int x, int y, int w, int h, std::shared_ptr<const monitor_profile_transform> monitor);
    ~CVLImagePreview() override;

    /// Keeps a copy; the first picture also fits the zoom of the scroll view around it.
    void set_preview_image(const vl1::image& picture);
    /// Turns the latest picture into what is drawn, at most once per call however many
    /// pictures arrived since the last, and again when a zoom changed how fine the screen
    /// shows it. Called by the editor's idle.
    void update_preview();

    void get_image_rect(int& width, int& height) const override;
    void set_convert_to_monitor(bool convert) override;


    void draw() override;

private:
    CVLScrollView* scroller() const;
    int wanted_reduction() const;

    vl1::image picture;
    bool picture_changed = false;
    bool convert_to_monitor = true;
    int full_width = 0, full_height = 0;  // the first picture's size: proxies don't resize the view
    std::shared_ptr<const monitor_profile_transform> monitor;
    std::vector<uint32_t> pixels;  // xRGB of the displayed picture, `reduction` pixels to a word each way
    int reduction = 1;
    cairo_surface_t* shown = nullptr;
};

class CVLScrollView : public Fl_Group {
public:
    static constexpr double min_zoom = 0.1, max_zoom = 10.0;

    /// Holds `content`, which it sizes to the picture times the zoom.
    CVLScrollView(int x, int y, int w, int h, CVLImagePreview* content);

    double zoom() const { return zoom_factor; }
    /// Zoom that fits the picture into the view.
    double fit_factor() const;
    void set_zoom(double z);
    /// Re-places the content after a change of zoom or size, keeping the scroll position.
    void relayout_content();
    /// 0..1 along each axis: where the view stands on a picture larger than it.
    double scroll_x() const { return position_x; }
    double scroll_y() const { return position_y; }

    int handle(int event) override;
    void draw() override;
    void resize(int x, int y, int w, int h) override;

private:
    bool handle_zoom_key();
    void zoom_around(double new_zoom, int mouse_x, int mouse_y);
    /// Screen pixels a picture pixel takes: the zoom times the frame's pixels per point.
    double pixels_per_picture_pixel() const;
    void pan_to(double px, double py);
    static void on_scrollbar(Fl_Widget* bar, void* self);

    CVLImagePreview* content;
    Fl_Scrollbar* horizontal;
    Fl_Scrollbar* vertical;
    int bar_width = 16;  // pixels
    double zoom_factor = 0.0;  // content pixels to points; 0 until the first picture fits it
    double position_x = 0.5, position_y = 0.5;
    int drag_x = 0, drag_y = 0;
    double drag_position_x = 0, drag_position_y = 0;
};

}  // namespace vl1::gui
