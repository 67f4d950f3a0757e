// A menu drawn from a picture that opens a list of entries, each with a title and a tag. The
// editor lays a text field over the menu and lets only the menu's rightmost points open it,
// so the menu's own text is hidden and the field shows what was chosen.
#pragma once

#include <FL/Fl_Menu_.H>
#include <FL/Fl_Menu_Item.H>

#include <memory>
#include <string>
#include <vector>

#include "gui/control.h"
#include "gui/cvl_bitmap.h"

namespace vl1::gui {

class CVLOptionMenu : public Fl_Menu_, public CVLControl {
public:
    struct entry {
        std::string title;
        int32_t tag = no_tag;
        bool separator = false;
    };

    CVLOptionMenu(int x, int y, int w, int h, control_listener* listener, int32_t tag,
                  std::shared_ptr<CVLBitmap> picture, std::shared_ptr<CVLBitmap> pressed_picture);

    void addEntry(const std::string& title, int32_t tag = no_tag);
    void addSeparator();
    void removeAllEntry();
    int getNbEntries() const { return static_cast<int>(entries.size()); }
    /// Null outside the list.
    const entry* getEntry(int index) const;
    /// The index counts separators; -1 with no entries.
    int getCurrentIndex() const { return current; }
    /// The index among entries that aren't separators; -1 if none is current.
    int getCurrentIndexWithoutSeparators() const;
    const entry* getCurrent() const { return getEntry(current); }
    /// Makes `index` current (a separator or an index outside the list changes nothing), and
    /// tells the listener if `notify`.
    bool setCurrent(int index, bool notify);
    bool setValue(float v) override;

    /// Only the rightmost `points` open the list; 0 means the whole menu.
    void set_mouseable_from_right(int points) { mouseable_from_right = points; }
    /// The menu's own title is drawn only if its text colour isn't transparent.
    void set_title_visible(bool visible) { title_visible = visible; }

    /// Opens the list below the menu and waits for a choice; the choice becomes current and
    /// the listener is told.
    void open_list();

    void draw() override;
    int handle(int event) override;

private:
    void rebuild_items();
    bool in_mouseable_area() const;

    std::vector<entry> entries;
    std::vector<std::string> labels;      // entries' titles as the toolkit draws them
    std::vector<Fl_Menu_Item> items;      // the toolkit's list, terminated by an empty item
    std::shared_ptr<CVLBitmap> picture, pressed_picture;
    int current = -1;
    int mouseable_from_right = 0;
    bool title_visible = true;
    bool open = false;
};

}  // namespace vl1::gui
