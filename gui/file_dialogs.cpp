#include "gui/file_dialogs.h"

#include <FL/Fl.H>
#include <FL/Fl_Native_File_Chooser.H>
#include <dlfcn.h>

#include <cstdlib>
#include <cstring>

#include "framework/log.h"

namespace vl1::gui {
namespace {

/// The toolkit's desktop dialog loads GTK 2, which ends any process that has GTK 3 loaded
/// already, as many hosts do; there, and when HUELOOM_FILE_DIALOG=builtin asks for it, the
/// toolkit's own chooser is used.
void choose_dialog_kind()
{
    bool desktop = true;
    if (const char* wanted = std::getenv("HUELOOM_FILE_DIALOG"); wanted != nullptr && std::strcmp(wanted, "builtin") == 0)
        desktop = false;
    if (void* gtk3 = dlopen("libgtk-3.so.0", RTLD_LAZY | RTLD_NOLOAD)) {
        dlclose(gtk3);
        desktop = false;
    }
    Fl::option(Fl::OPTION_FNFC_USES_GTK, desktop);
}

/// The toolkit's own chooser has a fixed layout made for the toolkit's normal text size; at a
/// desktop scale above 1 the editor's larger texts would outgrow it, so while it is made and
/// shown the text size is the normal one again.
class normal_text_size {
public:
    normal_text_size() { FL_NORMAL_SIZE = 14; }
    ~normal_text_size() { FL_NORMAL_SIZE = editor_size; }
    normal_text_size(const normal_text_size&) = delete;
    normal_text_size& operator=(const normal_text_size&) = delete;

private:
    Fl_Fontsize editor_size = FL_NORMAL_SIZE;
};

std::string run(Fl_Native_File_Chooser& chooser)
{
    switch (chooser.show()) {
    case 0:
        return chooser.filename() != nullptr ? chooser.filename() : "";
    case -1:
        log("File dialog failed: {0}", chooser.errmsg() != nullptr ? chooser.errmsg() : "");
        return "";
    default:
        return "";
    }
}

/// The filter list's label of entry `index`, as written in `filters`.
std::string filter_label(const std::string& filters, int index)
{
    std::size_t start = 0;
    for (int i = 0; i < index; ++i) {
        start = filters.find('\n', start);
        if (start == std::string::npos)
            return "";
        ++start;
    }
    const std::size_t end = filters.find_first_of("\n", start);
    return filters.substr(start, end == std::string::npos ? std::string::npos : end - start);
}

}  // namespace

std::string choose_folder(const std::string& title)
{
    choose_dialog_kind();  // before the chooser is made: it picks its kind when made
    const normal_text_size text_size;
    Fl_Native_File_Chooser chooser(Fl_Native_File_Chooser::BROWSE_DIRECTORY);
    chooser.title(title.c_str());
    // Theme folders are the user's own; the dialog starts at home rather than in the
    // host's working folder.
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        chooser.directory(home);
    return run(chooser);
}

std::string choose_save_file(const std::string& title, const std::string& filters, std::string& chosen_filter)
{
    choose_dialog_kind();
    const normal_text_size text_size;
    Fl_Native_File_Chooser chooser(Fl_Native_File_Chooser::BROWSE_SAVE_FILE);
    chooser.title(title.c_str());
    chooser.filter(filters.c_str());
    chooser.filter_value(0);
    chooser.options(Fl_Native_File_Chooser::NEW_FOLDER | Fl_Native_File_Chooser::SAVEAS_CONFIRM);
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
        chooser.directory(home);
    std::string path = run(chooser);
    chosen_filter = path.empty() ? "" : filter_label(filters, chooser.filter_value());
    return path;
}

}  // namespace vl1::gui
