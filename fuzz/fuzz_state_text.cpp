// The host hands the saved state back as the text of the hidden parameter
// "binaryStateParam", packed ("hlz1:" and base64 of the packed state) or, as earlier versions
// wrote it, plain base64. The bridge decodes it and sets what decodes as a state from the
// host; text that doesn't decode, or claims more than a state holds, sets nothing.
#include <algorithm>
#include <cstring>
#include <string>

#include <fmt/format.h>

#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/fuzz_component.h"
#include "fuzz/harness/fuzz_process.h"
#include "fuzz/harness/state_checks.h"
#include "fuzz/property_check.h"
#include "framework/io/state_text.h"

namespace vl1::fuzz {

namespace {

/// The effect's own grids for a blob of a state's size; for any other blob one grid read from
/// its first bytes, so that packing meets grids of every shape and place.
std::vector<state_float_grid> grids_for(const std::vector<uint8_t>& blob)
{
    static const std::shared_ptr<hueloom> effect = make_effect_component();
    if (blob.size() == effect->get_state_size())
        return effect->float_grids(blob);
    if (blob.size() < 8)
        return {};
    state_float_grid g;
    g.offset = blob[0] % 8;
    g.nx = uint16_t(1 + blob[1] % 8);
    g.ny = uint16_t(1 + blob[2] % 8);
    g.nz = uint16_t(1 + blob[3] % 4);
    g.channels = uint16_t(1 + blob[4] % 3);
    return {g};
}

}  // namespace

int fuzz_state_text(const uint8_t* data, std::size_t size)
{
    constexpr const char* target = "state_text";
    prepare_process();
    static const std::size_t max_state_bytes = make_effect_component()->get_state_size();
    // The host's text is a C string: a zero byte ends it.
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t length = std::strlen(text.c_str());
    const std::vector<uint8_t> blob = decode_state_text(text.c_str(), max_state_bytes);
    if (blob.empty())
        return 0;

    if (text.rfind(packed_state_prefix, 0) == 0) {
        FUZZ_REQUIRE(target, blob.size() <= max_state_bytes,
                     fmt::format("packed text unpacked into {} bytes, beyond a state", blob.size()));
    } else {
        FUZZ_REQUIRE(target, blob.size() == length / 4 * 3,
                     fmt::format("{} characters decoded into {} bytes", length, blob.size()));
    }
    // Packing is lossless for any bytes, whatever floats the grids find in them.
    const std::string packed = encode_state_text(blob, grids_for(blob));
    FUZZ_REQUIRE(target, decode_state_text(packed.c_str(), std::max(blob.size(), max_state_bytes)) == blob,
                 "a decoded blob does not pack back to itself");

    check_state_load(target, blob, true, false);
    return 0;
}

}  // namespace vl1::fuzz
