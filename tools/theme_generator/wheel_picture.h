// The wheel's background picture: what each direction of the wheel does. The disc shows a
// grey field graded by the theme, at each point with the angle and strength that the point
// stands for, and each look has a small sample scene graded by its LUT alone, placed at the
// look's angle.
//
// Orientation: a theme's rotation runs clockwise from the top of the wheel, since the wheel
// control's "Angle" grows counter-clockwise from the top and the component turns it into
// the theme angle 360 - "Angle". Rotation 90 is therefore shown on the right.
#pragma once

#include <string>

#include "color/hueloom_theme_v1.h"

namespace vl1::themegen {

/// Where the parts of the picture lie, as shares of the wheel's radius.
struct wheel_picture_layout {
    /// The wheel's radius as a share of the picture's edge; the rest stays transparent.
    static constexpr double wheel_radius_share = 0.495;
    /// Distance of each sample scene's centre from the middle of the wheel.
    static constexpr double sample_centre_reach = 0.64;
    /// Largest radius of a sample scene; with many looks they get smaller so they don't touch.
    static constexpr double sample_radius_max = 0.26;
    /// Each sample scene is centred on a patch of display grey 0.5, radius as a share of the
    /// scene's, so its cast can be read off directly.
    static constexpr double grey_patch_share = 0.17;
    static constexpr float grey_patch_value = 0.5f;
};

struct picture_point {
    double x = 0.0;
    double y = 0.0;
};

/// The point, in pixels from the picture's top left corner, that stands for the theme
/// angle `rotation` (degrees) at `reach` (0 centre, 1 rim of the wheel).
picture_point wheel_point(int size_px, double rotation, double reach);

/// Renders the picture for `theme`, `size_px` square, and writes it as an 8-bit RGBA PNG
/// with OpenImageIO. False with `error` set if it can't be written.
bool write_wheel_picture(const hueloom_theme_v1& theme, int size_px, const std::string& path, std::string& error);

}  // namespace vl1::themegen
