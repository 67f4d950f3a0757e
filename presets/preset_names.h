// Preset names and the file names that carry them. A preset named n is the file n + ".json"
// in the preset folder.
#pragma once

#include <string>
#include <vector>

namespace vl1 {

inline constexpr const char* preset_extension = ".json";

/// Longest file name the file systems of this platform accept, in bytes.
inline constexpr std::size_t preset_file_name_limit = 255;

/// Whether a name that the user typed may become a preset file. Refused are: an empty or
/// blank name, a path separator ("/" or "\"), "..", control characters, ".json" (the list
/// would cut the name there) and a file name longer than the file system takes. On refusal
/// `reason` holds the message in the localised form "{en:...}{de:...}".
bool is_acceptable_preset_name(const std::string& name, std::string& reason);

/// The preset that a file of the folder shows: what stands before the first ".json" of its
/// name; empty if the name holds no ".json" or nothing stands before it.
std::string preset_name_from_file_name(const std::string& file_name);

/// Preset names of a folder listing: one per name, sorted ascending in byte order, files
/// without ".json" left out.
std::vector<std::string> preset_names_from_file_names(const std::vector<std::string>& file_names);

}  // namespace vl1
