#include "gui/cvl_panel.h"

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
    if (background) {
        canvas cr;
        background->draw(cr, x(), y(), w(), h());
    }
    draw_children();
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
