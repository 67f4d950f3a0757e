#include "fuzz/seeds/seed_catalog.h"

#include "framework/io/json_checked.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <sstream>

#include "fuzz/harness/fuzz_component.h"
#include "fuzz/harness/fuzz_themes.h"
#include "framework/io/state_text.h"
#include "presets/preset_writer.h"
#include "themes/byte_order.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_theme_state_serializer_v1.h"

namespace vl1::fuzz {

namespace {

// Heads of records: long enough to hold every header field and the start of slot 0.
constexpr std::size_t head_bytes = 4096;

std::vector<uint8_t> to_bytes(const std::string& text) { return {text.begin(), text.end()}; }

std::vector<uint8_t> head_of(const std::vector<uint8_t>& bytes, std::size_t size)
{
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(size, bytes.size()))};
}

// Theme file bytes put together field by field, for the older formats the writer no longer
// writes.
class file_builder {
public:
    template <typename T>
    file_builder& put(T value)
    {
        bytes.resize(bytes.size() + sizeof(T));
        theme_bytes::store<T>(bytes.data() + bytes.size() - sizeof(T), value);
        return *this;
    }
    file_builder& text(const std::string& s)
    {
        bytes.insert(bytes.end(), s.begin(), s.end());
        return *this;
    }
    file_builder& slot(float angle, const lut_argb<32>* lut)
    {
        bytes.resize(bytes.size() + theme_lut_entry_bytes);
        store_lut_slot(bytes.data() + bytes.size() - theme_lut_entry_bytes, angle, lut, true);
        return *this;
    }
    std::vector<uint8_t> bytes;
};

// Header up to and including the slot count.
file_builder file_header(uint32_t format, uint16_t slot_count)
{
    file_builder b;
    b.put<uint32_t>(theme_file_magic).put<uint32_t>(format);
    if (format >= 2)
        b.put<uint32_t>(4);
    b.put<uint32_t>(0x00c0ffee).put<uint32_t>(3).text("PNG").put<uint16_t>(6).text("Harbor").put<uint16_t>(slot_count);
    return b;
}

std::vector<uint8_t> written_theme_file(const hueloom_theme_v1& theme)
{
    std::ostringstream out(std::ios::binary);
    hueloom_theme_file_serializer_v1::write_theme_to_stream(theme, out);
    return to_bytes(out.str());
}

std::vector<named_seed> theme_file_seeds()
{
    const auto lut = shifted_lut(0.2f);
    return {
        {"format3_post_processing_2_luts.hlt", written_theme_file(sample_theme(0x0a1b2c3d, "Dusk", 2, true))},
        {"format3_no_luts.hlt", written_theme_file(sample_theme(0x0a1b2c3e, "Empty", 0, false))},
        {"format3_no_slots.hlt", file_header(3, 0).bytes},
        {"format2_1_lut.hlt", file_header(2, 1).slot(120.0f, lut.get()).bytes},
        {"format1_1_lut.hlt", file_header(1, 1).slot(240.0f, lut.get()).bytes},
        {"format1_no_slots.hlt", file_header(1, 0).bytes},
        {"format7_no_slots.hlt", file_header(7, 0).bytes},
    };
}

std::vector<uint8_t> state_record(const hueloom_theme_v1& theme)
{
    std::vector<uint8_t> record;
    hueloom_theme_state_serializer_v1::write_theme_to_vector(theme, record, 0);
    return record;
}

std::vector<named_seed> theme_state_seeds()
{
    const std::vector<uint8_t> record = state_record(sample_theme(0x0a1b2c3d, "Dusk", 3, true));
    std::vector<uint8_t> format2 = head_of(record, head_bytes);
    theme_bytes::store<uint32_t>(format2.data() + offsetof(theme_state_entry_v1, format_version), 2);
    std::vector<uint8_t> eleven_slots = head_of(record, head_bytes);
    theme_bytes::store<uint16_t>(eleven_slots.data() + offsetof(theme_state_entry_v1, slot_count), 11);
    return {
        {"record_post_processing_3_luts", record},
        {"record_head_post_processing_3_luts", head_of(record, head_bytes)},
        {"record_head_no_luts", head_of(state_record(sample_theme(1, "", 0, false)), head_bytes)},
        {"record_head_name_100_bytes", head_of(state_record(sample_theme(2, std::string(100, 'n'), 1, false)), head_bytes)},
        {"record_head_format_2", format2},
        {"record_head_11_slots", eleven_slots},
    };
}

