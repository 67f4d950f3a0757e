// A plain bar: the part of its width that `value` (0..1) gives, filled with one colour.
#pragma once

#include <FL/Fl_Widget.H>

namespace vl1::gui {

class CVLProgressBar : public Fl_Widget {
public:
    CVLProgressBar(int x, int y, int w, int h);

    void set_value(float v);
    float value() const { return progress; }
    void set_colour(unsigned char r, unsigned char g, unsigned char b) { red = r, green = g, blue = b; }
    /// Width in points of the filled part.
    int filled_width() const;

    void draw() override;

private:
    float progress = 0.0f;
    unsigned char red = 26, green = 186, blue = 0;
};

}  // namespace vl1::gui
