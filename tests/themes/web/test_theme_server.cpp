#include "tests/themes/web/test_theme_server.h"

#include <fmt/format.h>

namespace vl1::webtest {

namespace {

// Longest a stalled reply waits for its release; far beyond any client time-out of the tests.
constexpr auto stall_limit = std::chrono::seconds(20);
constexpr std::uint64_t endless_limit = 100ull * 1024 * 1024;

}  // namespace

theme_server::theme_server()
{
    server.set_keep_alive_timeout(1);
    server.Get(".*", [this](const httplib::Request& request, httplib::Response& response) {
        answer(request, response);
    });
    port = server.bind_to_any_port("127.0.0.1");
    listener = std::thread([this] { server.listen_after_bind(); });
    // stop() only acts on a running server: wait until the listening loop has begun.
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!server.is_running() && std::chrono::steady_clock::now() < limit)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

theme_server::~theme_server()
{
    release_stalls();
    server.stop();
    if (listener.joinable())
        listener.join();
}

std::string theme_server::url() const { return fmt::format("http://127.0.0.1:{}", port); }

void theme_server::set(const std::string& path, canned_reply reply)
{
    std::lock_guard lock(mutex);
    replies[path] = std::move(reply);
}

void theme_server::set_body(const std::string& path, const std::string& body, const std::string& last_modified)
{
    canned_reply reply;
    reply.body = body;
    reply.last_modified = last_modified;
    set(path, reply);
}

std::string theme_server::theme_path(uint32_t uid)
{
    const std::string hex = fmt::format("{:08x}", uid);
    return fmt::format("/{}/{}/{}.hlt", hex.substr(0, 2), hex.substr(2, 2), hex.substr(4));
}

int theme_server::requests(const std::string& path) const
{
    std::lock_guard lock(mutex);
    const auto found = counts.find(path);
    return found == counts.end() ? 0 : found->second;
}

bool theme_server::wait_for_stall(std::chrono::milliseconds limit)
{
    std::unique_lock lock(mutex);
    return stall_changed.wait_for(lock, limit, [this] { return stalled; });
}

void theme_server::release_stalls()
{
    {
        std::lock_guard lock(mutex);
        released = true;
    }
    stall_changed.notify_all();
}

void theme_server::answer(const httplib::Request& request, httplib::Response& response)
{
    canned_reply reply;
    {
        std::lock_guard lock(mutex);
        ++counts[request.path];
        const auto found = replies.find(request.path);
        if (found == replies.end()) {
            response.status = 404;
            response.set_content("not here", "text/plain");
            return;
        }
        reply = found->second;
    }
    if (!reply.last_modified.empty())
        response.set_header("Last-Modified", reply.last_modified);
    switch (reply.how) {
    case canned_reply::kind::body:
        response.status = reply.status;
        response.set_content(reply.body, "application/octet-stream");
        break;
    case canned_reply::kind::cut_mid_body:
        response.set_content_provider(reply.body.size() * 2, "application/octet-stream",
                                      [body = reply.body](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                          if (offset > 0)
                                              return false;  // closes the connection
                                          sink.write(body.data(), body.size());
                                          return true;
                                      });
        break;
    case canned_reply::kind::stall:
        answer_stall(response);
        break;
    case canned_reply::kind::endless:
        answer_endless(response);
        break;
    case canned_reply::kind::redirect:
        response.status = 302;
        response.set_header("Location", reply.location);
        break;
    }
}

void theme_server::answer_stall(httplib::Response& response)
{
    response.set_content_provider(1000, "application/octet-stream",
                                  [this](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                      if (offset == 0) {
                                          sink.write("HLTTEST 00", 10);
                                          return true;
                                      }
                                      std::unique_lock lock(mutex);
                                      stalled = true;
                                      stall_changed.notify_all();
                                      stall_changed.wait_for(lock, stall_limit, [this] { return released; });
                                      return false;
                                  });
}

void theme_server::answer_endless(httplib::Response& response)
{
    response.set_chunked_content_provider("application/octet-stream", [this](std::size_t offset, httplib::DataSink& sink) {
        static const std::string block(64 * 1024, 'z');
        if (offset >= endless_limit) {
            sink.done();
            return true;
        }
        if (!sink.write(block.data(), block.size()))
            return false;
        endless_sent += block.size();
        return true;
    });
}

std::string fake_theme(uint32_t uid, std::size_t payload, char fill)
{
    return fmt::format("HLTTEST {:08x} {}\n", uid, payload) + std::string(payload, fill);
}

bool fake_theme_check(std::span<const uint8_t> bytes, uint32_t uid, std::string& problem)
{
    const std::string text(bytes.begin(), bytes.end());
    const std::size_t line_end = text.find('\n');
    const std::string expected_head =
        fmt::format("HLTTEST {:08x} {}", uid, line_end == std::string::npos ? 0 : text.size() - line_end - 1);
    if (line_end != std::string::npos && text.compare(0, line_end, expected_head) == 0)
        return true;
    problem = "header '" + text.substr(0, line_end) + "' is not '" + expected_head + "'";
    return false;
}

}  // namespace vl1::webtest
