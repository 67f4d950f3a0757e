// How a fuzz body reports a broken property. Under libFuzzer the report ends the process, so
// the input is kept as a crasher; in the regression test it fails the test case that fed the
// input, naming the file.
#pragma once

#include <string>

namespace vl1::fuzz {

/// Reports that `target`'s property `what` does not hold for the current input. Never
/// returns: the libFuzzer entry aborts, the regression test throws a type that no body
/// catches (it derives from no standard exception).
[[noreturn]] void property_violated(const char* target, const std::string& what);

}  // namespace vl1::fuzz

/// Checks a property of the current input; `what` is evaluated only when it fails.
#define FUZZ_REQUIRE(target, condition, what)                      \
    do {                                                           \
        if (!(condition))                                          \
            ::vl1::fuzz::property_violated((target), (what));      \
    } while (false)
