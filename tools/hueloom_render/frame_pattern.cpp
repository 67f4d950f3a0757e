#include "tools/hueloom_render/frame_pattern.h"

#include "framework/string_helpers.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <set>

namespace vl1::render_tool {

namespace {

namespace fs = std::filesystem;

render_error bad_pattern(const std::string& path, const std::string& why)
{
    return render_error(exit_code::usage, fmt::format("{}: {}", path, why));
}

// Length of a printf frame token at `pos` ('%' there): "%d" or "%0Nd"/"%Nd"; 0 if none.
std::size_t printf_token_length(const std::string& path, std::size_t pos, int& width)
{
    std::size_t i = pos + 1;
    while (i < path.size() && std::isdigit(static_cast<unsigned char>(path[i])))
        ++i;
    if (i >= path.size() || path[i] != 'd')
        return 0;
    const std::string digits = path.substr(pos + 1, i - pos - 1);
    if (digits.size() > 2)
        return 0;
    width = digits.empty() ? 1 : std::stoi(digits);
    if (width > 9)
        return 0;
    return i + 1 - pos;
}

bool parse_int(const std::string& text, int& out)
{
    if (text.empty() || !std::isdigit(static_cast<unsigned char>(text[0])))
        return false;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), out);
    return ec == std::errc() && end == text.data() + text.size() && out <= max_frame_number;
}

}  // namespace

frame_pattern::frame_pattern(const std::string& path)
{
    std::string literal;  // the path with %% already reduced, up to the token
    for (std::size_t i = 0; i < path.size();) {
        std::size_t length = 0;
        int width = 0;
        if (path[i] == '#') {
            length = path.find_first_not_of('#', i);
            length = (length == std::string::npos ? path.size() : length) - i;
            width = static_cast<int>(length);
        } else if (path[i] == '%') {
            if (i + 1 < path.size() && path[i + 1] == '%') {
                literal += '%';
                i += 2;
                continue;
            }
            length = printf_token_length(path, i, width);
            if (length == 0)
                throw bad_pattern(path, "a '%' must be %d, %0Nd (N up to 9) or %%");
        }
        if (length == 0) {
            literal += path[i++];
            continue;
        }
        if (has_frame_number)
            throw bad_pattern(path, "more than one frame number (#### or %04d) in the name");
        if (width > 9)
            throw bad_pattern(path, "a frame number of more than 9 digits");
        has_frame_number = true;
        digit_width = width;
        prefix = literal;
        literal.clear();
        i += length;
    }
    if (has_frame_number)
        suffix = literal;
    else
        prefix = literal;
}

std::string frame_pattern::path_for(int frame) const
{
    if (!has_frame_number)
        return prefix;
    return fmt::format("{}{:0{}d}{}", prefix, frame, digit_width, suffix);
}

std::vector<int> frame_pattern::existing_frames() const
{
    std::vector<int> frames;
    // Only a token in the file name is searched for; one in a folder name would need a walk.
    if (!has_frame_number || suffix.find('/') != std::string::npos)
        return frames;
    const auto slash = prefix.rfind('/');
    const fs::path folder = slash == std::string::npos ? fs::path(".") : fs::path(prefix.substr(0, slash + 1));
    const std::string head = slash == std::string::npos ? prefix : prefix.substr(slash + 1);
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (name.size() < head.size() + suffix.size() + 1)
            continue;
        if (name.compare(0, head.size(), head) != 0)
            continue;
        if (name.compare(name.size() - suffix.size(), suffix.size(), suffix) != 0)
            continue;
        int frame = 0;
        if (!parse_int(name.substr(head.size(), name.size() - head.size() - suffix.size()), frame))
            continue;
        // Only names this pattern would write: "shot.0007.exr" for ####, not "shot.7.exr".
        if (fs::path(path_for(frame)).filename().string() == name)
            frames.push_back(frame);
    }
    std::sort(frames.begin(), frames.end());
    return frames;
}

std::vector<int> parse_frame_list(const std::string& text)
{
    std::vector<int> frames;
    std::set<int> seen;
    const auto fail = [&](const std::string& part, const std::string& why) {
        return render_error(exit_code::usage, fmt::format("--frames {}: \"{}\" {}", text, part, why));
    };
    if (vl1::trim_copy(text).empty())
        throw render_error(exit_code::usage, "--frames is empty");
    for (std::string part : vl1::split(text, ',')) {
        part = vl1::trim_copy(part);
        int first = 0, last = 0, step = 1;
        const auto dash = part.find('-');
        const auto x = part.find('x');
        if (dash == std::string::npos) {
            if (x != std::string::npos || !parse_int(part, first))
                throw fail(part, "is not a frame, a range A-B or A-BxSTEP");
            last = first;
        } else {
            const std::string a = part.substr(0, dash);
            const std::string b = part.substr(dash + 1, x == std::string::npos ? std::string::npos : x - dash - 1);
            if (!parse_int(a, first) || !parse_int(b, last))
                throw fail(part, "is not a frame, a range A-B or A-BxSTEP");
            if (x != std::string::npos && (!parse_int(part.substr(x + 1), step) || step < 1)) {
                throw fail(part, "has a step that isn't a whole number of at least 1");
            }
            if (last < first)
                throw fail(part, "runs backwards");
        }
        for (long long f = first; f <= last; f += step) {
            if (seen.insert(static_cast<int>(f)).second)
                frames.push_back(static_cast<int>(f));
            if (frames.size() > static_cast<std::size_t>(max_frame_count)) {
                throw fail(part, fmt::format("makes more than {} frames", max_frame_count));
            }
        }
    }
    return frames;
}

}  // namespace vl1::render_tool
