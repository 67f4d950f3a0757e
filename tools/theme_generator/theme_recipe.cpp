#include "tools/theme_generator/theme_recipe.h"

// RapidJSON with assertions that throw, as everywhere in the program.
#include "framework/io/json_checked.h"

#include <cmath>
#include <initializer_list>
#include <iterator>
#include <set>

#include <fmt/format.h>
#include <rapidjson/error/en.h>

#include "framework/io/read_bounded_file.h"
#include "themes/theme_folder_import.h"

namespace vl1::themegen {

namespace {

using json = rapidjson::Value;

// As many looks as the folder import takes; the wheel needs at least two.
constexpr std::size_t most_looks = most_imported_wheel_luts;

// Checked access to the recipe: every member is tested for kind and range before it is
// read, and the first problem is kept with the path of the key.
class recipe_parser {
public:
    std::string error;

    bool fail(const std::string& where, const std::string& problem)
    {
        if (error.empty())
            error = fmt::format("{}: {}", where, problem);
        return false;
    }

    bool only_keys(const json& object, const std::string& where, std::initializer_list<const char*> keys)
    {
        for (auto it = object.MemberBegin(); it != object.MemberEnd(); ++it) {
            const std::string_view key(it->name.GetString(), it->name.GetStringLength());
            bool known = false;
            for (const char* k : keys)
                known = known || key == k;
            if (!known)
                return fail(where, fmt::format("unknown key \"{}\"", key));
        }
        return true;
    }

    bool number(const json& object, const char* key, const std::string& where, double low, double high, double& out)
    {
        const auto it = object.FindMember(key);
        if (it == object.MemberEnd())
            return true;
        const std::string path = where + "." + key;
        if (!it->value.IsNumber())
            return fail(path, "must be a number");
        const double value = it->value.GetDouble();
        if (!std::isfinite(value) || value < low || value > high)
            return fail(path, fmt::format("{} is outside {} to {}", value, low, high));
        out = value;
        return true;
    }

    bool text(const json& object, const char* key, const std::string& where, bool required, std::string& out)
    {
        const auto it = object.FindMember(key);
        if (it == object.MemberEnd())
            return required ? fail(where, fmt::format("\"{}\" is missing", key)) : true;
        if (!it->value.IsString() || it->value.GetStringLength() == 0)
            return fail(where + "." + key, "must be a non-empty string");
        out.assign(it->value.GetString(), it->value.GetStringLength());
        return true;
    }

    bool tint_value(const json& object, const char* key, const std::string& where, tint& out)
    {
        const auto it = object.FindMember(key);
        if (it == object.MemberEnd())
            return true;
        const std::string path = where + "." + key;
        if (!it->value.IsObject())
            return fail(path, "must be an object with \"hue\" and \"chroma\"");
        return only_keys(it->value, path, {"hue", "chroma"}) && number(it->value, "hue", path, 0.0, 360.0, out.hue) &&
               number(it->value, "chroma", path, 0.0, 0.08, out.chroma);
    }

    bool hue_pulls(const json& object, const std::string& where, std::vector<hue_pull>& out)
    {
        const auto it = object.FindMember("hue_pulls");
        if (it == object.MemberEnd())
            return true;
        if (!it->value.IsArray())
            return fail(where + ".hue_pulls", "must be an array");
        for (rapidjson::SizeType i = 0; i < it->value.Size(); ++i) {
            const json& item = it->value[i];
            const std::string path = fmt::format("{}.hue_pulls[{}]", where, i);
            if (!item.IsObject())
                return fail(path, "must be an object");
            hue_pull pull;
            if (!only_keys(item, path, {"hue", "strength", "width"}) || !number(item, "hue", path, 0.0, 360.0, pull.hue) ||
                !number(item, "strength", path, 0.0, 1.0, pull.strength) ||
                !number(item, "width", path, 5.0, 180.0, pull.width))
                return false;
            out.push_back(pull);
        }
        return true;
    }

