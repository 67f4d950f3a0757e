#include "themes/hueloom_theme_collection_v1.h"

#include <mutex>

namespace vl1 {

std::shared_ptr<const hueloom_theme_v1> hueloom_theme_collection_v1::get_theme_by_uid(unsigned int uid) const
{
    std::shared_lock read(lock);
    if (const auto found = themes.find(uid); found != themes.end())
        return found->second;
    if (default_theme && default_theme->uid == uid)
        return default_theme;
    return nullptr;
}

std::shared_ptr<const hueloom_theme_v1> hueloom_theme_collection_v1::get_default_theme() const
{
    std::shared_lock read(lock);
    return default_theme;
}

void hueloom_theme_collection_v1::add_or_replace_theme(std::shared_ptr<const hueloom_theme_v1> theme)
{
    if (!theme)
        return;
    const uint32_t uid = theme->uid;
    std::string name = theme->name;
    const uint32_t version = theme->version;
    std::unique_lock write(lock);
    themes[uid] = std::move(theme);
    names[uid] = std::move(name);
    versions[uid] = version;
}

void hueloom_theme_collection_v1::remove_theme(unsigned int uid)
{
    std::unique_lock write(lock);
    themes.erase(uid);
    names.erase(uid);
    versions.erase(uid);
}

void hueloom_theme_collection_v1::set_default_theme(std::shared_ptr<const hueloom_theme_v1> theme)
{
    if (!theme)
        return;
    std::unique_lock write(lock);
    names[theme->uid] = theme->name;
    versions[theme->uid] = theme->version;
    default_theme = std::move(theme);
}

std::unordered_map<uint32_t, std::string> hueloom_theme_collection_v1::get_theme_names() const
{
    std::shared_lock read(lock);
    return names;
}

std::unordered_map<uint32_t, uint32_t> hueloom_theme_collection_v1::get_theme_versions() const
{
    std::shared_lock read(lock);
    return versions;
}

uint32_t hueloom_theme_collection_v1::get_theme_version(unsigned int uid) const
{
    std::shared_lock read(lock);
    const auto found = versions.find(uid);
    return found != versions.end() ? found->second : 0;
}

}  // namespace vl1
