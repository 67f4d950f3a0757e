// The editor's file dialogs: the desktop's own where the toolkit finds one, else the
// toolkit's chooser. Both run a modal loop of their own and return once the user is done.
#pragma once

#include <string>

namespace vl1::gui {

/// The folder the user picked; empty if cancelled.
std::string choose_folder(const std::string& title);

/// A file to save to, with `filters` in the toolkit's form ("Cube LUT\t*.cube\n3DL LUT\t*.3dl").
/// `chosen_filter` receives the text of the filter the user had selected, where the dialog
/// tells it. Empty if cancelled.
std::string choose_save_file(const std::string& title, const std::string& filters, std::string& chosen_filter);

}  // namespace vl1::gui
