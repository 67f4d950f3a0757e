// "hueloom-theme serve" as a studio runs it, and "hueloom-theme pull", which downloads from it
// through the plug-in's own vault and download client. The server runs as a real process on
// 127.0.0.1 at a port of its own choosing.
#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <thread>

#include "tests/support/test_files.h"
#include "tests/support/test_paths.h"
#include "tests/support/theme_looks.h"
#include "tests/tools/run_process.h"
#include "themes/hueloom_theme_file_serializer_v1.h"

namespace vl1 {
namespace {

namespace fs = std::filesystem;
using hueloom_test::contains;
using hueloom_test::run_process;

/// `hueloom-theme serve DIR --port 0` in the background; its base URL is read from the line
/// it prints, and it is stopped with SIGTERM as an operator would.
class running_server {
public:
    explicit running_server(const fs::path& folder)
    {
        int out[2];
        if (pipe(out) != 0)
            throw std::runtime_error("pipe");
        pid = fork();
        if (pid == 0) {
            dup2(out[1], STDOUT_FILENO);
            close(out[0]);
            close(out[1]);
            execl(HUELOOM_THEME_TOOL, HUELOOM_THEME_TOOL, "serve", folder.c_str(), "--port", "0", nullptr);
            _exit(127);
        }
        close(out[1]);
        FILE* lines = fdopen(out[0], "r");
        char line[512] = {0};
        if (fgets(line, sizeof line, lines) == nullptr)
            throw std::runtime_error("the server printed nothing");
        first_line = line;
        output = lines;
        url = first_line.substr(first_line.find("http://"));
        url.erase(url.find_last_not_of("\r\n") + 1);
    }

    ~running_server()
    {
        if (pid > 0)
            stop();
        if (output != nullptr)
            fclose(output);
    }

    /// Sends SIGTERM and gives the exit code; -1 if it didn't end normally.
    int stop()
    {
        kill(pid, SIGTERM);
        int status = 0;
        waitpid(pid, &status, 0);
        pid = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string url;
    std::string first_line;

private:
    pid_t pid = -1;
    FILE* output = nullptr;
};

class theme_server_test : public ::testing::Test {
protected:
    fs::path served = hueloom_test::make_temp_dir("served");
    fs::path home = hueloom_test::make_temp_dir("pulling-home");

    void publish(hueloom_theme_v1 theme, uint32_t version)
    {
        theme.version = version;
        ASSERT_TRUE(hueloom_theme_file_serializer_v1::write_theme_to_file(
            theme, (served / ("look_" + std::to_string(theme.uid) + ".hlt")).string()));
    }

