#include "gui/cvl_progress_bar.h"

#include <FL/fl_draw.H>

#include <algorithm>
#include <cmath>

namespace vl1::gui {

CVLProgressBar::CVLProgressBar(int x, int y, int w, int h) : Fl_Widget(x, y, w, h) { box(FL_NO_BOX); }

void CVLProgressBar::set_value(float v)
{
    v = std::isnan(v) ? 0.0f : std::clamp(v, 0.0f, 1.0f);
    if (v != progress) {
        progress = v;
        redraw();
    }
}

int CVLProgressBar::filled_width() const { return static_cast<int>(progress * static_cast<float>(w())); }

void CVLProgressBar::draw()
{
    fl_rectf(x(), y(), w(), h(), fl_rgb_color(47, 47, 47));
    if (filled_width() > 0)
        fl_rectf(x(), y(), filled_width(), h(), fl_rgb_color(red, green, blue));
}

}  // namespace vl1::gui
