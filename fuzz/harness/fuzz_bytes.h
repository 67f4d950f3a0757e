// Turning a short fuzz input into a long fixed-size record. Records such as the theme state
// record are megabytes long, mostly table data; mutating them whole is slow and rarely
// reaches the header. A short input is instead taken as the record's head and repeated to
// the record's size, so every mutation lands in the part that the reader decides on, and
// the slot angles further on still vary with the input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vl1::fuzz {

/// `size` bytes: the input repeated from its start (zeros for an empty input).
std::vector<uint8_t> repeat_to_size(const uint8_t* data, std::size_t data_size, std::size_t size);

}  // namespace vl1::fuzz
