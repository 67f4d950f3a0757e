// iutils for Linux. Resources are looked up in the bundle that holds the loaded binary
// (Hueloom.ofx.bundle/Contents/Linux-x86-64/<binary>), in Contents/Resources.
#pragma once

#include <mutex>
#include <string>

#include "framework/iutils.h"

namespace vl1 {

/// Overrides the bundle's resource folder when it is set (non-empty).
inline constexpr const char* resources_dir_env = "HUELOOM_RESOURCES_DIR";

class cutils_linux : public iutils {
public:
    cutils_linux();

    /// Until the editor exists these only write title and text to the log and return false.
    bool alert_box(void* parent, const std::string& title, const std::string& text,
                   const std::string& second_button) const override;
    bool alert_box(void* parent, const std::string& title, const std::string& text,
                   const std::string& first_button, const std::string& second_button) const override;

    bool get_resource(const std::string& name, std::vector<uint8_t>& out) override;
    void open_url(const std::string& url) override;
    bool is_main_thread() const override;
    bool create_dir(const std::string& path) override;
    const std::string& get_path_separator() const override;
    /// 0 x 0 until the editor provides its window system.
    void get_screen_dimensions(void* window, int& width, int& height) const override;
    std::string get_common_directory() override;
    bool list_dir(const std::string& path, std::vector<std::string>* directories,
                  std::vector<std::string>* files, bool with_path) override;
    double get_dpi_scale() const override;

    /// For tools and tests that don't run inside a bundle: resources are read from `path`
    /// from now on. An empty path goes back to the environment variable or the bundle.
    void set_resource_dir(const std::string& path);
    /// The folder resources are read from: set_resource_dir, else HUELOOM_RESOURCES_DIR,
    /// else the bundle's Contents/Resources; empty if none is known.
    std::string resource_dir() const;
    /// The bundle folder found from the loaded binary; empty if none.
    const std::string& bundle_dir() const { return bundle; }

private:
    std::string bundle;
    mutable std::mutex override_mutex;
    std::string override_dir;
};

/// Mode of the folders the plug-in makes under the home directory: the user's alone.
inline constexpr unsigned private_folder_mode = 0700;

/// Creates `path` and its missing parents with private_folder_mode, like `mkdir -p`: folders
/// that exist keep their mode, and the umask is left alone (it may only narrow the mode
/// further). True if `path` is a folder afterwards.
bool create_private_folders(const std::string& path);

/// Sets the resource folder of the built-in iutils instance (see cutils_linux).
void set_resource_dir(const std::string& path);

}  // namespace vl1
