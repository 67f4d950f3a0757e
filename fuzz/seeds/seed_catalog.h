// Seeds that are made rather than kept: binary records of megabytes, and inputs that only the
// plug-in's own writers produce faithfully (a state blob, its base64 text, a preset file).
// The seed maker writes them as files for libFuzzer; the regression test runs them directly.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vl1::fuzz {

struct named_seed {
    std::string name;
    std::vector<uint8_t> bytes;
};

/// The targets that have made seeds.
std::vector<std::string_view> targets_with_generated_seeds();

/// The made seeds of `target` (a name of all_fuzz_targets()); none for a target whose seeds
/// are all kept as files. Makes effect components, so HOME must point at a private folder.
std::vector<named_seed> generated_seeds(std::string_view target);

}  // namespace vl1::fuzz
