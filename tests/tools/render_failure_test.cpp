// hueloom-render on bad input: each mistake gives one clear message and its exit code, and
// leaves no output file, finished or not, behind.
#include "tests/tools/render_test_support.h"

#include "tests/support/test_paths.h"
#include "tools/hueloom_render/state_blob.h"
#include "tools/hueloom_render/state_file.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;
using namespace render_test;

class render_failure : public ::testing::Test {
protected:
    fs::path dir = hueloom_test::make_temp_dir("failure");
    fs::path out_dir = hueloom_test::make_temp_dir("failure-out");
    fs::path image = dir / "in.png";

    void SetUp() override { write_pattern(image, 9, 7, 3, OIIO::TypeDesc::UINT8); }

    // Runs with the given plug-in arguments and checks the shape of every failure.
    run_result fails_with(int code, const std::vector<std::string>& plugin, const std::vector<std::string>& args)
    {
        const run_result r = run_render(joined(plugin, args));
        EXPECT_EQ(r.exit_code, code) << r.err;
        EXPECT_EQ(line_count(r.err), 1) << r.err;
        EXPECT_EQ(r.err.rfind("hueloom-render: ", 0), 0u) << r.err;
        EXPECT_EQ(folder_names(out_dir), std::set<std::string>{}) << "nothing is left behind";
        return r;
    }

    std::string out(const std::string& name) const { return (out_dir / name).string(); }
};

TEST_F(render_failure, EachMistakeIsNamedWithItsExitCode)
{
    std::ofstream(dir / "junk.exr") << "this is no image";
    // What is no regular file is refused before anything opens it: a FIFO would block in
    // open, a device never end.
    ASSERT_EQ(mkfifo((dir / "pipe.exr").c_str(), 0600), 0);
    const std::string preset = R"({"plugin_name": "Hueloom", )";
    std::ofstream(dir / "p.json") << preset << R"("plugin_state": [1, 2,)";
    std::ofstream(dir / "q.json") << preset << R"("plugin_state_size": 2, "plugin_state": [1, 999]})";
    std::ofstream(dir / "r.json") << preset << R"("plugin_state_size": 3, "plugin_state": [1, 2, 3]})";
    // Each value a --set refuses is named in render_param_setting; one stands for them here.
    const std::vector<std::string> hueloom = hueloom_plugin_args();
    const std::vector<std::string> graded = {"-i", image.string(), "-o", out("x.png")};
    const std::vector<std::string> absent = {"--plugin-path", dir.string()};
    const std::vector<std::string> other_id = {"--plugin-path", fixture_dir().string(), "--plugin-id",
                                               "org.example.none"};
    const struct {
        int code;
        const std::vector<std::string>& plugin;
        std::vector<std::string> args;
        std::string message;
    } cases[] = {
        {3, hueloom, {"-i", (dir / "missing.png").string(), "-o", out("x.png")},
         "missing.png: the file does not exist"},
        {3, hueloom, {"-i", (dir / "junk.exr").string(), "-o", out("x.exr")},
         "cannot read " + (dir / "junk.exr").string()},
        {3, hueloom, {"-i", (dir / "none.####.exr").string(), "-o", out("x.####.exr")}, "no frames of"},
        {3, hueloom, {"-i", (dir / "pipe.exr").string(), "-o", out("x.exr")}, "pipe.exr: it is a FIFO, not a file"},
        {3, hueloom, {"-i", "/dev/zero", "-o", out("x.exr")}, "/dev/zero: it is a character device"},
        {3, hueloom, joined(graded, {"--preset", (dir / "pipe.exr").string()}), "it is a FIFO"},
        {2, hueloom, joined(graded, {"--set", "Nonsense=3"}), "--set Nonsense=3: unknown parameter \"Nonsense\""},
        {2, hueloom, joined(graded, {"--theme", "No Such Look"}),
         "--theme No Such Look: no such theme; installed: 00000001"},
        {3, hueloom, joined(graded, {"--theme", "broken.hlt"}), "not a readable theme file"},
        {3, hueloom, joined(graded, {"--preset", (dir / "p.json").string()}), "--preset"},
        {3, hueloom, joined(graded, {"--preset", (dir / "q.json").string()}), "holds no plug-in state"},
        {3, hueloom, joined(graded, {"--preset", (dir / "r.json").string()}),
         "--preset " + (dir / "r.json").string() + ": the plug-in can't take this state"},
        {4, absent, graded, "plug-in com.varnlight.hueloomofx not found in " + dir.string()},
        {4, other_id, graded, "not found"},
        {5, hueloom, {"-i", image.string(), "-o", out("missing/x.png")}, "does not exist"},
        {5, hueloom, {"-i", image.string(), "-o", (image / "x.png").string()}, "is not a folder"},
        {5, hueloom, {"-i", image.string(), "-o", out_dir.string()},
         "cannot write " + out_dir.string() + ": it is a folder"},
        {5, hueloom, {"--export-lut", out("missing/look.cube")}, "missing/look.cube"},
        {5, hueloom, joined(graded, {"--state-out", out("no/s.txt")}), "no/s.txt"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.message);
        const auto r = fails_with(c.code, c.plugin, c.args);
        EXPECT_TRUE(contains(r.err, c.message)) << r.err;
    }
}

