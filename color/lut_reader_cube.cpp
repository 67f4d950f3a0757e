// The .cube grammar as this reader takes it; it only gets the numbers out:
//
//   header   lines trimmed; empty lines and lines starting with '#' are skipped;
//            keywords (any case, tokens separated by single blanks):
//              LUT_3D_SIZE n, LUT_1D_SIZE n   grid points per axis (default 17; a 1D
//                                             file is taken for a 3D one of that edge)
//              DOMAIN_MIN r g b, DOMAIN_MAX r g b   input domain (default 0 and 1)
//            anything else (TITLE ...) is ignored
//   data     from the first line starting with a digit, '-' or '+': edge³ lines "r g b",
//            red fastest, then green, then blue; lines behind the last entry are not read
//
// Values are brought into the domain as (v - min) / range, clamped to min..max, where
// range = max - min, widened by 1 when above 1 (a domain of 0..4 divides by 5).
#include "color/lut_reader_cube.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <fmt/format.h>

#include "color/lut_text_reader.h"
#include "framework/string_helpers.h"

namespace vl1 {

namespace {

constexpr std::string_view too_few_values = "Less values than dimension^3 are not supported.";

// "0 0 0\n": the shortest data line.
constexpr std::size_t min_bytes_per_entry = 6;

struct cube_header {
    uint64_t edge = 17;
    std::array<float, 3> domain_min{0.0f, 0.0f, 0.0f};
    std::array<float, 3> domain_max{1.0f, 1.0f, 1.0f};
};

void require_tokens(const lut_text_reader& reader, const std::vector<std::string>& tokens, std::size_t count)
{
    if (tokens.size() < count)
        reader.fail<std::out_of_range>(fmt::format("'{}' needs {} values", tokens[0], count - 1));
}

std::array<float, 3> read_triple(const lut_text_reader& reader, const std::vector<std::string>& tokens,
                                 std::size_t from)
{
    return {reader.parse_float(tokens[from]), reader.parse_float(tokens[from + 1]),
            reader.parse_float(tokens[from + 2])};
}

void read_keyword(const lut_text_reader& reader, const std::string& line, cube_header& header)
{
    const std::vector<std::string> tokens = split(line, ' ');
    const std::string keyword = lowercase(tokens[0]);
    if (keyword == "lut_3d_size" || keyword == "lut_1d_size") {
        require_tokens(reader, tokens, 2);
        header.edge = reader.parse_size(tokens[1]);
    } else if (keyword == "domain_min") {
        require_tokens(reader, tokens, 4);
        header.domain_min = read_triple(reader, tokens, 1);
    } else if (keyword == "domain_max") {
        require_tokens(reader, tokens, 4);
        header.domain_max = read_triple(reader, tokens, 1);
    }
}

// Reads keyword lines up to the first data line, which is left trimmed in `line`. False if
// the text ends first.
bool read_header(lut_text_reader& reader, cube_header& header, std::string& line)
{
    while (reader.next_line(line)) {
        trim(line);
        if (line.empty() || line[0] == '#')
            continue;
        if (is_number_start(line[0]))
            return true;
        read_keyword(reader, line, header);
    }
    return false;
}

// Reads edge³ entries starting with the line in hand, red fastest in the file.
void read_data(lut_text_reader& reader, const cube_header& header, std::string& line, lut_argb_variable& lut)
{
    std::array<float, 3> range{};
    for (std::size_t c = 0; c < 3; ++c) {
        range[c] = header.domain_max[c] - header.domain_min[c];
        if (range[c] > 1.0f)
            range[c] = range[c] + 1.0f;
    }
    const auto to_domain = [&](float v, std::size_t c) {
        return std::min(header.domain_max[c], std::max(header.domain_min[c], (v - header.domain_min[c]) / range[c]));
    };

    const std::size_t e = lut.edge;
    const std::size_t count = lut.data.size();
    for (std::size_t stored = 0; stored < count; ++stored) {
        if (stored > 0) {
            if (reader.reached_end())
                reader.fail<std::logic_error>(too_few_values);
            reader.next_line(line);
            trim(line);
        }
        const std::vector<std::string> tokens = split(line, ' ');
        // Only value lines may follow the header: a blank or tab-separated line ends the load.
        if (tokens.size() < 3)
            reader.fail<std::logic_error>(too_few_values);
        const std::array<float, 3> v = read_triple(reader, tokens, 0);
        const std::size_t r = stored % e;
        const std::size_t g = stored / e % e;
        const std::size_t b = stored / (e * e);
        lut.data[lut_index(e, r, g, b)] = {1.0f, to_domain(v[0], 0), to_domain(v[1], 1), to_domain(v[2], 2)};
    }
}

}  // namespace

lut_argb_variable read_lut_cube(std::string_view text, const std::string& source_name)
{
    lut_text_reader reader(text, "CUBE", source_name);
    cube_header header;
    std::string line;
    const bool has_data = read_header(reader, header, line);
    reader.check_edge(header.edge, min_bytes_per_entry, too_few_values);
    if (!has_data)
        reader.fail<std::logic_error>(too_few_values);

    lut_argb_variable lut;
    lut.edge = header.edge;
    lut.data.assign(lut_entry_count(header.edge), argb_float{1.0f, 0.0f, 0.0f, 0.0f});
    read_data(reader, header, line, lut);
    return lut;
}

}  // namespace vl1
