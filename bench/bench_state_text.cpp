#include "bench/bench_state_text.h"

#include <cmath>
#include <fstream>
#include <stdexcept>

#include "bench/bench_scene.h"
#include "color/lut_writer_cube.h"
#include "framework/io/state_text.h"
#include "themes/hueloom_theme_collection_v1.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_vault.h"
#include "themes/theme_folder_import.h"

namespace vl1::bench {

namespace {

// A graded table of edge 17, as a colourist's grading application exports one: a tone curve
// and a hue shift that differ from file to file.
lut_argb_variable exported_look(int k)
{
    lut_argb_variable lut;
    lut.edge = 17;
    lut.data.resize(17 * 17 * 17);
    std::size_t i = 0;
    const double lift = 0.02 * k, gamma = 0.8 + 0.07 * k, mix = 0.05 * (k % 3);
    for (int r = 0; r < 17; ++r)
        for (int g = 0; g < 17; ++g)
            for (int b = 0; b < 17; ++b) {
                const double c[3] = {r / 16.0, g / 16.0, b / 16.0};
                float out[3];
                for (int ch = 0; ch < 3; ++ch) {
                    const double mixed = (1.0 - mix) * c[ch] + mix * c[(ch + 1) % 3];
                    out[ch] = static_cast<float>(lift + (1.0 - lift) * std::pow(mixed, gamma));
                }
                lut.data[i++] = argb_float{1.0f, out[0], out[1], out[2]};
            }
    return lut;
}

// Six wheel LUTs from .cube files of 17 points with four decimals, through the folder import.
std::shared_ptr<hueloom_theme_v1> imported_theme(const std::filesystem::path& folder)
{
    std::string luts;
    for (int k = 0; k < 6; ++k) {
        const std::string file = "look_" + std::to_string(k) + ".cube";
        if (!write_lut_cube(exported_look(k), (folder / file).string(), "", ""))
            throw std::runtime_error("can't write " + file);
        luts += (k ? ", " : "") + std::string("{\"name\": \"") + file + "\", \"rotation\": " + std::to_string(k * 60) + "}";
    }
    std::ofstream(folder / "wheel.png") << "a wheel picture";
    std::ofstream(folder / "theme.json") << "{\"name\": \"Imported\", \"version\": 1, \"uid\": \"be0c0002\", "
                                            "\"wheel\": {\"background\": \"wheel.png\"}, \"luts\": [" + luts + "]}";
    std::string english, german;
    auto theme = import_theme_folder(folder.string(), english, german);
    if (!theme)
        throw std::runtime_error("the theme import failed: " + english);
    return theme;
}

state_case state_with(const std::string& name, std::shared_ptr<const hueloom_theme_v1> theme)
{
    const auto effect = make_bench_effect(make_bench_theme(), bench_setting());
    if (theme) {
        hueloom::get_vault()->get_theme_collection()->add_or_replace_theme(theme);
        effect->set_current_theme_by_uuid(theme->uid);
    } else {
        effect->set_current_theme_by_uuid(0);  // an unknown uid leaves no theme
    }
    state_case c{name, effect->get_state(), {}};
    c.grids = effect->float_grids(c.blob);
    const std::string packed = encode_state_text(c.blob, c.grids);
    if (decode_state_text(packed.c_str(), c.blob.size()) != c.blob)
        throw std::runtime_error("the state with " + name + " doesn't read back byte for byte");
    c.plain_text_bytes = plain_state_text(c.blob).size();
    c.packed_text_bytes = packed.size();
    return c;
}

}  // namespace

std::vector<state_case> make_state_cases(const std::filesystem::path& builtin_theme_file,
                                         const std::filesystem::path& scratch)
{
    auto builtin = std::make_shared<hueloom_theme_v1>();
    if (!hueloom_theme_file_serializer_v1::read_theme_from_file(*builtin, builtin_theme_file.string()))
        throw std::runtime_error("can't read the built-in theme " + builtin_theme_file.string());
    return {state_with("built-in theme", builtin), state_with("imported theme", imported_theme(scratch)),
            state_with("no theme", nullptr)};
}

void write_and_read(const state_case& c)
{
    const std::string text = encode_state_text(c.blob, c.grids);
    if (decode_state_text(text.c_str(), c.blob.size()).size() != c.blob.size())
        throw std::runtime_error("the state text didn't read back");
}

}  // namespace vl1::bench
