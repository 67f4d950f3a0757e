#include "themes/theme_folder_import.h"

// First, so that RapidJSON's assertions throw.
#include "framework/io/json_checked.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <filesystem>

#include <fmt/format.h>

#include "color/lut_reader.h"
#include "framework/io/read_bounded_file.h"
#include "framework/log.h"
#include "framework/uid.h"
#include "themes/ctime_text.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/theme_import_failure.h"

namespace vl1 {

namespace {

namespace fs = std::filesystem;
using json_value = rapidjson::Value;

// A failure of the table, carried up to the import's border.
struct import_failed {
    theme_import_failure failure;
    std::string argument;
    /// Logged right behind the English text (the document, for a syntax error).
    std::string log_suffix = {};
    /// Logged as a line of its own when not empty: why a file counted as unreadable.
    std::string detail = {};
};

std::string path_text(const fs::path& path) { return path.string(); }

// Reads a regular file of up to `largest` bytes whole. False (with `why`) for a read error or
// an oversize file; true with empty `bytes` for a file that is missing or not regular.
bool read_small_file(const fs::path& path, std::uintmax_t largest, std::string& bytes, std::string& why)
{
    std::error_code error;
    if (!fs::is_regular_file(path, error)) {
        bytes.clear();
        return true;
    }
    return read_bounded_file(path, largest, bytes, why);
}

std::string read_theme_json(const fs::path& folder)
{
    const fs::path path = folder / "theme.json";
    std::string text;
    std::string why;
    if (!read_small_file(path, largest_theme_json_bytes, text, why))
        throw import_failed{theme_import_failure::theme_json_read_error, path_text(folder), {}, why};
    if (text.empty())
        throw import_failed{theme_import_failure::theme_json_unreadable, path_text(path)};
    return text;
}

void parse_theme_json(const std::string& text, rapidjson::Document& document)
{
    std::string_view body = text;
    if (body.starts_with("\xEF\xBB\xBF"))
        body.remove_prefix(3);
    // Iterative parsing: a deeply nested document must not exhaust the stack.
    document.Parse<rapidjson::kParseIterativeFlag>(body.data(), body.size());
    if (document.HasParseError())
        throw import_failed{theme_import_failure::theme_json_syntax,
                            std::to_string(static_cast<int>(document.GetParseError())), text};
}

const json_value* find_member(const json_value& object, const char* key)
{
    if (!object.IsObject())
        return nullptr;
    const auto found = object.FindMember(key);
    return found != object.MemberEnd() ? &found->value : nullptr;
}

[[noreturn]] void wrong_shape(const std::string& where, const char* needed)
{
    throw json_shape_error(fmt::format("theme.json: {} must be {}", where, needed));
}

const json_value& require_member(const json_value& object, const char* key, const std::string& where)
{
    const json_value* value = find_member(object, key);
    if (value == nullptr)
        wrong_shape(where.empty() ? fmt::format("\"{}\"", key) : fmt::format("{}.\"{}\"", where, key), "present");
    return *value;
}

std::string require_string(const json_value& object, const char* key, const std::string& where)
{
    const json_value& value = require_member(object, key, where);
    if (!value.IsString())
        wrong_shape(fmt::format("{}.\"{}\"", where, key), "a string");
    return std::string(value.GetString(), value.GetStringLength());
}

std::string json_text(const json_value& value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

std::string read_name(const json_value& root)
{
    const json_value* name = find_member(root, "name");
    if (name == nullptr || !name->IsString())
        throw import_failed{theme_import_failure::name_missing, {}};
    return std::string(name->GetString(), name->GetStringLength());
}

uint32_t read_version(const json_value& root)
{
    const json_value* version = find_member(root, "version");
    // A fraction or a number beyond int is no version "N" either.
    if (version == nullptr || !version->IsInt())
        throw import_failed{theme_import_failure::version_missing, {}};
    if (version->GetInt() < 1)
        throw import_failed{theme_import_failure::version_below_one, {}};
    return static_cast<uint32_t>(version->GetInt());
}

// The uid named by "uid", or for a new theme the FNV-1a hash of name and import time.
uint32_t read_or_make_uid(const json_value& root, uint32_t version, const std::string& name)
{
    const json_value* uid = find_member(root, "uid");
    if (uid == nullptr) {
        if (version != 1)
            throw import_failed{theme_import_failure::uid_missing, {}};
        return fnv1a_32(name + ctime_text(std::time(nullptr)));
    }
    if (!uid->IsString())
        throw import_failed{theme_import_failure::uid_not_hexadecimal, json_text(*uid)};
    return hueloom_theme_file_serializer_v1::hexToUnsignedInt(std::string(uid->GetString(), uid->GetStringLength()));
}

// A file that theme.json names must lie inside the theme folder: a name that climbs out of it
// ("../", an absolute path, a link that points elsewhere) could make a shared theme folder read
// any file of the user who imports it.
void require_inside_folder(const fs::path& folder, const std::string& name)
{
    const fs::path relative = fs::path(name).lexically_normal();
    bool climbs = relative.is_absolute() || relative.has_root_name() || relative.has_root_directory() ||
                  (!relative.empty() && *relative.begin() == "..");
    std::error_code error;
    const fs::path base = fs::weakly_canonical(folder, error);
    const fs::path target = fs::weakly_canonical(folder / relative, error);
    if (!climbs && !error) {
        const auto [base_end, target_at] = std::mismatch(base.begin(), base.end(), target.begin(), target.end());
        climbs = base_end != base.end();
    }
    if (climbs)
        throw import_failed{theme_import_failure::file_outside_folder, name};
}

std::vector<uint8_t> read_background(const fs::path& folder, const json_value& root)
{
    const json_value& wheel = require_member(root, "wheel", "");
    if (!wheel.IsObject())
        wrong_shape("\"wheel\"", "an object");
    const std::string name = require_string(wheel, "background", "\"wheel\"");
    require_inside_folder(folder, name);
    const fs::path path = folder / name;

    // A background that doesn't exist at all is not one of the table's failures and ends as an
    // unexpected error; the table's text is for a file that exists but is empty or unreadable.
    std::error_code error;
    if (!fs::exists(path, error))
        throw std::runtime_error(fmt::format("background image '{}' does not exist", path_text(path)));
    std::string bytes;
    std::string why;
    if (!read_small_file(path, largest_background_bytes, bytes, why) || bytes.empty())
        throw import_failed{theme_import_failure::background_unreadable, path_text(path), {}, why};
    return std::vector<uint8_t>(bytes.begin(), bytes.end());
}

std::shared_ptr<const lut_argb<32>> load_lut(const fs::path& folder, const std::string& name)
{
    require_inside_folder(folder, name);
    std::shared_ptr<const lut_argb<32>> lut = load_lut_from_file_or_resource(path_text(folder), name);
    if (!lut)
        throw import_failed{theme_import_failure::lut_unreadable, name};
    return lut;
}

float read_rotation(const json_value& element, const std::string& where)
{
    const json_value& rotation = require_member(element, "rotation", where);
    if (!rotation.IsNumber())
        wrong_shape(where + ".\"rotation\"", "a number");
    const double degrees = rotation.GetDouble();
    if (!(std::fabs(degrees) <= FLT_MAX))
        wrong_shape(where + ".\"rotation\"", "a number within the range of a float");
    return static_cast<float>(degrees);
}

void read_wheel_luts(const fs::path& folder, const json_value& root, hueloom_theme_v1& theme)
{
    const json_value& luts = require_member(root, "luts", "");
    if (!luts.IsArray())
        wrong_shape("\"luts\"", "an array");
    if (luts.Size() > most_imported_wheel_luts)
        wrong_shape("\"luts\"", fmt::format("an array of at most {} LUTs", most_imported_wheel_luts).c_str());
    for (rapidjson::SizeType i = 0; i < luts.Size(); ++i) {
        const std::string where = fmt::format("\"luts\"[{}]", i);
        if (!luts[i].IsObject())
            wrong_shape(where, "an object");
        const std::string name = require_string(luts[i], "name", where);
        const float rotation = read_rotation(luts[i], where);
        theme.luts.push_back({load_lut(folder, name), rotation});
    }
}

void read_post_processing(const fs::path& folder, const json_value& root, hueloom_theme_v1& theme)
{
    const json_value* post_processing = find_member(root, "post_processing");
    if (post_processing == nullptr)
        return;
    if (!post_processing->IsObject())
        wrong_shape("\"post_processing\"", "an object");
    const json_value& enabled = require_member(*post_processing, "enabled", "\"post_processing\"");
    if (!enabled.IsBool())
        wrong_shape("\"post_processing\".\"enabled\"", "true or false");
    if (enabled.GetBool())
        theme.post_processing_lut = load_lut(folder, require_string(*post_processing, "lut", "\"post_processing\""));
}

std::shared_ptr<hueloom_theme_v1> import_steps(const fs::path& folder)
{
    rapidjson::Document document;
    parse_theme_json(read_theme_json(folder), document);

    auto theme = std::make_shared<hueloom_theme_v1>();
    theme->name = read_name(document);
    theme->version = read_version(document);
    theme->uid = read_or_make_uid(document, theme->version, theme->name);
    theme->background_data = read_background(folder, document);
    read_wheel_luts(folder, document, *theme);
    read_post_processing(folder, document, *theme);
    // The order of theme.json is the order of the theme: nothing is sorted on this way.
    if (!theme->is_self_consistent())
        throw import_failed{theme_import_failure::not_self_consistent, {}};
    return theme;
}

}  // namespace

std::shared_ptr<hueloom_theme_v1> import_theme_folder(const std::string& folder, std::string& english_error,
                                                      std::string& german_error) noexcept
{
    english_error.clear();
    german_error.clear();
    try {
        try {
            return import_steps(fs::path(folder));
        } catch (const import_failed& failed) {
            describe_import_failure(failed.failure, failed.argument, english_error, german_error);
            // Logged as plain text: documents and paths may hold braces.
            log_text(english_error + failed.log_suffix);
            if (!failed.detail.empty())
                log_text(failed.detail);
            return nullptr;
        }
    } catch (const std::exception& error) {
        log_text(fmt::format("Theme import from '{}' failed: {}", folder, error.what()));
    } catch (...) {
        log_text("Theme import from '" + folder + "' failed: unknown exception");
    }
    english_error = unexpected_import_error_en;
    german_error = unexpected_import_error_de;
    return nullptr;
}

}  // namespace vl1
