// Identifiers of parameters and interfaces: the 32-bit FNV-1a hash of a name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace vl1 {

/// 32-bit FNV-1a over the bytes of `text` (offset basis 0x811c9dc5, prime 16777619,
/// one round per byte, no terminator). The empty text hashes to the offset basis.
constexpr uint32_t fnv1a_32(std::string_view text) noexcept
{
    uint32_t hash = 0x811c9dc5u;
    for (const char c : text) {
        hash ^= static_cast<uint8_t>(c);
        hash *= 16777619u;
    }
    return hash;
}

/// The identifier of a parameter (hash of its name) or of an interface (hash of its class
/// name). Compares by value. A default-constructed uid is `no_uid`.
struct uid {
    uint32_t value = fnv1a_32("invalid_id");

    constexpr uid() noexcept = default;
    constexpr explicit uid(std::string_view name) noexcept : value(fnv1a_32(name)) {}

    /// A uid from its stored 32-bit form, e.g. as read from a state blob.
    static constexpr uid from_value(uint32_t raw) noexcept
    {
        uid u;
        u.value = raw;
        return u;
    }

    friend constexpr bool operator==(uid, uid) noexcept = default;
};

static_assert(sizeof(uid) == 4);

/// The value that stands for "no parameter": the hash of "invalid_id".
inline constexpr uid no_uid{};

}  // namespace vl1

template <>
struct std::hash<vl1::uid> {
    std::size_t operator()(vl1::uid u) const noexcept { return u.value; }
};
