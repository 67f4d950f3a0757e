// Preset files are JSON in the user's folder, which the user may edit, copy from elsewhere
// or break. The cheap check of the preset list agrees with the full read; a preset that
// can't be applied changes nothing; a rejection comes with a reason.
#include <filesystem>
#include <string>

#include <fmt/format.h>

#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/fuzz_component.h"
#include "fuzz/harness/fuzz_process.h"
#include "fuzz/harness/scratch_dir.h"
#include "fuzz/property_check.h"
#include "presets/preset_document.h"
#include "presets/preset_manager.h"
#include "presets/preset_reader.h"

namespace vl1::fuzz {

namespace {

constexpr const char* target = "preset";

// What load_preset must do with the document: apply it (true) or leave the component alone.
struct preset_verdict {
    bool applies_parameters = false;
    bool applies_state = false;
};

preset_verdict judge(bool document_read, const rapidjson::Document& document, const std::string& component_name)
{
    preset_verdict verdict;
    if (!document_read || !preset_plugin_name_matches(document, component_name) ||
        preset_parameter_list(document) == nullptr)
        return verdict;
    verdict.applies_parameters = true;
    std::vector<uint8_t> state;
    verdict.applies_state = read_preset_state(document, state);
    return verdict;
}

}  // namespace

int fuzz_preset(const uint8_t* data, std::size_t size)
{
    prepare_process();
    const std::filesystem::path path = scratch_dir() / "fuzz.json";
    write_scratch_file(path, data, size);

    std::string check_problem;
    const bool checked = check_preset_file(path.string(), check_problem);
    rapidjson::Document document;
    std::string read_problem;
    const bool read = read_preset_document(path.string(), document, read_problem);
    FUZZ_REQUIRE(target, checked == read,
                 fmt::format("the list's check says '{}', the full read says '{}'", checked ? "readable" : check_problem,
                             read ? "readable" : read_problem));
    FUZZ_REQUIRE(target, checked || !check_problem.empty(), "the list's check refuses without a reason");
    FUZZ_REQUIRE(target, read || !read_problem.empty(), "the full read refuses without a reason");

    const auto fx = make_effect_component();
    preset_manager presets(fx);
    std::string reason;
    if (presets.is_preset_rejected(path.string(), reason))
        FUZZ_REQUIRE(target, !reason.empty(), "a rejected preset comes without a reason");

    const preset_verdict verdict = judge(read, document, fx->get_name());
    const std::vector<uint8_t> before = fx->get_state();
    const bool loaded = presets.load_preset(path.string());
    FUZZ_REQUIRE(target, loaded == verdict.applies_state,
                 fmt::format("load_preset says {} for a preset whose state {} applicable", loaded,
                             verdict.applies_state ? "is" : "is not"));
    if (!verdict.applies_parameters)
        FUZZ_REQUIRE(target, fx->get_state() == before, "a preset that doesn't apply changed the component");
    return 0;
}

}  // namespace vl1::fuzz
