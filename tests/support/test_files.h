// Small file and text helpers that tests of several folders share.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace hueloom_test {

/// The whole file as bytes in a string; empty if it can't be read.
inline std::string read_file(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

/// The whole file as a byte vector; empty if it can't be read.
inline std::vector<uint8_t> read_bytes(const std::filesystem::path& path)
{
    const std::string bytes = read_file(path);
    return std::vector<uint8_t>(bytes.begin(), bytes.end());
}

/// Replaces the file with exactly `bytes`.
inline void write_file(const std::filesystem::path& path, std::string_view bytes)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// The names of the entries of `folder`, sorted; none if it can't be read.
inline std::set<std::string> folder_names(const std::filesystem::path& folder)
{
    std::set<std::string> names;
    std::error_code ec;
    for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
        names.insert(it->path().filename().string());
    return names;
}

inline bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

}  // namespace hueloom_test
