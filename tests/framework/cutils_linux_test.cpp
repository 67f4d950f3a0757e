#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "framework/ccomponent.h"
#include "framework/cutils_linux.h"
#include "framework/log.h"
#include "tests/support/test_files.h"
#include "tests/support/test_paths.h"

namespace vl1 {
namespace {

namespace fs = std::filesystem;

using hueloom_test::read_file;
using hueloom_test::write_file;

TEST(LinuxUtils, FoldersAreTheUsersAloneTheUmaskStaysAndTheCommonOneLiesInHome)
{
    auto& utils = iutils::get_instance();
    const fs::path base = hueloom_test::make_temp_dir("dirs");
    const auto mode_of = [](const fs::path& p) {
        struct stat st{};
        EXPECT_EQ(stat(p.c_str(), &st), 0) << p;
        return st.st_mode & 07777;
    };
    const mode_t old = umask(022);
    EXPECT_TRUE(utils.create_dir((base / "made").string()));
    EXPECT_EQ(mode_of(base / "made"), 0700u);
    EXPECT_FALSE(utils.create_dir((base / "made").string()));  // exists already
    EXPECT_FALSE(utils.create_dir((base / "no" / "parent").string()));
    EXPECT_FALSE(utils.create_dir(""));

    // Parents too; a folder that exists keeps its mode.
    fs::create_directory(base / "open");
    chmod((base / "open").c_str(), 0755);
    EXPECT_TRUE(create_private_folders((base / "open" / "a" / "b").string()));
    EXPECT_EQ(mode_of(base / "open"), 0755u);
    EXPECT_EQ(mode_of(base / "open" / "a"), 0700u);
    EXPECT_EQ(mode_of(base / "open" / "a" / "b"), 0700u);
    EXPECT_TRUE(create_private_folders((base / "open" / "a").string()));
    write_file(base / "file", "x");
    EXPECT_FALSE(create_private_folders((base / "file" / "sub").string()));
    EXPECT_EQ(umask(old), 022);

    // The common folder is made the same way, in HOME.
    const std::string common = utils.get_common_directory();
    EXPECT_EQ(fs::path(common), hueloom_test::home_dir() / "Varnlight");
    EXPECT_EQ(mode_of(common), 0700u);
    EXPECT_EQ(utils.get_common_directory(), common);
}

TEST(LinuxUtils, ResourcesComeFromTheChosenFolder)
{
    auto& utils = iutils::get_instance();
    const fs::path folder = hueloom_test::make_temp_dir("resources");
    write_file(folder / "theme_00000001.hlt", std::string("ab\0c", 4));
    write_file(folder / "plain.plain", "x");
    fs::create_directory(folder / "folder.bin");
    set_resource_dir(folder.string());

    std::vector<uint8_t> out{1, 2, 3};
    EXPECT_TRUE(utils.get_resource("theme_00000001.hlt", out));
    EXPECT_EQ(out, (std::vector<uint8_t>{'a', 'b', 0, 'c'}));
    EXPECT_FALSE(utils.get_resource("missing.png", out));
    EXPECT_TRUE(out.empty());
    // A name without "." serves as name and type alike.
    EXPECT_TRUE(utils.get_resource("plain", out));
    EXPECT_EQ(out.size(), 1u);
    // It exists but can't be read as a file: true, with nothing loaded.
    EXPECT_TRUE(utils.get_resource("folder.bin", out));
    EXPECT_TRUE(out.empty());

    const fs::path other = hueloom_test::make_temp_dir("env-resources");
    write_file(other / "only_here.txt", "env");
    set_resource_dir("");
    setenv(resources_dir_env, other.c_str(), 1);
    EXPECT_TRUE(utils.get_resource("only_here.txt", out));
    EXPECT_EQ(out.size(), 3u);
    unsetenv(resources_dir_env);
}

TEST(LinuxUtils, AlertBoxesGoToTheLog)
{
    std::vector<std::string> lines;
    set_log_capture([&](std::string_view line) { lines.emplace_back(line); });
    EXPECT_FALSE(iutils::get_instance().alert_box(nullptr, "Title", "Some text", "OK", "Cancel"));
    set_log_capture(nullptr);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].find("Title"), std::string::npos);
    EXPECT_NE(lines[0].find("Some text"), std::string::npos);
}

TEST(LinuxUtils, ManualOpensThroughXdgOpen)
{
    // A stand-in xdg-open first on PATH records the argument it was given.
    const fs::path bin = hueloom_test::make_temp_dir("bin");
    const fs::path record = bin / "opened.txt";
    write_file(bin / "xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" > \"" + record.string() + ".part\"\nmv \"" +
                                     record.string() + ".part\" \"" + record.string() + "\"\n");
    fs::permissions(bin / "xdg-open", fs::perms::owner_all);
    const std::string old_path = std::getenv("PATH") ? std::getenv("PATH") : "";
    setenv("PATH", (bin.string() + ":" + old_path).c_str(), 1);

    ccomponent_v1 component;
    component.open_manual();
    for (int i = 0; i < 500 && !fs::exists(record); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    setenv("PATH", old_path.c_str(), 1);
    EXPECT_EQ(read_file(record), "https://www.varnlight.com/products/tutorials.php?id=48");
}

}  // namespace
}  // namespace vl1
