// Base64 of the original alphabet with '=' padding (RFC 4648, section 4), the form in which
// the state text carries bytes.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vl1 {

/// Padded base64 of `bytes`.
std::string to_base64(std::span<const uint8_t> bytes);

/// The bytes of `text`, which must be canonical padded base64 and nothing else (no white
/// space, length a multiple of four, unused bits of the last group zero). False, leaving
/// `bytes` untouched, otherwise; "" decodes to no bytes.
bool from_base64(std::string_view text, std::vector<uint8_t>& bytes);

}  // namespace vl1
