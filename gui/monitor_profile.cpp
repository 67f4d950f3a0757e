#include "gui/monitor_profile.h"

#include <lcms2.h>

namespace vl1::gui {

monitor_profile_transform::monitor_profile_transform(const std::vector<uint8_t>& icc_profile)
{
    if (icc_profile.empty())
        return;
    cmsHPROFILE monitor = cmsOpenProfileFromMem(icc_profile.data(), static_cast<cmsUInt32Number>(icc_profile.size()));
    if (monitor == nullptr)
        return;
    cmsHPROFILE srgb = cmsCreate_sRGBProfile();
    // xRGB in a native 32-bit word is B, G, R, X in memory on this little-endian platform.
    transform = cmsCreateTransform(srgb, TYPE_BGRA_8, monitor, TYPE_BGRA_8, INTENT_PERCEPTUAL, 0);
    cmsCloseProfile(srgb);
    cmsCloseProfile(monitor);
}

monitor_profile_transform::~monitor_profile_transform()
{
    if (transform != nullptr)
        cmsDeleteTransform(static_cast<cmsHTRANSFORM>(transform));
}

void monitor_profile_transform::convert(uint32_t* pixels, std::size_t count) const
{
    if (transform != nullptr)
        cmsDoTransform(static_cast<cmsHTRANSFORM>(transform), pixels, pixels, static_cast<cmsUInt32Number>(count));
}

}  // namespace vl1::gui
