// Parameter values as text and back. Numbers always use the classic locale, whatever the
// host process set.
#include <cstdint>
#include <iomanip>
#include <locale>
#include <sstream>

#include "framework/cparameter.h"
#include "framework/param_rules.h"

namespace vl1 {

namespace {

void write_color(std::ostream& os, const param_argb& c)
{
    // Width 2 with the stream's default blank fill: a channel below 16 reads "# f", not "0f".
    os << '#' << std::hex;
    for (const float channel : {c.a, c.r, c.g, c.b})
        os << std::setw(2) << static_cast<int>(channel * 255.0);
}

std::string hex_digits_only(const std::string& s)
{
    std::string digits;
    for (const char ch : s) {
        if ((ch >= '0' && ch <= '9') || (ch >= 'a' && ch <= 'f') || (ch >= 'A' && ch <= 'F'))
            digits.push_back(ch);
    }
    return digits;
}

param_argb color_from_packed(uint32_t x)
{
    return {static_cast<float>((x >> 24) / 255.0), static_cast<float>(((x >> 16) & 255) / 255.0),
            static_cast<float>(((x >> 8) & 255) / 255.0), static_cast<float>((x & 255) / 255.0)};
}

}  // namespace

bool cparameter_v1::get_string_from_value(param_value v, std::string& out, int precision)
{
    if (v.type != value.type || !param_rules::is_known_type(v.type))
        return false;
    param_rules::clamp(v);
    if (!param_rules::admits(v))
        return false;

    std::ostringstream os;
    os.imbue(std::locale::classic());
    switch (v.type) {
    case param_type::continuous:
        os << std::setprecision(precision) << v.value.f;
        break;
    case param_type::integral:
        os << v.value.i;
        break;
    case param_type::boolean:
        os << (v.value.b != 0 ? "true" : "false");
        break;
    default:
        write_color(os, v.value.argb);
        break;
    }
    if (os.fail()) {
        out = "invalid";
        return false;
    }
    out = os.str();
    return true;
}

bool cparameter_v1::get_value_from_string(std::string s, param_value& out)
{
    if (out.type != value.type || !param_rules::is_known_type(out.type) || !param_rules::admits(out))
        return false;

    if (out.type == param_type::color)
        s = hex_digits_only(s);
    std::istringstream is(s);
    is.imbue(std::locale::classic());
    param_value parsed = out;
    switch (out.type) {
    case param_type::continuous:
        is >> parsed.value.f;
        break;
    case param_type::integral:
        is >> parsed.value.i;
        break;
    case param_type::boolean: {
        bool b = false;
        is >> std::boolalpha >> b;
        parsed.value.b = b ? 1 : 0;
        break;
    }
    default: {
        uint32_t packed = 0;
        is >> std::hex >> packed;
        parsed.value.argb = color_from_packed(packed);
        break;
    }
    }
    if (is.fail() || is.bad())
        return false;
    param_rules::clamp(parsed);
    out = parsed;
    return true;
}

}  // namespace vl1
