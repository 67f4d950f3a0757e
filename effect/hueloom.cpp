#include "effect/hueloom.h"

#include <bit>
#include <cstring>

#include "color/lut_row_kernels.h"
#include "color/lut_sampling.h"
#include "framework/image.h"
#include "framework/iview.h"
#include "framework/log.h"
#include "themes/hueloom_vault.h"
#include "themes/web/theme_file_check.h"
#include "themes/web/web_client_settings.h"

namespace vl1 {

namespace {

/// Names, ranges and defaults of the five continuous parameters, in their list order.
struct continuous_spec {
    const char* name;
    float min, max, default_value;
};
constexpr continuous_spec angle_spec{"Angle", 0.0f, 360.0f, 0.0f};
constexpr continuous_spec strength_spec{"Strength", 0.0f, 100.0f, 0.0f};
constexpr continuous_spec hue_spec{"Hue", 0.0f, 200.0f, 100.0f};
constexpr continuous_spec chroma_spec{"Chroma", 0.0f, 200.0f, 100.0f};
constexpr continuous_spec luminance_spec{"Luminance", 0.0f, 200.0f, 100.0f};

}  // namespace

bool hueloom::query_interface(const std::string& id, iobject** out)
{
    if (out != nullptr && uid(id.c_str()) == lut_exporter::ifc_id) {
        *out = static_cast<lut_exporter*>(this);
        return true;
    }
    if (out != nullptr && uid(id.c_str()) == irow_processor_v1::ifc_id) {
        *out = static_cast<irow_processor_v1*>(this);
        return true;
    }
    if (out != nullptr && uid(id.c_str()) == istate_layout_v1::ifc_id) {
        *out = static_cast<istate_layout_v1*>(this);
        return true;
    }
    if (out != nullptr && uid(id.c_str()) == iidentity_check_v1::ifc_id) {
        *out = static_cast<iidentity_check_v1*>(this);
        return true;
    }
    return ccomponent_v1::query_interface(id, out);
}

std::shared_ptr<iview_v1> hueloom::create_view()
{
    if (!make_view)
        return nullptr;
    view = make_view(weak_from_this());
    return view;
}

void hueloom::init_component()
{
    const std::weak_ptr<icomponent_v1> self = weak_from_this();
    const auto continuous = [&](const continuous_spec& s) {
        return add_parameter(std::make_shared<cparameter_continuous_v1>(self, s.name, s.min, s.max, s.default_value));
    };
    bypass_param = add_parameter(std::make_shared<hueloom_bypass_parameter>(self, "Global Bypass", false));
    angle_param = continuous(angle_spec);
    strength_param = continuous(strength_spec);
    hue_param = continuous(hue_spec);
    chroma_param = continuous(chroma_spec);
    luminance_param = continuous(luminance_spec);

    const auto vault = get_vault();
    if (auto fallback = vault->get_theme_collection()->get_default_theme()) {
        std::lock_guard lock(theme_mutex);
        if (!current_theme)
            current_theme = std::move(fallback);
    }
    const web_client_settings settings = read_web_client_settings();
    web_url_base = settings.web_url_base;
    wanted_theme_uids = settings.wanted_theme_uids;
    vault->fill_theme_collection_from_appdata(wanted_theme_uids, true);
}

void hueloom::notify(event e)
{
    switch (e.type) {
    case event_initialized:
        fill_identity(result_lut);
        result_key.reset();
        break;
    case event_render_setup: {
        table_key key = current_table_key();
        if (result_key != key) {
            build_table(key, result_lut);
            result_key = std::move(key);
            ++table_build_count;
        }
        break;
    }
    case event_render:
        // A preview pass's picture; a render action's event carries none.
        if (auto picture = e.result.lock(); picture && view && view->is_open())
            view->set_preview_image(*picture);
        break;
    default:
        break;
    }
}

void hueloom::process_pixel(int /*x*/, int /*y*/, const argb_float& in, argb_float* out)
{
    *out = sample_lut(result_lut, in);
}

bool hueloom::process_row(int /*x*/, int /*y*/, int in_depth, const uint8_t* in, int out_depth, uint8_t* out,
                          int count)
{
    return apply_lut_row_bits(result_lut, in_depth, in, out_depth, out, count);
}

bool hueloom::table_key::operator==(const table_key& other) const
{
    const auto same = [](float x, float y) { return std::bit_cast<uint32_t>(x) == std::bit_cast<uint32_t>(y); };
    return bypass == other.bypass && same(angle, other.angle) && same(strength, other.strength) &&
           same(hue, other.hue) && same(chroma, other.chroma) && same(luminance, other.luminance) &&
           theme == other.theme;
}

hueloom::table_key hueloom::current_table_key()
{
    table_key key;
    key.bypass = bypass_param->get_value();
    key.angle = angle_param->get_value();
    key.strength = strength_param->get_value();
    key.hue = hue_param->get_value();
    key.chroma = chroma_param->get_value();
    key.luminance = luminance_param->get_value();
    std::lock_guard lock(theme_mutex);
    key.theme = current_theme;
    return key;
}

void hueloom::build_table(const table_key& key, lut_argb<32>& lut)
{
    fill_identity(lut);
    if (key.bypass || !key.theme || !key.theme->is_self_consistent())
        return;
    // The wheel's "Angle" runs against the rotation of a theme's slots: 0 stands for 360.
    key.theme->apply_theme_luts(lut, 360.0f - key.angle, static_cast<float>(key.strength / 100.0));
    key.theme->apply_theme_modifiers(lut, static_cast<float>(key.hue / 100.0), static_cast<float>(key.chroma / 100.0),
                                     static_cast<float>(key.luminance / 100.0));
    key.theme->apply_post_processing(lut);
}

bool hueloom::is_identity()
{
    table_key key = current_table_key();
    if (key.bypass)
        return true;
    std::lock_guard lock(identity_mutex);
    if (!identity_answer || identity_answer->first != key) {
        // A table of its own: result_lut belongs to the render.
        const lut_argb<32> identity;
        lut_argb<32> lut;
        build_table(key, lut);
        const std::size_t bytes = identity.data.size() * sizeof(argb_float);
        identity_answer.emplace(std::move(key), std::memcmp(lut.data.data(), identity.data.data(), bytes) == 0);
    }
    return identity_answer->second;
}

bool hueloom::get_lut(lut_argb_variable* lut)
{
    if (lut == nullptr)
        return false;
    // Built from the values as they stand, not copied from result_lut: that one is the last
    // render's, which may have run at another time of an animated look or not yet since the
    // last change, and a render thread may be rebuilding it during the copy.
    lut_argb<32> table;
    build_table(current_table_key(), table);
    lut->edge = 32;
    lut->data = std::move(table.data);
    lut->text.clear();
    return true;
}

std::pair<const uint8_t*, std::size_t> hueloom::get_current_wheel_background_data()
{
    std::lock_guard lock(theme_mutex);
    if (!current_theme)
        return {nullptr, 0};
    return {current_theme->background_data.data(), current_theme->background_data.size()};
}

std::string hueloom::get_current_theme_name()
{
    std::lock_guard lock(theme_mutex);
    return current_theme ? current_theme->name : std::string();
}

uint32_t hueloom::get_current_theme_uuid()
{
    std::lock_guard lock(theme_mutex);
    return current_theme ? current_theme->uid : 0u;
}

std::shared_ptr<const hueloom_theme_v1> hueloom::get_current_theme()
{
    std::lock_guard lock(theme_mutex);
    return current_theme;
}

bool hueloom::is_theme_in_collection(unsigned int uid)
{
    return get_vault()->get_theme_collection()->get_theme_by_uid(uid) != nullptr;
}

void hueloom::set_current_theme_by_uuid(unsigned int uid)
{
    // Looked up before the lock: no call into the vault runs under theme_mutex.
    auto theme = get_vault()->get_theme_collection()->get_theme_by_uid(uid);
    std::lock_guard lock(theme_mutex);
    current_theme = std::move(theme);
}

std::shared_ptr<hueloom_vault> hueloom::get_vault()
{
    // The vault knows downloads only through this factory, so the theme library needs no
    // network code of its own.
    static const std::shared_ptr<hueloom_vault> vault = [] {
        auto v = hueloom_vault::get_instance();
        v->set_web_client_factory(make_web_client_factory());
        return v;
    }();
    return vault;
}

}  // namespace vl1
