// Named snapshots of a component, kept as one JSON file per preset in
// $HOME/Varnlight/Plugin Presets/<component name>/. The manager knows the component only
// through the framework's interfaces; the folder is the list of presets.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/icomponent.h"

namespace vl1 {

/// Results of preset_manager::save_preset.
inline constexpr int preset_saved = 0;
inline constexpr int preset_save_failed = 1;
inline constexpr int preset_exists = 2;

/// One entry of the preset list.
struct preset_entry {
    std::string name;        // what the menu shows
    std::string path;        // the file that loading reads: folder + "/" + name + ".json"
    bool readable = true;    // false if the file can't be read as a preset
    std::string problem;     // why not, in plain English; empty if readable
};

class preset_manager {
public:
    explicit preset_manager(std::weak_ptr<icomponent_v1> component);

    /// get_common_directory() + "/Plugin Presets/" + the component's name. Both levels are
    /// created on first use (an existing folder is no failure) and the path is kept. Empty if
    /// the component is gone or there is no home directory.
    std::string preset_folder();

    /// The file of preset `name` in the preset folder (no check of the name).
    std::string preset_path(const std::string& name);

    /// The presets of the folder: every file whose name holds ".json", under the name that
    /// stands before its first ".json", one entry per name, sorted ascending in byte order.
    /// Each entry tells whether its file reads as a preset; a broken file is listed as
    /// unreadable, never skipped. False if the folder can't be listed.
    bool list_presets(std::vector<preset_entry>& out);

    /// True if the component refuses the preset's state blob (for instance because the theme
    /// it names is not available), with the component's reason. A file that can't be read,
    /// or whose state is missing or malformed, is not refused here: load_preset fails on it.
    bool is_preset_rejected(const std::string& path, std::string& reason);

    /// Resets every parameter, applies the file's parameter list and then its state blob.
    /// False if the file can't be read, belongs to another component ("plugin_name"), has no
    /// valid parameter list (nothing changed then) or no valid state (parameters are reset
    /// and partly set by then: nothing is rolled back).
    bool load_preset(const std::string& path);

    /// Saves the component's current state as preset `name`: preset_saved, preset_exists
    /// (overwrite false and the file is there; nothing changes) or preset_save_failed (bad
    /// name, component gone, write error; an existing file then stays as it was). The text
    /// goes to a temporary file that replaces the preset only once it is completely written.
    int save_preset(const std::string& name, bool overwrite);
    /// As above; on preset_save_failed `reason` holds a message in the localised form
    /// "{en:...}{de:...}".
    int save_preset(const std::string& name, bool overwrite, std::string& reason);

    /// Removes the file of preset `name`, as the list shows it. An empty name or one with a
    /// path separator removes nothing.
    void delete_preset(const std::string& name);

private:
    std::weak_ptr<icomponent_v1> component;
    std::string folder;  // worked out on first use, then kept
};

}  // namespace vl1
