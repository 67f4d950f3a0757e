#include "tools/hueloom_render/state_file.h"

#include "framework/state_text.h"
#include "framework/string_helpers.h"
#include "tools/hueloom_render/output_file.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>
#include <sodium.h>

#include <cstring>
#include <fstream>
#include <sstream>

namespace hueloom_render {

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
    if (text.empty() || text.size() % 4 != 0) return false;
    if (sodium_init() < 0) return false;
    std::vector<unsigned char> bytes(text.size() / 4 * 3);
    std::size_t decoded = 0;
    const char* end = nullptr;
    return sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &decoded, &end,
                             sodium_base64_VARIANT_ORIGINAL) == 0 &&
           end == text.data() + text.size();
}

state_file read_state_file(const fs::path& path)
{
    std::error_code ec;
    if (!fs::exists(path, ec)) throw input_error(path, "the file does not exist");
    if (!fs::is_regular_file(path, ec)) throw input_error(path, "not a regular file");
    if (fs::file_size(path, ec) > max_state_file_bytes) throw input_error(path, "larger than any state text");
    std::ifstream in(path, std::ios::binary);
    if (!in) throw input_error(path, "cannot be opened");
    std::stringstream buffer;
    buffer << in.rdbuf();
    const std::string content = buffer.str();
    if (vl1::trim_copy(content).empty()) throw input_error(path, "the file is empty");

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
        if (setting.empty() || setting[0] == '#') continue;
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
    pending_output pending(path);
    {
        std::ofstream out(pending.temp_path(), std::ios::binary);
        out << state.state_text << '\n';
        for (const auto& s : state.settings) out << s << '\n';
        out.close();
        if (!out) throw render_error(exit_code::output, fmt::format("cannot write {}", path.string()));
    }
    pending.commit();
}

}  // namespace hueloom_render
