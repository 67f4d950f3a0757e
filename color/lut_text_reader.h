// Line-by-line reading of a text LUT file held in memory, shared by the .cube and .3dl
// readers, with the one shape every read error takes:
//
//   ERROR while loading <FORMAT> LUT: <problem> [file '<name>', line <n>: '<line text>']
//
// Numbers are read without regard to the process locale: "0.5" is one half in every locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vl1 {

class lut_text_reader {
public:
    /// `format` names the format in messages ("CUBE", "3DL"); `source_name` names the file.
    lut_text_reader(std::string_view text, std::string format, std::string source_name);

    /// The next line, without its line feed (a carriage return stays). False, with `line`
    /// empty, when nothing is left. Like std::getline, a last line without line feed is
    /// returned and marks the end as reached.
    bool next_line(std::string& line);

    /// True once a read met the end of the text: the last line had no line feed, or there
    /// was no line left to read.
    bool reached_end() const { return at_end; }

    /// Bytes from the start of the line last read to the end of the text: an upper bound of
    /// what a data section that begins there can hold.
    std::size_t bytes_from_line_start() const { return text.size() - line_start; }

    /// Throws E with the message shape above, naming the line last read.
    template <class E>
    [[noreturn]] void fail(std::string_view problem) const
    {
        throw E(describe(problem));
    }

    /// A token read as the C library's text-to-float conversion reads it (leading white
    /// space skipped, trailing text ignored, decimal, hexadecimal, inf and nan), but always
    /// with '.' as the decimal point. Throws std::invalid_argument for a token without a
    /// number and std::out_of_range for a value outside float's range.
    float parse_float(std::string_view token) const;

    /// A token read as an unsigned decimal number (leading white space and '+' skipped,
    /// trailing text ignored). Throws std::invalid_argument without digits or with a minus
    /// sign, std::out_of_range above 64 bits.
    uint64_t parse_size(std::string_view token) const;

    /// Refuses an edge before the table is allocated: below 2 (nothing to interpolate)
    /// with std::invalid_argument, and one whose edge³ entries of at least
    /// `min_bytes_per_entry` bytes each can't fit into the rest of the text with
    /// std::logic_error and `too_few_values`, the format's message for a short file.
    void check_edge(uint64_t edge, std::size_t min_bytes_per_entry, std::string_view too_few_values) const;

private:
    std::string describe(std::string_view problem) const;

    std::string_view text;
    std::string format;
    std::string source_name;
    std::size_t position = 0;
    std::size_t line_start = 0;
    std::size_t line_number = 0;
    bool at_end = false;
};

/// True for a digit, '-' or '+': the first character of a line of numbers, as opposed to a
/// keyword line.
bool is_number_start(char c);

}  // namespace vl1
