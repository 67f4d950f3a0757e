// The default parameter object and its four typed forms.
#pragma once

#include <memory>
#include <string>

#include "framework/icomponent.h"
#include "framework/ihost.h"
#include "framework/iparameter.h"

namespace vl1 {

/// The single home of one value. Every writer (host adapter, editor, state stack) goes
/// through set_param_value, so all get the same clamping and the same events. Must be made
/// while the component already has a host (i.e. in init_component); a parameter made earlier
/// has no host and never notifies anyone. Always owned by a shared_ptr.
class cparameter_v1 : public iparameter_v1 {
public:
    static constexpr uid ifc_id{"cparameter_v1"};

    cparameter_v1(std::weak_ptr<icomponent_v1> component, std::string name, param_type type);

    bool query_interface(const std::string& name, iobject** out) override;

    std::string get_name() override;
    uid get_uid() override;
    param_type get_type() override;

    void set_enabled(bool enabled) override;
    bool get_enabled() override;

    param_value get_param_value() override;
    void set_param_value(param_value value, bool from_host) override;
    param_value get_previous_param_value() override;

    bool is_dirty() override;

    void reset_to_default() override;
    bool get_is_reset() override;
    bool get_is_default() override;

    bool get_string_from_value(param_value value, std::string& out, int precision) override;
    bool get_value_from_string(std::string text, param_value& out) override;

    uint32_t get_flags() override;

protected:
    /// What a typed constructor does after storing default and bounds in `value`: clamp the
    /// value (not the default) and copy the whole of `value` into `previous`.
    void finish_construction();

    std::weak_ptr<icomponent_v1> component;
    param_value value;     // current value with default and bounds
    param_value previous;  // `value` as it stood before the last accepted change
    std::string name;      // also the script name and label at the host
    uid id;
    std::weak_ptr<ihost_v1> host;
    bool enabled = true;
    bool is_reset = true;  // nothing but the default was set since the last reset
};

class cparameter_continuous_v1 : public cparameter_v1 {
public:
    cparameter_continuous_v1(std::weak_ptr<icomponent_v1> component, std::string name,
                             float min, float max, float default_value);

    virtual float get_value();
    virtual void set_value(float v, bool from_host);
    /// (value - min) / (max - min)
    virtual float get_value_normalized();
    /// value = (max - min) * n + min
    virtual void set_value_normalized(float n, bool from_host);
};

class cparameter_integral_v1 : public cparameter_v1 {
public:
    cparameter_integral_v1(std::weak_ptr<icomponent_v1> component, std::string name,
                           int min, int max, int default_value);

    virtual int get_value();
    virtual void set_value(int v, bool from_host);
    /// (float)(value - min) / (float)(max - min); min == max divides by zero.
    virtual float get_value_normalized();
    /// value = (int)((float)(max - min) * n + (float)min), truncated
    virtual void set_value_normalized(float n, bool from_host);
};

class cparameter_boolean_v1 : public cparameter_v1 {
public:
    cparameter_boolean_v1(std::weak_ptr<icomponent_v1> component, std::string name,
                          bool default_value);

    virtual bool get_value();
    virtual void set_value(bool v, bool from_host);
    /// 1.0 or 0.0
    virtual float get_value_normalized();
    /// value = n > 0.5
    virtual void set_value_normalized(float n, bool from_host);
};

class cparameter_color_v1 : public cparameter_v1 {
public:
    cparameter_color_v1(std::weak_ptr<icomponent_v1> component, std::string name,
                        param_argb default_value);

    virtual param_argb get_value();
    virtual void set_value(param_argb v, bool from_host);
};

}  // namespace vl1
