// One parameter: a descriptor (properties only) or an instance's parameter (properties, a
// constant value and keys). Values with keys interpolate as the kind says: linear for reals,
// linear then rounded for integers, step (the key at or before the time) for booleans, choices,
// strings and custom text. Before the first key the first key's value holds, after the last
// the last one's. Without keys the constant value holds at every time.
//
// Setting a value without a time: when the parameter has keys, the value becomes a key at
// the current time of the owning instance (as a host with auto-keying does); otherwise it
// replaces the constant value. Setting a value at a time on a parameter whose
// kOfxParamPropAnimates is 0 sets the constant value. Values are stored as given, not
// clamped to the parameter's range, so that tests can hand a plug-in hostile values.
#pragma once

#include "host/handle.h"
#include "host/param_kind.h"
#include "host/property_set.h"

#include <array>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vl1::ofxhost {

/// A value of any parameter kind: up to four numbers (r, g, b, a for colours; integers
/// stored as whole doubles) or a text.
struct param_value {
    std::array<double, 4> numbers{};
    std::string text;

    param_value() = default;
    param_value(double v) : numbers{v, 0, 0, 0} {}
    param_value(int v) : numbers{double(v), 0, 0, 0} {}
    param_value(std::array<double, 4> v) : numbers(v) {}
    param_value(const char* t) : text(t) {}
    param_value(std::string t) : text(std::move(t)) {}
    bool operator==(const param_value&) const = default;
};

class param : public handle_tag {
public:
    static constexpr handle_kind kind = handle_kind::param;

    /// `clock` is the owning instance's current time; null for a descriptor.
    param(const param_kind& kind, std::string name, const OfxTime* clock);

    OfxParamHandle handle() { return reinterpret_cast<OfxParamHandle>(this); }
    const std::string& name() const { return param_name; }
    const param_kind& kind_of() const { return *param_type; }
    const char* type() const { return param_type->type; }
    bool is_descriptor() const { return clock == nullptr; }
    bool has_value() const { return param_type->shape != value_shape::none; }
    property_set& properties() { return props; }
    const property_set& properties() const { return props; }
    OfxTime current_time() const { return clock ? *clock : 0.0; }

    /// The descriptor's kOfxParamPropDefault as a value.
    param_value default_value() const;

    param_value value() const;                 // at the current time
    param_value value_at(OfxTime time) const;  // interpolated
    /// The text at a time, by reference to the stored value: valid until that value changes.
    const std::string& text_at(OfxTime time) const;
    void set_value(param_value value);                // the rule for calls without a time
    void set_value_at(OfxTime time, param_value value);  // adds or replaces a key
    void set_constant(param_value value);             // ignores keys

    std::vector<OfxTime> key_times() const;
    bool has_key_at(OfxTime time) const;
    bool delete_key(OfxTime time);
    void delete_all_keys();
    /// Index of the key at `time` (direction 0), the last before it (< 0) or the first after it (> 0).
    std::optional<int> key_index(OfxTime time, int direction) const;

    /// Slope of each number at `time`; zero outside the keys and without two keys.
    std::array<double, 4> derivative(OfxTime time) const;
    /// Integral of each number from t1 to t2 (negative when t2 < t1).
    std::array<double, 4> integral(OfxTime t1, OfxTime t2) const;
    /// Takes `from`'s constant value and keys, shifted by `offset`; with a range, only the keys
    /// inside it, replacing this parameter's keys in the shifted range.
    void copy_from(const param& from, OfxTime offset, const OfxRangeD* range);

    // Typed conveniences for tests and tools, at the current time.
    double get_double() const { return value().numbers[0]; }
    int get_int() const { return static_cast<int>(value().numbers[0]); }
    bool get_bool() const { return value().numbers[0] != 0.0; }
    std::string get_string() const { return value().text; }
    std::array<double, 4> get_rgba() const { return value().numbers; }
    void set_double(double v) { set_value(v); }
    void set_int(int v) { set_value(v); }
    void set_bool(bool v) { set_value(v ? 1 : 0); }
    void set_string(const std::string& v) { set_value(v); }
    void set_rgba(std::array<double, 4> v) { set_value(v); }
    void set_key(OfxTime time, param_value v) { set_value_at(time, std::move(v)); }

private:
    using key_map = std::map<OfxTime, param_value>;
    param_value normalised(param_value value) const;
    key_map::const_iterator find_key(OfxTime time) const;
    param_value interpolate(OfxTime time) const;
    bool animates() const;

    const param_kind* param_type;
    std::string param_name;
    const OfxTime* clock;
    property_set props;
    mutable std::recursive_mutex value_mutex;
    param_value constant;
    key_map keys;
};

}  // namespace vl1::ofxhost
