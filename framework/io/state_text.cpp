#include "framework/io/state_text.h"

#include <cstring>

#include "framework/io/base64.h"
#include "framework/io/state_packing.h"
#include "framework/log.h"

namespace vl1 {

namespace {

std::vector<uint8_t> decode_packed(const char* text, std::size_t max_state_bytes)
{
    std::vector<uint8_t> packed;
    if (!from_base64(text, packed) || packed.empty()) {
        log_text("The saved state is ignored: its packed text isn't base64");
        return {};
    }
    std::string error;
    std::vector<uint8_t> blob = unpack_state(packed.data(), packed.size(), max_state_bytes, error);
    if (!error.empty())
        log("The saved state is ignored: {0}", error);
    return blob;
}

}  // namespace

std::vector<uint8_t> decode_state_text(const char* text, std::size_t max_state_bytes)
{
    if (text == nullptr)
        return {};
    const std::size_t prefix_length = std::strlen(packed_state_prefix);
    if (std::strncmp(text, packed_state_prefix, prefix_length) == 0)
        return decode_packed(text + prefix_length, max_state_bytes);
    std::vector<uint8_t> blob;
    if (!from_base64(text, blob) || blob.empty())
        return {};
    // As earlier versions read it: a buffer of whole groups, the padding's bytes zero.
    blob.resize(std::strlen(text) / 4 * 3, 0);
    return blob;
}

std::string encode_state_text(const std::vector<uint8_t>& blob, const std::vector<state_float_grid>& grids)
{
    return packed_state_prefix + to_base64(pack_state(blob, grids));
}

std::string plain_state_text(const std::vector<uint8_t>& blob)
{
    return to_base64(blob);
}

}  // namespace vl1
