#include "framework/string_helpers.h"

#include <cctype>
#include <cwctype>

namespace vl1 {

namespace {

// The C library's classification and mapping, made safe for negative chars.
int to_lower(char c)
{
    return std::tolower(static_cast<unsigned char>(c));
}
wint_t to_lower(wchar_t c)
{
    return std::towlower(static_cast<wint_t>(c));
}
int to_upper(char c)
{
    return std::toupper(static_cast<unsigned char>(c));
}
wint_t to_upper(wchar_t c)
{
    return std::towupper(static_cast<wint_t>(c));
}
bool is_space(char c)
{
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}
bool is_space(wchar_t c)
{
    return std::iswspace(static_cast<wint_t>(c)) != 0;
}

template <typename S>
S map_lower(S s)
{
    for (auto& c : s)
        c = static_cast<typename S::value_type>(to_lower(c));
    return s;
}

template <typename S>
S map_upper(S s)
{
    for (auto& c : s)
        c = static_cast<typename S::value_type>(to_upper(c));
    return s;
}

template <typename S>
S remove_all(const S& s, typename S::value_type c)
{
    S out;
    out.reserve(s.size());
    for (const auto ch : s) {
        if (ch != c)
            out.push_back(ch);
    }
    return out;
}

template <typename S>
S& trim_left(S& s)
{
    std::size_t i = 0;
    while (i < s.size() && is_space(s[i]))
        ++i;
    s.erase(0, i);
    return s;
}

template <typename S>
S& trim_right(S& s)
{
    std::size_t n = s.size();
    while (n > 0 && is_space(s[n - 1]))
        --n;
    s.erase(n);
    return s;
}

template <typename S>
std::vector<S> split_at(const S& s, typename S::value_type separator, int limit)
{
    std::vector<S> parts;
    std::size_t start = 0;
    for (;;) {
        if (limit > 0 && parts.size() == static_cast<std::size_t>(limit)) {
            parts.push_back(s.substr(start));
            break;
        }
        const std::size_t cut = s.find(separator, start);
        if (cut == S::npos) {
            parts.push_back(s.substr(start));
            break;
        }
        parts.push_back(s.substr(start, cut - start));
        start = cut + 1;
        // A final separator ends the walk: no empty part behind it.
        if (start == s.size())
            break;
    }
    return parts;
}

}  // namespace

std::string lowercase(const std::string& s) { return map_lower(s); }
std::wstring lowercase(const std::wstring& s) { return map_lower(s); }
std::string uppercase(const std::string& s) { return map_upper(s); }
std::wstring uppercase(const std::wstring& s) { return map_upper(s); }

std::string remove(const std::string& s, char c) { return remove_all(s, c); }
std::wstring remove(const std::wstring& s, wchar_t c) { return remove_all(s, c); }

std::string& ltrim(std::string& s) { return trim_left(s); }
std::wstring& ltrim(std::wstring& s) { return trim_left(s); }
std::string& rtrim(std::string& s) { return trim_right(s); }
std::wstring& rtrim(std::wstring& s) { return trim_right(s); }
std::string& trim(std::string& s) { return trim_left(trim_right(s)); }
std::wstring& trim(std::wstring& s) { return trim_left(trim_right(s)); }

std::string ltrim_copy(std::string s) { return trim_left(s); }
std::wstring ltrim_copy(std::wstring s) { return trim_left(s); }
std::string rtrim_copy(std::string s) { return trim_right(s); }
std::wstring rtrim_copy(std::wstring s) { return trim_right(s); }
std::string trim_copy(std::string s) { return trim(s); }
std::wstring trim_copy(std::wstring s) { return trim(s); }

std::vector<std::string> split(const std::string& s, char separator, int limit)
{
    return split_at(s, separator, limit);
}

std::vector<std::wstring> split(const std::wstring& s, wchar_t separator, int limit)
{
    return split_at(s, separator, limit);
}

}  // namespace vl1
