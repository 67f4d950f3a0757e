// "OfxMessageSuite" version 1: formats with vsnprintf, records every message in the current
// host's state for tests, and echoes it to stderr when asked. A question is answered with
// host_state::question_reply, any other message with kOfxStatOK.
#pragma once

#include "ofx/api/ofx_message.h"

namespace vl1::ofxhost {

const OfxMessageSuiteV1* message_suite();

/// The interact suite: the plug-in only fetches it, so an opaque record is all there is.
const void* interact_suite();

}  // namespace vl1::ofxhost
