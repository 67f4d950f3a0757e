// The multi-thread suite called directly: thread indices, the spawned flag, and mutexes that
// count their locks.
#include "host/host.h"
#include "host/thread_suite.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <thread>

namespace {

struct seen_threads {
    std::mutex m;
    std::multiset<unsigned> indices;
    std::set<unsigned> maxima;
    int spawned = 0;
    OfxStatus nested = kOfxStatOK;
    const OfxMultiThreadSuiteV1* suite = nullptr;
};

void record_thread(unsigned int index, unsigned int max, void* arg)
{
    auto& seen = *static_cast<seen_threads*>(arg);
    unsigned reported = 99;
    seen.suite->multiThreadIndex(&reported);
    const OfxStatus nested = seen.suite->multiThread(record_thread, 2, arg);
    std::lock_guard lock(seen.m);
    seen.indices.insert(reported == index ? index : 1000 + reported);
    seen.maxima.insert(max);
    seen.spawned += seen.suite->multiThreadIsSpawnedThread();
    if (nested != kOfxStatOK) seen.nested = nested;
}

class thread_suite_test : public ::testing::Test {
protected:
    vl1::ofxhost::host h;
    const OfxMultiThreadSuiteV1* ts = static_cast<const OfxMultiThreadSuiteV1*>(h.fetch_suite(kOfxMultiThreadSuite, 1));
};

TEST_F(thread_suite_test, WorkersGetTheirIndicesAndKnowTheyWereSpawned)
{
    seen_threads seen;
    seen.suite = ts;
    ASSERT_EQ(ts->multiThread(record_thread, 4, &seen), kOfxStatOK);
    EXPECT_EQ(seen.indices, (std::multiset<unsigned>{0, 1, 2, 3}));
    EXPECT_EQ(seen.maxima, std::set<unsigned>{4});
    EXPECT_EQ(seen.spawned, 4);
    EXPECT_EQ(seen.nested, kOfxStatErrExists);  // no threads from inside a worker
    EXPECT_EQ(ts->multiThreadIsSpawnedThread(), 0);
    unsigned index = 7;
    ASSERT_EQ(ts->multiThreadIndex(&index), kOfxStatOK);
    EXPECT_EQ(index, 0u);

    h.state().cpu_count = 3;
    unsigned cpus = 0;
    ASSERT_EQ(ts->multiThreadNumCPUs(&cpus), kOfxStatOK);
    EXPECT_EQ(cpus, 3u);
    seen_threads by_default;
    by_default.suite = ts;
    ASSERT_EQ(ts->multiThread(record_thread, 0, &by_default), kOfxStatOK);
    EXPECT_EQ(by_default.indices.size(), 3u);
}

struct counter_job {
    const OfxMultiThreadSuiteV1* suite;
    OfxMutexHandle mutex;
    long value = 0;
};

void count_up(unsigned int, unsigned int, void* arg)
{
    auto& job = *static_cast<counter_job*>(arg);
    for (int i = 0; i < 2000; ++i) {
        job.suite->mutexLock(job.mutex);
        const long v = job.value;
        std::this_thread::yield();
        job.value = v + 1;
        job.suite->mutexUnLock(job.mutex);
    }
}

TEST_F(thread_suite_test, MutexesExcludeEachOtherCountLocksAndRefuseForeignUnlocks)
{
    counter_job job{ts, nullptr};
    ASSERT_EQ(ts->mutexCreate(&job.mutex, 0), kOfxStatOK);
    ASSERT_EQ(ts->multiThread(count_up, 4, &job), kOfxStatOK);
    EXPECT_EQ(job.value, 8000);
    ts->mutexDestroy(job.mutex);

    OfxMutexHandle m = nullptr;
    ASSERT_EQ(ts->mutexCreate(&m, 2), kOfxStatOK);
    EXPECT_EQ(vl1::ofxhost::mutex_lock_count(m), 2);
    OfxStatus other_try = kOfxStatOK, other_unlock = kOfxStatOK;
    std::thread([&] {
        other_try = ts->mutexTryLock(m);
        other_unlock = ts->mutexUnLock(m);
    }).join();
    EXPECT_EQ(other_try, kOfxStatFailed);
    EXPECT_EQ(other_unlock, kOfxStatErrBadHandle);

    EXPECT_EQ(ts->mutexLock(m), kOfxStatOK);  // recursive
    EXPECT_EQ(vl1::ofxhost::mutex_lock_count(m), 3);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(ts->mutexUnLock(m), kOfxStatOK);
    EXPECT_EQ(vl1::ofxhost::mutex_lock_count(m), 0);
    EXPECT_EQ(ts->mutexUnLock(m), kOfxStatErrBadHandle);
    std::thread([&] { other_try = ts->mutexTryLock(m); ts->mutexUnLock(m); }).join();
    EXPECT_EQ(other_try, kOfxStatOK);
    ASSERT_EQ(ts->mutexDestroy(m), kOfxStatOK);
    EXPECT_EQ(vl1::ofxhost::mutex_lock_count(m), -1);
    EXPECT_EQ(ts->mutexLock(nullptr), kOfxStatErrBadHandle);
}

}  // namespace
