// Small stand-ins for the parts around a component: a host object that records events, a
// view that can be open or closed, and a component whose parameters a test chooses.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "framework/ccomponent.h"
#include "framework/chost.h"
#include "framework/cparameter.h"
#include "framework/iview.h"

namespace vl1::fwtest {

struct recorded_event {
    event_type type;
    uid param;
};

class recording_host : public chost_v1 {
public:
    using chost_v1::chost_v1;

    void notify(event e) override
    {
        events.push_back({e.type, e.param});
        chost_v1::notify(std::move(e));
    }

    int count(event_type type) const
    {
        int n = 0;
        for (const auto& e : events)
            n += e.type == type ? 1 : 0;
        return n;
    }

    std::vector<recorded_event> events;
};

class test_view : public iview_v1 {
public:
    bool query_interface(const std::string&, iobject** out) override
    {
        if (out != nullptr)
            *out = nullptr;
        return false;
    }
    rect get_rect() const override { return {400, 300}; }
    bool open(std::shared_ptr<window>) override { return open_flag = true; }
    void close() override { open_flag = false; }
    bool is_open() override { return open_flag; }
    bool is_editing() override { return false; }
    bool idle() override { return true; }
    void set_control_from_parameter(std::shared_ptr<iparameter_v1> param, bool from_host) override
    {
        updates.emplace_back(param->get_uid(), from_host);
        if (on_update)
            on_update();
    }
    void set_preview_image(image&) override {}

    bool open_flag = true;
    std::vector<std::pair<uid, bool>> updates;
    std::function<void()> on_update;  // e.g. a view that pushes an undo step on every update
};

/// A boolean that the component takes as its bypass switch.
class bypass_parameter : public cparameter_boolean_v1 {
public:
    using cparameter_boolean_v1::cparameter_boolean_v1;
    uint32_t get_flags() override { return param_flag_bypass; }
};

class test_component : public ccomponent_v1 {
public:
    using builder = std::function<void(test_component&)>;

    explicit test_component(builder b = {}) : build(std::move(b)) {}

    void init_component() override
    {
        if (build)
            build(*this);
    }
    void notify(event e) override { received.push_back({e.type, e.param}); }

    using ccomponent_v1::add_parameter;
    std::shared_ptr<icomponent_v1> self() { return shared_from_this(); }
    void attach_view(std::shared_ptr<iview_v1> v) { view = std::move(v); }
    int32_t stack_top() const { return top; }
    int32_t stack_count() const { return count; }
    int32_t stack_current() const { return current; }

    builder build;
    std::vector<recorded_event> received;
};

/// The usual parameters of these tests: "Amount" 0..1 (default 0.5), "Steps" -5..5
/// (default 1), "Bypass" and "Tint".
inline void add_standard_parameters(test_component& c)
{
    c.add_parameter(std::make_shared<cparameter_continuous_v1>(c.self(), "Amount", 0.0f, 1.0f, 0.5f));
    c.add_parameter(std::make_shared<cparameter_integral_v1>(c.self(), "Steps", -5, 5, 1));
    c.add_parameter(std::make_shared<bypass_parameter>(c.self(), "Bypass", false));
    c.add_parameter(std::make_shared<cparameter_color_v1>(c.self(), "Tint", param_argb{1.0f, 0.5f, 0.25f, 0.0f}));
}

struct rig {
    std::shared_ptr<test_component> component;
    std::shared_ptr<recording_host> host;
    std::shared_ptr<test_view> view;

    template <typename P = cparameter_v1>
    std::shared_ptr<P> param(const char* name)
    {
        return std::dynamic_pointer_cast<P>(component->get_parameter(std::string(name)));
    }
};

/// An initialised component with a recording host and an open view.
inline rig make_rig(test_component::builder build = add_standard_parameters)
{
    rig r;
    r.component = std::make_shared<test_component>(std::move(build));
    r.host = std::make_shared<recording_host>(r.component);
    r.component->initialize(r.host);
    r.view = std::make_shared<test_view>();
    r.component->attach_view(r.view);
    r.host->events.clear();
    return r;
}

}  // namespace vl1::fwtest