TEST_F(render_failure, AFrameMissingInTheMiddleIsNamedAndEndsTheRun)
{
    write_pattern(dir / "s.0001.png", 9, 7, 3, OIIO::TypeDesc::UINT8);
    write_pattern(dir / "s.0003.png", 9, 7, 3, OIIO::TypeDesc::UINT8);
    const run_result r = run_render(joined(hueloom_plugin_args(), {"-i", (dir / "s.####.png").string(), "-o",
                                                                   out("g.####.png"), "--frames", "1-3", "-q"}));
    EXPECT_EQ(r.exit_code, 3);
    EXPECT_EQ(line_count(r.err), 1) << r.err;
    EXPECT_TRUE(contains(r.err, "frame 2: cannot read " + (dir / "s.0002.png").string())) << r.err;
    EXPECT_EQ(folder_names(out_dir), std::set<std::string>{"g.0001.png"});
}

TEST_F(render_failure, BrokenStateTexts)
{
    // What the reader refuses, and why, is shown in render_parts; here one text that is no
    // state stands for them all.
    const fs::path state = dir / "state.txt";
    std::ofstream(state) << "QUJD!!==\n";
    auto r = fails_with(3, hueloom_plugin_args(), {"-i", image.string(), "-o", out("x.png"), "--state-in", state.string()});
    EXPECT_TRUE(contains(r.err, "state file " + state.string())) << r.err;
    // State texts that decode, but that the plug-in can't take: it would render ungraded.
    const std::string saved = run_render(joined(hueloom_plugin_args(), {"--export-lut", (dir / "l.cube").string(),
                                                                      "--state-out", state.string()}))
                                  .exit_code == 0
                                  ? vl1::render_tool::read_state_file(state).state_text
                                  : "";
    ASSERT_FALSE(saved.empty());
    const std::vector<uint8_t> blob = vl1::render_tool::decode_state(saved);
    const std::pair<std::vector<uint8_t>, const char*> refused[] = {
        {{'n', 'o', 'i', 's', 'e', 0, 1, 2, 3}, "it is no saved state of the plug-in"},
        {{blob.begin(), blob.begin() + 100}, "it is cut off: 6 parameter records declared, 1 present"},
        {{blob.begin(), blob.end() - 1000}, "its theme record is cut off"},
    };
    for (const auto& [bytes, reason] : refused) {
        std::ofstream(state, std::ios::trunc) << vl1::render_tool::encode_state(bytes) << "\n";
        r = fails_with(3, hueloom_plugin_args(), {"-i", image.string(), "-o", out("x.png"), "--state-in", state.string()});
        EXPECT_TRUE(contains(r.err, "the plug-in can't take this state: " + std::string(reason))) << r.err;
    }
}

