// The I/O layer: reading whole files under a cap, replacing files in one step, and JSON
// access that throws on data of the wrong shape.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "framework/io/json_checked.h"
#include "framework/io/read_bounded_file.h"
#include "framework/io/write_file_atomically.h"
#include "tests/support/test_files.h"
#include "tests/support/test_paths.h"

namespace vl1 {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& path)
{
    std::string text;
    std::string problem;
    EXPECT_TRUE(read_bounded_file(path, 1u << 20, text, problem)) << problem;
    return text;
}

using hueloom_test::contains;
using hueloom_test::folder_names;

TEST(FileIo, ReadsRegularFilesUpToTheCapAndNothingElse)
{
    const fs::path dir = hueloom_test::make_temp_dir("read");
    std::ofstream(dir / "five.bin", std::ios::binary) << "12345";
    std::vector<uint8_t> bytes = {9};
    std::string problem;
    ASSERT_TRUE(read_bounded_file(dir / "five.bin", 5, bytes, problem)) << problem;
    EXPECT_EQ(bytes, (std::vector<uint8_t>{'1', '2', '3', '4', '5'}));

    ASSERT_EQ(mkfifo((dir / "pipe").c_str(), 0600), 0);
    const struct {
        fs::path path;
        std::uintmax_t cap;
        const char* why;
    } refused[] = {
        {dir / "five.bin", 4, "it has 5 bytes, more than the 4"},
        {dir / "missing", 10, "No such file"},
        {dir, 10, "not a regular file"},
        {dir / "pipe", 10, "not a regular file"},  // never waits for a writer
        {"/dev/zero", 10, "not a regular file"},
    };
    for (const auto& r : refused) {
        std::string text = "untouched";
        EXPECT_FALSE(read_bounded_file(r.path, r.cap, text, problem)) << r.path;
        EXPECT_TRUE(contains(problem, "'" + r.path.string() + "'") && contains(problem, r.why)) << problem;
        EXPECT_EQ(text, "untouched");
    }
}

TEST(FileIo, ReplacesFilesWholeAndFollowsLinks)
{
    const fs::path dir = hueloom_test::make_temp_dir("write");
    std::string problem;
    ASSERT_TRUE(write_file_atomically(dir / "a.txt", std::string_view("first"), problem)) << problem;
    chmod((dir / "a.txt").c_str(), 0640);
    ASSERT_TRUE(write_file_atomically(dir / "a.txt", std::string_view("second"), problem)) << problem;
    EXPECT_EQ(contents(dir / "a.txt"), "second");
    EXPECT_EQ(fs::status(dir / "a.txt").permissions(), fs::perms(0640));  // the mode stays

    fs::create_symlink("a.txt", dir / "link.txt");
    ASSERT_TRUE(write_file_atomically(dir / "link.txt", std::string_view("third"), problem)) << problem;
    EXPECT_TRUE(fs::is_symlink(dir / "link.txt"));
    EXPECT_EQ(contents(dir / "a.txt"), "third");
    EXPECT_EQ(folder_names(dir).size(), 2u);  // no temporary file left

    // A temporary name never carries the extension a folder reader looks for.
    const fs::path temporary = temporary_path_beside(dir / "Evening.json");
    EXPECT_EQ(temporary.parent_path(), dir);
    EXPECT_FALSE(contains(temporary.filename().string(), ".json"));
    EXPECT_NE(temporary, temporary_path_beside(dir / "Evening.json"));
}

TEST(FileIo, FailedWritesNameTheFileAndKeepTheOldOne)
{
    const fs::path dir = hueloom_test::make_temp_dir("fail");
    std::string problem;
    // A full disk: every write to /dev/full fails with ENOSPC, here reached through a link.
    fs::create_symlink("/dev/full", dir / "full.cube");
    EXPECT_FALSE(write_file_atomically(dir / "full.cube", std::string_view("LUT_3D_SIZE 2\n"), problem));
    EXPECT_TRUE(contains(problem, "'" + (dir / "full.cube").string() + "'") && contains(problem, "at byte 0"))
        << problem;

    EXPECT_FALSE(write_file_atomically(dir, std::string_view("x"), problem));
    EXPECT_TRUE(contains(problem, "it is a folder")) << problem;

    // A folder that takes no new file; permission bits don't stop root, /proc does.
    fs::path locked = hueloom_test::make_temp_dir("locked");
    std::ofstream(locked / "keep.txt") << "old";
    chmod(locked.c_str(), 0500);
    if (geteuid() == 0)
        locked = "/proc/self";
    const fs::path target = locked / "keep.txt";
    EXPECT_FALSE(write_file_atomically(target, std::string_view("new"), problem));
    EXPECT_TRUE(contains(problem, "'" + target.string() + "'")) << problem;
    if (geteuid() != 0) {
        EXPECT_EQ(contents(target), "old");
        EXPECT_EQ(folder_names(locked).size(), 1u);
        chmod(locked.c_str(), 0700);
    }
    EXPECT_EQ(folder_names(dir).size(), 1u);  // only the link: no temporary file behind
}

TEST(JsonChecked, AssertionsOnUserDataThrowInsteadOfEndingTheProcess)
{
    rapidjson::Document document;
    document.Parse(R"({"version": "1"})");
    ASSERT_FALSE(document.HasParseError());
    EXPECT_THROW(document["version"].GetInt(), json_shape_error);
    EXPECT_THROW(document["version"].Size(), json_shape_error);
    EXPECT_THROW(document["version"]["x"], json_shape_error);
}

}  // namespace
}  // namespace vl1
