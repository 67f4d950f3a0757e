// The root of all framework interfaces.
#pragma once

#include <string>

namespace vl1 {

class iobject {
public:
    virtual ~iobject() = default;

    /// Hashes `name` and compares it with the class's `ifc_id`: on a match stores `this` in
    /// *out and returns true, otherwise stores null and returns false.
    virtual bool query_interface(const std::string& name, iobject** out) = 0;
};

}  // namespace vl1
