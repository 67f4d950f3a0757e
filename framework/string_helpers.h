// Small string helpers, each for std::string and, with the same behaviour, std::wstring.
#pragma once

#include <string>
#include <vector>

namespace vl1 {

/// Copies with every element mapped by the C library's tolower/toupper (towlower/towupper).
std::string lowercase(const std::string& s);
std::wstring lowercase(const std::wstring& s);
std::string uppercase(const std::string& s);
std::wstring uppercase(const std::wstring& s);

/// A copy without any occurrence of `c`.
std::string remove(const std::string& s, char c);
std::wstring remove(const std::wstring& s, wchar_t c);

/// Remove white space (isspace / iswspace) in place, at the start, end or both.
std::string& ltrim(std::string& s);
std::wstring& ltrim(std::wstring& s);
std::string& rtrim(std::string& s);
std::wstring& rtrim(std::wstring& s);
std::string& trim(std::string& s);
std::wstring& trim(std::wstring& s);

std::string ltrim_copy(std::string s);
std::wstring ltrim_copy(std::wstring s);
std::string rtrim_copy(std::string s);
std::wstring rtrim_copy(std::wstring s);
std::string trim_copy(std::string s);
std::wstring trim_copy(std::wstring s);

/// Cuts `s` at each `separator`, keeping empty parts between two separators but none behind
/// a final one. With `limit` > 0, after `limit` cuts the rest (separators included) is the
/// last part, so at most limit + 1 parts. An empty string gives one empty part.
std::vector<std::string> split(const std::string& s, char separator, int limit = 0);
std::vector<std::wstring> split(const std::wstring& s, wchar_t separator, int limit = 0);

}  // namespace vl1
