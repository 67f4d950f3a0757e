#include "framework/state_text.h"

#include <sodium.h>

#include <cstring>

#include "framework/log.h"
#include "framework/state_packing.h"

namespace vl1 {

namespace {

/// Base64 of `length` characters into a buffer of (length / 4) * 3 bytes; the decoded length
/// in `decoded`. Empty if it doesn't decode.
std::vector<uint8_t> from_base64(const char* text, std::size_t length, std::size_t& decoded)
{
    std::vector<uint8_t> bytes((length / 4) * 3, 0);
    decoded = 0;
    if (bytes.empty() || sodium_base642bin(bytes.data(), bytes.size(), text, length, nullptr, &decoded, nullptr,
                                           sodium_base64_VARIANT_ORIGINAL) != 0)
        return {};
    return bytes;
}

std::string to_base64(const uint8_t* data, std::size_t size)
{
    const std::size_t length = sodium_base64_encoded_len(size, sodium_base64_VARIANT_ORIGINAL);
    std::string text(length, '\0');  // length counts the terminator
    sodium_bin2base64(text.data(), length, data, size, sodium_base64_VARIANT_ORIGINAL);
    text.resize(length - 1);
    return text;
}

std::vector<uint8_t> decode_packed(const char* text, std::size_t max_state_bytes)
{
    std::size_t decoded = 0;
    const std::vector<uint8_t> packed = from_base64(text, std::strlen(text), decoded);
    if (decoded == 0) {
        log_text("The saved state is ignored: its packed text isn't base64");
        return {};
    }
    std::string error;
    std::vector<uint8_t> blob = unpack_state(packed.data(), decoded, max_state_bytes, error);
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
    std::size_t decoded = 0;
    std::vector<uint8_t> blob = from_base64(text, std::strlen(text), decoded);
    return decoded == 0 ? std::vector<uint8_t>{} : blob;
}

std::string encode_state_text(const std::vector<uint8_t>& blob, const std::vector<state_float_grid>& grids)
{
    const std::vector<uint8_t> packed = pack_state(blob, grids);
    return packed_state_prefix + to_base64(packed.data(), packed.size());
}

std::string plain_state_text(const std::vector<uint8_t>& blob)
{
    return to_base64(blob.data(), blob.size());
}

}  // namespace vl1
