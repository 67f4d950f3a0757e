// The saved state as the host keeps it, the text of "binaryStateParam": its size, and the
// time the adapter takes to write it and read it back, for the built-in theme, a theme
// imported from a folder of .cube files, and no theme.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "framework/istate_layout.h"

namespace vl1::bench {

struct state_case {
    std::string name;
    std::vector<uint8_t> blob;               // as the effect's get_state gives it
    std::vector<state_float_grid> grids;     // as the effect's istate_layout_v1 finds them
    std::size_t plain_text_bytes = 0;        // base64 of the blob, as earlier versions wrote it
    std::size_t packed_text_bytes = 0;
};

/// The three states; `builtin_theme_file` is the bundle's theme_00000001.hlt, `scratch` an
/// empty folder for the imported theme's files. Each state is checked to read back byte for
/// byte; throws if one doesn't. The vault works under HOME: point HOME somewhere disposable.
std::vector<state_case> make_state_cases(const std::filesystem::path& builtin_theme_file,
                                         const std::filesystem::path& scratch);

/// Writes the state's text and reads it back, as SaveStateToHost and LoadStateFromHost do.
void write_and_read(const state_case& c);

}  // namespace vl1::bench
