#include "gui/cvl_panel.h"

#include <FL/fl_draw.H>

#include <algorithm>
#include <cmath>

#include "gui/canvas.h"
#include "gui/zoom.h"

namespace vl1::gui {

CVLPanel::CVLPanel(int x, int y, int w, int h, std::shared_ptr<CCachedNinePartTiledBitmap> background)
    : Fl_Group(x, y, w, h), background(std::move(background))
{
    box(FL_NO_BOX);
    if (this->background) {
        const point_box b = points_of(this);
        this->background->render_size(b.w, b.h, std::max(2.0, zoom_of(this)));
    }
}

void CVLPanel::draw()
{
    if ((damage() & ~FL_DAMAGE_CHILD) != 0) {
        if (background) {
            canvas cr(this);
            const point_box b = points_of(this);
            background->draw(cr, b.x, b.y, b.w, b.h);
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
                canvas cr(this);
                const point_box b = points_of(this);
                background->draw(cr, b.x, b.y, b.w, b.h);
            }
            fl_pop_clip();
        }
        draw_child(c);
    }
}

CVLPicture::CVLPicture(int x, int y, std::shared_ptr<CVLBitmap> picture)
    : Fl_Widget(x, y, 1, 1), picture(std::move(picture))
{
    box(FL_NO_BOX);
    const double zoom = zoom_of(this);
    size(static_cast<int>(std::ceil(this->picture->width() * zoom)),
         static_cast<int>(std::ceil(this->picture->height() * zoom)));
}

void CVLPicture::draw()
{
    canvas cr(this);
    const point_box b = points_of(this);
    picture->draw(cr, b.x, b.y, picture->width(), picture->height());
}

}  // namespace vl1::gui
