#include "color/lut_text_reader.h"

#include <charconv>
#include <stdexcept>
#include <system_error>

#include <fmt/format.h>

namespace vl1 {

namespace {

// Lines are quoted in messages up to this length; a binary file shouldn't flood the text.
constexpr std::size_t quoted_line_limit = 80;

bool is_c_space(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

std::string_view skip_space(std::string_view s)
{
    std::size_t i = 0;
    while (i < s.size() && is_c_space(s[i]))
        ++i;
    return s.substr(i);
}

// `text` as it may stand in a message: control characters (a binary file's zero bytes, a
// stray carriage return) become '?', so what() neither ends early nor breaks the log line,
// and text beyond `limit` bytes is cut with "...".
std::string printable(std::string_view text, std::size_t limit = std::string_view::npos)
{
    const bool cut = text.size() > limit;
    std::string out(cut ? text.substr(0, limit) : text);
    for (char& c : out) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte < 0x20 && c != '\t') || byte == 0x7f)
            c = '?';
    }
    return cut ? out + "..." : out;
}

bool starts_with_hex_prefix(std::string_view s)
{
    return s.size() > 2 && s[0] == '0' && (s[1] == 'x' || s[1] == 'X');
}

// A float from the front of `s` (no sign), as strtof reads it; ec tells failure.
std::from_chars_result parse_unsigned_float(std::string_view s, float& value)
{
    if (starts_with_hex_prefix(s)) {
        const std::from_chars_result hex =
            std::from_chars(s.data() + 2, s.data() + s.size(), value, std::chars_format::hex);
        if (hex.ec != std::errc::invalid_argument)
            return hex;
        // "0x" without hexadecimal digits reads as the number 0 followed by text.
    }
    return std::from_chars(s.data(), s.data() + s.size(), value, std::chars_format::general);
}

}  // namespace

bool is_number_start(char c)
{
    return (c >= '0' && c <= '9') || c == '-' || c == '+';
}

lut_text_reader::lut_text_reader(std::string_view text, std::string format, std::string source_name)
    : text(text), format(std::move(format)), source_name(std::move(source_name))
{
}

bool lut_text_reader::next_line(std::string& line)
{
    line_start = position;
    if (position >= text.size()) {
        at_end = true;
        line.clear();
        return false;
    }
    ++line_number;
    const std::size_t feed = text.find('\n', position);
    if (feed == std::string_view::npos) {
        line.assign(text.substr(position));
        position = text.size();
        at_end = true;
    } else {
        line.assign(text.substr(position, feed - position));
        position = feed + 1;
    }
    return true;
}

std::string lut_text_reader::describe(std::string_view problem) const
{
    std::string_view line = text.substr(line_start, position - line_start);
    if (!line.empty() && line.back() == '\n')
        line.remove_suffix(1);
    if (line_number == 0)
        return fmt::format("ERROR while loading {} LUT: {} [file '{}', empty file]", format, printable(problem),
                           source_name);
    return fmt::format("ERROR while loading {} LUT: {} [file '{}', line {}: '{}']", format, printable(problem),
                       source_name, line_number, printable(line, quoted_line_limit));
}

float lut_text_reader::parse_float(std::string_view token) const
{
    std::string_view s = skip_space(token);
    bool negative = false;
    if (!s.empty() && (s[0] == '+' || s[0] == '-')) {
        negative = s[0] == '-';
        s.remove_prefix(1);
    }
    float value = 0.0f;
    const std::from_chars_result result =
        s.empty() || s[0] == '+' || s[0] == '-' ? std::from_chars_result{s.data(), std::errc::invalid_argument}
                                                 : parse_unsigned_float(s, value);
    if (result.ec == std::errc::invalid_argument)
        fail<std::invalid_argument>(fmt::format("'{}' is not a number", printable(token, quoted_line_limit)));
    if (result.ec == std::errc::result_out_of_range)
        fail<std::out_of_range>(
            fmt::format("'{}' is outside the range of a float", printable(token, quoted_line_limit)));
    return negative ? -value : value;
}

uint64_t lut_text_reader::parse_size(std::string_view token) const
{
    std::string_view s = skip_space(token);
    if (!s.empty() && s[0] == '+')
        s.remove_prefix(1);
    uint64_t value = 0;
    const std::from_chars_result result = std::from_chars(s.data(), s.data() + s.size(), value, 10);
    if (result.ec == std::errc::invalid_argument)
        fail<std::invalid_argument>(
            fmt::format("'{}' is not a size (an unsigned whole number)", printable(token, quoted_line_limit)));
    if (result.ec == std::errc::result_out_of_range)
        fail<std::out_of_range>(fmt::format("size '{}' is out of range", printable(token, quoted_line_limit)));
    return value;
}

void lut_text_reader::check_edge(uint64_t edge, std::size_t min_bytes_per_entry, std::string_view too_few_values) const
{
    if (edge < 2)
        fail<std::invalid_argument>(
            fmt::format("a size of {} is not supported; at least 2 points per axis are needed", edge));
    // edge³ of at most 2^63 can't overflow; beyond that no file could hold the values anyway.
    constexpr uint64_t largest_cubable_edge = 2097151;
    const uint64_t available = bytes_from_line_start();
    if (edge > largest_cubable_edge || edge * edge * edge > available / min_bytes_per_entry + 1)
        fail<std::logic_error>(fmt::format("{} (size {} needs {}^3 values, and the {} bytes left can't hold them)",
                                           too_few_values, edge, edge, available));
}

}  // namespace vl1
