// The recipe of a generated theme: a small JSON document that names the theme and defines
// its looks. The built-in theme's recipe is builtin_theme.json beside this file.
//
//   { "name": "...", "uid": "00000001", "version": 1,
//     "background": { "file": "wheel.png", "size_px": 900 },
//     "looks": [ { "name": "Warm", "file": "warm.cube", "rotation": 0.0, <look keys> }, ... ],
//     "post_processing": { "enabled": false, "name": "...", "file": "...", <look keys> } }
//
// Look keys, each optional with the default of look_params: "brightness", "contrast",
// "pivot", "black_lift", "white_rolloff", "saturation", "skin_protection", "shadows" and
// "highlights" ({ "hue", "chroma" }), "hue_pulls" ([{ "hue", "strength", "width" }]).
// Unknown keys are refused, so a misspelt parameter can't silently do nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/theme_generator/look_params.h"

namespace vl1::themegen {

struct theme_recipe {
    std::string name;
    /// Written into theme.json as the theme's uid; without one the folder import hashes a
    /// new uid from name and time.
    std::optional<uint32_t> uid;
    uint32_t version = 1;
    std::string background_file = "wheel.png";
    /// Edge of the square wheel picture in pixels (the editor shows it at scale 2).
    int picture_size_px = 900;
    /// In wheel order; rotations in degrees, 0 <= rotation < 360, strictly increasing.
    std::vector<look_definition> looks;
    /// The post-processing LUT; its file is written even when disabled, so an author can
    /// switch it on in theme.json. Its rotation has no meaning.
    std::optional<look_definition> post_processing;
    bool post_processing_enabled = false;
};

/// Parses and checks a recipe. False with `error` naming the key and the rule it broke.
bool parse_theme_recipe(std::string_view json, theme_recipe& recipe, std::string& error);

/// Reads the file at `path` and parses it.
bool read_theme_recipe(const std::string& path, theme_recipe& recipe, std::string& error);

}  // namespace vl1::themegen
