#include "framework/cutils_linux.h"

#include <dirent.h>
#include <dlfcn.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "framework/io/read_bounded_file.h"
#include "framework/log.h"

extern char** environ;

namespace vl1 {

namespace {

// The bundle folder of the binary that holds this code: the binary lies in
// <bundle>/Contents/Linux-x86-64/, so three path components are cut (file, architecture
// folder, Contents). Empty if the binary can't be found.
std::string locate_bundle()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&locate_bundle), &info) == 0 || info.dli_fname == nullptr)
        return {};
    std::error_code ec;
    std::filesystem::path binary = std::filesystem::absolute(info.dli_fname, ec);
    if (ec)
        return {};
    const std::filesystem::path bundle = binary.parent_path().parent_path().parent_path();
    return bundle.empty() ? std::string() : bundle.string();
}

// The bundle's resources are themes; none is larger than a theme file may be.
constexpr std::uintmax_t largest_resource_bytes = 256ull << 20;

// "name.type" of a resource: split at the last "."; a name without "." serves as both.
std::string resource_file_name(const std::string& name)
{
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos)
        return name + "." + name;
    return name;
}

std::string home_directory()
{
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        return home;
    if (const passwd* pw = getpwuid(getuid()); pw != nullptr && pw->pw_dir != nullptr)
        return pw->pw_dir;
    return {};
}

bool is_directory_entry(const std::string& folder, const dirent* entry)
{
    if (entry->d_type != DT_UNKNOWN)
        return entry->d_type == DT_DIR;
    // Some file systems don't report the type in the entry.
    struct stat st{};
    const std::string full = folder + "/" + entry->d_name;
    return lstat(full.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::atomic<iutils*> installed{nullptr};

cutils_linux& builtin_utils()
{
    static cutils_linux builtin;
    return builtin;
}

}  // namespace

iutils& iutils::get_instance()
{
    iutils* replacement = installed.load();
    return replacement != nullptr ? *replacement : builtin_utils();
}

void iutils::set_instance(iutils* replacement)
{
    installed.store(replacement);
}

cutils_linux::cutils_linux() : bundle(locate_bundle()) {}

bool cutils_linux::alert_box(void* parent, const std::string& title, const std::string& text,
                             const std::string& second_button) const
{
    return alert_box(parent, title, text, std::string(), second_button);
}

bool cutils_linux::alert_box(void* /*parent*/, const std::string& title, const std::string& text,
                             const std::string& /*first_button*/, const std::string& /*second_button*/) const
{
    // No window system here; the editor installs an iutils that shows a real alert.
    log("Alert: {}: {}", title, text);
    return false;
}

void cutils_linux::set_resource_dir(const std::string& path)
{
    std::lock_guard lock(override_mutex);
    override_dir = path;
}

std::string cutils_linux::resource_dir() const
{
    {
        std::lock_guard lock(override_mutex);
        if (!override_dir.empty())
            return override_dir;
    }
    if (const char* env = std::getenv(resources_dir_env); env != nullptr && *env != '\0')
        return env;
    if (bundle.empty())
        return {};
    return (std::filesystem::path(bundle) / "Contents" / "Resources").string();
}

bool cutils_linux::get_resource(const std::string& name, std::vector<uint8_t>& out)
{
    out.clear();
    const std::string folder = resource_dir();
    if (folder.empty() || name.empty())
        return false;
    const std::filesystem::path path = std::filesystem::path(folder) / resource_file_name(name);
    std::error_code ec;
    if (!std::filesystem::exists(path, ec))
        return false;
    // From here the resource exists: an unreadable file leaves `out` empty and still counts.
    std::string problem;
    if (!read_bounded_file(path, largest_resource_bytes, out, problem))
        log("Resource not read: {}", problem);
    return true;
}

void cutils_linux::open_url(const std::string& url)
{
    // xdg-open takes URLs and file paths alike. It runs under "setsid -f", which forks it off
    // and returns at once: the short wait below reaps setsid, the browser is reparented, and
    // no thread of ours outlives the call (the plug-in may be unloaded later). Spawned
    // directly, never through a shell.
    std::string launcher = "setsid";
    std::string fork_flag = "-f";
    std::string program = "xdg-open";
    std::string argument = url;
    char* argv[] = {launcher.data(), fork_flag.data(), program.data(), argument.data(), nullptr};
    pid_t pid = 0;
    const int rc = posix_spawnp(&pid, "setsid", nullptr, nullptr, argv, environ);
    if (rc != 0) {
        log("Cannot start xdg-open for {}: error {}", url, rc);
        return;
    }
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        log("xdg-open for {} could not be started (status {})", url, status);
}

bool cutils_linux::is_main_thread() const
{
    return gettid() == getpid();
}

bool cutils_linux::create_dir(const std::string& path)
{
    if (path.empty())
        return false;
    // Only the user: the folder holds themes and presets that the plug-in loads, and on a
    // shared machine nobody else may plant files there. The umask stays untouched, since
    // changing it would change the mode of files other threads of the host create meanwhile.
    return mkdir(path.c_str(), private_folder_mode) == 0;
}

const std::string& cutils_linux::get_path_separator() const
{
    static const std::string separator = "/";
    return separator;
}

void cutils_linux::get_screen_dimensions(void* /*window*/, int& width, int& height) const
{
    // The editor's window system replaces this; without it no screen is known.
    width = 0;
    height = 0;
}

std::string cutils_linux::get_common_directory()
{
    const std::string home = home_directory();
    if (home.empty())
        return {};
    const std::string common = home + get_path_separator() + "Varnlight";
    create_dir(common);  // usually exists already
    return common;
}

bool cutils_linux::list_dir(const std::string& path, std::vector<std::string>* directories,
                            std::vector<std::string>* files, bool with_path)
{
    if (path.empty() || (directories == nullptr && files == nullptr))
        return false;
    if (directories != nullptr)
        directories->clear();
    if (files != nullptr)
        files->clear();
    const std::string folder = path + "/";
    DIR* dir = opendir(folder.c_str());
    if (dir == nullptr)
        return false;
    // "." and ".." are delivered like any other entry.
    while (const dirent* entry = readdir(dir)) {
        std::string name = with_path ? folder + entry->d_name : std::string(entry->d_name);
        std::vector<std::string>* target = is_directory_entry(path, entry) ? directories : files;
        if (target != nullptr)
            target->push_back(std::move(name));
    }
    closedir(dir);
    return true;
}

double cutils_linux::get_dpi_scale() const
{
    return 1.0;
}

bool create_private_folders(const std::string& path)
{
    if (path.empty())
        return false;
    std::string partial;
    std::size_t from = 0;
    while (from <= path.size()) {
        const std::size_t slash = std::min(path.find('/', from), path.size());
        partial = path.substr(0, slash);
        if (!partial.empty() && mkdir(partial.c_str(), private_folder_mode) != 0 && errno != EEXIST)
            return false;
        from = slash + 1;
    }
    struct stat st{};
    return stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

void set_resource_dir(const std::string& path)
{
    // The built-in instance, and an installed one too if it builds on cutils_linux.
    builtin_utils().set_resource_dir(path);
    if (auto* linux_utils = dynamic_cast<cutils_linux*>(&iutils::get_instance()))
        linux_utils->set_resource_dir(path);
}

}  // namespace vl1
