// manifest.json comes from the theme server over plain HTTP, so anyone on the way can write
// it. A refused manifest leaves the versions known before; an accepted one holds only valid
// uids and versions, and says the same when written out again.
#include <climits>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/fuzz_process.h"
#include "fuzz/property_check.h"
#include "themes/web/theme_manifest.h"

namespace vl1::fuzz {

namespace {

constexpr const char* target = "manifest";

const theme_versions& versions_known_before()
{
    static const theme_versions known{{0x00000001, 3}, {0x0a1b2c3d, 0}, {0xffffffff, INT_MAX}};
    return known;
}

std::string manifest_text(const theme_versions& versions)
{
    std::string text = "{";
    for (const auto& [uid, version] : versions)
        text += fmt::format("{}\"{:08x}\": {}", text.size() > 1 ? ", " : "", uid, version);
    return text + "}";
}

}  // namespace

int fuzz_manifest(const uint8_t* data, std::size_t size)
{
    prepare_process();
    const std::string_view body(reinterpret_cast<const char*>(data), size);
    theme_versions versions = versions_known_before();
    std::string problem;
    if (!parse_theme_manifest(body, versions, problem)) {
        FUZZ_REQUIRE(target, !problem.empty(), "a refused manifest comes without a reason");
        FUZZ_REQUIRE(target, versions == versions_known_before(), "a refused manifest changed the known versions");
        return 0;
    }
    for (const auto& [uid, version] : versions)
        FUZZ_REQUIRE(target, uid != 0 && version >= 0, fmt::format("accepted uid {:08x} with version {}", uid, version));

    theme_versions again{{0x12345678, 1}};
    FUZZ_REQUIRE(target, parse_theme_manifest(manifest_text(versions), again, problem),
                 "the accepted versions written as a manifest are refused: " + problem);
    FUZZ_REQUIRE(target, again == versions, "the accepted versions written as a manifest read differently");
    return 0;
}

}  // namespace vl1::fuzz
