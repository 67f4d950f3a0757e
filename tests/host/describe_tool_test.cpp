// `hueloom-host describe`, run as a process: its listing, its errors and its exit codes; and
// run twice in one process against the real bundle, which stays loaded in between.
#include "tests/host/host_test_support.h"
#include "tests/support/test_files.h"
#include "tests/support/test_paths.h"
#include "tests/tools/run_process.h"
#include "tools/hueloom_host/describe_command.h"

#include <cstdlib>
#include <sstream>
#include <string_view>

namespace {

using hueloom_test::process_result;

process_result run_tool(const std::vector<std::string>& arguments)
{
    return hueloom_test::run_process(HUELOOM_HOST_TOOL, arguments, hueloom_test::home_dir());
}

using hueloom_test::contains;

TEST(describe_tool, ListsWhatLoadsAndReportsBrokenBundles)
{
    const process_result r =
        run_tool({"describe", host_test::broken_dir().string() + ":" + host_test::fixture_dir().string()});
    EXPECT_EQ(r.exit_code, 1);
    EXPECT_TRUE(contains(r.err, "NoBinary.ofx.bundle has no binary")) << r.err;
    EXPECT_TRUE(contains(r.err, "does not export OfxGetNumberOfPlugins"));
    EXPECT_TRUE(contains(r.err, "speaks API \"OfxSomethingElseAPI\""));
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
    // The parameters in the order the plug-in defined them.
    EXPECT_LT(r.out.find("Invert  "), r.out.find("Offset  "));
    EXPECT_LT(r.out.find("Offset  "), r.out.find("Report"));
}

TEST(describe_tool, SearchPathsUsageErrorsAndEmptyFolders)
{
    const char* old = std::getenv("OFX_PLUGIN_PATH");
    const std::string saved = old ? old : "";
    setenv("OFX_PLUGIN_PATH", host_test::fixture_dir().c_str(), 1);
    const process_result from_variable = run_tool({"describe"});
    // Without either, it looks where hueloom-render looks: the build's own plug-in folder too.
    unsetenv("OFX_PLUGIN_PATH");
    const process_result plain = run_tool({"describe"});
    if (old)
        setenv("OFX_PLUGIN_PATH", saved.c_str(), 1);
    EXPECT_EQ(from_variable.exit_code, 0) << from_variable.err;
    EXPECT_TRUE(contains(from_variable.out, "org.hueloom.test.fixture"));
    EXPECT_TRUE(contains(plain.out, "Plug-in 0: com.varnlight.hueloomofx version 1.3")) << plain.out << plain.err;

    for (const std::vector<std::string>& usage : std::vector<std::vector<std::string>>{
             {}, {"frobnicate"}, {"describe", "a", "b"}, {"describe", ":"}})
        EXPECT_EQ(run_tool(usage).exit_code, 2);
    EXPECT_EQ(run_tool({"--help"}).exit_code, 0);
    const auto empty = hueloom_test::make_temp_dir("no-bundles");
    const process_result r = run_tool({"describe", empty.string()});
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
