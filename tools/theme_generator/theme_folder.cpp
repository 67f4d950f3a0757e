#include "tools/theme_generator/theme_folder.h"

#include "framework/io/json_checked.h"

#include <filesystem>

#include <fmt/format.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "color/hueloom_theme_v1.h"
#include "color/lut_reader.h"
#include "framework/io/write_file_atomically.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "tools/theme_generator/look_lut.h"
#include "tools/theme_generator/wheel_picture.h"

namespace vl1::themegen {

namespace {

using writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void write_key(writer& w, const char* key, const std::string& value)
{
    w.Key(key);
    w.String(value.c_str(), static_cast<rapidjson::SizeType>(value.size()));
}

bool write_look_file(const look_definition& look, const std::string& folder, std::string& error)
{
    const lut_argb<32> lut = build_look_lut(look.params);
    return write_cube_32(lut, (std::filesystem::path(folder) / look.file).string(), look.name, error);
}

// The LUT as the folder import will see it: through the LUT reader, after the rounding of
// the file's six decimals.
std::shared_ptr<const lut_argb<32>> read_back(const std::string& folder, const look_definition& look, std::string& error)
{
    try {
        auto lut = load_lut_from_file_or_resource(folder, look.file);
        if (!lut)
            error = fmt::format("cannot read back '{}'", look.file);
        return lut;
    } catch (const std::exception& e) {
        error = fmt::format("cannot read back '{}': {}", look.file, e.what());
        return nullptr;
    }
}

}  // namespace

std::string theme_json_text(const theme_recipe& recipe)
{
    rapidjson::StringBuffer buffer;
    writer w(buffer);
    w.SetIndent(' ', 2);
    w.StartObject();
    write_key(w, "name", recipe.name);
    w.Key("version");
    w.Uint(recipe.version);
    if (recipe.uid)
        write_key(w, "uid", unsignedIntToHex(*recipe.uid));
    w.Key("wheel");
    w.StartObject();
    write_key(w, "background", recipe.background_file);
    w.EndObject();
    w.Key("luts");
    w.StartArray();
    for (const look_definition& look : recipe.looks) {
        w.StartObject();
        write_key(w, "name", look.file);
        w.Key("rotation");
        w.Double(look.rotation);
        w.EndObject();
    }
    w.EndArray();
    if (recipe.post_processing) {
        w.Key("post_processing");
        w.StartObject();
        w.Key("enabled");
        w.Bool(recipe.post_processing_enabled);
        write_key(w, "lut", recipe.post_processing->file);
        w.EndObject();
    }
    w.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

bool write_theme_folder(const theme_recipe& recipe, const std::string& folder, std::string& error)
{
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    if (ec) {
        error = fmt::format("cannot create folder '{}': {}", folder, ec.message());
        return false;
    }

    hueloom_theme_v1 preview;
    for (const look_definition& look : recipe.looks) {
        if (!write_look_file(look, folder, error))
            return false;
        auto lut = read_back(folder, look, error);
        if (!lut)
            return false;
        preview.luts.push_back({lut, look.rotation});
    }
    if (recipe.post_processing && !write_look_file(*recipe.post_processing, folder, error))
        return false;

    const std::string picture = (std::filesystem::path(folder) / recipe.background_file).string();
    if (!write_wheel_picture(preview, recipe.picture_size_px, picture, error))
        return false;
    return write_file_atomically(std::filesystem::path(folder) / "theme.json", theme_json_text(recipe), error);
}

}  // namespace vl1::themegen
