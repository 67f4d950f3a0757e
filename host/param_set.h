// The parameters of a descriptor or of an instance, in definition order, with the set's own
// property set and the bracket of paramEditBegin / paramEditEnd.
#pragma once

#include "host/handle.h"
#include "host/param.h"
#include "host/property_set.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vl1::ofxhost {

class param_set : public handle_tag {
public:
    static constexpr handle_kind kind = handle_kind::param_set;

    /// `clock` is the owning instance's current time; null makes a descriptor set, whose
    /// parameters may be defined but hold no values.
    explicit param_set(const OfxTime* clock);

    OfxParamSetHandle handle() { return reinterpret_cast<OfxParamSetHandle>(this); }
    bool is_descriptor() const { return clock == nullptr; }
    property_set& properties() { return props; }

    /// paramDefine: kOfxStatErrExists for a taken name, kOfxStatErrUnknown for an unknown
    /// type, kOfxStatErrUnsupported on an instance's set.
    OfxStatus define(const char* type, const char* name, param** out);
    param* find(const std::string& name);
    const param* find(const std::string& name) const;
    const std::vector<std::unique_ptr<param>>& params() const { return param_list; }

    /// Makes an instance's parameters from a descriptor set: same names, types and properties,
    /// each valued at its default.
    void instantiate_from(const param_set& descriptor);

    OfxStatus edit_begin(const char* name);
    OfxStatus edit_end();
    /// Names of the edit blocks the plug-in has closed, oldest first.
    std::vector<std::string> closed_edits() const { return closed_edit_names; }
    bool editing() const { return edit_open; }

private:
    const OfxTime* clock;
    property_set props;
    std::vector<std::unique_ptr<param>> param_list;
    bool edit_open = false;
    std::string edit_name;
    std::vector<std::string> closed_edit_names;
};

}  // namespace vl1::ofxhost
