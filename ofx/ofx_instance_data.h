// What the host holds of an effect instance: the address of this record, in the instance's
// "OfxPropInstanceData". Every action looks that address up in the instance table before it
// reads through it, so a stale or foreign record ends in a failure, not a dangling pointer.
#pragma once

#include <atomic>

namespace vl1 {

struct ofx_instance_data {
    std::atomic<bool> open_gui{false};  // set by "Open GUI", consumed by the next render
};

}  // namespace vl1
