#include "fuzz/fuzz_targets.h"

#include <array>

namespace vl1::fuzz {

std::span<const fuzz_target> all_fuzz_targets()
{
    static constexpr std::array<fuzz_target, 9> targets{{
        {"theme_file", fuzz_theme_file},
        {"theme_state", fuzz_theme_state},
        {"effect_state", fuzz_effect_state},
        {"state_text", fuzz_state_text},
        {"lut_cube", fuzz_lut_cube},
        {"lut_3dl", fuzz_lut_3dl},
        {"theme_folder", fuzz_theme_folder},
        {"manifest", fuzz_manifest},
        {"preset", fuzz_preset},
    }};
    return targets;
}

}  // namespace vl1::fuzz
