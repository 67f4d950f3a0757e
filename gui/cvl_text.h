// Text widgets of the editor: a one-line field that may lie transparently over another
// control (the menus' name fields), and a label without a background.
#pragma once

#include <FL/Fl_Input.H>
#include <FL/Fl_Widget.H>

#include <string>

namespace vl1::gui {

class CVLTextEdit : public Fl_Input {
public:
    /// `under` is the control the field lies on and lets show through; may be null.
    CVLTextEdit(int x, int y, int w, int h, Fl_Widget* under);

    void setText(const std::string& text);
    std::string getText() const { return value(); }
    /// Called when the user presses Enter in the field.
    void set_on_enter(void (*callback)(void*), void* data) { on_enter = callback, on_enter_data = data; }

    void draw() override;
    int handle(int event) override;

private:
    Fl_Widget* under;
    void (*on_enter)(void*) = nullptr;
    void* on_enter_data = nullptr;
};

class CVLTextLabel : public Fl_Widget {
public:
    CVLTextLabel(int x, int y, int w, int h, const std::string& text);

    void setText(const std::string& text);
    const std::string& getText() const { return text; }
    /// Hiding or showing redraws what lies below, since the label has no background.
    void set_shown(bool shown);

    void draw() override;

private:
    std::string text;
};

}  // namespace vl1::gui

namespace vl1::gui {

/// The toolkit keeps pointers to tooltips and labels; this gives a copy of `text` that lives
/// as long as the process (there are a few dozen such texts).
const char* persistent_text(const std::string& text);

}  // namespace vl1::gui
