// The effect's saved state comes from the host's project and from preset files. Whatever its
// length or content: a rejected or refused state changes nothing, and a restored one saves
// again to a state that opens the same.
//
// The input is set as it is, as the host would set it. An input shorter than a whole state
// is also taken as the head of one, repeated to the whole size (see harness/fuzz_bytes.h),
// and set as a preset would set it or as the host would, by the input's length.
#include <vector>

#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/fuzz_bytes.h"
#include "fuzz/harness/fuzz_component.h"
#include "fuzz/harness/fuzz_process.h"
#include "fuzz/harness/state_checks.h"

namespace vl1::fuzz {

int fuzz_effect_state(const uint8_t* data, std::size_t size)
{
    prepare_process();
    check_state_load("effect_state", std::vector<uint8_t>(data, data + size), true, true);

    static const std::size_t whole_state = make_effect_component()->get_state_size();
    if (size > 0 && size < whole_state)
        check_state_load("effect_state", repeat_to_size(data, size, whole_state), size % 2 == 0, true);
    return 0;
}

}  // namespace vl1::fuzz
