// What the host holds of an effect instance: the address of this record, in the instance's
// "OfxPropInstanceData". Every action goes from it over the token through the instance table
// to the component, so a stale or foreign record ends in a logged failure, not a dangling
// pointer.
#pragma once

#include <atomic>
#include <cstdint>

namespace vl1 {

struct ofx_instance_data {
    uint64_t token = 0;               // key of the instance in the instance table
    std::atomic<bool> open_gui{false};  // set by "Open GUI", consumed by the next render
};

}  // namespace vl1
