// A set of named, typed, multi-dimensional properties: the one data structure behind every
// OfxPropertySetHandle the host hands out (host description, descriptors, instances, clips,
// parameters, images, action arguments).
//
// Who may change what, when the plug-in calls the property suite:
// - open sets (descriptors): the plug-in writes any property and may add new ones, which take
//   the type of the first setter and a variable dimension;
// - fixed sets (instances, clips, parameters of an instance, outArgs): the plug-in writes the
//   properties the host defined; a set of an unknown name is refused with kOfxStatErrUnknown;
// - read-only sets (the host description, images, inArgs): every set is refused, with
//   kOfxStatErrUnknown for an unknown name and kOfxStatErrUnsupported for a known one.
// A single property can also be marked read-only inside a writable set (kOfxPropType, names).
// The C++ side (tests, tools, the host itself) is not bound by these rules.
//
// Strings handed out by propGetString stay valid while the set lives and that value is not
// changed: values sit in a deque, whose elements never move when it grows or shrinks at the end.
#pragma once

#include "host/handle.h"
#include "ofx/api/ofx_core.h"

#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vl1::ofxhost {

enum class prop_type { integer, real, string, pointer };
enum class set_access { open, fixed, read_only };
enum class prop_dimension { fixed, variable };

using prop_value = std::variant<int, double, std::string, void*>;

const char* prop_type_name(prop_type type);

class property_set : public handle_tag {
public:
    static constexpr handle_kind kind = handle_kind::property_set;

    explicit property_set(set_access access = set_access::open);
    property_set(const property_set&) = delete;
    property_set& operator=(const property_set&) = delete;

    OfxPropertySetHandle handle() { return reinterpret_cast<OfxPropertySetHandle>(this); }
    set_access access() const { return access_mode; }
    void set_access_mode(set_access access) { access_mode = access; }

    /// Defines (or redefines) a property with its default values; the dimension is the
    /// number of values, and `variable` lets the plug-in grow or shrink it.
    void define(std::string_view name, prop_type type, std::vector<prop_value> defaults,
                prop_dimension dimension = prop_dimension::fixed, bool plugin_writable = true);
    void define_int(std::string_view name, std::vector<int> values,
                    prop_dimension dimension = prop_dimension::fixed);
    void define_double(std::string_view name, std::vector<double> values,
                       prop_dimension dimension = prop_dimension::fixed);
    void define_string(std::string_view name, std::vector<std::string> values,
                       prop_dimension dimension = prop_dimension::fixed);
    void define_pointer(std::string_view name, void* value);
    /// Marks a property as one the plug-in may read but never write.
    void protect(std::string_view name);
    /// Copies every property of `other` (values, defaults, dimension rules) into this set.
    void copy_from(const property_set& other);

    // Host-side access. Getters throw host_error for an unknown name, another type or a bad
    // index; setters define the property when it is missing and grow it by one at most.
    bool has(std::string_view name) const;
    int dimension(std::string_view name) const;
    prop_type type_of(std::string_view name) const;
    std::vector<std::string> names() const;
    int get_int(std::string_view name, int index = 0) const;
    double get_double(std::string_view name, int index = 0) const;
    std::string get_string(std::string_view name, int index = 0) const;
    void* get_pointer(std::string_view name, int index = 0) const;
    std::vector<int> get_ints(std::string_view name) const;
    std::vector<double> get_doubles(std::string_view name) const;
    std::vector<std::string> get_strings(std::string_view name) const;
    void set_int(std::string_view name, int value, int index = 0);
    void set_double(std::string_view name, double value, int index = 0);
    void set_string(std::string_view name, const std::string& value, int index = 0);
    void set_pointer(std::string_view name, void* value, int index = 0);
    /// The values as text for listings: `1, 2`, `0.5`, `"text"`, `null`; "" if absent.
    std::string format(std::string_view name) const;

    // Plug-in side, with the access rules and OFX status codes; used by the property suite.
    OfxStatus plugin_set(const char* name, int index, prop_value value);
    OfxStatus plugin_set_n(const char* name, const std::vector<prop_value>& values);
    OfxStatus plugin_get(const char* name, int index, prop_type type, const prop_value** out) const;
    OfxStatus plugin_get_n(const char* name, int count, prop_type type,
                           std::vector<const prop_value*>& out) const;
    OfxStatus plugin_reset(const char* name);
    OfxStatus plugin_dimension(const char* name, int* count) const;

private:
    struct property {
        prop_type type = prop_type::integer;
        prop_dimension dimension = prop_dimension::fixed;
        bool plugin_writable = true;
        std::deque<prop_value> values;
        std::vector<prop_value> defaults;
    };
    const property& find(std::string_view name, prop_type type, int index) const;
    void host_set(std::string_view name, prop_type type, prop_value value, int index);
    OfxStatus check_writable(const char* name, prop_type type, property** out);
    /// The plug-in's read of `name` as `type`: unknown and mistyped names as OFX says.
    OfxStatus find_for_plugin(const char* name, prop_type type, const property** out) const;
    static void assign(property& p, int index, prop_value value);

    set_access access_mode;
    mutable std::recursive_mutex values_mutex;
    // Looked up by the plug-in's C strings without making a std::string of each name.
    std::map<std::string, property, std::less<>> by_name;
    // The keys of by_name in the order of definition (map nodes never move).
    std::vector<const std::string*> definition_order;
};

}  // namespace vl1::ofxhost
