// The colour wheel: a round picture on which the user drags a point; the point's angle and
// distance from the centre are the look's "Angle" (degrees) and "Strength" (percent).
//
// The control's value is the packed point (see color_wheel_math.h), in 0..2. A gesture is
// framed for the listener as controlBeginEdit, any number of valueChanged, controlEndEdit;
// on valueChanged the listener reads get_angle() and get_strength().
#pragma once


#include <memory>

#include "framework/uid.h"
#include "gui/color_wheel_math.h"
#include "gui/pointer_control.h"

namespace vl1::gui {

class CVLBitmap;

class CVLColorWheelXYPad : public pointer_control {
public:
    /// Starts at the centre, with the editor's ring marker: 12 points, a line 3 wide in
    /// (87, 87, 87), no fill. The reach is set for a frame of 2.5 first, so max_radius is
    /// (w - 4.75) / w.
    CVLColorWheelXYPad(int x, int y, int w, int h, control_listener* listener, int32_t tag);

    uid get_angle_tag() const { return angle_tag; }
    uid get_strength_tag() const { return strength_tag; }
    /// Both move the point, which then sits on the 1001-step grid, and read angle and
    /// strength back from it: a value set may come back as a near one.
    void set_strength(float percent);
    void set_angle(float degrees);
    float get_strength() const { return current.strength_percent; }
    float get_angle() const { return current.angle_degrees; }

    /// Stores the packed point, limited to 0..2, and takes angle and strength from it,
    /// except on the axes through the centre, where they keep their last values.
    bool setValue(float v) override;
    float getDefaultValue() const { return wheel::centre_value; }

    /// The marker's size; also sets max_radius from the frame width as it stands.
    void setRoundRectRadius(double radius);
    double getRoundRectRadius() const { return marker_size; }
    /// The marker's line width; max_radius stays as it is.
    void setFrameWidth(double width);
    double getFrameWidth() const { return frame_width; }
    float get_max_radius() const { return max_radius; }

    void set_background(std::shared_ptr<CVLBitmap> picture);
    void set_frame_colour(int r, int g, int b, int a = 255);
    void set_fill_colour(int r, int g, int b, int a = 255);

    /// The round picture takes clicks; the corners of its square don't.
    bool hit(double px, double py) const;

    void draw() override;
    /// Left button: the point jumps under the mouse and follows it until release. Right
    /// button alone: back to the centre as one gesture, unconsumed at the centre. The mouse
    /// wheel is left to the panel's scroller.
    /// The same gestures, from a pointer event; 1 when the event was taken.
    int on_pointer(const pointer_event& e) override;

private:
    void move_to(double mouse_x, double mouse_y);
    bool reset_to_centre();

    uid angle_tag{"Angle"};
    uid strength_tag{"Strength"};
    float max_radius = 1.0f;
    wheel::polar current;
    double marker_size = 0.0;
    double frame_width = 1.0;
    int frame_rgba[4] = {87, 87, 87, 255};
    int fill_rgba[4] = {0, 0, 0, 0};
    std::shared_ptr<CVLBitmap> background;
    bool dragging = false;
};

}  // namespace vl1::gui
