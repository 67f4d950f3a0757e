// Everything the logic needs of the operating system, behind one interface, so that the rest
// of the plug-in never touches the platform directly.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vl1 {

class iutils {
public:
    virtual ~iutils() = default;

    /// The process-wide instance (cutils_linux unless another one was installed).
    static iutils& get_instance();
    /// Replaces the instance, e.g. by one whose alerts and screens come from the editor's
    /// window system; null restores the built-in one. The object must outlive its use.
    static void set_instance(iutils* replacement);

    /// As the next one, with an empty first button.
    virtual bool alert_box(void* parent, const std::string& title, const std::string& text,
                           const std::string& second_button) const = 0;
    /// A modal alert: `title` as message, `text` as informative text. An empty second button
    /// means no such button; an empty first one means the default button. True if the user
    /// chose the first button. Belongs on the main thread.
    virtual bool alert_box(void* parent, const std::string& title, const std::string& text,
                           const std::string& first_button, const std::string& second_button) const = 0;

    /// Loads the bundle resource `name` ("file.ext") into `out`. False (and `out` empty) if no
    /// resource folder is known or the resource doesn't exist; true once it exists, even if
    /// it could not be read.
    virtual bool get_resource(const std::string& name, std::vector<uint8_t>& out) = 0;

    /// Opens a URL, or a file path, in the user's default application. Doesn't wait.
    virtual void open_url(const std::string& url) = 0;

    virtual bool is_main_thread() const = 0;

    /// Creates one directory (not its parents), readable and writable by the user alone.
    /// False for an empty path, on failure, and when it exists already.
    virtual bool create_dir(const std::string& path) = 0;

    virtual const std::string& get_path_separator() const = 0;

    /// Size in whole points of the screen that shows most of `window` (or the main screen).
    virtual void get_screen_dimensions(void* window, int& width, int& height) const = 0;

    /// $HOME/Varnlight, created if missing; empty if there is no home directory.
    virtual std::string get_common_directory() = 0;

    /// Lists `path` in the order the system delivers, "." and ".." included; names get a
    /// "path/" prefix if `with_path`. Directories go to `directories`, everything else to
    /// `files` (either may be null, not both). False for an empty path, both null, or a
    /// folder that can't be opened.
    virtual bool list_dir(const std::string& path, std::vector<std::string>* directories,
                          std::vector<std::string>* files, bool with_path) = 0;

    virtual double get_dpi_scale() const = 0;
};

}  // namespace vl1
