// The host hands the saved state back as the text of the hidden parameter
// "binaryStateParam". The bridge decodes it and sets what decodes as a state from the host;
// text that doesn't decode sets nothing.
#include <cstring>
#include <string>

#include <fmt/format.h>

#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/fuzz_process.h"
#include "fuzz/harness/state_checks.h"
#include "fuzz/property_check.h"
#include "ofx/ofx_state_bridge.h"

namespace vl1::fuzz {

int fuzz_state_text(const uint8_t* data, std::size_t size)
{
    constexpr const char* target = "state_text";
    prepare_process();
    // The host's text is a C string: a zero byte ends it.
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t length = std::strlen(text.c_str());
    const std::vector<uint8_t> blob = decode_state_text(text.c_str());
    if (blob.empty())
        return 0;

    FUZZ_REQUIRE(target, blob.size() == length / 4 * 3,
                 fmt::format("{} characters decoded into {} bytes", length, blob.size()));
    const std::string encoded = encode_state_text(blob);
    FUZZ_REQUIRE(target, decode_state_text(encoded.c_str()) == blob, "a decoded blob does not encode back to itself");

    check_state_load(target, blob, true, false);
    return 0;
}

}  // namespace vl1::fuzz
