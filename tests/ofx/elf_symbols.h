// Reads the names of the symbols a shared object defines in its dynamic symbol table.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace hueloom_test {

/// Global and weak symbols that the ELF file at `path` defines (not the ones it imports).
/// Throws std::runtime_error when the file is not a readable 64-bit ELF object.
std::vector<std::string> exported_symbols(const std::filesystem::path& path);

/// The DT_NEEDED entries: the shared libraries the loader must find for the file.
std::vector<std::string> needed_libraries(const std::filesystem::path& path);

}  // namespace hueloom_test
