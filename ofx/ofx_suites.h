// The host's suites as fetched at "OfxActionLoad". The image-effect, property and parameter
// suites do the work; of the multi-thread suite only the number of CPUs is asked, and the
// memory, message and interact suites are kept and nothing more.
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

    /// The threads the host lets one render take (multiThreadNumCPUs); 0 when the host has no
    /// multi-thread suite or gives no usable answer, which leaves the choice to us.
    unsigned thread_limit() const
    {
        unsigned cpus = 0;
        if (multi_thread == nullptr || multi_thread->multiThreadNumCPUs == nullptr ||
            multi_thread->multiThreadNumCPUs(&cpus) != kOfxStatOK)
            return 0;
        return cpus;
    }
};

}  // namespace vl1
