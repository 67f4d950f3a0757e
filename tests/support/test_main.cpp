// Test entry point: runs every test with HOME pointing at a private temporary folder, which is
// removed again at the end, so tests never see or change the user's Varnlight folders.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);

    std::string pattern = (std::filesystem::temp_directory_path() / "hueloom-test-XXXXXX").string();
    const char* home = mkdtemp(pattern.data());
    if (home == nullptr) {
        fprintf(stderr, "cannot create a temporary HOME\n");
        return 2;
    }
    setenv("HOME", home, 1);
    // "Open GUI" in a test renders without an editor unless the test starts an X server of
    // its own; none may open windows on the developer's desktop.
    unsetenv("DISPLAY");

    const int result = RUN_ALL_TESTS();

    std::error_code ignored;
    std::filesystem::remove_all(home, ignored);
    return result;
}
