#include "presets/preset_manager.h"

#include <filesystem>

#include <fmt/format.h>

#include "framework/io/write_file_atomically.h"
#include "framework/iparameter.h"
#include "framework/iutils.h"
#include "framework/log.h"
#include "presets/preset_document.h"
#include "presets/preset_names.h"
#include "presets/preset_reader.h"
#include "presets/preset_writer.h"

namespace vl1 {

namespace {

namespace fs = std::filesystem;

constexpr const char* presets_folder_name = "Plugin Presets";

const char* const save_failed_reason =
    "{en:The preset could not be written.}{de:Das Preset konnte nicht geschrieben werden.}";

bool load_document_for(const std::string& path, rapidjson::Document& document)
{
    std::string problem;
    if (read_preset_document(path, document, problem))
        return true;
    log("{}", problem);
    return false;
}

bool apply_preset(const rapidjson::Value& root, icomponent_v1& component)
{
    if (!preset_plugin_name_matches(root, component.get_name()))
        return false;
    const rapidjson::Value* list = preset_parameter_list(root);
    if (list == nullptr)
        return false;
    for (int i = 0; i < component.get_parameter_count(); ++i) {
        if (const auto param = component.get_parameter(i))
            param->reset_to_default();
    }
    for (const auto& element : list->GetArray())
        apply_preset_parameter(element, component);
    std::vector<uint8_t> state;
    if (!read_preset_state(root, state))
        return false;
    // Whether the component takes every byte of the state is its own affair.
    component.set_state(state, false);
    return true;
}

}  // namespace

preset_manager::preset_manager(std::weak_ptr<icomponent_v1> c) : component(std::move(c)) {}

std::string preset_manager::preset_folder()
{
    if (!folder.empty())
        return folder;
    try {
        const auto owner = component.lock();
        if (!owner)
            return {};
        const std::string component_name = owner->get_name();
        iutils& utils = iutils::get_instance();
        const std::string common = utils.get_common_directory();
        if (common.empty() || component_name.empty())
            return {};
        const std::string& separator = utils.get_path_separator();
        const std::string presets = common + separator + presets_folder_name;
        utils.create_dir(presets);  // false also when it exists already
        const std::string own = presets + separator + component_name;
        utils.create_dir(own);
        folder = own;
    } catch (const std::exception& e) {
        log("Cannot work out the preset folder: {}", e.what());
    } catch (...) {
        log("Cannot work out the preset folder.");
    }
    return folder;
}

std::string preset_manager::preset_path(const std::string& name)
{
    const std::string base = preset_folder();
    if (base.empty())
        return {};
    return base + iutils::get_instance().get_path_separator() + name + preset_extension;
}

bool preset_manager::list_presets(std::vector<preset_entry>& out)
{
    out.clear();
    try {
        const std::string base = preset_folder();
        std::vector<std::string> files;
        if (base.empty() || !iutils::get_instance().list_dir(base, nullptr, &files, false))
            return false;
        for (auto& name : preset_names_from_file_names(files)) {
            preset_entry entry;
            entry.path = preset_path(name);
            entry.name = std::move(name);
            entry.readable = check_preset_file(entry.path, entry.problem);
            out.push_back(std::move(entry));
        }
        return true;
    } catch (const std::exception& e) {
        log("Cannot list the presets: {}", e.what());
    } catch (...) {
        log("Cannot list the presets.");
    }
    out.clear();
    return false;
}

bool preset_manager::is_preset_rejected(const std::string& path, std::string& reason)
{
    reason.clear();
    try {
        const auto owner = component.lock();
        if (!owner)
            return false;
        rapidjson::Document document;
        std::vector<uint8_t> state;
        if (!load_document_for(path, document) || !read_preset_state(document, state))
            return false;
        return owner->is_state_rejected(state, false, reason);
    } catch (const std::exception& e) {
        log("Cannot check preset '{}': {}", path, e.what());
    } catch (...) {
        log("Cannot check preset '{}'.", path);
    }
    reason.clear();
    return false;
}

bool preset_manager::load_preset(const std::string& path)
{
    try {
        const auto owner = component.lock();
        if (!owner)
            return false;
        rapidjson::Document document;
        if (!load_document_for(path, document))
            return false;
        return apply_preset(document, *owner);
    } catch (const std::exception& e) {
        log("Cannot load preset '{}': {}", path, e.what());
    } catch (...) {
        log("Cannot load preset '{}'.", path);
    }
    return false;
}

int preset_manager::save_preset(const std::string& name, bool overwrite)
{
    std::string ignored;
    return save_preset(name, overwrite, ignored);
}

int preset_manager::save_preset(const std::string& name, bool overwrite, std::string& reason)
{
    reason.clear();
    try {
        if (!is_acceptable_preset_name(name, reason))
            return preset_save_failed;
        const auto owner = component.lock();
        const std::string path = preset_path(name);
        if (!owner || path.empty()) {
            reason = save_failed_reason;
            return preset_save_failed;
        }
        std::error_code ec;
        if (!overwrite && fs::exists(fs::symlink_status(path, ec)))
            return preset_exists;
        std::string problem;
        if (!write_file_atomically(path, build_preset_text(*owner), problem)) {
            log("{}", problem);
            reason = save_failed_reason;
            return preset_save_failed;
        }
        return preset_saved;
    } catch (const std::exception& e) {
        log("Cannot save preset '{}': {}", name, e.what());
    } catch (...) {
        log("Cannot save preset '{}'.", name);
    }
    reason = save_failed_reason;
    return preset_save_failed;
}

void preset_manager::delete_preset(const std::string& name)
{
    try {
        // Names come from the list here, so only what could leave the folder is refused.
        if (name.empty() || name.find('/') != std::string::npos || name.find('\0') != std::string::npos)
            return;
        const std::string path = preset_path(name);
        std::error_code ignored;
        if (!path.empty())
            fs::remove(path, ignored);
    } catch (...) {
        log("Cannot delete preset '{}'.", name);
    }
}

}  // namespace vl1
