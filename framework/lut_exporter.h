// What the editor asks of a component whose current table can be exported as a LUT file.
#pragma once

#include "framework/iobject.h"
#include "framework/lut_table.h"
#include "framework/uid.h"

namespace vl1 {

class lut_exporter : public iobject {
public:
    /// The hash of "lut_exporter" (0xAABC8F0E), which query_interface compares with.
    static constexpr uid ifc_id{"lut_exporter"};

    /// The table of the current look into `*lut` (edge 32, text emptied). False, leaving
    /// nothing changed, for a null `lut`.
    virtual bool get_lut(lut_argb_variable* lut) = 0;
};

}  // namespace vl1
