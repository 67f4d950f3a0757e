#include "themes/web/web_client_settings.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <fmt/format.h>

#include "framework/string_helpers.h"
#include "themes/web/theme_addresses.h"

namespace vl1 {

namespace {

bool starts_with_scheme(const std::string& url, std::size_t& host_start)
{
    const std::string lower = lowercase(url.substr(0, 8));
    for (const char* scheme : {"http://", "https://"}) {
        const std::string s(scheme);
        if (lower.compare(0, s.size(), s) == 0) {
            host_start = s.size();
            return true;
        }
    }
    return false;
}

bool has_blank_or_control(const std::string& text)
{
    return std::any_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte <= 0x20 || byte == 0x7f;
    });
}

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? std::string(value) : std::string();
}

}  // namespace

std::string theme_server_url_from_text(const std::string& text, std::string& problem)
{
    problem.clear();
    std::string url = trim_copy(text);
    if (url.empty())
        return {};
    while (!url.empty() && url.back() == '/')
        url.pop_back();
    std::size_t host_start = 0;
    if (!starts_with_scheme(url, host_start)) {
        problem = fmt::format("theme server address \"{}\" does not start with http:// or https://", text);
        return {};
    }
    if (url.size() <= host_start || url[host_start] == '/' || has_blank_or_control(url)) {
        problem = fmt::format("theme server address \"{}\" has no host or holds blanks or control characters", text);
        return {};
    }
    return url;
}

std::set<uint32_t> theme_uids_from_text(const std::string& text, std::vector<std::string>& problems)
{
    std::set<uint32_t> uids;
    for (const std::string& part : split(text, ',')) {
        const std::string entry = trim_copy(part);
        if (entry.empty())
            continue;
        uint32_t uid = 0;
        if (parse_theme_uid(entry, uid))
            uids.insert(uid);
        else
            problems.push_back(fmt::format("\"{}\" is no theme uid (1 to 8 hexadecimal digits, not 0)", entry));
    }
    return uids;
}

web_client_settings read_web_client_settings()
{
    web_client_settings settings;
    std::string problem;
    settings.web_url_base = theme_server_url_from_text(environment(theme_server_variable), problem);
    if (!problem.empty())
        std::fprintf(stderr, "Hueloom: %s: %s; no themes are downloaded.\n", theme_server_variable, problem.c_str());
    std::vector<std::string> problems;
    settings.wanted_theme_uids = theme_uids_from_text(environment(wanted_themes_variable), problems);
    for (const auto& line : problems)
        std::fprintf(stderr, "Hueloom: %s: %s; it is left out.\n", wanted_themes_variable, line.c_str());
    return settings;
}

}  // namespace vl1
