// The default component, from which an effect derives: the parameter list, the state blob,
// the undo ring, bypass and the defaults of every slot.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "framework/icomponent.h"
#include "framework/ihost.h"
#include "framework/iparameter.h"
#include "framework/iview.h"
#include "framework/shared_state_ring.h"

namespace vl1 {

/// The base state blob, little-endian: "s1vc", int32 record count n, then n records of the
/// 44-byte param_value followed by the parameter's uid (48 bytes each). A component without
/// parameters has an empty blob, not even the header.
inline constexpr uint32_t state_magic = 0x63763173;  // the bytes "s1vc"
inline constexpr std::size_t state_header_size = 8;
inline constexpr std::size_t state_record_size = 48;

/// Entries of the undo ring; index i lives in states[i & (undo_ring_size - 1)].
inline constexpr int32_t undo_ring_size = 32;

inline constexpr const char* manual_url = "https://www.varnlight.com/products/tutorials.php?id=48";

class ccomponent_v1 : public icomponent_v1 {
public:
    static constexpr uid ifc_id{"ccomponent_v1"};

    ccomponent_v1() = default;

    bool query_interface(const std::string& name, iobject** out) override;

    std::shared_ptr<iview_v1> create_view() override;  // null
    std::string get_name() override;                   // "Hueloom"
    std::string get_vendor() override;                 // "Varnlight"
    std::string get_com_identifier() override;         // "com.varnlight.hueloomofx"
    version_record get_version() override;             // 1, 3, 0, 0
    std::shared_ptr<ihost_v1> get_host() override;

    /// Stores the host, builds the parameters (init_component), raises event_initialized and
    /// keeps the resulting state as the default. A null host changes nothing.
    void initialize(std::shared_ptr<ihost_v1> host) override;
    void terminate() override;
    void init_component() override;

    bool is_state_rejected(std::vector<uint8_t>& state, bool from_host, std::string& reason) override;

    /// False for no parameters, a blob of 8 bytes or fewer, or a wrong magic. Records set the
    /// live parameters' values under their own bounds and default; unknown uids go to
    /// handle_unknown_parameter.
    bool set_state(std::vector<uint8_t>& state, bool from_host) override;
    std::vector<uint8_t> get_state() override;
    std::size_t get_state_size() override;

    void undo() override;
    void redo() override;
    void save_cancel_state() override;
    /// Works only while the view is open; returns the index `current` had on entry.
    int32_t save_state(bool push) override;
    void jump_undo_stack(int index) override;
    void flush_state_stack() override;
    /// Heap bytes the undo ring holds; entries share their equal parts.
    std::size_t undo_memory_bytes() const { return states.memory_bytes(); }

    int get_parameter_count() override;
    std::shared_ptr<iparameter_v1> get_parameter(int index) override;
    std::shared_ptr<iparameter_v1> get_parameter(uid id) override;
    std::shared_ptr<iparameter_v1> get_parameter(const std::string& name) override;

    std::shared_ptr<iview_v1> get_view() override;

    void notify(event e) override;  // nothing

    void process_pixel(int x, int y, const argb_float& in, argb_float* out) override;  // nothing

    /// Opens manual_url in the user's browser.
    void open_manual() override;
    /// The first call asks the host for a render.
    void idle() override;

    /// The bypass parameter is the first whose get_flags() has param_flag_bypass.
    bool has_bypass() override;
    void set_bypass(bool bypass) override;
    bool get_bypass() override;

    void reset_to_default() override;
    void cancel_effect() override;

    void handle_unknown_parameter(uid id, const param_value& value, bool from_host) override;

protected:
    /// Appends to `parameters`; their order is the host's list order and the blob's.
    template <typename P>
    std::shared_ptr<P> add_parameter(std::shared_ptr<P> param)
    {
        parameters.push_back(param);
        return param;
    }

    std::shared_ptr<iparameter_v1> find_bypass_parameter();
    /// set_state with the ring's entry of `index`.
    void restore(int32_t index);

    std::shared_ptr<ihost_v1> host;
    std::shared_ptr<iview_v1> view;  // the open editor, set by the effect's create_view
    std::vector<std::shared_ptr<iparameter_v1>> parameters;
    shared_state_ring states{undo_ring_size};
    int32_t top = 0;      // highest valid index
    int32_t count = 0;    // entries held, at most undo_ring_size
    int32_t current = 0;  // the index the component stands at
    bool in_undo = false;  // an undo or backward jump is running
    bool in_redo = false;  // a redo or forward jump is running
    std::vector<uint8_t> default_state;  // the state just after initialize
    std::vector<uint8_t> cancel_state;   // the state at the last save_cancel_state
    bool idle_seen = false;
};

}  // namespace vl1
