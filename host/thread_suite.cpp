#include "host/thread_suite.h"

#include "host/handle.h"
#include "host/host_state.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace vl1::ofxhost {

namespace {

thread_local unsigned int thread_index = 0;
thread_local bool spawned = false;

// A recursive mutex that knows its owner and count, so wrong unlocks are answered, not undefined.
struct host_mutex : handle_tag {
    static constexpr handle_kind kind = handle_kind::mutex;
    host_mutex() : handle_tag(kind) {}
    std::mutex m;
    std::condition_variable free;
    std::thread::id owner;
    int count = 0;
};

unsigned int cpu_count()
{
    const unsigned configured = current_state().cpu_count;
    if (configured != 0)
        return configured;
    // Asked once: it reads a file under /sys at every call, and plug-ins ask at every render.
    static const unsigned hardware = std::max(1u, std::thread::hardware_concurrency());
    return hardware;
}

OfxStatus multi_thread(OfxThreadFunctionV1* func, unsigned int n, void* arg)
{
    if (auto st = injected("multiThread"))
        return *st;
    if (func == nullptr)
        return kOfxStatErrValue;
    if (spawned)
        return kOfxStatErrExists;
    if (n == 0)
        n = cpu_count();
    try {
        std::vector<std::thread> workers;
        workers.reserve(n);
        for (unsigned int i = 0; i < n; ++i) {
            workers.emplace_back([=] {
                thread_index = i;
                spawned = true;
                func(i, n, arg);
            });
        }
        for (auto& w : workers)
            w.join();
        return kOfxStatOK;
    } catch (...) {
        return kOfxStatFailed;
    }
}

OfxStatus num_cpus(unsigned int* n)
{
    if (auto st = injected("multiThreadNumCPUs"))
        return *st;
    if (n == nullptr)
        return kOfxStatErrValue;
    *n = cpu_count();
    return kOfxStatOK;
}

OfxStatus index_of_thread(unsigned int* index)
{
    if (auto st = injected("multiThreadIndex"))
        return *st;
    if (index == nullptr)
        return kOfxStatErrValue;
    *index = thread_index;
    return kOfxStatOK;
}

int is_spawned() { return spawned ? 1 : 0; }

OfxStatus mutex_create(OfxMutexHandle* out, int lock_count)
{
    if (auto st = injected("mutexCreate"))
        return *st;
    if (out == nullptr || lock_count < 0)
        return kOfxStatErrValue;
    try {
        auto* m = new host_mutex;
        if (lock_count > 0) {
            m->owner = std::this_thread::get_id();
            m->count = lock_count;
        }
        *out = reinterpret_cast<OfxMutexHandle>(static_cast<handle_tag*>(m));
        return kOfxStatOK;
    } catch (...) {
        return kOfxStatErrMemory;
    }
}

OfxStatus mutex_destroy(OfxMutexHandle h)
{
    if (auto st = injected("mutexDestroy"))
        return *st;
    host_mutex* m = from_handle<host_mutex>(h);
    if (m == nullptr)
        return kOfxStatErrBadHandle;
    delete m;
    return kOfxStatOK;
}

OfxStatus mutex_lock(OfxMutexHandle h)
{
    if (auto st = injected("mutexLock"))
        return *st;
    host_mutex* m = from_handle<host_mutex>(h);
    if (m == nullptr)
        return kOfxStatErrBadHandle;
    const auto self = std::this_thread::get_id();
    std::unique_lock lock(m->m);
    m->free.wait(lock, [&] { return m->count == 0 || m->owner == self; });
    m->owner = self;
    ++m->count;
    return kOfxStatOK;
}

OfxStatus mutex_unlock(OfxMutexHandle h)
{
    if (auto st = injected("mutexUnLock"))
        return *st;
    host_mutex* m = from_handle<host_mutex>(h);
    if (m == nullptr)
        return kOfxStatErrBadHandle;
    std::unique_lock lock(m->m);
    if (m->count == 0 || m->owner != std::this_thread::get_id())
        return kOfxStatErrBadHandle;
    if (--m->count == 0) {
        m->owner = {};
        lock.unlock();
        m->free.notify_one();
    }
    return kOfxStatOK;
}

OfxStatus mutex_try_lock(OfxMutexHandle h)
{
    if (auto st = injected("mutexTryLock"))
        return *st;
    host_mutex* m = from_handle<host_mutex>(h);
    if (m == nullptr)
        return kOfxStatErrBadHandle;
    const auto self = std::this_thread::get_id();
    std::lock_guard lock(m->m);
    if (m->count != 0 && m->owner != self)
        return kOfxStatFailed;
    m->owner = self;
    ++m->count;
    return kOfxStatOK;
}

const OfxMultiThreadSuiteV1 suite = {
    multi_thread, num_cpus,     index_of_thread, is_spawned,     mutex_create,
    mutex_destroy, mutex_lock, mutex_unlock,    mutex_try_lock,
};

}  // namespace

const OfxMultiThreadSuiteV1* thread_suite() { return &suite; }

int mutex_lock_count(OfxMutexHandle h)
{
    host_mutex* m = from_handle<host_mutex>(h);
    if (m == nullptr)
        return -1;
    std::lock_guard lock(m->m);
    return m->count;
}

}  // namespace vl1::ofxhost
