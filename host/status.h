// Status names for messages, and the one exception type of the host's C++ interface.
#pragma once

#include "ofx/api/ofx_core.h"

#include <stdexcept>
#include <string>

namespace vl1::ofxhost {

/// "kOfxStatErrUnknown" for 3 and so on; "status 42" for a number that isn't an OFX status.
std::string status_name(OfxStatus status);

/// Thrown by the C++ interface (loading, creating instances, looking up names). Never crosses
/// into a plug-in: suite functions catch everything and answer with a status.
class host_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace vl1::ofxhost
