// The include arrows between the source folders run one way. Each folder names the folders it
// may include from; an include of a folder outside that list is an arrow against the layering.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/support/test_paths.h"

namespace {

namespace fs = std::filesystem;

fs::path source_root() { return fs::weakly_canonical(hueloom_test::data_dir() / ".." / ".."); }

/// Folders each source folder may include from, itself included. "ofx/api" is the only part
/// of ofx/ that host/ and tools/ see: the bundle's own code stays behind the OFX border.
const std::map<std::string, std::set<std::string>> allowed = {
    {"framework", {"framework"}},
    {"color", {"framework", "color"}},
    {"themes", {"framework", "color", "themes"}},
    {"presets", {"framework", "presets"}},
    {"effect", {"framework", "color", "themes", "presets", "effect"}},
    {"gui", {"framework", "color", "themes", "presets", "effect", "gui"}},
    {"ofx", {"framework", "ofx", "ofx/api"}},
    {"ofx/api", {"ofx/api"}},
    {"host", {"host", "ofx/api"}},
    {"tools", {"framework", "color", "themes", "presets", "host", "ofx/api", "tools"}},
};

/// The folder an include names, "ofx/api" kept apart from the rest of ofx/.
std::string included_folder(const std::string& include)
{
    if (include.rfind("ofx/api/", 0) == 0)
        return "ofx/api";
    return include.substr(0, include.find('/'));
}

bool is_source(const fs::path& path)
{
    const std::string ext = path.extension().string();
    return ext == ".h" || ext == ".cpp" || ext == ".hpp" || ext == ".cc" || ext == ".inc";
}

struct include_line {
    fs::path file;
    int line;
    std::string target;  // as written, without the quotes or angle brackets
    bool quoted;
};

std::vector<include_line> includes_below(const fs::path& root)
{
    static const std::regex directive(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    std::vector<include_line> found;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file() || !is_source(entry.path()))
            continue;
        std::ifstream in(entry.path());
        std::string text;
        for (int number = 1; std::getline(in, text); ++number) {
            std::smatch m;
            if (std::regex_search(text, m, directive))
                found.push_back({entry.path(), number, m[2].str(), m[1].str() == "\""});
        }
    }
    return found;
}

std::string where(const include_line& inc)
{
    return inc.file.lexically_relative(source_root()).string() + ":" + std::to_string(inc.line) + " includes " +
           inc.target;
}

TEST(Layering, IncludesFollowTheArrowsBetweenFolders)
{
    std::size_t checked = 0;
    for (const char* top : {"framework", "color", "themes", "presets", "effect", "gui", "ofx", "host", "tools"}) {
        ASSERT_TRUE(fs::is_directory(source_root() / top)) << top;
        for (const include_line& inc : includes_below(source_root() / top)) {
            if (!inc.quoted || inc.target.find('/') == std::string::npos)
                continue;
            const std::string target = included_folder(inc.target);
            if (!allowed.contains(target))
                continue;  // a third-party header in quotes
            ++checked;
            const std::string folder = included_folder(inc.file.lexically_relative(source_root()).string());
            EXPECT_TRUE(allowed.at(folder).contains(target))
                << where(inc) << ": " << folder << "/ may not include " << target << "/";
        }
    }
    EXPECT_GT(checked, 500u);  // the walk did see the tree
}

TEST(Layering, OnlyTheEditorTalksToTheWindowSystem)
{
    const std::vector<std::string> window_system = {"FL/", "X11/", "cairo"};
    for (const char* folder : {"framework", "color", "themes", "presets", "effect", "ofx", "host", "tools", "bench",
                               "fuzz", "resources"}) {
        if (!fs::is_directory(source_root() / folder))
            continue;
        for (const include_line& inc : includes_below(source_root() / folder)) {
            for (const std::string& prefix : window_system)
                EXPECT_NE(inc.target.rfind(prefix, 0), 0u) << where(inc) << ": only gui/ includes " << prefix;
        }
    }
}

}  // namespace
