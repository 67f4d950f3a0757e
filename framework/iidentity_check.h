// A third, optional face of a component: whether its result, for the parameter values it
// holds now, is its source unchanged. Found through query_interface("iidentity_check_v1"); a
// host adapter that finds it can let the host pass the source through, values outside 0..1
// and all, instead of rendering. A component without it is always rendered.
#pragma once

#include "framework/iobject.h"
#include "framework/uid.h"

namespace vl1 {

class iidentity_check_v1 : public iobject {
public:
    static constexpr uid ifc_id{"iidentity_check_v1"};

    /// True only when the result is exactly the source: an answer of false is always safe.
    /// Called on the host's render threads, never at the same time as a render of the same
    /// instance's parameters changing.
    virtual bool is_identity() = 0;
};

}  // namespace vl1
