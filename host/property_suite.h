// "OfxPropertySuite" version 1 over property_set. Error codes: null or foreign handle
// kOfxStatErrBadHandle; unknown property kOfxStatErrUnknown; index or count out of range
// kOfxStatErrBadIndex; another type kOfxStatErrValue; a null name or output pointer
// kOfxStatErrValue; writes refused by the set's access rules as told in property_set.h.
#pragma once

#include "ofx/api/ofx_property.h"

namespace vl1::ofxhost {

const OfxPropertySuiteV1* property_suite();

}  // namespace vl1::ofxhost
