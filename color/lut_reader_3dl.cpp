// The .3dl grammar as this reader takes it; it only gets the numbers out:
//
//   header   any lines that are empty, start with '#', start with "3DMESH", or (once
//            trimmed) don't start with a digit, '-' or '+' ("Mesh 4 10"), are skipped
//   shaper   the first line that does: its blank-separated tokens count the grid points
//            per axis (the edge); the first and last token are the shaper's range
//   data     edge³ lines "r g b" (more tokens ignored), blue fastest, then green, then red;
//            lines starting with '#' and lines of fewer than three tokens are skipped; the
//            last data line must end in a line feed
//
// Integer files come in 10, 12 or 16 bits: values are divided by the next power of two
// above the largest value (or the shaper's end + 1, if larger), so 10-bit white 1023 reads
// 1023/1024. The upper clamp at that integer top has no effect on the result's range.
#include "color/lut_reader_3dl.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "color/lut_text_reader.h"
#include "framework/string_helpers.h"

namespace vl1 {

namespace {

constexpr std::string_view too_few_values = "Less values than needed.";

// "0 0 0\n": the shortest data line.
constexpr std::size_t min_bytes_per_entry = 6;

struct shaper_range {
    float first = 0.0f;
    float last = 1023.0f;
};

bool is_skipped_header_line(const std::string& line)
{
    return line.empty() || line[0] == '#' || line.compare(0, 6, "3DMESH") == 0;
}

// Reads the header up to and including the shaper line, which sets `edge` and `shaper`.
// Without a shaper line both keep their defaults.
void read_header(lut_text_reader& reader, uint64_t& edge, shaper_range& shaper)
{
    std::string line;
    while (reader.next_line(line)) {
        if (is_skipped_header_line(line))
            continue;
        trim(line);
        if (line.empty())
            reader.fail<std::out_of_range>("a header line holds only white space");
        if (!is_number_start(line[0]))
            continue;
        const std::vector<std::string> tokens = split(line, ' ');
        edge = tokens.size();
        shaper.first = reader.parse_float(tokens.front());
        shaper.last = reader.parse_float(tokens.back());
        return;
    }
}

// Reads edge³ entries in file order (blue fastest), which is the table's order. Returns the
// largest value met, at least 0.
float read_data(lut_text_reader& reader, lut_argb_variable& lut)
{
    float largest = 0.0f;
    std::string line;
    for (argb_float& entry : lut.data) {
        for (;;) {
            if (!reader.next_line(line) || reader.reached_end())
                reader.fail<std::logic_error>(too_few_values);
            if (line.empty() || line[0] != '#') {
                trim(line);
                const std::vector<std::string> tokens = split(line, ' ');
                if (tokens.size() >= 3) {
                    entry = {1.0f, reader.parse_float(tokens[0]), reader.parse_float(tokens[1]),
                             reader.parse_float(tokens[2])};
                    break;
                }
            }
        }
        for (const float v : {entry.r, entry.g, entry.b})
            if (v > largest)
                largest = v;
    }
    return largest;
}

// Brings integer code values into 0..1: divisor = top - first + 1 with top the larger of
// 2^ceil(log2(largest)) - 1 and the shaper's end. All in float, so no integer conversion
// can overflow on absurd values.
void scale_to_unit(lut_argb_variable& lut, float largest, const shaper_range& shaper)
{
    const float bits = std::pow(2.0f, std::ceil(std::log2(largest)));
    const float top = std::max(std::trunc(bits) - 1.0f, shaper.last);
    const float divisor = top - shaper.first + 1.0f;
    const auto scale = [&](float v) { return std::min(top, std::max(shaper.first, v / divisor - shaper.first)); };
    for (argb_float& e : lut.data)
        e = {e.a, scale(e.r), scale(e.g), scale(e.b)};
}

}  // namespace

lut_argb_variable read_lut_3dl(std::string_view text, const std::string& source_name)
{
    lut_text_reader reader(text, "3DL", source_name);
    uint64_t edge = 17;
    shaper_range shaper;
    read_header(reader, edge, shaper);
    reader.check_edge(edge, min_bytes_per_entry, too_few_values);

    lut_argb_variable lut;
    lut.edge = edge;
    lut.data.assign(lut_entry_count(edge), argb_float{1.0f, 0.0f, 0.0f, 0.0f});
    const float largest = read_data(reader, lut);
    scale_to_unit(lut, largest, shaper);
    return lut;
}

}  // namespace vl1
