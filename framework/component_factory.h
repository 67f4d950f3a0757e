// The one factory through which the host adapter gets the effect.
#pragma once

#include "framework/icomponent.h"

namespace vl1 {

/// Makes a new instance of the plug-in's effect; the caller owns it (wrap it in a
/// shared_ptr at once, the component relies on shared_from_this). Defined by the effect
/// library, not by the framework.
icomponent_v1* create_ccomponent();

}  // namespace vl1
