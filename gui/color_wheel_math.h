// The arithmetic of the colour wheel, apart from any toolkit so that tests can check it
// without a display.
//
// A point of the pad has coordinates x and y from 0 to 1, left to right and top to bottom,
// each in 1001 steps, packed into one float: x in the thousandths, y in the ten-millionths.
// Angle and strength are polar coordinates about the centre: angle in degrees, 0 up and
// growing counter-clockwise (90 left, 180 down, 270 right); strength in percent of
// max_radius, a fraction of the half width.
#pragma once

namespace vl1::gui::wheel {

/// The packed value of the centre, (0.5, 0.5).
inline constexpr float centre_value = 0.50005f;
/// The range of a packed value.
inline constexpr float value_min = 0.0f;
inline constexpr float value_max = 2.0f;

struct point {
    float x = 0.5f;
    float y = 0.5f;
};

struct polar {
    float angle_degrees = 0.0f;
    float strength_percent = 0.0f;
};

float pack(point p);
point unpack(float value);

/// Angle and strength of the packed point `value`. A point on either axis through the centre
/// (the centre included) leaves `last` as it is and gives false: that is how the angle
/// survives a strength of 0 and a drag straight along an axis.
bool polar_from_value(float value, float max_radius, polar& last);

/// The packed value of the point at `angle_radians` and radius `r` (negative: the pad's y
/// grows downwards and its angle counter-clockwise), on the 1001-step grid.
float value_from_polar(float angle_radians, float r);
/// The packed value for a new strength, the angle kept.
float value_for_strength(float angle_degrees, float strength_percent, float max_radius);
/// The packed value for a new angle, the strength kept.
float value_for_angle(float angle_degrees, float strength_percent, float max_radius);

/// How far the point may reach, from the radius of the pad's round marker and its frame width:
/// the marker's centre stays inside the picture.
float max_radius_for(double round_rect_radius, double frame_width, double width);

/// The point of `value`, moved onto the circle of max_radius when it lies beyond it.
point marker_point(float value, float max_radius);

/// True if (`px`, `py`) lies within max_radius of the centre of the rectangle, measured in
/// half widths and half heights: the round picture takes clicks, its square's corners don't.
bool hits(double px, double py, double left, double top, double width, double height, float max_radius);

/// The point under the mouse at (`mx`, `my`) for a marker of size `marker` whose centre
/// follows the mouse, each coordinate limited to 0..1.
point point_under_mouse(double mx, double my, double left, double top, double width, double height, double marker);

}  // namespace vl1::gui::wheel
