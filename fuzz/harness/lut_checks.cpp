#include "fuzz/harness/lut_checks.h"

#include <stdexcept>
#include <string>

#include <fmt/format.h>

#include "color/lut_reader_3dl.h"
#include "color/lut_reader_cube.h"
#include "fuzz/property_check.h"

namespace vl1::fuzz {

namespace {

struct format_facts {
    const char* file_name;
    const char* message_start;
};

format_facts facts_of(lut_file_type type)
{
    if (type == lut_file_type::cube)
        return {"fuzz.cube", "ERROR while loading CUBE LUT: "};
    return {"fuzz.3dl", "ERROR while loading 3DL LUT: "};
}

// True if the text reads; a refusal must carry the readers' message shape.
bool read_with_format_reader(const char* target, std::string_view text, lut_file_type type)
{
    const format_facts facts = facts_of(type);
    try {
        const lut_argb_variable lut =
            type == lut_file_type::cube ? read_lut_cube(text, facts.file_name) : read_lut_3dl(text, facts.file_name);
        FUZZ_REQUIRE(target, lut.edge >= 2, fmt::format("a table of edge {} was read", lut.edge));
        FUZZ_REQUIRE(target, lut.data.size() == lut_entry_count(lut.edge),
                     fmt::format("edge {} but {} cells", lut.edge, lut.data.size()));
        for (std::size_t i = 0; i < lut.data.size(); ++i)
            FUZZ_REQUIRE(target, lut.data[i].a == 1.0f, fmt::format("cell {} has alpha {}", i, lut.data[i].a));
        return true;
    } catch (const std::logic_error& e) {
        const std::string message = e.what();
        FUZZ_REQUIRE(target, message.starts_with(facts.message_start) && message.find(facts.file_name) != std::string::npos,
                     "a read error of another shape: " + message);
        return false;
    }
}

bool read_through_loader(const char* target, std::string_view text, lut_file_type type)
{
    try {
        const auto lut = load_lut_from_memory(text, facts_of(type).file_name);
        FUZZ_REQUIRE(target, lut != nullptr, "load_lut_from_memory gave no table for a known type");
        FUZZ_REQUIRE(target, lut->data.size() == lut_argb<32>::entry_count,
                     fmt::format("a loaded table of {} cells", lut->data.size()));
        return true;
    } catch (const std::logic_error&) {
        return false;
    }
}

}  // namespace

void check_lut_text(const char* target, std::string_view text, lut_file_type type)
{
    const bool read = read_with_format_reader(target, text, type);
    const bool loaded = read_through_loader(target, text, type);
    FUZZ_REQUIRE(target, read == loaded,
                 fmt::format("the format reader {} the text, load_lut_from_memory {} it", read ? "reads" : "refuses",
                             loaded ? "reads" : "refuses"));
}

}  // namespace vl1::fuzz
