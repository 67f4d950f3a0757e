// Reading preset files: the text into a JSON document, and the checks that the preset list
// makes without building a document.
#pragma once

#include <cstdint>
#include <string>

#include "presets/preset_json.h"

namespace vl1 {

/// Largest preset file that is read, in bytes. A preset of this effect is some 18 MB (its
/// state blob spelled out in decimal); anything far beyond that is not one of ours, and the
/// parsed document needs several times the file's size in memory.
inline constexpr std::uintmax_t preset_file_size_limit = 64ull * 1024 * 1024;

/// Reads and parses the preset file at `path`. False, with `problem` in plain English naming
/// the file, if it is no regular file, can't be read, is larger than preset_file_size_limit,
/// isn't JSON, or its root isn't an object. May throw std::bad_alloc.
bool read_preset_document(const std::string& path, rapidjson::Document& document, std::string& problem);

/// Whether the file at `path` could be read as a preset: a regular file within the size
/// limit, whose text is JSON syntax with an object at its root. Streams the file and builds
/// no document, so it is cheap enough for listing a folder. Never throws.
bool check_preset_file(const std::string& path, std::string& problem) noexcept;

}  // namespace vl1