    // A wheel look needs its "rotation"; the post-processing look has "enabled" instead.
    bool look(const json& object, const std::string& where, bool on_wheel, look_definition& out)
    {
        if (!object.IsObject())
            return fail(where, "must be an object");
        if (on_wheel && !object.HasMember("rotation"))
            return fail(where, "\"rotation\" is missing");
        if (object.HasMember(on_wheel ? "enabled" : "rotation"))
            return fail(where, fmt::format("unknown key \"{}\"", on_wheel ? "enabled" : "rotation"));
        look_params& p = out.params;
        double rotation = 0.0;
        const bool ok =
            only_keys(object, where,
                      {"name", "file", "rotation", "enabled", "brightness", "contrast", "pivot", "black_lift",
                       "white_rolloff", "saturation", "skin_protection", "shadows", "highlights", "hue_pulls"}) &&
            text(object, "name", where, true, out.name) && text(object, "file", where, true, out.file) &&
            number(object, "rotation", where, 0.0, 359.999, rotation) &&
            number(object, "brightness", where, 0.5, 2.0, p.brightness) &&
            number(object, "contrast", where, 0.5, 2.0, p.contrast) &&
            number(object, "pivot", where, 0.2, 0.8, p.pivot) &&
            number(object, "black_lift", where, 0.0, 0.25, p.black_lift) &&
            number(object, "white_rolloff", where, 0.0, 0.25, p.white_rolloff) &&
            number(object, "saturation", where, 0.0, 2.0, p.saturation) &&
            number(object, "skin_protection", where, 0.0, 1.0, p.skin_protection) &&
            tint_value(object, "shadows", where, p.shadows) && tint_value(object, "highlights", where, p.highlights) &&
            hue_pulls(object, where, p.hue_pulls);
        out.rotation = static_cast<float>(rotation);
        if (ok && !file_name_fits(out.file))
            return fail(where + ".file", fmt::format("\"{}\" must be a plain file name ending in .cube", out.file));
        return ok;
    }

    static bool file_name_fits(const std::string& file)
    {
        return file.find('/') == std::string::npos && file != "theme.json" && file.size() > 5 &&
               file.compare(file.size() - 5, 5, ".cube") == 0;
    }

