// Theme files come from the app-data folder, from the theme server and from the bundle. A
// theme file that reads must be one that the writer can store again: the vault rewrites
// themes it read, and the round trip must not change a bit of them.
#include <sstream>
#include <string>

#include <fmt/format.h>

#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/fuzz_process.h"
#include "fuzz/harness/fuzz_themes.h"
#include "fuzz/harness/theme_compare.h"
#include "fuzz/property_check.h"
#include "themes/hueloom_theme_file_serializer_v1.h"

namespace vl1::fuzz {

namespace {

constexpr const char* target = "theme_file";
using serializer = hueloom_theme_file_serializer_v1;

// Reading into a theme that already holds something: refused input leaves it as it was;
// accepted input replaces the scalars and appends the wheel LUTs.
void check_read_over_held_theme(std::span<const uint8_t> bytes, const hueloom_theme_v1& fresh_read, bool accepted)
{
    const hueloom_theme_v1& held = theme_held_before_read();
    hueloom_theme_v1 theme = held;
    std::string problem;
    const bool read = serializer::read_theme_from_bytes(theme, bytes, problem);
    FUZZ_REQUIRE(target, read == accepted, "reading over a held theme decides otherwise than reading into a new one");
    if (!read) {
        const std::string difference = first_theme_difference(theme, held);
        FUZZ_REQUIRE(target, difference.empty(), "a refused file changed the theme: " + difference);
        return;
    }
    FUZZ_REQUIRE(target, theme.luts.size() == held.luts.size() + fresh_read.luts.size(),
                 fmt::format("{} wheel LUTs after appending {} to {}", theme.luts.size(), fresh_read.luts.size(),
                             held.luts.size()));
    FUZZ_REQUIRE(target, theme.uid == fresh_read.uid && theme.version == fresh_read.version &&
                             theme.name == fresh_read.name && theme.background_data == fresh_read.background_data,
                 "reading over a held theme kept some of its uid, version, name or background");
}

}  // namespace

int fuzz_theme_file(const uint8_t* data, std::size_t size)
{
    prepare_process();
    const std::span<const uint8_t> bytes(data, size);

    hueloom_theme_v1 theme;
    std::string problem;
    const bool accepted = serializer::read_theme_from_bytes(theme, bytes, problem);
    if (!accepted)
        FUZZ_REQUIRE(target, !problem.empty(), "a refused theme file comes without a reason");
    check_read_over_held_theme(bytes, theme, accepted);

    // The stream reader reads what the byte reader reads.
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size), std::ios::binary);
    hueloom_theme_v1 from_stream;
    FUZZ_REQUIRE(target, serializer::read_theme_from_stream(from_stream, in) == accepted,
                 "the stream reader decides otherwise than the byte reader");
    if (!accepted)
        return 0;
    const std::string stream_difference = first_theme_difference(from_stream, theme);
    FUZZ_REQUIRE(target, stream_difference.empty(), "the stream reader read another theme: " + stream_difference);

    std::ostringstream out(std::ios::binary);
    FUZZ_REQUIRE(target, serializer::write_theme_to_stream(theme, out), "a theme that was read can't be written");
    const std::string written = out.str();
    hueloom_theme_v1 again;
    FUZZ_REQUIRE(target,
                 serializer::read_theme_from_bytes(
                     again, std::span(reinterpret_cast<const uint8_t*>(written.data()), written.size()), problem),
                 "the written theme file is refused: " + problem);
    const std::string difference = first_theme_difference(again, theme);
    FUZZ_REQUIRE(target, difference.empty(), "the written theme file reads differently: " + difference);
    return 0;
}

}  // namespace vl1::fuzz