TEST_F(render_failure, AFullDiskOrALockedFolderIsNeverReportedAsWritten)
{
    // Every write to /dev/full fails as on a full disk; the links give it the extensions.
    const std::vector<std::vector<std::string>> commands = {
        {"--export-lut", (dir / "full.cube").string()},
        {"--export-lut", (dir / "full.3dl").string()},
        {"-q", "-i", image.string(), "-o", (dir / "x.png").string(), "--state-out", (dir / "full.txt").string()},
    };
    for (const auto& command : commands) {
        const std::string& path = command.back();
        fs::create_symlink("/dev/full", path);
        const auto r = fails_with(5, hueloom_plugin_args(), command);
        EXPECT_TRUE(contains(r.err, "cannot write '" + path + "': writing failed at byte 0")) << r.err;
        EXPECT_FALSE(contains(r.err + r.out, " written to ")) << r.err << r.out;
    }
    if (geteuid() != 0) {  // permission bits don't stop root
        const fs::path locked = hueloom_test::make_temp_dir("locked");
        fs::permissions(locked, fs::perms::owner_read | fs::perms::owner_exec);
        const auto r = fails_with(5, hueloom_plugin_args(), {"-i", image.string(), "-o", (locked / "x.png").string()});
        EXPECT_TRUE(contains(r.err, "is not writable")) << r.err;
        fs::permissions(locked, fs::perms::owner_all);
    } else {  // nor do they stop root's writes; /proc does
        const auto r = fails_with(5, hueloom_plugin_args(), {"--export-lut", "/proc/self/look.cube"});
        EXPECT_TRUE(contains(r.err, "cannot write /proc/self/look.cube")) << r.err;
    }
}

TEST_F(render_failure, TheSourceAndWriteProtectedFilesAreNeverReplaced)
{
    const auto unchanged = [](const fs::path& p, const std::string& before) { return hueloom_test::read_file(p) == before; };
    const std::string original = hueloom_test::read_file(image);
    fs::create_symlink(image, dir / "link.png");
    fs::create_hard_link(image, dir / "hard.png");
    for (const fs::path& output : {image, dir / "link.png", dir / "." / "in.png", dir / "hard.png"}) {
        SCOPED_TRACE(output.string());
        const auto r = fails_with(2, hueloom_plugin_args(), {"-i", image.string(), "-o", output.string()});
        EXPECT_TRUE(contains(r.err, "it is the input " + image.string() + ", which would be lost")) << r.err;
        EXPECT_TRUE(unchanged(image, original));
    }
    // Also within a sequence.
    write_pattern(dir / "s.0001.png", 9, 7, 3, OIIO::TypeDesc::UINT8);
    write_pattern(dir / "s.0002.png", 9, 7, 3, OIIO::TypeDesc::UINT8);
    auto r = fails_with(2, hueloom_plugin_args(), {"-i", (dir / "s.####.png").string(), "-o", (dir / "s.%04d.png").string()});
    EXPECT_TRUE(contains(r.err, "s.0001.png, which would be lost")) << r.err;

    // A write-protected output stays, for root too.
    const fs::path locked = out_dir / "locked.png";
    std::ofstream(locked) << "keep me";
    fs::permissions(locked, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    const run_result refused = run_render(joined(hueloom_plugin_args(), {"-i", image.string(), "-o", locked.string()}));
    EXPECT_EQ(refused.exit_code, 5);
    EXPECT_TRUE(contains(refused.err, "locked.png: the file is write-protected (mode 0444)")) << refused.err;
    EXPECT_TRUE(unchanged(locked, "keep me"));
    EXPECT_EQ(fs::status(locked).permissions(), fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    fs::remove(locked);
}

}  // namespace
