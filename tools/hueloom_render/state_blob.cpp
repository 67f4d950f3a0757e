#include "tools/hueloom_render/state_blob.h"

#include "framework/io/base64.h"
#include "framework/io/state_text.h"
#include "themes/hueloom_theme_state_serializer_v1.h"
#include "tools/hueloom_render/plugin_session.h"

#include <fmt/format.h>

#include <cstring>

namespace vl1::render_tool {

namespace {

constexpr char base_magic[4] = {'s', '1', 'v', 'c'};
constexpr std::size_t header_size = 8;
constexpr std::size_t record_size = 48;  // 44-byte value record, then the uid
constexpr int32_t continuous_type = 0;
constexpr int32_t boolean_type = 2;

template <typename T>
T read_at(const std::vector<uint8_t>& blob, std::size_t offset)
{
    T value;
    std::memcpy(&value, blob.data() + offset, sizeof value);
    return value;
}

}  // namespace

std::size_t component_parameter_count(const std::vector<std::string>& param_names)
{
    std::size_t n = 0;
    for (const auto& name : param_names)
        n += name != editor_button_name && name != editor_request_name && name != state_param_name ? 1 : 0;
    return n;
}

std::vector<uint8_t> base_part_of_state(const std::string& state_text, std::size_t parameters)
{
    const std::size_t size = header_size + record_size * parameters;
    std::vector<uint8_t> blob = decode_state(state_text);
    if (blob.size() >= size && std::memcmp(blob.data(), base_magic, 4) == 0) {
        blob.resize(size);
        return blob;
    }
    std::vector<uint8_t> fresh(size, 0);
    std::memcpy(fresh.data(), base_magic, 4);
    return fresh;
}

std::string encode_state(const std::vector<uint8_t>& blob)
{
    return vl1::plain_state_text(blob);
}

std::vector<uint8_t> decode_state(const std::string& text)
{
    // The packed form as the plug-in writes it; a state is a few megabytes.
    if (text.rfind(vl1::packed_state_prefix, 0) == 0)
        return vl1::decode_state_text(text.c_str(), 64u << 20);
    std::vector<uint8_t> blob;
    if (!vl1::from_base64(text, blob))
        return {};
    return blob;
}

std::string state_problem(const std::vector<uint8_t>& blob, std::size_t parameters)
{
    if (blob.size() < header_size || std::memcmp(blob.data(), base_magic, 4) != 0)
        return "it is no saved state of the plug-in (it doesn't begin with \"s1vc\")";
    const auto declared = read_at<int32_t>(blob, 4);
    const std::size_t present = (blob.size() - header_size) / record_size;
    if (declared < 0 || static_cast<std::size_t>(declared) > present)
        return fmt::format("it is cut off: {} parameter records declared, {} present", declared, present);
    const std::size_t base = header_size + record_size * static_cast<std::size_t>(declared);
    if (blob.size() == base || static_cast<std::size_t>(declared) != parameters)
        return {};
    if (blob[base] > 1)
        return fmt::format("its theme flag is {}, not 0 or 1", blob[base]);
    if (blob[base] == 0)
        return {};
    const std::size_t record_bytes = blob.size() - base - 1;
    if (record_bytes < vl1::theme_state_entry_bytes)
        return fmt::format("its theme record is cut off after {} of {} bytes", record_bytes,
                           vl1::theme_state_entry_bytes);
    vl1::hueloom_theme_v1 theme;
    if (!vl1::hueloom_theme_state_serializer_v1::read_theme_from_vector(theme, blob, base + 1))
        return "An error occured when loading a saved theme.";
    return {};
}

std::vector<std::pair<uint32_t, std::string>> parameter_values_of_state(const std::vector<uint8_t>& blob)
{
    std::vector<std::pair<uint32_t, std::string>> values;
    if (blob.size() < header_size || std::memcmp(blob.data(), base_magic, 4) != 0)
        return values;
    const auto declared = read_at<int32_t>(blob, 4);
    for (int32_t i = 0; i < declared; ++i) {
        const std::size_t at = header_size + record_size * static_cast<std::size_t>(i);
        if (at + record_size > blob.size())
            break;
        const auto type = read_at<int32_t>(blob, at);
        const auto uid = read_at<uint32_t>(blob, at + 44);
        if (type == continuous_type)
            values.emplace_back(uid, fmt::format("{}", read_at<float>(blob, at + 4)));
        else if (type == boolean_type)
            values.emplace_back(uid, blob[at + 4] != 0 ? "1" : "0");
    }
    return values;
}

}  // namespace vl1::render_tool
