// The theme state record travels inside the host's project, so it is as foreign as any file.
// A refused record leaves the theme alone; an accepted one writes back to a record that
// reads the same.
//
// The input is read as it is; an input shorter than a record is also read as the head of
// one, repeated to the record's size (see harness/fuzz_bytes.h).
#include <string>

#include <fmt/format.h>

#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/fuzz_bytes.h"
#include "fuzz/harness/fuzz_process.h"
#include "fuzz/harness/fuzz_themes.h"
#include "fuzz/harness/theme_compare.h"
#include "fuzz/property_check.h"
#include "themes/hueloom_theme_state_serializer_v1.h"

namespace vl1::fuzz {

namespace {

constexpr const char* target = "theme_state";
using serializer = hueloom_theme_state_serializer_v1;

// Where a written record is put: any offset, as inside the effect's state blob.
constexpr unsigned long write_offset = 5;

void check_round_trip(const hueloom_theme_v1& theme)
{
    std::vector<uint8_t> blob{1, 2, 3};
    if (theme.luts.size() > theme_state_max_wheel_luts) {
        // Older formats keep the post-processing slot as an eleventh wheel LUT, which no
        // record of the current format has room for.
        FUZZ_REQUIRE(target, !serializer::write_theme_to_vector(theme, blob, write_offset),
                     fmt::format("a theme of {} wheel LUTs was written", theme.luts.size()));
        FUZZ_REQUIRE(target, blob == std::vector<uint8_t>({1, 2, 3}), "a refused write changed the vector");
        return;
    }
    FUZZ_REQUIRE(target, serializer::write_theme_to_vector(theme, blob, write_offset),
                 fmt::format("a theme read from a record can't be written ({} wheel LUTs)", theme.luts.size()));
    FUZZ_REQUIRE(target, blob.size() == write_offset + theme_state_entry_bytes,
                 fmt::format("the written vector has {} bytes", blob.size()));
    hueloom_theme_v1 again;
    FUZZ_REQUIRE(target, serializer::read_theme_from_vector(again, blob, write_offset), "the written record is refused");
    const std::string difference = first_theme_difference(again, theme);
    FUZZ_REQUIRE(target, difference.empty(), "the written record reads differently: " + difference);
}

void check_record(const std::vector<uint8_t>& blob, unsigned long offset)
{
    const hueloom_theme_v1& held = theme_held_before_read();
    hueloom_theme_v1 theme = held;
    if (!serializer::read_theme_from_vector(theme, blob, offset)) {
        const std::string difference = first_theme_difference(theme, held);
        FUZZ_REQUIRE(target, difference.empty(), "a refused record changed the theme: " + difference);
        return;
    }
    hueloom_theme_v1 fresh;
    FUZZ_REQUIRE(target, serializer::read_theme_from_vector(fresh, blob, offset), "a second read refuses the record");
    FUZZ_REQUIRE(target, fresh.version == 0, fmt::format("a record read as version {}", fresh.version));
    FUZZ_REQUIRE(target, fresh.name.size() <= theme_state_name_max_bytes,
                 fmt::format("a record read with a name of {} bytes", fresh.name.size()));
    FUZZ_REQUIRE(target, theme.background_data == held.background_data, "reading a record replaced the background");
    FUZZ_REQUIRE(target, theme.luts.size() == held.luts.size() + fresh.luts.size(),
                 "reading over a held theme did not append the wheel LUTs");
    check_round_trip(fresh);
}

}  // namespace

int fuzz_theme_state(const uint8_t* data, std::size_t size)
{
    prepare_process();
    const std::vector<uint8_t> raw(data, data + size);
    check_record(raw, 0);

    hueloom_theme_v1 theme = theme_held_before_read();
    FUZZ_REQUIRE(target, !serializer::read_theme_from_vector(theme, raw, raw.size() + 1),
                 "an offset past the end was read");

    if (size < theme_state_entry_bytes)
        check_record(repeat_to_size(data, size, theme_state_entry_bytes), 0);
    return 0;
}

}  // namespace vl1::fuzz
