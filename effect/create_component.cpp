// The factory the adapter creates every component through: the one place where the OFX
// adapter meets the effect.
#include "effect/hueloom.h"
#include "framework/component_factory.h"

namespace vl1 {

icomponent_v1* create_ccomponent()
{
    return new hueloom();
}

}  // namespace vl1
