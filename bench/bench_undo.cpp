#include "bench/bench_undo.h"

#include <stdexcept>

#include "framework/chost.h"
#include "framework/cparameter.h"
#include "framework/iview.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_vault.h"

namespace vl1::bench {

namespace {

/// An editor that is open and shows nothing: the ring works only while one is.
class open_view : public iview_v1 {
public:
    bool query_interface(const std::string&, iobject** out) override
    {
        if (out != nullptr)
            *out = nullptr;
        return false;
    }
    rect get_rect() const override { return {}; }
    bool open(std::shared_ptr<window>) override { return true; }
    void close() override {}
    bool is_open() override { return true; }
    bool is_editing() override { return false; }
    bool idle() override { return true; }
    void set_control_from_parameter(std::shared_ptr<iparameter_v1>, bool) override {}
    void set_preview_image(image&) override {}
};

}  // namespace

undo_rig::undo_rig(const std::filesystem::path& builtin_theme_file)
{
    auto builtin = std::make_shared<hueloom_theme_v1>();
    if (!hueloom_theme_file_serializer_v1::read_theme_from_file(*builtin, builtin_theme_file.string()))
        throw std::runtime_error("can't read the built-in theme " + builtin_theme_file.string());
    hueloom::get_vault()->get_theme_collection()->add_or_replace_theme(builtin);
    effect = std::make_shared<hueloom>([](std::weak_ptr<icomponent_v1>) { return std::make_shared<open_view>(); });
    effect->initialize(std::make_shared<chost_v1>(effect));
    effect->set_current_theme_by_uuid(builtin->uid);
    effect->create_view();
    effect->flush_state_stack();
    for (int i = 0; i < undo_ring_size; ++i)
        gesture();
}

void undo_rig::gesture()
{
    effect->save_state(true);
    const auto angle = std::dynamic_pointer_cast<cparameter_continuous_v1>(effect->get_parameter(std::string("Angle")));
    angle->set_value(static_cast<float>(gestures++ % 360), false);
    effect->save_state(false);
}

}  // namespace vl1::bench
