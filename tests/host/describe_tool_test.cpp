// `hueloom-host describe`, run as a process: its listing, its errors and its exit codes; and
// run twice in one process against the real bundle, which stays loaded in between.
#include "tests/host/host_test_support.h"
#include "tests/support/test_paths.h"
#include "tools/hueloom_host/describe_command.h"

#include <sys/wait.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string_view>

namespace {

struct run_result {
    int exit_code = -1;
    std::string out;
    std::string err;
};

run_result run_tool(const std::string& args, const std::string& env = "")
{
    const auto err_file = hueloom_test::make_temp_dir("describe") / "stderr.txt";
    const std::string command = env + " '" + std::string(HUELOOM_HOST_TOOL) + "' " + args + " 2>'" +
                                err_file.string() + "'";
    run_result r;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return r;
    char buffer[4096];
    while (std::size_t n = fread(buffer, 1, sizeof buffer, pipe)) r.out.append(buffer, n);
    const int status = pclose(pipe);
    r.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::ifstream in(err_file);
    std::stringstream ss;
    ss << in.rdbuf();
    r.err = ss.str();
    return r;
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(describe_tool, ListsPluginsContextsClipsAndParameters)
{
    const run_result r = run_tool("describe '" + host_test::fixture_dir().string() + "'");
    ASSERT_EQ(r.exit_code, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_TRUE(contains(r.out, "Plug-in 0: org.hueloom.test.fixture version 2.5\n")) << r.out;
    EXPECT_TRUE(contains(r.out, "Plug-in 1: org.hueloom.test.fixture.second version 1.0\n"));
    EXPECT_TRUE(contains(r.out, "    Contexts: OfxImageEffectContextFilter, OfxImageEffectContextGeneral\n"));
    EXPECT_TRUE(contains(r.out, "    Context OfxImageEffectContextGeneral\n"));
    EXPECT_TRUE(contains(r.out, "Matte                Alpha  optional\n"));
    EXPECT_TRUE(contains(r.out, "Gain                 Double      default 1  range 0 .. 4  display 0 .. 2  "
                                "script \"gain\"\n"));
    EXPECT_TRUE(contains(r.out, "Count                Integer     default 3  range 0 .. 10  display -inf .. inf\n"));
    EXPECT_TRUE(contains(r.out, "Mode                 Choice      default 1  options Plain, Fancy\n"));
    EXPECT_TRUE(contains(r.out, "Tint                 RGBA        default 1, 0.5, 0.25, 1\n"));
    EXPECT_TRUE(contains(r.out, "binaryStateParam     Custom      default \"\"  secret\n"));
    EXPECT_TRUE(contains(r.out, "Invert               Boolean     default 1  label \"Invert colours\"\n"));
}

TEST(describe_tool, ReadsOfxPluginPathWhenNoPathIsGiven)
{
    const run_result r = run_tool("describe", "OFX_PLUGIN_PATH='" + host_test::fixture_dir().string() + "'");
    EXPECT_EQ(r.exit_code, 0) << r.err;
    EXPECT_TRUE(contains(r.out, "org.hueloom.test.fixture"));

    // Without either, it looks where hueloom-render looks: the build's own plug-in folder too.
    const run_result plain = run_tool("describe", "env -u OFX_PLUGIN_PATH");
    EXPECT_TRUE(contains(plain.out, "Plug-in 0: com.varnlight.hueloomofx version 1.3")) << plain.out << plain.err;
}

TEST(describe_tool, BrokenBundlesAreReportedAndTheRestStillListed)
{
    const run_result r =
        run_tool("describe '" + host_test::broken_dir().string() + ":" + host_test::fixture_dir().string() + "'");
    EXPECT_EQ(r.exit_code, 1);
    EXPECT_TRUE(contains(r.err, "NoBinary.ofx.bundle has no binary")) << r.err;
    EXPECT_TRUE(contains(r.err, "does not export OfxGetNumberOfPlugins"));
    EXPECT_TRUE(contains(r.err, "speaks API \"OfxSomethingElseAPI\""));
    EXPECT_TRUE(contains(r.out, "Plug-in 0: org.hueloom.test.fixture version 2.5"));
}

TEST(describe_tool, UsageErrorsAndEmptyFolders)
{
    EXPECT_EQ(run_tool("").exit_code, 2);
    EXPECT_EQ(run_tool("frobnicate").exit_code, 2);
    EXPECT_EQ(run_tool("describe a b").exit_code, 2);
    EXPECT_EQ(run_tool("describe ':'").exit_code, 2);
    EXPECT_EQ(run_tool("--help").exit_code, 0);
    const auto empty = hueloom_test::make_temp_dir("no-bundles");
    const run_result r = run_tool("describe '" + empty.string() + "'");
    EXPECT_EQ(r.exit_code, 1);
    EXPECT_TRUE(contains(r.err, "no OFX bundles found in " + empty.string())) << r.err;
}

int occurrences(const std::string& text, std::string_view part)
{
    int n = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

TEST(describe_tool, TwiceInOneProcessListsTheBundleTheSameWay)
{
    std::ostringstream first, second, err;
    EXPECT_EQ(vl1::host_tool::describe_bundles({hueloom_test::plugin_dir()}, first, err), 0) << err.str();
    EXPECT_EQ(vl1::host_tool::describe_bundles({hueloom_test::plugin_dir()}, second, err), 0) << err.str();
    EXPECT_EQ(second.str(), first.str());
    for (const char* name : {"binaryStateParam ", "Global Bypass ", "Luminance "})
        EXPECT_EQ(occurrences(first.str(), name), 1) << name << " in\n" << first.str();
}

}  // namespace
