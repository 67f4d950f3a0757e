// A theme server inside the test process: cpp-httplib on 127.0.0.1 at a free port, answering
// each path with a reply the test chose, including the misbehaviours a real server can show
// (error status, a connection cut mid-body, a stall, an endless body, a redirect).
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <thread>

#include <httplib.h>

namespace vl1::webtest {

struct canned_reply {
    enum class kind {
        body,            // `status` with `body`
        cut_mid_body,    // announces twice the body's length, sends the body, closes
        stall,           // announces 1000 bytes, sends 10, then waits until released
        endless,         // chunked body of up to 100 MB, as fast as the client takes it
        redirect,        // 302 to `location`
    };
    kind how = kind::body;
    int status = 200;
    std::string body;
    /// Sent as Last-Modified when not empty, e.g. "Wed, 21 Oct 2015 07:28:00 GMT".
    std::string last_modified;
    std::string location;
};

class theme_server {
public:
    theme_server();
    /// Releases every stalled reply, stops the server and waits for its threads.
    ~theme_server();
    theme_server(const theme_server&) = delete;
    theme_server& operator=(const theme_server&) = delete;

    /// "http://127.0.0.1:<port>", without trailing "/".
    std::string url() const;

    /// How `path` (e.g. "/manifest.json") is answered from now on; other paths get 404.
    void set(const std::string& path, canned_reply reply);
    void set_body(const std::string& path, const std::string& body, const std::string& last_modified = "");
    /// The path of theme `uid` on the server, as "/0a/1b/2c3d.hlt".
    static std::string theme_path(uint32_t uid);

    /// How many requests reached `path`.
    int requests(const std::string& path) const;
    /// Waits until a stalled reply has sent its first bytes; false after `limit`.
    bool wait_for_stall(std::chrono::milliseconds limit);
    /// Ends the waiting of stalled replies (they then close their connection).
    void release_stalls();
    /// Bytes that endless replies managed to send in all.
    std::uint64_t endless_bytes_sent() const { return endless_sent; }

private:
    void answer(const httplib::Request& request, httplib::Response& response);
    void answer_stall(httplib::Response& response);
    void answer_endless(httplib::Response& response);

    httplib::Server server;
    int port = 0;
    std::thread listener;
    mutable std::mutex mutex;
    std::condition_variable stall_changed;
    std::map<std::string, canned_reply> replies;
    std::map<std::string, int> counts;
    bool stalled = false;
    bool released = false;
    std::atomic<std::uint64_t> endless_sent{0};
};

/// Stand-in theme files: "HLTTEST <uid hex> <payload length>\n" and that many payload bytes.
std::string fake_theme(uint32_t uid, std::size_t payload = 100, char fill = 'x');
/// Accepts exactly what fake_theme makes for `uid`.
bool fake_theme_check(std::span<const uint8_t> bytes, uint32_t uid, std::string& problem);

}  // namespace vl1::webtest
