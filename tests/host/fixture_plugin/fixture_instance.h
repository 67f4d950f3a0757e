// What the host-test fixture plug-in keeps per instance (behind kOfxPropInstanceData), shared
// with the tests so they can see what the plug-in saw.
#pragma once

#include <atomic>
#include <string>

namespace host_fixture {

struct instance_record {
    std::string state_at_create;  // "binaryStateParam" as read in OfxActionCreateInstance
    std::string suites_found;     // names of the suites fetched at load, ','-separated
    std::atomic<int> rows_done{0};
    std::atomic<int> rows_on_spawned_threads{0};
    std::atomic<int> aborted_renders{0};
    int mutex_lock_failures = 0;  // guarded by the plug-in's own OFX mutex
    void* mutex = nullptr;        // OfxMutexHandle, null without the thread suite
};

}  // namespace host_fixture
