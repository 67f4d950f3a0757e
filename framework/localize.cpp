#include "framework/localize.h"

#include <string_view>

namespace vl1 {

namespace {

constexpr std::size_t npos = std::string::npos;

// The next "{" at or after `from` whose third following character exists and is ":".
// Any other "{" (a "{0}" placeholder, say) is plain text.
std::size_t find_block_start(const std::string& s, std::size_t from)
{
    for (std::size_t p = s.find('{', from); p != npos; p = s.find('{', p + 1)) {
        if (p + 3 < s.size() && s[p + 3] == ':')
            return p;
    }
    return npos;
}

// The "}" that closes the block opened at `open`; inner braces nest.
std::size_t find_block_end(const std::string& s, std::size_t open)
{
    int depth = 0;
    for (std::size_t i = open + 1; i < s.size(); ++i) {
        if (s[i] == '{') {
            ++depth;
        } else if (s[i] == '}') {
            if (depth == 0)
                return i;
            --depth;
        }
    }
    return npos;
}

}  // namespace

std::string localize_text(language_id language, const std::string& s)
{
    const std::string_view tag = language == language_id::de ? "de" : "en";
    std::string result;
    std::size_t start = 0;
    for (;;) {
        const std::size_t open = find_block_start(s, start);
        if (open == npos)
            break;
        const std::size_t close = find_block_end(s, open);
        if (close == npos)
            break;
        result.append(s, start, open - start);
        if (std::string_view(s).substr(open + 1, 2) == tag)
            result.append(s, open + 4, close - (open + 4));
        start = close + 1;
    }
    result.append(s, start, npos);
    return result;
}

}  // namespace vl1
