#include "themes/web/web_transfer.h"

#include <cerrno>
#include <cstring>
#include <mutex>

#include <curl/curl.h>
#include <fmt/format.h>

namespace vl1 {

struct web_transfer::sink {
    const std::atomic<bool>* stop = nullptr;
    std::uint64_t max_bytes = 0;
    std::uint64_t received = 0;
    std::string* body = nullptr;
    std::FILE* file = nullptr;
    bool stopped = false;
    bool too_large = false;
    bool write_failed = false;

    // Counts `n` more bytes; false (and the reason noted) if the transfer must end here.
    bool admit(std::size_t n)
    {
        if (stop->load()) {
            stopped = true;
            return false;
        }
        if (n > max_bytes - received) {
            too_large = true;
            return false;
        }
        received += n;
        return true;
    }
};

namespace {

// libcurl's own initialisation, once per process, before the first handle.
void initialise_curl_once()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

// Appends a block to the body string. Returning less than the block ends the transfer.
extern "C" size_t WriteCallback1(char* data, size_t size, size_t count, void* user)
{
    auto* target = static_cast<web_transfer::sink*>(user);
    const std::size_t n = size * count;
    if (!target->admit(n))
        return 0;
    try {
        target->body->append(data, n);
    } catch (...) {
        target->write_failed = true;
        return 0;
    }
    return n;
}

// Writes a block to the file.
extern "C" size_t WriteCallback2(char* data, size_t size, size_t count, void* user)
{
    auto* target = static_cast<web_transfer::sink*>(user);
    const std::size_t n = size * count;
    if (!target->admit(n))
        return 0;
    if (std::fwrite(data, 1, n, target->file) != n) {
        target->write_failed = true;
        return 0;
    }
    return n;
}

// Called at least once a second even when no data arrive, so a stop request also ends a
// transfer from a stalled server.
extern "C" int ProgressCallback(void* user, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
{
    auto* target = static_cast<web_transfer::sink*>(user);
    if (target->stop->load()) {
        target->stopped = true;
        return 1;
    }
    return 0;
}

template <typename T>
bool set(CURL* curl, CURLoption option, T value, std::string& error)
{
    const CURLcode code = curl_easy_setopt(curl, option, value);
    if (code != CURLE_OK && error.empty())
        error = fmt::format("cannot set up the transfer: {}", curl_easy_strerror(code));
    return code == CURLE_OK;
}

// Why no connection came about, or "" when one did (or the failure lies elsewhere).
std::string unreachable_reason(CURL* curl, CURLcode code)
{
    long os_error = 0;
    curl_easy_getinfo(curl, CURLINFO_OS_ERRNO, &os_error);
    curl_off_t connected_after = 0;
    curl_easy_getinfo(curl, CURLINFO_CONNECT_TIME_T, &connected_after);
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY: return "the server's name could not be resolved";
    case CURLE_COULDNT_CONNECT:
        if (os_error == ECONNREFUSED)
            return "the connection was refused (nothing listens at that port)";
        if (os_error == ETIMEDOUT)
            return "the connection timed out";
        return os_error != 0 ? fmt::format("no connection: {}", std::strerror(static_cast<int>(os_error)))
                             : "no connection could be made";
    case CURLE_OPERATION_TIMEDOUT:
        return connected_after == 0 ? "the connection timed out" : "";
    default: return "";
    }
}

std::string describe_failure(CURLcode code, const char* detail, const web_transfer::sink& target)
{
    if (target.stopped)
        return "the download was stopped";
    if (target.too_large || code == CURLE_FILESIZE_EXCEEDED)
        return fmt::format("the server sent more than the {} bytes allowed", target.max_bytes);
    if (target.write_failed)
        return "the received data could not be stored";
    std::string text = fmt::format("curl_easy_perform() failed: {}", curl_easy_strerror(code));
    if (detail != nullptr && detail[0] != '\0')
        text += fmt::format(" ({})", detail);
    return text;
}

}  // namespace

web_transfer::web_transfer(const std::atomic<bool>& stop_flag) : stop(stop_flag)
{
    initialise_curl_once();
    handle = curl_easy_init();
}

web_transfer::~web_transfer()
{
    if (handle != nullptr)
        curl_easy_cleanup(static_cast<CURL*>(handle));
}

web_transfer_result web_transfer::fetch_to_string(const std::string& url, std::string& body, std::uint64_t max_bytes)
{
    body.clear();
    sink target;
    target.body = &body;
    target.max_bytes = max_bytes;
    return perform(url, target);
}

web_transfer_result web_transfer::fetch_to_file(const std::string& url, std::FILE* file, std::uint64_t max_bytes)
{
    sink target;
    target.file = file;
    target.max_bytes = max_bytes;
    return perform(url, target);
}

web_transfer_result web_transfer::perform(const std::string& url, sink& target)
{
    web_transfer_result result;
    auto* curl = static_cast<CURL*>(handle);
    if (curl == nullptr) {
        result.error = "libcurl could not make a transfer handle";
        return result;
    }
    target.stop = &stop;
    // Options from an earlier transfer never carry over; the open connection does.
    curl_easy_reset(curl);
    char detail[CURL_ERROR_SIZE] = "";
    std::string& error = result.error;
    const bool ready =
        set(curl, CURLOPT_URL, url.c_str(), error) && set(curl, CURLOPT_PROTOCOLS_STR, "http,https", error) &&
        set(curl, CURLOPT_REDIR_PROTOCOLS_STR, "http,https", error) && set(curl, CURLOPT_FOLLOWLOCATION, 0L, error) &&
        set(curl, CURLOPT_NOSIGNAL, 1L, error) && set(curl, CURLOPT_FAILONERROR, 1L, error) &&
        set(curl, CURLOPT_FILETIME, 1L, error) && set(curl, CURLOPT_ERRORBUFFER, detail, error) &&
        set(curl, CURLOPT_CONNECTTIMEOUT_MS, limits.connect_timeout_ms, error) &&
        set(curl, CURLOPT_LOW_SPEED_LIMIT, limits.low_speed_bytes_per_second, error) &&
        set(curl, CURLOPT_LOW_SPEED_TIME, limits.low_speed_time_s, error) &&
        set(curl, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(target.max_bytes), error) &&
        set(curl, CURLOPT_NOPROGRESS, 0L, error) && set(curl, CURLOPT_XFERINFOFUNCTION, &ProgressCallback, error) &&
        set(curl, CURLOPT_XFERINFODATA, &target, error) &&
        set(curl, CURLOPT_WRITEFUNCTION, target.file != nullptr ? &WriteCallback2 : &WriteCallback1, error) &&
        set(curl, CURLOPT_WRITEDATA, &target, error);
    if (!ready)
        return result;

    const CURLcode code = curl_easy_perform(curl);
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &result.http_status);
    curl_off_t file_time = -1;
    if (curl_easy_getinfo(curl, CURLINFO_FILETIME_T, &file_time) == CURLE_OK)
        result.file_time = static_cast<long long>(file_time);
    // The error buffer belongs to this call's stack frame.
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, static_cast<char*>(nullptr));

    const std::string unreachable = target.stopped ? "" : unreachable_reason(curl, code);
    if (!unreachable.empty()) {
        result.unreachable = true;
        result.error = unreachable;
    } else if (code != CURLE_OK || target.stopped || target.too_large || target.write_failed)
        result.error = describe_failure(code, detail, target);
    else if (result.http_status != 200)
        result.error = fmt::format("the server answered with HTTP status {}", result.http_status);
    result.ok = result.error.empty();
    return result;
}

}  // namespace vl1
