// A table coder: libsodium's constant-time one takes some 20 ms for a state with the
// built-in theme, and nothing secret passes through here.
#include "framework/io/base64.h"

#include <array>
#include <cstring>

namespace vl1 {

namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// The value of each character, -1 outside the alphabet.
const std::array<int8_t, 256>& character_values()
{
    static const auto values = [] {
        std::array<int8_t, 256> v;
        v.fill(-1);
        for (int i = 0; i < 64; ++i)
            v[uint8_t(alphabet[i])] = int8_t(i);
        return v;
    }();
    return values;
}

}  // namespace

std::string to_base64(std::span<const uint8_t> bytes)
{
    std::string text((bytes.size() + 2) / 3 * 4, '=');
    char* out = text.data();
    const uint8_t* in = bytes.data();
    std::size_t left = bytes.size();
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

bool from_base64(std::string_view text, std::vector<uint8_t>& bytes)
{
    const auto& values = character_values();
    const std::size_t length = text.size();
    if (length == 0) {
        bytes.clear();
        return true;
    }
    if (length % 4 != 0)
        return false;
    const std::size_t padding = text[length - 1] != '=' ? 0 : text[length - 2] != '=' ? 1 : 2;
    std::vector<uint8_t> out(length / 4 * 3 - padding);
    uint8_t* to = out.data();
    const auto* in = reinterpret_cast<const uint8_t*>(text.data());
    // Whole groups but the last; a character outside the alphabet has a negative value.
    for (std::size_t i = 0; i + 4 < length; i += 4, to += 3) {
        const int a = values[in[i]], b = values[in[i + 1]], c = values[in[i + 2]], d = values[in[i + 3]];
        if ((a | b | c | d) < 0)
            return false;
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
            return false;
        v = v << 6 | uint32_t(k < 4 - padding ? d : 0);
    }
    // Padding stands for bits that must be zero: "QR==" is no text any encoder writes.
    if ((padding == 1 && (v & 0xff) != 0) || (padding == 2 && (v & 0xffff) != 0))
        return false;
    const uint8_t tail[3] = {uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)};
    std::memcpy(to, tail, 3 - padding);
    bytes = std::move(out);
    return true;
}

}  // namespace vl1
