#include "gui/cvl_option_menu.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>

#include "gui/canvas.h"
#include "gui/zoom.h"

namespace vl1::gui {
namespace {

const Fl_Color list_grey = fl_rgb_color(47, 47, 47);
const Fl_Color list_frame = fl_rgb_color(87, 87, 87);

/// The open list's background: the editor's grey with a frame, whatever colour the toolkit
/// hands in (see the constructor).
void draw_list_box(int x, int y, int w, int h, Fl_Color)
{
    fl_rectf(x, y, w, h, list_grey);
    fl_color(list_frame);
    fl_rect(x, y, w, h);
}

Fl_Boxtype list_box()
{
    static const Fl_Boxtype type = [] {
        const auto t = static_cast<Fl_Boxtype>(FL_FREE_BOXTYPE);
        Fl::set_boxtype(t, draw_list_box, 1, 1, 2, 2);
        return t;
    }();
    return type;
}

/// The toolkit reads '&' as a shortcut mark and '@' as a symbol; a theme's name is neither.
std::string literal_label(const std::string& title)
{
    std::string out;
    for (char c : title) {
        if (c == '&' || c == '@')
            out += c;
        out += c;
    }
    return out;
}

}  // namespace

CVLOptionMenu::CVLOptionMenu(int x, int y, int w, int h, control_listener* listener, int32_t tag,
                             std::shared_ptr<CVLBitmap> picture, std::shared_ptr<CVLBitmap> pressed_picture)
    : Fl_Menu_(x, y, w, h), CVLControl(listener, tag, 0.0f, 0.0f), picture(std::move(picture)),
      pressed_picture(std::move(pressed_picture))
{
    // The toolkit 1.3 draws the highlighted row of an open list white with black text
    // whenever the selection colour lies within 100 steps of luminance of the menu's colour.
    // So the menu's colour is a light one that only that rule reads, and the list's dark
    // background comes from list_box(), which ignores the colour it is given: the row under
    // the pointer is then grey 87 with the light text.
    box(list_box());
    down_box(FL_FLAT_BOX);
    color(FL_WHITE);
    selection_color(list_frame);
    textcolor(fl_rgb_color(200, 200, 200));
    textfont(FL_HELVETICA);
    textsize(to_pixels(12, zoom_of(this)));
    clear_visible_focus();
}

void CVLOptionMenu::addEntry(const std::string& title, int32_t tag)
{
    entries.push_back({title, tag, false});
    rebuild_items();
}

void CVLOptionMenu::addSeparator()
{
    entries.push_back({"", no_tag, true});
    rebuild_items();
}

void CVLOptionMenu::removeAllEntry()
{
    entries.clear();
    current = -1;
    rebuild_items();
}

const CVLOptionMenu::entry* CVLOptionMenu::getEntry(int index) const
{
    return index >= 0 && index < getNbEntries() ? &entries[static_cast<std::size_t>(index)] : nullptr;
}

int CVLOptionMenu::getCurrentIndexWithoutSeparators() const
{
    if (getCurrent() == nullptr)
        return -1;
    int index = 0;
    for (int i = 0; i < current; ++i)
        index += entries[static_cast<std::size_t>(i)].separator ? 0 : 1;
    return index;
}

bool CVLOptionMenu::setCurrent(int index, bool notify)
{
    const entry* chosen = getEntry(index);
    if (chosen == nullptr || chosen->separator)
        return false;
    current = index;
    rebuild_items();
    redraw();
    if (notify)
        notifyValueChanged();
    return true;
}

bool CVLOptionMenu::setValue(float v) { return setCurrent(static_cast<int>(v), false); }

void CVLOptionMenu::rebuild_items()
{
    // The toolkit's list points into `labels`; both are rebuilt together.
    labels.clear();
    items.clear();
    for (const entry& e : entries)
        labels.push_back(literal_label(e.title));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].separator) {
            if (!items.empty())
                items.back().flags |= FL_MENU_DIVIDER;
            continue;
        }
        Fl_Menu_Item item{};
        item.text = labels[i].c_str();
        item.flags = FL_MENU_RADIO | (static_cast<int>(i) == current ? FL_MENU_VALUE : 0);
        item.user_data_ = reinterpret_cast<void*>(static_cast<intptr_t>(i));
        item.labelsize_ = textsize();
        item.labelfont_ = textfont();
        item.labelcolor_ = textcolor();
        items.push_back(item);
    }
    items.push_back(Fl_Menu_Item{});
    menu(items.data());
}

bool CVLOptionMenu::in_mouseable_area() const
{
    return mouseable_from_right <= 0 || Fl::event_x() >= x() + w() - to_pixels(mouseable_from_right, zoom_of(this));
}

void CVLOptionMenu::open_list()
{
    if (items.size() < 2)
        return;
    open = true;
    redraw();
    const Fl_Menu_Item* at_current = nullptr;
    for (const Fl_Menu_Item& item : items) {
        if (item.text != nullptr && reinterpret_cast<intptr_t>(item.user_data_) == current)
            at_current = &item;
    }
    const Fl_Menu_Item* picked = items.front().pulldown(x(), y() + h(), w(), 0, at_current, this);
    open = false;
    redraw();
    if (picked != nullptr)
        setCurrent(static_cast<int>(reinterpret_cast<intptr_t>(picked->user_data_)), true);
}

void CVLOptionMenu::draw()
{
    {
        canvas cr(this);
        const point_box b = points_of(this);
        const auto& shown = open && pressed_picture ? pressed_picture : picture;
        if (shown)
            shown->draw(cr, b.x, b.y, b.w, b.h);
    }
    if (!title_visible || getCurrent() == nullptr)
        return;
    const double zoom = zoom_of(this);
    fl_font(textfont(), textsize());
    fl_color(textcolor());
    fl_draw(labels[static_cast<std::size_t>(current)].c_str(), x() + to_pixels(5, zoom), y(),
            w() - to_pixels(25, zoom), h(), FL_ALIGN_LEFT | FL_ALIGN_INSIDE | FL_ALIGN_CLIP);
}

int CVLOptionMenu::handle(int event)
{
    switch (event) {
    case FL_ENTER:
    case FL_LEAVE:
    case FL_MOVE:
        return 1;
    case FL_PUSH:
        if (!active_r() || Fl::event_button() != FL_LEFT_MOUSE || !in_mouseable_area())
            return 0;
        open_list();
        return 1;
    default:
        return 0;
    }
}

}  // namespace vl1::gui
