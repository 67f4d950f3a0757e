#include "tests/gui/editor_test_support.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace hueloom_test {

std::string read_text(const fs::path& p)
{
    std::ifstream in(p);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

fs::path write_flat_picture(const fs::path& dir)
{
    const fs::path p = dir / "flat.ppm";
    std::ofstream out(p, std::ios::binary);
    out << "P6\n640 360\n255\n";
    for (int i = 0; i < 640 * 360; ++i)
        out.put(char(153)).put(char(77)).put(char(51));
    return p;
}

open_editor::open_editor(const fs::path& folder, const std::vector<std::string>& arguments) : dir(folder)
{
    fs::create_directories(dir);
    log_file = dir / "look.log";
    state_file = dir / "state.txt";
    graded_file = dir / "graded.png";
    std::vector<std::string> all{"-i", write_flat_picture(dir).string(), "-o", graded_file.string(), "--state-out",
                                 state_file.string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    process = std::make_unique<background_process>(HUELOOM_LOOK_TOOL, all, log_file);
    window = x_session::wait_for_window(editor_title, 30);
    if (window == 0)
        return;
    // The first preview picture means that the editor's loop runs.
    for (int i = 0; i < 100 && log().find("even render.") == std::string::npos; ++i)
        x_session::settle(0.1);
    origin = x_session::window_origin(window);
    width = x_session::window_size(window).first;
    x_session::shell("xdotool windowactivate --sync " + std::to_string(window));
    x_session::settle(0.5);
}

int open_editor::close_and_wait()
{
    if (window != 0)
        x_session::close_by_window_manager(window, editor_title);
    return process->wait(30);
}

std::map<std::string, std::string> open_editor::settings() const
{
    std::map<std::string, std::string> out;
    std::istringstream text(read_text(state_file));
    std::string line;
    std::getline(text, line);  // the state text
    while (std::getline(text, line)) {
        const auto equals = line.find('=');
        if (equals != std::string::npos && line[0] != '#')
            out[line.substr(0, equals)] = line.substr(equals + 1);
    }
    return out;
}

bool answer_file_dialog(const std::string& title, const std::string& name)
{
    const unsigned long dialog = x_session::wait_for_window(title, 10);
    if (dialog == 0)
        return false;
    x_session::type(name);
    const auto [left, top] = x_session::window_origin(dialog);
    const auto [w, h] = x_session::window_size(dialog);
    x_session::click(left + w - 146, top + h - 23);
    return true;
}

std::pair<double, double> wheel_reading(double px, double py)
{
    const double x = std::floor((px - wheel_marker / 2) / (wheel_size - wheel_marker) * 1000 + 0.5) / 1000;
    const double y = std::floor((py - wheel_marker / 2) / (wheel_size - wheel_marker) * 1000 + 0.5) / 1000;
    const double cx = 2 * (x - 0.5), cy = 2 * (y - 0.5);
    double a = std::atan2(-cx, -cy);
    if (a < 0)
        a += 2 * M_PI;
    return {a * 180 / M_PI, std::min(1.0, std::sqrt(cx * cx + cy * cy) / wheel_max_radius) * 100};
}

double number(const std::map<std::string, std::string>& settings, const std::string& name)
{
    const auto found = settings.find(name);
    return found == settings.end() ? -1.0 : std::stod(found->second);
}

fs::path shots_dir() { return fs::path(HUELOOM_BUILD_DIR) / "editor-shots"; }

theme_server::theme_server(const fs::path& folder, int rate_kib)
{
    const fs::path log = folder.string() + ".log";
    process = std::make_unique<background_process>(
        HUELOOM_THEME_TOOL,
        std::vector<std::string>{"serve", folder.string(), "--port", "0", "--rate", std::to_string(rate_kib)}, log);
    // Its first line: "Serving N themes from DIR at http://127.0.0.1:PORT".
    for (int i = 0; i < 100 && url.empty(); ++i) {
        const std::string text = read_text(log);
        const auto at = text.find("http://");
        const auto end = text.find('\n', at);
        if (at != std::string::npos && end != std::string::npos)
            url = text.substr(at, end - at);
        else
            x_session::settle(0.1);
    }
}

int unused_port()
{
    // A port the kernel hands out and that is closed again at once.
    const int s = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    int port = 0;
    if (s >= 0 && bind(s, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
        getsockname(s, reinterpret_cast<sockaddr*>(&address), &size) == 0)
        port = ntohs(address.sin_port);
    if (s >= 0)
        close(s);
    return port;
}

}  // namespace hueloom_test
