// Points and pixels. The editor is laid out and drawn in points; its window, the toolkit's
// widgets and its events are in pixels. The zoom, pixels per point, is the desktop's scale
// (1 on an ordinary desktop, 2 on a double-density one), fixed for an editor when it opens.
//
// A widget is placed in pixels (to_pixels of its rectangle in points) and draws in points: its
// canvas is scaled by the zoom of its frame, and points_of gives its box in the same units.
#pragma once

#include <FL/Fl_Group.H>

namespace vl1::gui {

/// A rectangle in window points.
struct point_box {
    double x = 0, y = 0, w = 0, h = 0;
};

/// The group that holds an editor's controls and knows its zoom.
class zoomed_frame : public Fl_Group {
public:
    zoomed_frame(int x, int y, int w, int h, double zoom) : Fl_Group(x, y, w, h), zoom(zoom > 0 ? zoom : 1.0) {}
    double get_zoom() const { return zoom; }

private:
    double zoom;
};

/// The zoom of the frame that holds `widget`; 1 for a widget outside any frame.
double zoom_of(const Fl_Widget* widget);
/// `points` in pixels at `zoom`, rounded to the nearest pixel.
int to_pixels(double points, double zoom);
/// The widget's box in points.
point_box points_of(const Fl_Widget* widget);

}  // namespace vl1::gui
