// Containers and pictures of the editor's layout: a panel drawn from a nine-part background,
// and a view that shows one picture at its size.
#pragma once

#include <FL/Fl_Group.H>
#include <FL/Fl_Widget.H>

#include <memory>

#include "gui/nine_part_bitmap.h"

namespace vl1::gui {

class CVLPanel : public Fl_Group {
public:
    /// Renders the background's cache for the panel's size at once.
    CVLPanel(int x, int y, int w, int h, std::shared_ptr<CCachedNinePartTiledBitmap> background);

    void draw() override;

private:
    std::shared_ptr<CCachedNinePartTiledBitmap> background;
};

class CVLPicture : public Fl_Widget {
public:
    /// As large as `picture` in points, at (`x`, `y`) pixels.
    CVLPicture(int x, int y, std::shared_ptr<CVLBitmap> picture);

    void draw() override;

private:
    std::shared_ptr<CVLBitmap> picture;
};

}  // namespace vl1::gui
