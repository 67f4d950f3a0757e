// "OfxImageEffectSuite" version 1 over effect, clip and image. clipGetImage lends the clip's
// attached image whatever the time and region asked for (kOfxStatFailed when no image is
// attached, kOfxStatErrBadHandle on a descriptor's clip); clipGetRegionOfDefinition gives the
// attached image's bounds. Image memory blocks count their locks; unlocking an unlocked block
// answers kOfxStatErrBadHandle.
#pragma once

#include "ofx/api/ofx_image_effect.h"

namespace vl1::ofxhost {

const OfxImageEffectSuiteV1* image_effect_suite();

}  // namespace vl1::ofxhost