    fs::path pulled_file(uint32_t uid) const
    {
        char name[32];
        std::snprintf(name, sizeof name, "theme_%08x.hlt", uid);
        return home / "Varnlight" / "Hueloom" / name;
    }
};

TEST_F(theme_server_test, PullBringsNewerThemesAndASecondServerOnThePortIsRefused)
{
    publish(*hueloom_test::travelling_theme(), 2);
    std::ofstream(served / "broken.hlt") << "not a theme";
    running_server server(served);
    EXPECT_TRUE(contains(server.first_line, "Serving 1 themes from")) << server.first_line;

    auto r = run_process(HUELOOM_THEME_TOOL, {"pull", "--server", server.url, "7e57f00d"}, home);
    ASSERT_EQ(r.exit_code, 0) << r.err;
    EXPECT_TRUE(contains(r.out, "7e57f00d \"Travelling\": version 2 downloaded")) << r.out;
    hueloom_theme_v1 pulled;
    ASSERT_TRUE(hueloom_theme_file_serializer_v1::read_theme_from_file(pulled, pulled_file(0x7e57f00d).string()));
    EXPECT_EQ(pulled.version, 2u);
    EXPECT_EQ(pulled.luts.size(), 4u);

    r = run_process(HUELOOM_THEME_TOOL, {"pull", "--server", server.url, "7e57f00d"}, home);
    EXPECT_EQ(r.exit_code, 0) << r.err;
    EXPECT_TRUE(contains(r.out, "up to date (version 2)")) << r.out;

    // A new version dropped into the served folder is published without a restart.
    publish(*hueloom_test::travelling_theme(), 3);
    r = run_process(HUELOOM_THEME_TOOL, {"pull", "--server", server.url, "7e57f00d"}, home);
    EXPECT_TRUE(contains(r.out, "version 3 downloaded (was 2)")) << r.out << r.err;

    r = run_process(HUELOOM_THEME_TOOL, {"pull", "--server", server.url, "0badcafe"}, home);
    EXPECT_EQ(r.exit_code, 1);
    EXPECT_TRUE(contains(r.err, "0badcafe is not on " + server.url)) << r.err;
    EXPECT_FALSE(fs::exists(pulled_file(0x0badcafe)));

    // A second server on the port in use is refused.
    const std::string port = server.url.substr(server.url.rfind(':') + 1);
    r = run_process(HUELOOM_THEME_TOOL, {"serve", served.string(), "--port", port}, home);
    EXPECT_EQ(r.exit_code, 1);
    EXPECT_TRUE(contains(r.err, "cannot listen on 127.0.0.1:" + port + ": another process listens on that port"))
        << r.err;
    EXPECT_EQ(server.stop(), 0);
}

/// A TCP socket on 127.0.0.1 that listens but never accepts: connections are made by the
/// kernel and then nothing is ever answered. Its port, or -1.
int silent_listener(int& fd)
{
    fd = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (fd < 0 || bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 || listen(fd, 4) != 0 ||
        getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        return -1;
    return ntohs(address.sin_port);
}

TEST_F(theme_server_test, PullTellsAServerItCantReachFromAMissingTheme)
{
    int fd = -1;
    const int port = silent_listener(fd);
    ASSERT_GT(port, 0);
    close(fd);  // nothing listens there now: the connection is refused
    const std::string url = "http://127.0.0.1:" + std::to_string(port);
    const auto r = run_process(HUELOOM_THEME_TOOL, {"pull", "--server", url, "7e57f00d"}, home);
    EXPECT_EQ(r.exit_code, 3);
    EXPECT_TRUE(contains(r.err, "cannot reach the theme server " + url + ": the connection was refused")) << r.err;
    EXPECT_FALSE(contains(r.err, "is not on")) << r.err;
}

TEST_F(theme_server_test, SigintEndsAPullThatWaitsForASilentServer)
{
    int fd = -1;
    const int port = silent_listener(fd);
    ASSERT_GT(port, 0);
    const std::string url = "http://127.0.0.1:" + std::to_string(port);
    const pid_t pid = fork();
    if (pid == 0) {
        setenv("HOME", home.c_str(), 1);
        execl(HUELOOM_THEME_TOOL, HUELOOM_THEME_TOOL, "pull", "--server", url.c_str(), "7e57f00d", nullptr);
        _exit(127);
    }
    // The transfer's own time-outs are 10 and 30 seconds; the signal must not wait for them.
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    kill(pid, SIGINT);
    int status = 0;
    pid_t ended = 0;
    for (int i = 0; i < 100 && ended == 0; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        ended = waitpid(pid, &status, WNOHANG);
    }
    if (ended == 0) {
        kill(pid, SIGKILL);
        waitpid(pid, &status, 0);
    }
    close(fd);
    EXPECT_EQ(ended, pid) << "still running 5 s after SIGINT";
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 130);
}

TEST_F(theme_server_test, UsageMistakesAndAMissingFolder)
{
    auto r = run_process(HUELOOM_THEME_TOOL, {"serve"}, home);
    EXPECT_EQ(r.exit_code, 2);
    r = run_process(HUELOOM_THEME_TOOL, {"serve", served.string(), "--port", "70000"}, home);
    EXPECT_EQ(r.exit_code, 2);
    EXPECT_TRUE(contains(r.err, "--port needs a number from 0 to 65535")) << r.err;
    r = run_process(HUELOOM_THEME_TOOL, {"serve", (served / "nope").string()}, home);
    EXPECT_EQ(r.exit_code, 1);
    r = run_process(HUELOOM_THEME_TOOL, {"pull", "7e57f00d"}, home);
    EXPECT_EQ(r.exit_code, 2);
    EXPECT_TRUE(contains(r.err, "HUELOOM_THEME_SERVER")) << r.err;
    r = run_process(HUELOOM_THEME_TOOL, {"pull", "--server", "ftp://example.org", "1"}, home);
    EXPECT_EQ(r.exit_code, 2);
    r = run_process(HUELOOM_THEME_TOOL, {"pull", "--server", "http://127.0.0.1:9", "xyz"}, home);
    EXPECT_EQ(r.exit_code, 2);
}

}  // namespace
}  // namespace vl1
