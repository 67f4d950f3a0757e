#include "gui/hueloom_ui.h"

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Scroll.H>
#include <FL/Fl_Tooltip.H>

#include <set>
#include <string>

#include "framework/ihost.h"
#include "framework/iutils.h"
#include "framework/localize.h"
#include "gui/cvl_button.h"
#include "gui/cvl_image_preview.h"
#include "gui/cvl_panel.h"
#include "gui/monitor_profile.h"
#include "gui/window.h"
#include "gui/x11_session.h"

namespace vl1::gui {
namespace {

constexpr int row_height = editor_toolbar_height / 2;

std::shared_ptr<CCachedNinePartTiledBitmap> nine_part(const char* name)
{
    return std::make_shared<CCachedNinePartTiledBitmap>(std::make_shared<CVLBitmap>(name, 2.0), 3.0);
}

/// Widgets of the toolkit keep a pointer to their tooltip; texts live as long as the process.
const char* keep_text(const std::string& text)
{
    static std::set<std::string> texts;
    return texts.insert(text).first->c_str();
}

}  // namespace

hueloom_ui::hueloom_ui(std::weak_ptr<icomponent_v1> component) : cview_v1(std::move(component)) {}

hueloom_ui::~hueloom_ui() = default;

void hueloom_ui::init_view()
{
    fltk_window* target = editor_window();
    if (target == nullptr || target->content() == nullptr)
        return;
    Fl_Double_Window* w = target->content();
    const int width = w->w(), height = w->h();
    if (auto owner = component.lock(); owner && owner->get_host())
        language = owner->get_host()->get_language();
    Fl_Tooltip::delay(4.0f);
    Fl_Tooltip::color(fl_rgb_color(47, 47, 47));
    Fl_Tooltip::textcolor(fl_rgb_color(200, 200, 200));
    if (!monitor)
        monitor = std::make_shared<monitor_profile_transform>(monitor_profile());

    w->begin();
    frame = new Fl_Group(0, 0, width, height);
    frame->box(FL_FLAT_BOX);
    frame->color(fl_rgb_color(47, 47, 47));
    const int left = width - editor_column_width;
    preview = new CVLImagePreview(0, 0, left, height, monitor);
    preview_scroller = new CVLScrollView(0, 0, left, height, preview);
    panel_background = nine_part("panel.png");
    panel_first_background = nine_part("panel_first.png");
    panel_top_background = nine_part("panel_top.png");
    build_toolbar(left);
    build_panel(left, height);
    frame->end();
    w->end();
    w->redraw();
}

void hueloom_ui::build_toolbar(int left)
{
    auto* upper = new CVLPanel(left, 0, editor_column_width, row_height, panel_top_background);
    auto logo = std::make_shared<CVLBitmap>("logo_small.png", 2.0);
    auto* logo_view = new CVLPicture(left + 20, 0, logo);
    logo_view->position(left + 20, (row_height - logo_view->h()) / 2);
    help_button = new CVLButton(left + editor_column_width - 20 - 23, (row_height - 22) / 2, 23, 22, this,
                                CVLControl::no_tag, CVLButton::style::kick, "button.png");
    help_button->set_icon(std::make_shared<CVLBitmap>("help.png", 2.0));
    help_button->tooltip(keep_text(localize_text(language, "{en:Open Manual}{de:Handbuch öffnen}")));
    upper->end();
    toolbar_lower = new CVLPanel(left, row_height, editor_column_width, row_height, panel_first_background);
    toolbar_lower->end();
}

void hueloom_ui::build_panel(int left, int height)
{
    panel_scroller = new Fl_Scroll(left, editor_toolbar_height, editor_column_width, height - editor_toolbar_height);
    panel_scroller->type(Fl_Scroll::VERTICAL);
    panel_scroller->scrollbar_size(12);
    panel_scroller->box(FL_FLAT_BOX);
    panel_scroller->color(fl_rgb_color(47, 47, 47));
    panel_scroller->scrollbar.color(FL_BLACK, fl_rgb_color(47, 47, 47));
    panel = new CVLPanel(left, editor_toolbar_height, editor_panel_width, editor_panel_height, panel_first_background);
    panel->end();
    panel_scroller->end();
}

void hueloom_ui::close()
{
    cview_v1::close();
    frame = nullptr;
    preview = nullptr;
    preview_scroller = nullptr;
    toolbar_lower = nullptr;
    panel_scroller = nullptr;
    panel = nullptr;
    help_button = nullptr;
}

bool hueloom_ui::idle()
{
    if (preview != nullptr)
        preview->update_preview();
    return cview_v1::idle();
}

void hueloom_ui::set_preview_image(image& picture)
{
    if (preview != nullptr)
        preview->set_preview_image(picture);
}

void hueloom_ui::valueChanged(CVLControl* control)
{
    if (control == help_button && control->getValue() > 0.5f) {
        if (auto owner = component.lock())
            owner->open_manual();
    }
}

void hueloom_ui::alertBox(const std::string& title, const std::string& text)
{
    iutils::get_instance().alert_box(editor_window(), title, text, "");
}

}  // namespace vl1::gui
