// One libcurl easy handle and the rules every transfer of the theme client obeys: plain GET
// over http or https only, no redirects, a connect time-out, a low-speed time-out for a
// stalled server, a size limit, and a stop request that is seen even while no data arrive.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <string>

namespace vl1 {

/// Time-outs and size limits of the theme client's transfers.
struct web_transfer_limits {
    /// Longest wait for the connection to the server, in milliseconds.
    long connect_timeout_ms = 10000;
    /// A transfer that moves fewer than low_speed_bytes_per_second bytes per second for
    /// low_speed_time_s seconds in a row is given up.
    long low_speed_time_s = 30;
    long low_speed_bytes_per_second = 64;
    /// Largest manifest, in bytes.
    std::uint64_t max_manifest_bytes = 1024 * 1024;
    /// Largest theme file, in bytes.
    std::uint64_t max_theme_file_bytes = 256ull * 1024 * 1024;
};

struct web_transfer_result {
    bool ok = false;
    long http_status = 0;
    /// The server's time stamp of the document in seconds since 1970; -1 if it gave none.
    long long file_time = -1;
    /// Why the transfer failed, in plain English; empty on success.
    std::string error;
    /// The server was never reached (its name not resolved, the connection refused or timed
    /// out): the address or the network is at fault, not the server.
    bool unreachable = false;
};

/// Not thread-safe: one transfer at a time (the theme client guards it by its transfer
/// mutex). The connection stays open from one transfer to the next.
class web_transfer {
public:
    /// `stop` is read during every transfer and must outlive this object.
    explicit web_transfer(const std::atomic<bool>& stop);
    ~web_transfer();
    web_transfer(const web_transfer&) = delete;
    web_transfer& operator=(const web_transfer&) = delete;

    /// False if libcurl could not make a handle; every transfer then fails.
    bool has_handle() const { return handle != nullptr; }

    void set_limits(const web_transfer_limits& new_limits) { limits = new_limits; }
    const web_transfer_limits& get_limits() const { return limits; }

    /// GET `url` into `body`, which is replaced. At most `max_bytes` are accepted; a larger
    /// body fails the transfer. Success needs HTTP status 200.
    web_transfer_result fetch_to_string(const std::string& url, std::string& body, std::uint64_t max_bytes);

    /// GET `url`, writing the body to `file` (which stays open). As above otherwise.
    web_transfer_result fetch_to_file(const std::string& url, std::FILE* file, std::uint64_t max_bytes);

    /// Where a transfer's data go and what stopped it; only the .cpp knows its members.
    struct sink;

private:
    web_transfer_result perform(const std::string& url, sink& target);

    void* handle = nullptr;  // CURL*
    const std::atomic<bool>& stop;
    web_transfer_limits limits;
};

}  // namespace vl1
