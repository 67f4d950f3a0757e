#include "gui/cvl_panel.h"

#include <FL/fl_draw.H>

#include <cmath>

#include "gui/canvas.h"

namespace vl1::gui {

CVLPanel::CVLPanel(int x, int y, int w, int h, std::shared_ptr<CCachedNinePartTiledBitmap> background)
    : Fl_Group(x, y, w, h), background(std::move(background))
{
    box(FL_NO_BOX);
    if (this->background)
        this->background->render_size(w, h);
}

void CVLPanel::draw()
{
    if ((damage() & ~FL_DAMAGE_CHILD) != 0) {
        if (background) {
            canvas cr;
            background->draw(cr, x(), y(), w(), h());
        }
        draw_children();
        return;
    }
    // Only some children changed: each gets the background below it again (controls without
    // a box of their own draw over it), and nothing else is touched.
    for (int i = 0; i < children(); ++i) {
        Fl_Widget& c = *child(i);
        if (!c.visible() || c.damage() == 0)
            continue;
        if (background) {
            fl_push_clip(c.x(), c.y(), c.w(), c.h());
            {
                canvas cr;
                background->draw(cr, x(), y(), w(), h());
            }
            fl_pop_clip();
        }
        draw_child(c);
    }
}

CVLPicture::CVLPicture(int x, int y, std::shared_ptr<CVLBitmap> picture)
    : Fl_Widget(x, y, static_cast<int>(std::ceil(picture->width())), static_cast<int>(std::ceil(picture->height()))),
      picture(std::move(picture))
{
    box(FL_NO_BOX);
}

void CVLPicture::draw()
{
    canvas cr;
    picture->draw(cr, x(), y(), picture->width(), picture->height());
}

}  // namespace vl1::gui
