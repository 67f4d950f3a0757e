#include "tests/support/test_paths.h"

#include <atomic>
#include <cstdlib>

namespace hueloom_test {

std::filesystem::path plugin_dir() { return HUELOOM_TEST_PLUGIN_DIR; }

std::filesystem::path data_dir() { return HUELOOM_TEST_DATA_DIR; }

std::filesystem::path home_dir()
{
    const char* home = std::getenv("HOME");
    return home ? std::filesystem::path(home) : std::filesystem::temp_directory_path();
}

std::filesystem::path make_temp_dir(const std::string& stem)
{
    static std::atomic<int> counter{0};
    auto dir = home_dir() / ("." + stem + "-" + std::to_string(counter++));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir;
}

}  // namespace hueloom_test
