// Parameters exist twice: as objects in the component and as OFX parameters at the host,
// where they are keyed, animated and saved. These functions define the host's side from the
// component's list and carry values both ways. The host's value wins when the adapter reads;
// only what the component changed on its own account goes back.
#pragma once

#include <memory>

#include "framework/icomponent.h"
#include "ofx/ofx_suites.h"

namespace vl1 {

/// Not-a-number: no particular time. Functions called with it use the untimed suite calls.
double no_particular_time();

/// Defines "Open GUI", "binaryStateParam" and one host parameter per component parameter,
/// in list order. Runs on the prototype during "OfxImageEffectActionDescribeInContext".
void DefineParameters(const host_suites& suites, OfxImageEffectHandle effect,
                      const std::shared_ptr<icomponent_v1>& component);

/// Reads every parameter from the host (at `time`, or untimed) into the component, marked as
/// coming from the host, then pushes whatever the component queued meanwhile.
void SetAllParamsToComponent(const host_suites& suites, double time, OfxImageEffectHandle effect,
                             const std::shared_ptr<icomponent_v1>& component);

/// Writes the parameters the component changed itself to the host: as a key at `time` if the
/// parameter is animated and `time` is a number, else as its constant value. Values the host
/// refuses stay queued, and SetAllParamsToComponent leaves them alone until they are written.
/// False if anything is still waiting.
bool PushDirtyParamsToHost(const host_suites& suites, double time, OfxImageEffectHandle effect,
                           const std::shared_ptr<icomponent_v1>& component);

}  // namespace vl1
