// The fuzz bodies: one function per input that the plug-in reads from outside. Each takes
// arbitrary bytes, feeds them to the reader as the plug-in would, and checks the reader's
// promises through property_check.h. libFuzzer calls them through fuzz_entry.cpp; the
// regression test calls them on every kept input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace vl1::fuzz {

using fuzz_body = int (*)(const uint8_t* data, std::size_t size);

/// A theme file (.hlt) read from memory; what reads must write back and read the same.
int fuzz_theme_file(const uint8_t* data, std::size_t size);
/// A theme state record; refused records leave the theme alone, accepted ones round-trip.
int fuzz_theme_state(const uint8_t* data, std::size_t size);
/// The effect's whole state blob, checked and then set as the host or a preset would.
int fuzz_effect_state(const uint8_t* data, std::size_t size);
/// The base64 state text of the host's hidden parameter, decoded and set.
int fuzz_state_text(const uint8_t* data, std::size_t size);
/// A .cube file.
int fuzz_lut_cube(const uint8_t* data, std::size_t size);
/// A .3dl file.
int fuzz_lut_3dl(const uint8_t* data, std::size_t size);
/// The theme.json of an import folder.
int fuzz_theme_folder(const uint8_t* data, std::size_t size);
/// The theme server's manifest.json.
int fuzz_manifest(const uint8_t* data, std::size_t size);
/// A preset file.
int fuzz_preset(const uint8_t* data, std::size_t size);

struct fuzz_target {
    /// The name in fuzz_<name>, corpus/<name>/, dict/<name>.dict and regressions/<name>/.
    const char* name;
    fuzz_body body;
};

/// Every body, in a fixed order.
std::span<const fuzz_target> all_fuzz_targets();

}  // namespace vl1::fuzz
