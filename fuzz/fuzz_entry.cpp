// libFuzzer's entry points for one body, chosen when this file is compiled
// (HUELOOM_FUZZ_BODY=fuzz_<name>). A broken property aborts, so libFuzzer keeps the input.
#include <cstdio>
#include <cstdlib>

#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/private_home.h"
#include "fuzz/property_check.h"

#ifndef HUELOOM_FUZZ_BODY
#error "HUELOOM_FUZZ_BODY must name the fuzz body of this target"
#endif

namespace vl1::fuzz {

void property_violated(const char* target, const std::string& what)
{
    std::fprintf(stderr, "==hueloom-fuzz== property of %s violated: %s\n", target, what.c_str());
    std::fflush(stderr);
    std::abort();
}

}  // namespace vl1::fuzz

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    if (!vl1::fuzz::use_private_home()) {
        std::fprintf(stderr, "cannot make a private HOME\n");
        std::exit(2);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return vl1::fuzz::HUELOOM_FUZZ_BODY(data, size);
}
