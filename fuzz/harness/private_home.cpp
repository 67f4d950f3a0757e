#include "fuzz/harness/private_home.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace vl1::fuzz {

namespace {

std::string home_to_remove;

void remove_private_home()
{
    std::error_code ignored;
    std::filesystem::remove_all(home_to_remove, ignored);
}

}  // namespace

bool use_private_home()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "hueloom-fuzz-home-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        return false;
    home_to_remove = pattern;
    std::atexit(remove_private_home);
    return setenv("HOME", pattern.c_str(), 1) == 0;
}

}  // namespace vl1::fuzz
