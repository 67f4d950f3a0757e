// The themes the program knows at the moment, shared by every effect instance of the
// process. Holds immutable themes: changing one means replacing it by a new object of the
// same uid; whoever holds the old one keeps it unchanged.
#pragma once

#include <cstdint>
#include <memory>
#include <shared_mutex>
#include <string>
#include <unordered_map>

#include "color/hueloom_theme_v1.h"

namespace vl1 {

class hueloom_theme_collection_v1 {
public:
    /// The theme of `uid`; the default theme if it has that uid and no added theme does;
    /// empty if unknown.
    std::shared_ptr<const hueloom_theme_v1> get_theme_by_uid(unsigned int uid) const;

    /// The built-in theme; empty until set (normally once, while the vault makes the
    /// collection).
    std::shared_ptr<const hueloom_theme_v1> get_default_theme() const;

    /// Stores the theme under its uid, replacing theme, name and version of that uid.
    /// An empty reference changes nothing.
    void add_or_replace_theme(std::shared_ptr<const hueloom_theme_v1> theme);

    /// Erases the uid from themes, names and versions. The default theme object stays even
    /// if it has this uid (get_theme_by_uid still finds it), but leaves the name list.
    void remove_theme(unsigned int uid);

    /// Makes the theme the default and lists its name and version; the added themes are not
    /// touched. An empty reference keeps the former default.
    void set_default_theme(std::shared_ptr<const hueloom_theme_v1> theme);

    /// Copies, taken under the lock, of the name and version of every listed theme, the
    /// default included. Unordered: a list that a user sees is sorted by its builder.
    std::unordered_map<uint32_t, std::string> get_theme_names() const;
    std::unordered_map<uint32_t, uint32_t> get_theme_versions() const;

    /// The listed version of `uid`, 0 if the uid isn't listed.
    uint32_t get_theme_version(unsigned int uid) const;

private:
    mutable std::shared_mutex lock;
    std::unordered_map<uint32_t, std::shared_ptr<const hueloom_theme_v1>> themes;
    std::unordered_map<uint32_t, std::string> names;
    std::unordered_map<uint32_t, uint32_t> versions;
    std::shared_ptr<const hueloom_theme_v1> default_theme;
};

}  // namespace vl1
