// Colour-managed desktops put the monitor's ICC profile on the root window (_ICC_PROFILE).
// Where one is set, the preview's sRGB picture is converted to it before it is shown.
#pragma once

#include <cstdint>
#include <vector>

namespace vl1::gui {

class monitor_profile_transform {
public:
    /// From the bytes of an ICC profile; an empty or unreadable profile gives no transform.
    explicit monitor_profile_transform(const std::vector<uint8_t>& icc_profile);
    ~monitor_profile_transform();
    monitor_profile_transform(const monitor_profile_transform&) = delete;
    monitor_profile_transform& operator=(const monitor_profile_transform&) = delete;

    bool active() const { return transform != nullptr; }
    /// Converts `count` pixels of 32-bit native xRGB in place.
    void convert(uint32_t* pixels, std::size_t count) const;

private:
    void* transform = nullptr;
};

}  // namespace vl1::gui
