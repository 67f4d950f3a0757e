// Writing an output so that no partly written file ever stands under its final name: the
// file is written into a private temporary folder beside the final path, under the final
// file name (so formats chosen by extension, and titles taken from the name, come out the
// same), and renamed into place only when it is complete.
#pragma once

#include "tools/common/stop_signals.h"

#include <filesystem>
#include <memory>

namespace vl1::render_tool {

/// Throws render_error (output) unless the folder `path` would be written to exists, is a
/// folder and lets this process create a file in it.
void check_output_folder(const std::filesystem::path& path);

class pending_output {
public:
    /// Makes the temporary folder; throws render_error (output) when that fails.
    explicit pending_output(std::filesystem::path final_path);
    /// Removes the temporary folder and whatever is in it, unless committed.
    ~pending_output();
    pending_output(const pending_output&) = delete;
    pending_output& operator=(const pending_output&) = delete;

    /// Where the writer writes.
    const std::filesystem::path& temp_path() const { return temporary_path; }
    /// Renames the written file to the final path, replacing what stands there; throws
    /// render_error (output) when the rename fails.
    void commit();

private:
    std::filesystem::path destination;
    std::filesystem::path temp_folder;
    std::filesystem::path temporary_path;
    std::unique_ptr<vl1::tools::partial_output> partial;  // removed if a signal ends the process
};

}  // namespace vl1::render_tool
