#include "presets/preset_reader.h"

#include <cstdio>
#include <filesystem>
#include <memory>

#include <fmt/format.h>
#include <rapidjson/filereadstream.h>

#include "framework/io/read_bounded_file.h"

namespace vl1 {

namespace {

namespace fs = std::filesystem;

bool check_size(const std::string& path, std::uintmax_t& size, std::string& problem)
{
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) {
        problem = fmt::format("Preset file '{}' does not exist or is not a regular file.", path);
        return false;
    }
    size = fs::file_size(path, ec);
    if (ec) {
        problem = fmt::format("Cannot read the size of preset file '{}': {}.", path, ec.message());
        return false;
    }
    if (size > preset_file_size_limit) {
        problem = fmt::format("Preset file '{}' has {} bytes, more than the {} a preset may have.", path,
                              size, preset_file_size_limit);
        return false;
    }
    return true;
}

std::string describe_parse_error(const std::string& path, rapidjson::ParseErrorCode code, std::size_t offset)
{
    return fmt::format("Preset file '{}' is not valid JSON at byte {}: {}", path, offset,
                       rapidjson::GetParseError_En(code));
}

// Notes only whether the first value of the text opens an object.
struct root_shape_handler : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, root_shape_handler> {
    bool seen_any = false;
    bool root_is_object = false;

    bool StartObject()
    {
        if (!seen_any)
            root_is_object = true;
        seen_any = true;
        return true;
    }
    bool Default()
    {
        seen_any = true;
        return true;
    }
};

struct file_closer {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

}  // namespace

bool read_preset_document(const std::string& path, rapidjson::Document& document, std::string& problem)
{
    std::string text;
    if (!read_bounded_file(path, preset_file_size_limit, text, problem)) {
        problem = fmt::format("Preset file: {}.", problem);
        return false;
    }
    document.Parse<preset_parse_flags>(text.data(), text.size());
    if (document.HasParseError()) {
        problem = describe_parse_error(path, document.GetParseError(), document.GetErrorOffset());
        return false;
    }
    if (!document.IsObject()) {
        problem = fmt::format("Preset file '{}' does not hold a JSON object.", path);
        return false;
    }
    return true;
}

bool check_preset_file(const std::string& path, std::string& problem) noexcept
{
    try {
        std::uintmax_t size = 0;
        if (!check_size(path, size, problem))
            return false;
        std::unique_ptr<std::FILE, file_closer> file(std::fopen(path.c_str(), "rb"));
        if (!file) {
            problem = fmt::format("Cannot open preset file '{}'.", path);
            return false;
        }
        char buffer[65536];
        rapidjson::FileReadStream stream(file.get(), buffer, sizeof buffer);
        rapidjson::Reader reader;
        root_shape_handler handler;
        const rapidjson::ParseResult result = reader.Parse<preset_parse_flags>(stream, handler);
        if (result.IsError()) {
            problem = describe_parse_error(path, result.Code(), result.Offset());
            return false;
        }
        if (!handler.root_is_object) {
            problem = fmt::format("Preset file '{}' does not hold a JSON object.", path);
            return false;
        }
        return true;
    } catch (const std::exception& e) {
        problem = e.what();
    } catch (...) {
        problem = "Unexpected failure while checking a preset file.";
    }
    return false;
}

}  // namespace vl1
