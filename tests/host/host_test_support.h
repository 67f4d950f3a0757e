// Shared pieces of the host's tests: where the fixture bundles are, and a test base that has
// a host with the fixture plug-in loaded and described.
#pragma once

#include "host/host.h"
#include "ofx/api/ofx_image_effect.h"
#include "ofx/api/ofx_memory.h"
#include "ofx/api/ofx_message.h"
#include "ofx/api/ofx_multithread.h"
#include "ofx/api/ofx_param.h"
#include "ofx/api/ofx_property.h"
#include "tests/host/fixture_plugin/fixture_instance.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

namespace host_test {

std::filesystem::path fixture_dir();
std::filesystem::path broken_dir();
std::filesystem::path fixture_bundle();

/// The fixture plug-in's record behind an instance.
host_fixture::instance_record& record_of(vl1::ofxhost::instance& inst);

class fixture_test : public ::testing::Test {
protected:
    vl1::ofxhost::host h;
    // Loaded here rather than in SetUp, so derived fixtures may create instances in their
    // own member initialisers.
    vl1::ofxhost::plugin plugin = loaded(h.load_plugin(fixture_bundle(), 0));

    static vl1::ofxhost::plugin loaded(vl1::ofxhost::plugin p)
    {
        if (p.load() != kOfxStatOK) throw std::runtime_error("the fixture plug-in refused kOfxActionLoad");
        return p;
    }

    vl1::ofxhost::instance filter_instance(const vl1::ofxhost::initial_values& values = {})
    {
        return plugin.create_instance(kOfxImageEffectContextFilter, values);
    }
};

}  // namespace host_test
