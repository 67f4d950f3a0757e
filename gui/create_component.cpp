// The factory the adapter creates every component through: the one place where the OFX
// adapter meets the effect, and where the effect gets its editor and window system.
#include "effect/hueloom.h"
#include "framework/component_factory.h"
#include "gui/gui_utils.h"
#include "gui/hueloom_ui.h"
#include "gui/window.h"

namespace vl1 {

icomponent_v1* create_ccomponent()
{
    static gui::gui_utils utils;
    static gui::fltk_window_factory windows;
    iutils::set_instance(&utils);
    window_factory::install(&windows);
    return new hueloom([](std::weak_ptr<icomponent_v1> owner) -> std::shared_ptr<iview_v1> {
        return std::make_shared<gui::hueloom_ui>(std::move(owner));
    });
}

}  // namespace vl1
