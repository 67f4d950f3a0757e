#include "tools/hueloom_render/state_file.h"

#include "framework/io/base64.h"
#include "framework/io/read_bounded_file.h"
#include "framework/io/state_text.h"
#include "framework/io/write_file_atomically.h"
#include "framework/string_helpers.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>

#include <cstring>
#include <sstream>

namespace vl1::render_tool {

namespace {

namespace fs = std::filesystem;

/// A state file is a line of base64 and a few settings; anything near this size is no state file.
constexpr std::uintmax_t max_state_file_bytes = 64ull << 20;

render_error input_error(const fs::path& path, const std::string& why)
{
    return render_error(exit_code::input, fmt::format("state file {}: {}", path.string(), why));
}

std::string describe_bad_base64(const std::string& text)
{
    const auto bad = text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=");
    if (bad != std::string::npos) {
        return fmt::format("the state text has '{}' at column {}, which base64 doesn't use", text[bad], bad + 1);
    }
    return fmt::format("the state text of {} characters is no complete base64", text.size());
}

}  // namespace

bool is_state_text(const std::string& packed_or_plain)
{
    // The plug-in writes the packed form: a prefix, then base64 as before.
    const bool packed = packed_or_plain.rfind(vl1::packed_state_prefix, 0) == 0;
    const std::string text = packed ? packed_or_plain.substr(std::strlen(vl1::packed_state_prefix)) : packed_or_plain;
    std::vector<uint8_t> bytes;
    return !text.empty() && vl1::from_base64(text, bytes);
}

state_file read_state_file(const fs::path& path)
{
    std::error_code ec;
    if (!fs::exists(path, ec))
        throw input_error(path, "the file does not exist");
    std::string content;
    std::string problem;
    if (!vl1::read_bounded_file(path, max_state_file_bytes, content, problem))
        throw input_error(path, problem);
    if (vl1::trim_copy(content).empty())
        throw input_error(path, "the file is empty");

    std::istringstream lines(content);
    state_file state;
    std::string line;
    std::getline(lines, line);
    state.state_text = vl1::trim_copy(line);
    if (!state.state_text.empty() && !is_state_text(state.state_text)) {
        throw input_error(path, describe_bad_base64(state.state_text));
    }
    for (int number = 2; std::getline(lines, line); ++number) {
        const std::string setting = vl1::trim_copy(line);
        if (setting.empty() || setting[0] == '#')
            continue;
        if (setting.find('=') == std::string::npos) {
            throw input_error(path, fmt::format("line {} \"{}\" is no NAME=VALUE setting", number, setting));
        }
        state.settings.push_back(setting);
    }
    return state;
}

void write_state_file(const fs::path& path, const state_file& state)
{
    if (path.filename().empty())
        throw render_error(exit_code::output, fmt::format("cannot write {}: the path names no file", path.string()));
    std::string text = state.state_text + '\n';
    for (const auto& s : state.settings)
        text += s + '\n';
    std::string problem;
    if (!vl1::write_file_atomically(path, text, problem))
        throw render_error(exit_code::output, problem);
}

}  // namespace vl1::render_tool
