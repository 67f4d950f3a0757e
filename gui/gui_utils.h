// The platform services that need the editor's window system: alerts, monitor sizes and the
// desktop's scale. Everything else is the plain Linux implementation.
#pragma once

#include "framework/cutils_linux.h"

namespace vl1::gui {

class gui_utils : public cutils_linux {
public:
    using cutils_linux::alert_box;
    /// A modal alert with one or two buttons; the first is the default ("OK" in the user's
    /// language when empty). Without a display it only logs and answers false.
    bool alert_box(void* parent, const std::string& title, const std::string& text, const std::string& first_button,
                   const std::string& second_button) const override;
    /// The monitor that shows most of the X window `window` (or the first one).
    void get_screen_dimensions(void* window, int& width, int& height) const override;
    double get_dpi_scale() const override;
};

}  // namespace vl1::gui
