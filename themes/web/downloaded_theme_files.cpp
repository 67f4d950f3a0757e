#include "themes/web/downloaded_theme_files.h"

#include <filesystem>
#include <vector>

#include <fmt/format.h>

#include "framework/io/read_bounded_file.h"
#include "framework/io/write_file_atomically.h"
#include "themes/web/theme_addresses.h"

namespace vl1 {

namespace {

namespace fs = std::filesystem;

bool accepted(const std::string& temp_path, uint32_t uid, const theme_bytes_validator& validator,
              std::uint64_t max_bytes, std::string& problem)
{
    if (!validator) {
        problem = "no theme file check is installed, so no download is taken";
        return false;
    }
    std::vector<uint8_t> bytes;
    if (!read_bounded_file(temp_path, max_bytes, bytes, problem))
        return false;
    std::string why;
    bool valid = false;
    try {
        valid = validator(std::span<const uint8_t>(bytes.data(), bytes.size()), uid, why);
    } catch (const std::exception& e) {
        why = e.what();
    } catch (...) {
        why = "the check failed unexpectedly";
    }
    if (!valid) {
        problem = fmt::format("the downloaded file is no valid theme {}: {}", theme_uid_hex(uid), why);
        return false;
    }
    return true;
}

}  // namespace

bool install_downloaded_theme(const std::string& temp_path, const std::string& final_path, uint32_t uid,
                              const theme_bytes_validator& validator, std::uint64_t max_bytes, std::string& problem)
{
    if (accepted(temp_path, uid, validator, max_bytes, problem))
        return move_file_into_place(temp_path, final_path, problem);
    std::error_code ec;
    fs::remove(temp_path, ec);
    return false;
}

int remove_leftover_theme_downloads(const std::string& folder) noexcept
{
    int removed = 0;
    try {
        std::error_code ec;
        for (const auto& entry : fs::directory_iterator(folder, ec)) {
            const std::string name = entry.path().filename().string();
            if (name.size() < theme_temp_suffix.size() ||
                name.compare(name.size() - theme_temp_suffix.size(), theme_temp_suffix.size(), theme_temp_suffix) != 0)
                continue;
            std::error_code removal;
            if (entry.is_regular_file(removal) && fs::remove(entry.path(), removal))
                ++removed;
        }
    } catch (...) {
        // An unreadable folder just keeps its leftovers; they are harmless and ignored.
    }
    return removed;
}

}  // namespace vl1
