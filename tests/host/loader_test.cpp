// Finding bundles on a search path and opening them, with the errors a broken bundle gives.
#include "tests/host/host_test_support.h"

#include "host/status.h"

#include <cstdlib>

namespace {

namespace fs = std::filesystem;
using host_test::broken_dir;
using host_test::fixture_bundle;
using host_test::fixture_dir;

std::string error_of(const std::function<void()>& f)
{
    try {
        f();
    } catch (const vl1::ofxhost::host_error& e) {
        return e.what();
    }
    return "(no error)";
}

TEST(loader, FindsBundlesOnAColonSeparatedPathAndSkipsMissingFolders)
{
    const auto path = vl1::ofxhost::split_search_path("/no/such/folder::" + fixture_dir().string() + ":");
    ASSERT_EQ(path.size(), 2u);
    const auto bundles = vl1::ofxhost::find_bundles(path);
    ASSERT_EQ(bundles.size(), 1u);
    EXPECT_EQ(bundles[0].filename(), "HostFixture.ofx.bundle");
    EXPECT_EQ(vl1::ofxhost::bundle_binary(bundles[0]),
              bundles[0] / "Contents" / "Linux-x86-64" / "HostFixture.ofx");

    // Bundles in subfolders are found, sorted; a bundle named directly is taken as it is.
    const auto all = vl1::ofxhost::find_bundles({broken_dir(), fixture_bundle()});
    std::vector<std::string> names;
    for (const auto& b : all) names.push_back(b.filename().string());
    EXPECT_EQ(names, (std::vector<std::string>{"NoBinary.ofx.bundle", "NoEntry.ofx.bundle", "WrongApi.ofx.bundle",
                                               "HostFixture.ofx.bundle"}));
}

TEST(loader, DefaultSearchPathReadsOfxPluginPathThenTheSystemFolder)
{
    const char* old = std::getenv("OFX_PLUGIN_PATH");
    const std::string saved = old ? old : "";
    setenv("OFX_PLUGIN_PATH", "/a:/b", 1);
    const auto path = vl1::ofxhost::default_search_path();
    if (old) setenv("OFX_PLUGIN_PATH", saved.c_str(), 1); else unsetenv("OFX_PLUGIN_PATH");
    EXPECT_EQ(path, (std::vector<fs::path>{"/a", "/b", "/usr/OFX/Plugins"}));
}

TEST(loader, BrokenBundlesGiveErrorsNamingTheProblem)
{
    vl1::ofxhost::host h;
    const std::pair<std::string, fs::path> cases[] = {
        {"no bundle at", broken_dir() / "Missing.ofx.bundle"},
        {"has no binary", broken_dir() / "NoBinary.ofx.bundle"},
        {"does not export OfxGetNumberOfPlugins", broken_dir() / "NoEntry.ofx.bundle"},
        {"\"OfxSomethingElseAPI\"", broken_dir() / "WrongApi.ofx.bundle"},
    };
    for (const auto& [problem, bundle] : cases) {
        const std::string error = error_of([&] { h.load_plugin(bundle); });
        EXPECT_NE(error.find(problem), std::string::npos) << error;
    }
    EXPECT_NE(error_of([&] { h.load_plugin(fixture_bundle(), 2); }).find("does not exist (the bundle has 2)"),
              std::string::npos);
}

TEST(loader, LoadsEachPluginOfABundleAndKeepsTheLibraryOpen)
{
    vl1::ofxhost::host h;
    EXPECT_EQ(h.plugin_count(fixture_bundle()), 2);
    vl1::ofxhost::plugin first = h.load_plugin(fixture_bundle(), 0);
    vl1::ofxhost::plugin second = h.load_plugin(fixture_bundle(), 1);
    EXPECT_EQ(first.identifier(), "org.hueloom.test.fixture");
    EXPECT_EQ(first.version_major(), 2u);
    EXPECT_EQ(first.version_minor(), 5u);
    EXPECT_EQ(second.identifier(), "org.hueloom.test.fixture.second");
    // Both come from one library, opened once.
    EXPECT_EQ(vl1::ofxhost::library::open(fixture_bundle()), vl1::ofxhost::library::open(fixture_dir() / "." / "HostFixture.ofx.bundle"));
    EXPECT_EQ(first.load(), kOfxStatOK);
    EXPECT_EQ(second.load(), kOfxStatOK);
}

}  // namespace
