// The host's suites as fetched at "OfxActionLoad". Only the image-effect, property and
// parameter suites are called; the other four are kept and nothing more.
#pragma once

#include "ofx/api/ofx_core.h"
#include "ofx/api/ofx_image_effect.h"
#include "ofx/api/ofx_memory.h"
#include "ofx/api/ofx_message.h"
#include "ofx/api/ofx_multithread.h"
#include "ofx/api/ofx_param.h"
#include "ofx/api/ofx_property.h"

namespace vl1 {

struct host_suites {
    const OfxImageEffectSuiteV1* effect = nullptr;
    const OfxPropertySuiteV1* property = nullptr;
    const OfxParameterSuiteV1* parameter = nullptr;
    const OfxMemorySuiteV1* memory = nullptr;
    const OfxMultiThreadSuiteV1* multi_thread = nullptr;
    const OfxMessageSuiteV1* message = nullptr;
    const void* interact = nullptr;

    /// The three suites every action after "OfxActionLoad" relies on.
    bool has_required() const { return effect && property && parameter; }
};

}  // namespace vl1
