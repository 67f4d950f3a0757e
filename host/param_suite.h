// "OfxParameterSuite" version 1 over param_set and param. Besides the usual codes (null or
// foreign handle kOfxStatErrBadHandle, unknown name kOfxStatErrUnknown): value calls on a
// descriptor answer kOfxStatErrBadHandle, on a type without a value (push button, group,
// page) kOfxStatErrUnsupported; derivative and integral exist for real-valued types only,
// others get kOfxStatErrValue; paramGetKeyIndex answers kOfxStatFailed when there is no such
// key, paramGetKeyTime and paramDeleteKey kOfxStatErrBadIndex.
#pragma once

#include "ofx/api/ofx_param.h"

namespace vl1::ofxhost {

const OfxParameterSuiteV1* parameter_suite();

}  // namespace vl1::ofxhost
