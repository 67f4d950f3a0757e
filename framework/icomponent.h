// A plug-in written host-neutrally: parameters, a state blob with undo, a view.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "framework/argb_float.h"
#include "framework/event.h"
#include "framework/iobject.h"
#include "framework/param_value.h"
#include "framework/types.h"
#include "framework/uid.h"

namespace vl1 {

class ihost_v1;
class iparameter_v1;
class iview_v1;

class icomponent_v1 : public iobject, public std::enable_shared_from_this<icomponent_v1> {
public:
    virtual std::shared_ptr<iview_v1> create_view() = 0;

    virtual std::string get_name() = 0;
    virtual std::string get_vendor() = 0;
    virtual std::string get_com_identifier() = 0;

    virtual version_record get_version() = 0;

    virtual std::shared_ptr<ihost_v1> get_host() = 0;

    virtual void initialize(std::shared_ptr<ihost_v1> host) = 0;
    virtual void terminate() = 0;
    /// Where an effect builds its parameters: the host is known by then.
    virtual void init_component() = 0;

    virtual bool is_state_rejected(std::vector<uint8_t>& state, bool from_host, std::string& reason) = 0;

    virtual bool set_state(std::vector<uint8_t>& state, bool from_host) = 0;
    virtual std::vector<uint8_t> get_state() = 0;
    virtual std::size_t get_state_size() = 0;

    virtual void undo() = 0;
    virtual void redo() = 0;
    virtual void save_cancel_state() = 0;
    /// Returns the undo index the component stood at on entry.
    virtual int32_t save_state(bool push) = 0;
    virtual void jump_undo_stack(int index) = 0;
    virtual void flush_state_stack() = 0;

    virtual int get_parameter_count() = 0;
    /// Null if absent.
    virtual std::shared_ptr<iparameter_v1> get_parameter(int index) = 0;
    virtual std::shared_ptr<iparameter_v1> get_parameter(uid id) = 0;
    virtual std::shared_ptr<iparameter_v1> get_parameter(const std::string& name) = 0;

    virtual std::shared_ptr<iview_v1> get_view() = 0;

    virtual void notify(event e) = 0;

    /// The per-pixel operation of the render path. Called from many threads at once: it must
    /// neither allocate nor lock.
    virtual void process_pixel(int x, int y, const argb_float& in, argb_float* out) = 0;

    virtual void open_manual() = 0;
    virtual void idle() = 0;

    virtual bool has_bypass() = 0;
    virtual void set_bypass(bool bypass) = 0;
    virtual bool get_bypass() = 0;

    virtual void reset_to_default() = 0;
    virtual void cancel_effect() = 0;

    /// A state record whose uid matches no parameter of this version.
    virtual void handle_unknown_parameter(uid id, const param_value& value, bool from_host) = 0;
};

}  // namespace vl1
