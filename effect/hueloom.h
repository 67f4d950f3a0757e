// Hueloom, the effect: six parameters, the current theme, and the one 32-cube table through
// which every pixel of a render goes. At the start of each render the table is rebuilt from
// the parameters and the theme, unless they are exactly those it was last built from (a
// tiling host renders one frame in many render actions); the theme also travels inside the
// saved state, so that a project opens with its look on a machine that lacks the theme.
#pragma once

#include <atomic>
#include <functional>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "color/hueloom_theme_v1.h"
#include "color/lut_argb.h"
#include "effect/hueloom_parameters.h"
#include "framework/ccomponent.h"
#include "framework/iidentity_check.h"
#include "framework/irow_processor.h"
#include "framework/istate_layout.h"
#include "framework/lut_exporter.h"

namespace vl1 {

class hueloom_vault;

/// Size of the saved state beyond the base part: the flag byte and the theme record.
inline constexpr std::size_t hueloom_theme_record_size = 4325580;  // theme_state_entry_v1

class hueloom : public ccomponent_v1,
                public lut_exporter,
                public irow_processor_v1,
                public istate_layout_v1,
                public iidentity_check_v1 {
public:
    static constexpr uid ifc_id{"hueloom"};

    /// Makes the editor of an instance; empty in builds and tests without a window system.
    using view_maker = std::function<std::shared_ptr<iview_v1>(std::weak_ptr<icomponent_v1>)>;

    explicit hueloom(view_maker make_view = {}) : make_view(std::move(make_view)) {}

    /// The editor, kept as the component's view; null without a view maker.
    std::shared_ptr<iview_v1> create_view() override;

    bool query_interface(const std::string& id, iobject** out) override;
    void init_component() override;

    bool is_state_rejected(std::vector<uint8_t>& state, bool from_host, std::string& reason) override;
    bool set_state(std::vector<uint8_t>& state, bool from_host) override;
    std::vector<uint8_t> get_state() override;
    std::size_t get_state_size() override;
    /// The LUT tables of the theme record's used slots.
    std::vector<state_float_grid> float_grids(const std::vector<uint8_t>& state) override;

    void notify(event e) override;
    /// The hot path: one trilinear sample of result_lut, no lock.
    void process_pixel(int x, int y, const argb_float& in, argb_float* out) override;
    /// The same for a whole row, through the colour engine's row kernel: the render path's
    /// bytes without a call per pixel.
    bool process_row(int x, int y, int in_depth, const uint8_t* in, int out_depth, uint8_t* out,
                     int count) override;

    /// The table of the current values and theme, built afresh on a table of its own.
    bool get_lut(lut_argb_variable* lut) override;

    /// Bypass on, or the table the current values give equal to the identity table bit for
    /// bit. Works on a table of its own: result_lut belongs to the render.
    bool is_identity() override;

    /// Pointer and size of the current theme's background image; valid while the theme is.
    std::pair<const uint8_t*, std::size_t> get_current_wheel_background_data();
    std::string get_current_theme_name();
    uint32_t get_current_theme_uuid();
    std::shared_ptr<const hueloom_theme_v1> get_current_theme();
    bool is_theme_in_collection(unsigned int uid);
    /// An unknown uid leaves no theme: the result is the identity until another is chosen.
    void set_current_theme_by_uuid(unsigned int uid);

    /// The one vault of the process, shared by every instance.
    static std::shared_ptr<hueloom_vault> get_vault();

    void downloadThemesIfNeededThenUpdateVaultThenUpdateGuiThemeList();

    /// Imports a theme folder into the collection and the app-data folder. On success
    /// `result` holds the theme's name and uid; on failure `error` holds the reason in the
    /// host's language.
    bool import_theme_and_store_to_appdata(const std::string& folder, std::pair<std::string, unsigned int>& result,
                                           std::string& error);

    /// Raised when the collection changed; the editor rebuilds its theme menu and clears it.
    std::atomic<bool> theme_list_changed{false};
    /// Raised when the editor should read the component again (theme, parameters).
    std::atomic<bool> refresh_requested{false};

    const std::string& get_web_url_base() const { return web_url_base; }

    /// How often a render setup built the table rather than reusing it.
    std::size_t table_builds() const { return table_build_count; }
    const std::set<uint32_t>& get_wanted_theme_uids() const { return wanted_theme_uids; }

private:
    /// Everything the table is built from: the values compared bit for bit, the theme by
    /// identity (a theme never changes once built, and the key holds it alive, so no other
    /// theme can take its address). Equal keys give equal tables.
    struct table_key {
        bool bypass = false;
        float angle = 0.0f, strength = 0.0f, hue = 0.0f, chroma = 0.0f, luminance = 0.0f;
        std::shared_ptr<const hueloom_theme_v1> theme;

        bool operator==(const table_key& other) const;
    };

    table_key current_table_key();
    /// The table `key` stands for, into `lut`.
    static void build_table(const table_key& key, lut_argb<32>& lut);
    /// The editor's refresh after the collection changed (at start-up or after a download).
    void refresh_from_vault();
    std::size_t flag_offset() { return ccomponent_v1::get_state_size(); }

    std::shared_ptr<hueloom_bypass_parameter> bypass_param;
    std::shared_ptr<cparameter_continuous_v1> strength_param;
    std::shared_ptr<cparameter_continuous_v1> angle_param;
    std::shared_ptr<cparameter_continuous_v1> hue_param;
    std::shared_ptr<cparameter_continuous_v1> chroma_param;
    std::shared_ptr<cparameter_continuous_v1> luminance_param;

    std::mutex theme_mutex;
    std::shared_ptr<const hueloom_theme_v1> current_theme;
    lut_argb<32> result_lut;
    /// What result_lut was built from; empty while it holds the identity of initialisation.
    std::optional<table_key> result_key;
    std::size_t table_build_count = 0;

    /// The last answer of is_identity, for the key it was found for.
    std::mutex identity_mutex;
    std::optional<std::pair<table_key, bool>> identity_answer;

    std::string web_url_base;
    std::set<uint32_t> wanted_theme_uids;
    view_maker make_view;
};

}  // namespace vl1
