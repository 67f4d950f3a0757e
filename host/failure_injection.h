// Failure injection, so that a test can play a broken host: suites that are missing, and suite
// calls that fail. A failing call is named by the suite member ("clipGetImage",
// "paramGetHandle", "propGetString", "memoryAlloc"...), optionally narrowed to one argument
// (the clip, parameter or property name the call is about) and to the nth matching call.
// A failed call does nothing but answer the status.
#pragma once

#include "ofx/api/ofx_core.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vl1::ofxhost {

struct injected_failure {
    std::string function;              // suite member name, as in the C struct
    OfxStatus status = kOfxStatFailed;  // what the call answers
    std::string argument;              // only calls about this name; empty: any call
    int nth_call = 0;                  // only the nth matching call, counted from 1; 0: every one

    injected_failure for_argument(std::string name) const
    {
        injected_failure f = *this;
        f.argument = std::move(name);
        return f;
    }
    injected_failure on_call(int nth) const
    {
        injected_failure f = *this;
        f.nth_call = nth;
        return f;
    }
};

/// failing("clipGetImage", kOfxStatErrMemory).for_argument("Source").on_call(2)
inline injected_failure failing(std::string function, OfxStatus status = kOfxStatFailed)
{
    return injected_failure{std::move(function), status, {}, 0};
}

class failure_table {
public:
    /// fetchSuite answers null for this suite name, at any version.
    void omit_suite(const std::string& suite_name);
    bool suite_omitted(const std::string& suite_name) const;

    void add(injected_failure failure);
    /// Forgets every injected failure and omitted suite.
    void clear();

    /// The status a call must answer instead of doing its work, if an entry matches. Counts
    /// the call for the entries whose function and argument match.
    std::optional<OfxStatus> check(const char* function, const char* argument);

private:
    struct entry {
        injected_failure failure;
        int seen = 0;
    };
    mutable std::mutex entries_mutex;
    std::atomic<bool> armed{false};  // lets the common case skip the lock
    std::vector<entry> entries;
    std::set<std::string> omitted_suites;
};

}  // namespace vl1::ofxhost
