// The file of --state-in and --state-out: a look handed from one shot to the next. Line 1 is
// the plug-in's "binaryStateParam" text, base64 as a host keeps it in its project (it may be
// empty: no state). Each further line is a parameter setting NAME=VALUE or
// NAME=VALUE@FRAME,..., because the host's parameter values win over the values inside the
// state when the plug-in reads both; lines starting with '#' and empty lines are skipped.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vl1::render_tool {

struct state_file {
    std::string state_text;
    std::vector<std::string> settings;
};

/// Whether `text` is base64 in the standard alphabet with '=' padding, as the plug-in reads it.
bool is_state_text(const std::string& text);

/// Reads a state file. Throws render_error (input) for a missing, unreadable or empty file
/// and for a first line that isn't base64, naming the file and the first bad character.
state_file read_state_file(const std::filesystem::path& path);

/// Writes the file; it appears under `path` only when complete. Throws render_error (output).
void write_state_file(const std::filesystem::path& path, const state_file& state);

}  // namespace vl1::render_tool
