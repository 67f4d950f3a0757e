#include "themes/hueloom_theme_state_serializer_v1.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "themes/byte_order.h"

namespace vl1 {

namespace {

constexpr std::size_t magic_offset = offsetof(theme_state_entry_v1, magic);
constexpr std::size_t format_offset = offsetof(theme_state_entry_v1, format_version);
constexpr std::size_t uid_offset = offsetof(theme_state_entry_v1, uid);
constexpr std::size_t name_offset = offsetof(theme_state_entry_v1, name);
constexpr std::size_t name_field_bytes = sizeof(theme_state_entry_v1::name);
constexpr std::size_t slot_count_offset = offsetof(theme_state_entry_v1, slot_count);
constexpr std::size_t slots_offset = offsetof(theme_state_entry_v1, slots);

// Room for the longest name and its zero byte.
static_assert(theme_state_name_max_bytes < name_field_bytes);
static_assert(magic_offset == 0 && format_offset == 4 && uid_offset == 8 && name_offset == 12 &&
              slot_count_offset == 114 && slots_offset == 116);

bool fits_record(const hueloom_theme_v1& theme)
{
    if (theme.luts.size() > theme_state_max_wheel_luts)
        return false;
    if (theme.post_processing_lut && !fits_lut_slot(*theme.post_processing_lut))
        return false;
    return std::all_of(theme.luts.begin(), theme.luts.end(),
                       [](const theme_lut_slot& slot) { return !slot.lut || fits_lut_slot(*slot.lut); });
}

uint8_t* slot_at(uint8_t* record, std::size_t i) { return record + slots_offset + i * theme_lut_entry_bytes; }
const uint8_t* slot_at(const uint8_t* record, std::size_t i) { return record + slots_offset + i * theme_lut_entry_bytes; }

// The record is handled as bytes throughout: inside a state blob it may start at any offset.
void encode(const hueloom_theme_v1& theme, uint8_t* record)
{
    theme_bytes::store<uint32_t>(record + magic_offset, theme_state_magic);
    theme_bytes::store<uint32_t>(record + format_offset, theme_state_format_version);
    theme_bytes::store<uint32_t>(record + uid_offset, theme.uid);
    const std::size_t name_bytes = std::min(theme.name.size(), theme_state_name_max_bytes);
    std::memcpy(record + name_offset, theme.name.data(), name_bytes);
    record[name_offset + name_bytes] = 0;

    const std::size_t slot_count = theme.luts.size() + 1;
    theme_bytes::store<uint16_t>(record + slot_count_offset, static_cast<uint16_t>(slot_count));
    const lut_argb<32>* post_processing = theme.post_processing_lut.get();
    store_lut_slot(slot_at(record, 0), post_processing ? post_processing_marker_present : post_processing_marker_absent,
                   post_processing, false);
    for (std::size_t i = 0; i < theme.luts.size(); ++i)
        store_lut_slot(slot_at(record, i + 1), theme.luts[i].rotation, theme.luts[i].lut.get(), false);
}

uint16_t slot_count_of(const uint8_t* record) { return theme_bytes::load<uint16_t>(record + slot_count_offset); }

// The caller has checked the slot count against the record's room.
void decode(const uint8_t* record, hueloom_theme_v1& theme)
{
    const auto* name = reinterpret_cast<const char*>(record + name_offset);
    // The writer keeps at most 100 name bytes; a record without a zero byte among the first
    // 100 is cut there too, so that what was read writes back unchanged.
    const std::size_t name_bytes = std::find(name, name + theme_state_name_max_bytes, '\0') - name;
    const uint32_t format_version = theme_bytes::load<uint32_t>(record + format_offset);

    std::vector<theme_lut_slot> wheel;
    std::shared_ptr<const lut_argb<32>> post_processing;
    const uint16_t slot_count = slot_count_of(record);
    for (std::size_t i = 0; i < slot_count; ++i) {
        const uint8_t* slot = slot_at(record, i);
        const float angle = load_lut_slot_angle(slot);
        if (i == 0 && format_version >= theme_state_format_version) {
            if (angle > 0.0f)
                post_processing = load_lut_slot_table(slot);
            continue;
        }
        wheel.push_back({load_lut_slot_table(slot), angle});
    }

    theme.name.assign(name, name_bytes);
    theme.uid = theme_bytes::load<uint32_t>(record + uid_offset);
    theme.version = 0;
    theme.luts.insert(theme.luts.end(), std::make_move_iterator(wheel.begin()), std::make_move_iterator(wheel.end()));
    if (post_processing)
        theme.post_processing_lut = std::move(post_processing);
}

bool decodable(const uint8_t* record) { return slot_count_of(record) <= theme_state_slot_capacity; }

}  // namespace

bool hueloom_theme_state_serializer_v1::serialize(const hueloom_theme_v1& theme, theme_state_entry_v1* record)
{
    if (record == nullptr || !fits_record(theme))
        return false;
    encode(theme, reinterpret_cast<uint8_t*>(record));
    return true;
}

bool hueloom_theme_state_serializer_v1::deserialize(hueloom_theme_v1& theme, const theme_state_entry_v1* record)
{
    if (record == nullptr)
        return false;
    const auto* bytes = reinterpret_cast<const uint8_t*>(record);
    if (!decodable(bytes))
        return false;
    decode(bytes, theme);
    return true;
}

bool hueloom_theme_state_serializer_v1::write_theme_to_vector(const hueloom_theme_v1& theme, std::vector<uint8_t>& blob,
                                                              unsigned long offset)
{
    if (!fits_record(theme))
        return false;
    blob.resize(offset + theme_state_entry_bytes);
    encode(theme, blob.data() + offset);
    return true;
}

bool hueloom_theme_state_serializer_v1::read_theme_from_vector(hueloom_theme_v1& theme, const std::vector<uint8_t>& blob,
                                                               unsigned long offset)
{
    if (offset > blob.size() || blob.size() - offset < theme_state_entry_bytes)
        return false;
    const uint8_t* record = blob.data() + offset;
    if (theme_bytes::load<uint32_t>(record + magic_offset) != theme_state_magic ||
        theme_bytes::load<uint32_t>(record + format_offset) == 0 || !decodable(record))
        return false;
    decode(record, theme);
    return true;
}

}  // namespace vl1
