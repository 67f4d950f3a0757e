// The component's state blob: "s1vc", record count, then one 48-byte record per parameter
// (the 44-byte param_value and the uid), all little-endian.
#include <algorithm>
#include <cstring>

#include "framework/ccomponent.h"
#include "framework/log.h"

namespace vl1 {

namespace {

// Default and bounds: the 24 bytes from offset 20 of a param_value.
constexpr std::size_t fixed_part_offset = 20;
constexpr std::size_t fixed_part_size = 24;

uint32_t read_u32(const uint8_t* p) noexcept
{
    uint32_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

void write_u32(uint8_t* p, uint32_t v) noexcept
{
    std::memcpy(p, &v, sizeof v);
}

}  // namespace

std::size_t ccomponent_v1::get_state_size()
{
    return state_header_size + state_record_size * static_cast<std::size_t>(get_parameter_count());
}

std::vector<uint8_t> ccomponent_v1::get_state()
{
    const int n = get_parameter_count();
    if (n <= 0)
        return {};
    std::vector<uint8_t> blob(state_header_size + state_record_size * static_cast<std::size_t>(n), 0);
    write_u32(blob.data(), state_magic);
    write_u32(blob.data() + 4, static_cast<uint32_t>(n));
    for (int i = 0; i < n; ++i) {
        const auto param = get_parameter(i);
        uint8_t* record = blob.data() + state_header_size + state_record_size * static_cast<std::size_t>(i);
        param_value_to_bytes(param->get_param_value(), record);
        write_u32(record + param_value_size, param->get_uid().value);
    }
    return blob;
}

bool ccomponent_v1::set_state(std::vector<uint8_t>& state, bool from_host)
{
    if (get_parameter_count() <= 0 || state.size() <= state_header_size)
        return false;
    if (read_u32(state.data()) != state_magic)
        return false;
    const auto declared = static_cast<int32_t>(read_u32(state.data() + 4));
    if (declared < 1)
        return true;

    // A saved project is outside input: only records that lie wholly inside the blob count.
    const std::size_t fitting = (state.size() - state_header_size) / state_record_size;
    const std::size_t n = std::min(static_cast<std::size_t>(declared), fitting);
    if (n < static_cast<std::size_t>(declared))
        log("State holds {} parameter records in {} bytes; only {} are read.", declared, state.size(), n);

    for (std::size_t i = 0; i < n; ++i) {
        const uint8_t* record = state.data() + state_header_size + state_record_size * i;
        param_value v = param_value_from_bytes(record);
        const uid id = uid::from_value(read_u32(record + param_value_size));
        const auto param = get_parameter(id);
        if (!param) {
            handle_unknown_parameter(id, v, from_host);
            continue;
        }
        // A saved project never changes a parameter's bounds or default.
        const param_value live = param->get_param_value();
        std::memcpy(reinterpret_cast<uint8_t*>(&v) + fixed_part_offset,
                    reinterpret_cast<const uint8_t*>(&live) + fixed_part_offset, fixed_part_size);
        param->set_param_value(v, from_host);
    }
    return true;
}

}  // namespace vl1
