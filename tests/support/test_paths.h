// Paths that tests share: the built plug-in folder, the test data and a private HOME.
#pragma once

#include <filesystem>
#include <string>

namespace hueloom_test {

/// The folder that holds Hueloom.ofx.bundle in the build tree.
std::filesystem::path plugin_dir();

/// tests/data in the source tree.
std::filesystem::path data_dir();

/// The temporary HOME this test process runs with (created by the test main).
std::filesystem::path home_dir();

/// A fresh, empty folder below the temporary HOME; each call gives a new one.
std::filesystem::path make_temp_dir(const std::string& stem = "tmp");

}  // namespace hueloom_test
