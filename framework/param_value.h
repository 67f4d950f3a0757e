// The value of a parameter with its default and bounds. Its memory image is a stored format
// (44 bytes, little-endian, no padding): the state blob holds it byte for byte.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace vl1 {

enum class param_type : int32_t {
    invalid = -1,  // a parameter whose constructor hasn't finished
    continuous = 0,
    integral = 1,
    boolean = 2,
    color = 3,
};

/// A colour parameter's value, each channel 0.0..1.0.
struct param_argb {
    float a = 0.0f;
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
};

/// The 16-byte value field. Which member is meant depends on the param_type: `f` (type 0),
/// `i` (type 1), `b` (type 2, 0 or 1), `argb` (type 3). Bytes that the type doesn't use are
/// carried along unread. `bytes` comes first so that `{}` zeroes all 16 bytes.
/// Reading another member than the one written relies on union punning, which GCC and Clang
/// define.
union param_data {
    uint8_t bytes[16];
    float f;
    int32_t i;
    uint8_t b;
    param_argb argb;
};

/// A bound: float (type 0) or signed 32-bit (type 1), 0 otherwise.
union param_bound {
    uint8_t bytes[4];
    float f;
    int32_t i;
};

struct param_value {
    param_type type = param_type::invalid;
    param_data value{};
    param_data default_value{};
    param_bound min{};
    param_bound max{};

    static param_value make_continuous(float min, float max, float value, float default_value) noexcept;
    static param_value make_integral(int32_t min, int32_t max, int32_t value, int32_t default_value) noexcept;
    static param_value make_boolean(bool value, bool default_value) noexcept;
    static param_value make_color(const param_argb& value, const param_argb& default_value) noexcept;
};

inline constexpr std::size_t param_value_size = 44;

static_assert(sizeof(param_data) == 16);
static_assert(sizeof(param_bound) == 4);
static_assert(sizeof(param_argb) == 16);
static_assert(sizeof(param_value) == param_value_size, "param_value is a 44-byte stored format");
static_assert(offsetof(param_value, type) == 0);
static_assert(offsetof(param_value, value) == 4);
static_assert(offsetof(param_value, default_value) == 20);
static_assert(offsetof(param_value, min) == 36);
static_assert(offsetof(param_value, max) == 40);
static_assert(std::is_trivially_copyable_v<param_value>);
// The memory image is the stored form only on a little-endian machine.
static_assert(std::endian::native == std::endian::little);

/// The stored 44 bytes of `v`, all of them, unused value bytes included.
inline void param_value_to_bytes(const param_value& v, uint8_t* out) noexcept
{
    std::memcpy(out, &v, param_value_size);
}

inline std::array<uint8_t, param_value_size> param_value_to_bytes(const param_value& v) noexcept
{
    std::array<uint8_t, param_value_size> out;
    param_value_to_bytes(v, out.data());
    return out;
}

/// Reads 44 stored bytes; `in` must hold at least that many.
inline param_value param_value_from_bytes(const uint8_t* in) noexcept
{
    param_value v;
    std::memcpy(&v, in, param_value_size);
    return v;
}

inline param_value param_value::make_continuous(float lo, float hi, float val, float def) noexcept
{
    param_value v;
    v.type = param_type::continuous;
    v.value.f = val;
    v.default_value.f = def;
    v.min.f = lo;
    v.max.f = hi;
    return v;
}

inline param_value param_value::make_integral(int32_t lo, int32_t hi, int32_t val, int32_t def) noexcept
{
    param_value v;
    v.type = param_type::integral;
    v.value.i = val;
    v.default_value.i = def;
    v.min.i = lo;
    v.max.i = hi;
    return v;
}

inline param_value param_value::make_boolean(bool val, bool def) noexcept
{
    param_value v;
    v.type = param_type::boolean;
    v.value.b = val ? 1 : 0;
    v.default_value.b = def ? 1 : 0;
    return v;
}

inline param_value param_value::make_color(const param_argb& val, const param_argb& def) noexcept
{
    param_value v;
    v.type = param_type::color;
    v.value.argb = val;
    v.default_value.argb = def;
    return v;
}

}  // namespace vl1
