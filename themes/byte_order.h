// Little-endian loads and stores of the fixed-width fields of the theme library's files and
// records. Every field goes through memcpy, so a record may start at any byte of a buffer
// (the theme state record sits at an arbitrary offset inside the component's state blob).
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace vl1::theme_bytes {

// The files are memory images of little-endian records; on such a machine a field's bytes
// are copied as they are.
static_assert(std::endian::native == std::endian::little, "theme files assume a little-endian machine");

template <typename T>
inline T load(const uint8_t* at) noexcept
{
    T value;
    std::memcpy(&value, at, sizeof(T));
    return value;
}

template <typename T>
inline void store(uint8_t* at, T value) noexcept
{
    std::memcpy(at, &value, sizeof(T));
}

}  // namespace vl1::theme_bytes
