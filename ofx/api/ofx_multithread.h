// "OfxMultiThreadSuite", version 1.
#pragma once

#include "ofx/api/ofx_core.h"

inline constexpr const char* kOfxMultiThreadSuite = "OfxMultiThreadSuite";

extern "C" {

typedef void(OfxThreadFunctionV1)(unsigned int threadIndex, unsigned int threadMax, void* customArg);

struct OfxMultiThreadSuiteV1 {
    OfxStatus (*multiThread)(OfxThreadFunctionV1* func, unsigned int nThreads, void* customArg);
    OfxStatus (*multiThreadNumCPUs)(unsigned int* nCPUs);
    OfxStatus (*multiThreadIndex)(unsigned int* threadIndex);
    int (*multiThreadIsSpawnedThread)(void);
    OfxStatus (*mutexCreate)(OfxMutexHandle* mutex, int lockCount);
    OfxStatus (*mutexDestroy)(const OfxMutexHandle mutex);
    OfxStatus (*mutexLock)(const OfxMutexHandle mutex);
    OfxStatus (*mutexUnLock)(const OfxMutexHandle mutex);
    OfxStatus (*mutexTryLock)(const OfxMutexHandle mutex);
};

}  // extern "C"
