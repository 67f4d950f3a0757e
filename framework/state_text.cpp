#include "framework/state_text.h"

#include <sodium.h>

#include <array>
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

// The packed form's base64 runs through a table here rather than through libsodium, whose
// constant-time coder takes some 20 ms for a state with the built-in theme.
constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string packed_to_text(const std::vector<uint8_t>& packed)
{
    const std::size_t prefix_length = std::strlen(packed_state_prefix);
    std::string text(prefix_length + (packed.size() + 2) / 3 * 4, '=');
    std::memcpy(text.data(), packed_state_prefix, prefix_length);
    char* out = text.data() + prefix_length;
    const uint8_t* in = packed.data();
    std::size_t left = packed.size();
    for (; left >= 3; left -= 3, in += 3, out += 4) {
        const uint32_t v = uint32_t(in[0]) << 16 | uint32_t(in[1]) << 8 | in[2];
        out[0] = alphabet[v >> 18];
        out[1] = alphabet[(v >> 12) & 63];
        out[2] = alphabet[(v >> 6) & 63];
        out[3] = alphabet[v & 63];
    }
    if (left != 0) {  // the '=' of the padding stand there already
        const uint32_t v = uint32_t(in[0]) << 16 | (left == 2 ? uint32_t(in[1]) << 8 : 0);
        out[0] = alphabet[v >> 18];
        out[1] = alphabet[(v >> 12) & 63];
        if (left == 2)
            out[2] = alphabet[(v >> 6) & 63];
    }
    return text;
}

/// Padded base64 of the original alphabet and nothing else; empty if `text` isn't that.
std::vector<uint8_t> packed_from_text(const char* text)
{
    static const auto values = [] {
        std::array<int8_t, 256> v;
        v.fill(-1);
        for (int i = 0; i < 64; ++i)
            v[uint8_t(alphabet[i])] = int8_t(i);
        return v;
    }();
    const std::size_t length = std::strlen(text);
    if (length == 0 || length % 4 != 0)
        return {};
    const std::size_t padding = text[length - 1] != '=' ? 0 : text[length - 2] != '=' ? 1 : 2;
    std::vector<uint8_t> out(length / 4 * 3 - padding);
    uint8_t* to = out.data();
    const auto* in = reinterpret_cast<const uint8_t*>(text);
    // Whole groups but the last; a character outside the alphabet has a negative value.
    for (std::size_t i = 0; i + 4 < length; i += 4, to += 3) {
        const int a = values[in[i]], b = values[in[i + 1]], c = values[in[i + 2]], d = values[in[i + 3]];
        if ((a | b | c | d) < 0)
            return {};
        const uint32_t v = uint32_t(a) << 18 | uint32_t(b) << 12 | uint32_t(c) << 6 | uint32_t(d);
        to[0] = uint8_t(v >> 16);
        to[1] = uint8_t(v >> 8);
        to[2] = uint8_t(v);
    }
    const uint8_t* last = in + length - 4;
    uint32_t v = 0;
    for (std::size_t k = 0; k < 4; ++k) {
        const int8_t d = values[last[k]];
        if (d < 0 && k < 4 - padding)
            return {};
        v = v << 6 | uint32_t(k < 4 - padding ? d : 0);
    }
    const uint8_t bytes[3] = {uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)};
    std::memcpy(to, bytes, 3 - padding);
    return out;
}

std::vector<uint8_t> decode_packed(const char* text, std::size_t max_state_bytes)
{
    const std::vector<uint8_t> packed = packed_from_text(text);
    const std::size_t decoded = packed.size();
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
    return packed_to_text(pack_state(blob, grids));
}

std::string plain_state_text(const std::vector<uint8_t>& blob)
{
    return to_base64(blob.data(), blob.size());
}

}  // namespace vl1