// A whole state with `theme` in its record, or without a theme.
std::vector<uint8_t> effect_state(const hueloom_theme_v1* theme)
{
    const auto fx = make_effect_component();
    std::vector<uint8_t> state = fx->get_state();
    const std::size_t flag_at = fx->get_state_size() - 1 - hueloom_theme_record_size;
    state[flag_at] = theme != nullptr ? 1 : 0;
    if (theme != nullptr)
        hueloom_theme_state_serializer_v1::write_theme_to_vector(*theme, state, flag_at + 1);
    return state;
}

std::size_t base_state_size() { return make_effect_component()->get_state_size() - 1 - hueloom_theme_record_size; }

std::vector<named_seed> effect_state_seeds()
{
    const hueloom_theme_v1 foreign = sample_theme(0x0f0e0d0c, "Only in the project", 2, true);
    const hueloom_theme_v1 known = sample_theme(collection_theme_uid, "in the collection", 3, true);
    const std::vector<uint8_t> with_foreign = effect_state(&foreign);
    const std::vector<uint8_t> with_known = effect_state(&known);
    // As an older version saved it: format 2 has no post-processing slot.
    std::vector<uint8_t> format2 = head_of(with_foreign, head_bytes);
    const std::size_t record_at = base_state_size() + 1;
    theme_bytes::store<uint32_t>(format2.data() + record_at + offsetof(theme_state_entry_v1, format_version), 2);
    return {
        {"state_foreign_theme", with_foreign},
        {"state_collection_theme", with_known},
        {"state_no_theme", effect_state(nullptr)},
        {"state_head_foreign_theme", head_of(with_foreign, head_bytes)},
        {"state_head_collection_theme", head_of(with_known, head_bytes)},
        {"state_head_format_2", format2},
        {"state_base_only", head_of(with_known, base_state_size())},
    };
}

std::vector<named_seed> state_text_seeds()
{
    const hueloom_theme_v1 foreign = sample_theme(0x0f0e0d0c, "Only in the project", 2, true);
    const std::vector<uint8_t> with_foreign = effect_state(&foreign);
    const auto effect = make_effect_component();
    return {
        {"state_foreign_theme.txt", to_bytes(encode_state_text(with_foreign, effect->float_grids(with_foreign)))},
        {"state_no_theme.txt", to_bytes(encode_state_text(effect_state(nullptr)))},
        {"state_foreign_theme_plain.txt", to_bytes(plain_state_text(with_foreign))},
        {"state_base_only.txt", to_bytes(plain_state_text(head_of(with_foreign, base_state_size())))},
        {"state_base_and_flag.txt", to_bytes(plain_state_text(head_of(with_foreign, base_state_size() + 1)))},
    };
}

// The writer's text of a fresh component, with the state cut to its base part and flag and
// without the table, so that the seed stays a few kilobytes.
std::vector<named_seed> preset_seeds()
{
    const auto fx = make_effect_component();
    rapidjson::Document document;
    document.Parse(build_preset_text(*fx).c_str());
    if (document.HasParseError() || !document.IsObject())
        return {};
    const std::size_t kept = base_state_size() + 1;
    document["plugin_state"].Erase(document["plugin_state"].Begin() + kept, document["plugin_state"].End());
    document["plugin_state_size"].SetUint64(kept);
    document.RemoveMember("lut_points");
    document.RemoveMember("lut_edge_length");
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    document.Accept(writer);
    return {{"fresh_component_short_state.json", to_bytes(std::string(buffer.GetString(), buffer.GetSize()))}};
}

}  // namespace

std::vector<std::string_view> targets_with_generated_seeds()
{
    return {"theme_file", "theme_state", "effect_state", "state_text", "preset"};
}

std::vector<named_seed> generated_seeds(std::string_view target)
{
    if (target == "theme_file")
        return theme_file_seeds();
    if (target == "theme_state")
        return theme_state_seeds();
    if (target == "effect_state")
        return effect_state_seeds();
    if (target == "state_text")
        return state_text_seeds();
    if (target == "preset")
        return preset_seeds();
    return {};
}

}  // namespace vl1::fuzz