    bool header(const json& root, theme_recipe& recipe)
    {
        if (!text(root, "name", "recipe", true, recipe.name))
            return false;
        if (recipe.name.size() > 65535)
            return fail("recipe.name", "is longer than 65535 bytes");
        double version = 1.0;
        if (!number(root, "version", "recipe", 1.0, 4294967295.0, version))
            return false;
        if (version != std::floor(version))
            return fail("recipe.version", "must be a whole number");
        recipe.version = static_cast<uint32_t>(version);
        std::string uid_text;
        if (!text(root, "uid", "recipe", false, uid_text))
            return false;
        if (!uid_text.empty()) {
            if (uid_text.size() > 8 || uid_text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
                return fail("recipe.uid", fmt::format("\"{}\" is not 1 to 8 hexadecimal digits", uid_text));
            recipe.uid = static_cast<uint32_t>(std::stoul(uid_text, nullptr, 16));
        } else if (recipe.version > 1) {
            return fail("recipe", "a version above 1 needs the \"uid\" of the theme it replaces");
        }
        return true;
    }

    bool background(const json& root, theme_recipe& recipe)
    {
        const auto it = root.FindMember("background");
        if (it == root.MemberEnd())
            return true;
        if (!it->value.IsObject())
            return fail("recipe.background", "must be an object");
        double size = recipe.picture_size_px;
        if (!only_keys(it->value, "recipe.background", {"file", "size_px"}) ||
            !text(it->value, "file", "recipe.background", false, recipe.background_file) ||
            !number(it->value, "size_px", "recipe.background", 64.0, 4096.0, size))
            return false;
        if (recipe.background_file.find('/') != std::string::npos)
            return fail("recipe.background.file", "must be a plain file name");
        recipe.picture_size_px = static_cast<int>(size);
        return true;
    }

    bool looks(const json& root, theme_recipe& recipe)
    {
        const auto it = root.FindMember("looks");
        if (it == root.MemberEnd() || !it->value.IsArray())
            return fail("recipe", "\"looks\" must be an array of looks");
        if (it->value.Size() < 2 || it->value.Size() > most_looks)
            return fail("recipe.looks", fmt::format("needs 2 to {} looks, has {}", most_looks, it->value.Size()));
        for (rapidjson::SizeType i = 0; i < it->value.Size(); ++i) {
            look_definition definition;
            if (!look(it->value[i], fmt::format("looks[{}]", i), true, definition))
                return false;
            if (!recipe.looks.empty() && definition.rotation < recipe.looks.back().rotation + 2.0f)
                return fail(fmt::format("looks[{}].rotation", i),
                            "must be at least 2 degrees above the rotation of the look before it");
            recipe.looks.push_back(std::move(definition));
        }
        return true;
    }

    bool post_processing(const json& root, theme_recipe& recipe)
    {
        const auto it = root.FindMember("post_processing");
        if (it == root.MemberEnd())
            return true;
        const auto enabled = it->value.IsObject() ? it->value.FindMember("enabled") : it->value.MemberEnd();
        if (!it->value.IsObject() || enabled == it->value.MemberEnd() || !enabled->value.IsBool())
            return fail("recipe.post_processing", "must be an object with \"enabled\": true or false");
        look_definition definition;
        if (!look(it->value, "post_processing", false, definition))
            return false;
        recipe.post_processing_enabled = enabled->value.GetBool();
        recipe.post_processing = std::move(definition);
        return true;
    }

    bool unique_files(const theme_recipe& recipe)
    {
        std::set<std::string> files{recipe.background_file, "theme.json"};
        auto claim = [&](const std::string& file, const std::string& where) {
            return files.insert(file).second || fail(where, fmt::format("file name \"{}\" is used twice", file));
        };
        for (std::size_t i = 0; i < recipe.looks.size(); ++i)
            if (!claim(recipe.looks[i].file, fmt::format("looks[{}].file", i)))
                return false;
        return !recipe.post_processing || claim(recipe.post_processing->file, "post_processing.file");
    }
};

}  // namespace

bool parse_theme_recipe(std::string_view text, theme_recipe& recipe, std::string& error)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseCommentsFlag | rapidjson::kParseTrailingCommasFlag>(text.data(), text.size());
    if (document.HasParseError()) {
        error = fmt::format("recipe: JSON error at byte {}: {}", document.GetErrorOffset(),
                            rapidjson::GetParseError_En(document.GetParseError()));
        return false;
    }
    if (!document.IsObject()) {
        error = "recipe: the document must be a JSON object";
        return false;
    }
    recipe_parser parser;
    theme_recipe parsed;
    const bool ok = parser.only_keys(document, "recipe", {"name", "uid", "version", "background", "looks", "post_processing"}) &&
                    parser.header(document, parsed) && parser.background(document, parsed) &&
                    parser.looks(document, parsed) && parser.post_processing(document, parsed) &&
                    parser.unique_files(parsed);
    if (!ok) {
        error = parser.error;
        return false;
    }
    recipe = std::move(parsed);
    return true;
}

bool read_theme_recipe(const std::string& path, theme_recipe& recipe, std::string& error)
{
    // A recipe is a page of JSON.
    constexpr std::uintmax_t largest_recipe_bytes = 1u << 20;
    std::string text;
    if (!read_bounded_file(path, largest_recipe_bytes, text, error))
        return false;
    if (!parse_theme_recipe(text, recipe, error)) {
        error = fmt::format("{}: {}", path, error);
        return false;
    }
    return true;
}

}  // namespace vl1::themegen
