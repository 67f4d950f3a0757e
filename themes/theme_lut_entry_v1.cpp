#include "themes/theme_lut_entry_v1.h"

#include <cstddef>

#include "themes/byte_order.h"

namespace vl1 {

namespace {

constexpr std::size_t angle_offset = offsetof(theme_lut_entry_v1, angle);
constexpr std::size_t edge_offset = offsetof(theme_lut_entry_v1, edge_length);
constexpr std::size_t padding_offset = offsetof(theme_lut_entry_v1, padding);
constexpr std::size_t table_offset = offsetof(theme_lut_entry_v1, table);
constexpr std::size_t cell_bytes = 3 * sizeof(float);
constexpr std::size_t cell_count = lut_argb<32>::entry_count;

static_assert(angle_offset == 0 && edge_offset == 4 && padding_offset == 6 && table_offset == 8);

}  // namespace

bool fits_lut_slot(const lut_argb<32>& lut) { return lut.data.size() >= cell_count; }

void store_lut_slot(uint8_t* slot, float angle, const lut_argb<32>* lut, bool write_edge_length)
{
    theme_bytes::store<float>(slot + angle_offset, angle);
    if (write_edge_length) {
        theme_bytes::store<uint16_t>(slot + edge_offset, static_cast<uint16_t>(theme_lut_edge));
        theme_bytes::store<uint16_t>(slot + padding_offset, 0);
    }
    uint8_t* table = slot + table_offset;
    if (lut == nullptr) {
        std::memset(table, 0, cell_count * cell_bytes);
        return;
    }
    for (std::size_t i = 0; i < cell_count; ++i) {
        const argb_float& cell = lut->data[i];
        const float rgb[3] = {cell.r, cell.g, cell.b};
        std::memcpy(table + i * cell_bytes, rgb, cell_bytes);
    }
}

float load_lut_slot_angle(const uint8_t* slot) { return theme_bytes::load<float>(slot + angle_offset); }

std::shared_ptr<lut_argb<32>> load_lut_slot_table(const uint8_t* slot)
{
    auto lut = std::make_shared<lut_argb<32>>();
    const uint8_t* table = slot + table_offset;
    for (std::size_t i = 0; i < cell_count; ++i) {
        float rgb[3];
        std::memcpy(rgb, table + i * cell_bytes, cell_bytes);
        lut->data[i] = argb_float{1.0f, rgb[0], rgb[1], rgb[2]};
    }
    return lut;
}

}  // namespace vl1
