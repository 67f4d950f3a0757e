// Writing theme files, always in format version 3.
#include <limits>
#include <ostream>
#include <sstream>

#include <fmt/format.h>

#include "framework/io/write_file_atomically.h"
#include "themes/byte_order.h"
#include "themes/hueloom_theme_file_serializer_v1.h"

namespace vl1 {

namespace {

template <typename T>
void put(std::ostream& out, T value)
{
    uint8_t bytes[sizeof(T)];
    theme_bytes::store<T>(bytes, value);
    out.write(reinterpret_cast<const char*>(bytes), sizeof(T));
}

bool fits_file(const hueloom_theme_v1& theme)
{
    // Slot count (wheel LUTs + the post-processing slot) and background size are u16 and u32.
    if (theme.luts.size() + 1 > std::numeric_limits<uint16_t>::max())
        return false;
    if (theme.background_data.size() > std::numeric_limits<uint32_t>::max())
        return false;
    if (theme.post_processing_lut && !fits_lut_slot(*theme.post_processing_lut))
        return false;
    for (const theme_lut_slot& slot : theme.luts)
        if (slot.lut && !fits_lut_slot(*slot.lut))
            return false;
    return true;
}

}  // namespace

std::unique_ptr<theme_file_entry_v1> hueloom_theme_file_serializer_v1::serialize(const hueloom_theme_v1& theme)
{
    if (!fits_file(theme))
        return nullptr;
    auto entry = std::make_unique<theme_file_entry_v1>();
    entry->theme_version = theme.version;
    entry->uid = theme.uid;
    entry->background = theme.background_data;
    entry->name = theme.name.substr(0, std::numeric_limits<uint16_t>::max());

    entry->slots.resize(theme.luts.size() + 1);
    auto slot_bytes = [&](std::size_t i) { return reinterpret_cast<uint8_t*>(&entry->slots[i]); };
    const lut_argb<32>* post_processing = theme.post_processing_lut.get();
    store_lut_slot(slot_bytes(0), post_processing ? post_processing_marker_present : post_processing_marker_absent,
                   post_processing, true);
    for (std::size_t i = 0; i < theme.luts.size(); ++i)
        store_lut_slot(slot_bytes(i + 1), theme.luts[i].rotation, theme.luts[i].lut.get(), true);
    return entry;
}

bool hueloom_theme_file_serializer_v1::write_theme_to_stream(const hueloom_theme_v1& theme, std::ostream& out)
{
    const std::unique_ptr<theme_file_entry_v1> entry = serialize(theme);
    if (!entry)
        return false;
    put<uint32_t>(out, entry->magic);
    put<uint32_t>(out, entry->format_version);
    put<uint32_t>(out, entry->theme_version);
    put<uint32_t>(out, entry->uid);
    put<uint32_t>(out, static_cast<uint32_t>(entry->background.size()));
    out.write(reinterpret_cast<const char*>(entry->background.data()), static_cast<std::streamsize>(entry->background.size()));
    put<uint16_t>(out, static_cast<uint16_t>(entry->name.size()));
    out.write(entry->name.data(), static_cast<std::streamsize>(entry->name.size()));
    put<uint16_t>(out, static_cast<uint16_t>(entry->slots.size()));
    for (const theme_lut_entry_v1& slot : entry->slots)
        out.write(reinterpret_cast<const char*>(&slot), sizeof(slot));
    return static_cast<bool>(out);
}

bool hueloom_theme_file_serializer_v1::write_theme_to_file(const hueloom_theme_v1& theme, const std::string& path,
                                                           std::string& problem)
{
    std::ostringstream bytes;
    if (!write_theme_to_stream(theme, bytes)) {
        problem = fmt::format("cannot write '{}': the theme can't be stored in a theme file", path);
        return false;
    }
    return write_file_atomically(path, std::move(bytes).str(), problem);
}

bool hueloom_theme_file_serializer_v1::write_theme_to_file(const hueloom_theme_v1& theme, const std::string& path)
{
    std::string ignored;
    return write_theme_to_file(theme, path, ignored);
}

}  // namespace vl1
