#include "ofx/ofx_image_view.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

namespace vl1 {

int depth_from_text(const char* text)
{
    if (text == nullptr)
        return 0;
    if (std::strcmp(text, kOfxBitDepthByte) == 0)
        return 8;
    if (std::strcmp(text, kOfxBitDepthShort) == 0)
        return 16;
    if (std::strcmp(text, kOfxBitDepthFloat) == 0)
        return 32;
    return 0;
}

ofx_image_view read_image_view(const OfxPropertySuiteV1& props, OfxPropertySetHandle image)
{
    ofx_image_view view;
    char* depth = nullptr;
    props.propGetString(image, kOfxImageEffectPropPixelDepth, 0, &depth);
    view.depth = depth_from_text(depth);
    int bounds[4] = {0, 0, 0, 0};
    if (props.propGetIntN(image, kOfxImagePropBounds, 4, bounds) == kOfxStatOK)
        view.bounds = OfxRectI{bounds[0], bounds[1], bounds[2], bounds[3]};
    void* data = nullptr;
    props.propGetPointer(image, kOfxImagePropData, 0, &data);
    view.data = static_cast<uint8_t*>(data);

    const long long width = std::max(0LL, (long long)view.bounds.x2 - view.bounds.x1);
    const long long packed = width * view.bytes_per_pixel();
    int row_bytes = 0;
    if (props.propGetInt(image, kOfxImagePropRowBytes, 0, &row_bytes) == kOfxStatOK)
        view.row_bytes = row_bytes;
    else
        view.row_bytes = static_cast<std::ptrdiff_t>(packed);
    if (view.data != nullptr && view.depth != 0 && std::llabs((long long)view.row_bytes) < packed)
        throw bad_image_error("image rows of " + std::to_string(view.row_bytes) + " bytes cannot hold " +
                              std::to_string(width) + " pixels of " + std::to_string(view.depth) + "-bit RGBA");
    return view;
}

}  // namespace vl1
