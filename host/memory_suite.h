// "OfxMemorySuite" version 1: plain heap blocks, counted in host_state::memory_blocks so
// tests can see leaks; freeing a pointer the suite didn't hand out answers kOfxStatErrBadHandle.
#pragma once

#include "ofx/api/ofx_memory.h"

namespace vl1::ofxhost {

const OfxMemorySuiteV1* memory_suite();

}  // namespace vl1::ofxhost
