#include "host/memory_suite.h"

#include "host/host_state.h"

#include <cstdlib>
#include <mutex>
#include <set>

namespace vl1::ofxhost {

namespace {

std::mutex blocks_mutex;
std::set<void*> blocks;

OfxStatus memory_alloc(void*, size_t n, void** out)
{
    try {
        if (auto st = injected("memoryAlloc"))
            return *st;
        if (out == nullptr)
            return kOfxStatErrValue;
        void* p = std::malloc(n == 0 ? 1 : n);
        if (p == nullptr)
            return kOfxStatErrMemory;
        std::lock_guard lock(blocks_mutex);
        blocks.insert(p);
        ++current_state().memory_blocks;
        *out = p;
        return kOfxStatOK;
    } catch (...) {
        return kOfxStatErrMemory;
    }
}

OfxStatus memory_free(void* p)
{
    try {
        if (auto st = injected("memoryFree"))
            return *st;
        std::lock_guard lock(blocks_mutex);
        if (blocks.erase(p) == 0)
            return kOfxStatErrBadHandle;
        std::free(p);
        --current_state().memory_blocks;
        return kOfxStatOK;
    } catch (...) {
        return kOfxStatFailed;
    }
}

const OfxMemorySuiteV1 suite = {memory_alloc, memory_free};

}  // namespace

const OfxMemorySuiteV1* memory_suite() { return &suite; }

}  // namespace vl1::ofxhost
