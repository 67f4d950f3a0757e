// "OfxMemorySuite", version 1.
#pragma once

#include "ofx/api/ofx_core.h"

inline constexpr const char* kOfxMemorySuite = "OfxMemorySuite";

extern "C" {

struct OfxMemorySuiteV1 {
    OfxStatus (*memoryAlloc)(void* handle, size_t nBytes, void** allocatedData);
    OfxStatus (*memoryFree)(void* allocatedData);
};

}  // extern "C"
