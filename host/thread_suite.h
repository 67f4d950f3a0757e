// "OfxMultiThreadSuite" version 1 on std::thread. multiThread starts nThreads new threads
// (the number of CPUs for 0), each calling the function with its index, and returns when all
// are done; called from one of its own threads it answers kOfxStatErrExists. Mutexes are
// recursive, created locked `lockCount` times by the creating thread; unlocking one that the
// calling thread doesn't hold answers kOfxStatErrBadHandle, trying a held one kOfxStatFailed.
#pragma once

#include "ofx/api/ofx_multithread.h"

namespace vl1::ofxhost {

const OfxMultiThreadSuiteV1* thread_suite();

/// How often the mutex is locked now (0 when free); -1 for a handle that isn't a live mutex.
int mutex_lock_count(OfxMutexHandle mutex);

}  // namespace vl1::ofxhost
