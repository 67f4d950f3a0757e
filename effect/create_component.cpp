// The factory the adapter creates every component through. Until the grading effect joins,
// the bundle carries the bare component: no parameters, pixels pass through unchanged.
#include "framework/ccomponent.h"
#include "framework/component_factory.h"

namespace vl1 {

icomponent_v1* create_ccomponent()
{
    return new ccomponent_v1();
}

}  // namespace vl1
