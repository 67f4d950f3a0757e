// Running a command-line tool of the build as a subprocess, as its users do.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace hueloom_test {

struct process_result {
    /// The exit code; -1 if the process couldn't be started or didn't exit normally.
    int exit_code = -1;
    std::string out;
    std::string err;
};

/// Runs `program` with `arguments`, the environment of the test with HOME set to `home`, no
/// standard input, and its standard output and error collected; waits for it to end.
process_result run_process(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                           const std::filesystem::path& home);

}  // namespace hueloom_test
