#include "gui/color_wheel_math.h"

#include <algorithm>
#include <cmath>

namespace vl1::gui::wheel {

namespace {

constexpr double pi = 3.141592653589793;
constexpr float two_pi = 6.2831855f;

/// Centred coordinates: -1 at the left or top edge, 1 at the right or bottom.
float centred(float c) { return 2.0f * (c - 0.5f); }

float grid_step(float c) { return std::floor(c * 1000.0f + 0.5f); }

}  // namespace

float pack(point p)
{
    return grid_step(p.x) * 0.001f + grid_step(p.y) * 0.0000001f;
}

point unpack(float value)
{
    point p;
    p.x = std::floor(value * 1000.0f + 0.5f) * 0.001f;
    p.y = std::floor((value - p.x) * 10000000.0f + 0.5f) * 0.001f;
    return p;
}

bool polar_from_value(float value, float max_radius, polar& last)
{
    const point p = unpack(value);
    const float cx = centred(p.x), cy = centred(p.y);
    if (cx == 0.0f || cy == 0.0f)
        return false;
    float a = std::atan2(-cx, -cy);
    if (a < 0.0f)
        a += two_pi;
    last.angle_degrees = static_cast<float>(a * 180.0 / pi);
    const float s = std::sqrt(cx * cx + cy * cy) / max_radius;
    last.strength_percent = s > 1.0f ? 100.0f : s * 100.0f;
    return true;
}

float value_from_polar(float angle_radians, float r)
{
    const float x_step = std::floor((r * std::sin(angle_radians) + 1.0f) * 0.5f * 1000.0f + 0.5f);
    const float y_step = std::floor((r * std::cos(angle_radians) + 1.0f) * 0.5f * 1000.0f + 0.5f);
    return y_step * 0.0000001f + x_step * 0.001f;
}

float value_for_strength(float angle_degrees, float strength_percent, float max_radius)
{
    const auto t = static_cast<float>(angle_degrees * pi / 180.0);
    return value_from_polar(t, max_radius * -0.01f * strength_percent);
}

float value_for_angle(float angle_degrees, float strength_percent, float max_radius)
{
    return value_from_polar(angle_degrees * 0.017453292f, max_radius * strength_percent * -0.01f);
}

float max_radius_for(double round_rect_radius, double frame_width, double width)
{
    if (width <= 0.0)
        return 1.0f;
    return static_cast<float>(((round_rect_radius - frame_width) * -0.5 + width) / width);
}

point marker_point(float value, float max_radius)
{
    point p = unpack(value);
    const float cx = centred(p.x), cy = centred(p.y);
    if (std::sqrt(cx * cx + cy * cy) > max_radius) {
        const float a = std::atan2(-cy, cx);
        p.x = (max_radius * std::cos(a) + 1.0f) * 0.5f;
        p.y = (-max_radius * std::sin(a) + 1.0f) * 0.5f;
    }
    return p;
}

bool hits(double px, double py, double left, double top, double width, double height, float max_radius)
{
    if (width <= 0.0 || height <= 0.0)
        return false;
    const double dx = (px - (left + width / 2)) / (width / 2);
    const double dy = (py - (top + height / 2)) / (height / 2);
    return std::sqrt(dx * dx + dy * dy) <= max_radius;
}

point point_under_mouse(double mx, double my, double left, double top, double width, double height, double marker)
{
    const auto along = [marker](double m, double start, double extent) {
        const double room = extent - marker;
        if (room <= 0.0)
            return 0.5f;
        return static_cast<float>(std::clamp((m - start - marker / 2) / room, 0.0, 1.0));
    };
    return {along(mx, left, width), along(my, top, height)};
}

}  // namespace vl1::gui::wheel
