#include "tests/host/host_test_support.h"

namespace host_test {

std::filesystem::path fixture_dir() { return HOST_FIXTURE_DIR; }

std::filesystem::path broken_dir() { return HOST_BROKEN_DIR; }

std::filesystem::path fixture_bundle() { return fixture_dir() / "HostFixture.ofx.bundle"; }

host_fixture::instance_record& record_of(vl1::ofxhost::instance& inst)
{
    auto* record = static_cast<host_fixture::instance_record*>(inst.instance_data());
    if (record == nullptr) throw std::runtime_error("the fixture set no instance data");
    return *record;
}

}  // namespace host_test
