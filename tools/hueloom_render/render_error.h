// The exit codes of hueloom-render and the one exception type of its inner code: a message
// for the user and the code the command ends with. Thrown inside, caught once at the border
// (run_render_command), never past main().
#pragma once

#include <stdexcept>
#include <string>

namespace vl1::render_tool {

enum class exit_code : int {
    ok = 0,
    frame_failed = 1,  // the plug-in refused a frame, or a frame couldn't be written
    usage = 2,         // command line, parameter names and values, unavailable options
    input = 3,         // an input image or state file is missing or unreadable
    plugin = 4,        // the plug-in can't be found, loaded or instantiated
    output = 5,        // an output folder or file can't be written
    interrupted = 130,  // SIGINT between two frames
    terminated = 143    // SIGTERM likewise
};

class render_error : public std::runtime_error {
public:
    render_error(exit_code code, const std::string& message) : std::runtime_error(message), exit_status(code) {}
    exit_code code() const { return exit_status; }

private:
    exit_code exit_status;
};

}  // namespace vl1::render_tool
