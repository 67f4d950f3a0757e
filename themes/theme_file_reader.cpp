// Reading theme files. Every size and count in a file is checked against the bytes that are
// really there before anything is allocated for it, so a truncated or hostile file is
// refused with its reason instead of being read past its end.
#include <algorithm>
#include <istream>

#include <fmt/format.h>

#include "framework/io/read_bounded_file.h"
#include "themes/byte_order.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/theme_file_layout.h"

namespace vl1 {

namespace theme_file_layout {

namespace {

// Walks the bytes front to back; each take checks the remaining length first.
class bounded_reader {
public:
    explicit bounded_reader(std::span<const uint8_t> bytes) : bytes(bytes) {}

    std::size_t offset() const { return position; }
    std::size_t remaining() const { return bytes.size() - position; }

    template <typename T>
    bool take(T& value, const char* field, std::string& problem)
    {
        if (remaining() < sizeof(T)) {
            problem = fmt::format("file ends at byte {} inside the {} field ({} bytes needed at byte {})",
                                  bytes.size(), field, sizeof(T), position);
            return false;
        }
        value = theme_bytes::load<T>(bytes.data() + position);
        position += sizeof(T);
        return true;
    }

    bool take_span(uint64_t size, const char* what, std::span<const uint8_t>& out, std::string& problem)
    {
        if (size > remaining()) {
            problem = fmt::format("{} of {} bytes claimed at byte {}, but only {} bytes follow", what, size,
                                  position, remaining());
            return false;
        }
        out = bytes.subspan(position, static_cast<std::size_t>(size));
        position += static_cast<std::size_t>(size);
        return true;
    }

private:
    std::span<const uint8_t> bytes;
    std::size_t position = 0;
};

}  // namespace

bool parse(std::span<const uint8_t> bytes, file_view& view, std::string& problem)
{
    bounded_reader in(bytes);
    uint32_t magic = 0;
    if (!in.take(magic, "magic", problem) || !in.take(view.format_version, "format version", problem))
        return false;
    if (magic != theme_file_magic) {
        problem = fmt::format("not a theme file (magic 0x{:08x}, expected 0x{:08x})", magic, theme_file_magic);
        return false;
    }
    if (view.format_version == 0) {
        problem = "format version 0 is not a theme file format";
        return false;
    }
    view.theme_version = 1;
    if (view.format_version >= first_version_with_theme_version && !in.take(view.theme_version, "theme version", problem))
        return false;

    uint32_t background_size = 0;
    uint16_t name_length = 0;
    std::span<const uint8_t> name;
    if (!in.take(view.uid, "uid", problem) || !in.take(background_size, "background size", problem) ||
        !in.take_span(background_size, "background", view.background, problem) ||
        !in.take(name_length, "name length", problem) || !in.take_span(name_length, "name", name, problem) ||
        !in.take(view.slot_count, "slot count", problem))
        return false;
    view.name = std::string_view(reinterpret_cast<const char*>(name.data()), name.size());

    const uint64_t slot_bytes = uint64_t{view.slot_count} * theme_lut_entry_bytes;
    if (slot_bytes > in.remaining()) {
        problem = fmt::format("{} LUT slot{} of {} bytes claimed at byte {}, but only {} bytes follow", view.slot_count,
                              view.slot_count == 1 ? "" : "s", theme_lut_entry_bytes, in.offset(), in.remaining());
        return false;
    }
    return in.take_span(slot_bytes, "LUT slots", view.slots, problem);
}

void apply(const file_view& view, hueloom_theme_v1& theme)
{
    std::vector<theme_lut_slot> wheel;
    wheel.reserve(view.slot_count);
    std::shared_ptr<const lut_argb<32>> post_processing;
    const bool has_post_processing_slot = view.format_version >= first_version_with_post_processing_slot;
    for (std::size_t i = 0; i < view.slot_count; ++i) {
        const uint8_t* slot = view.slots.data() + i * theme_lut_entry_bytes;
        const float angle = load_lut_slot_angle(slot);
        if (i == 0 && has_post_processing_slot) {
            if (angle > 0.0f)
                post_processing = load_lut_slot_table(slot);
            continue;
        }
        wheel.push_back({load_lut_slot_table(slot), angle});
    }

    // Everything that allocates is done; from here on nothing can fail half-way.
    theme.name.assign(view.name);
    theme.uid = view.uid;
    theme.version = view.theme_version;
    theme.background_data.assign(view.background.begin(), view.background.end());
    theme.luts.insert(theme.luts.end(), std::make_move_iterator(wheel.begin()), std::make_move_iterator(wheel.end()));
    if (post_processing)
        theme.post_processing_lut = std::move(post_processing);
}

}  // namespace theme_file_layout

namespace {

// A read chunk: big enough to be quick, small enough that a stream's claims cost nothing
// until its bytes really arrive.
constexpr std::size_t stream_chunk_bytes = 1u << 20;

bool read_all(std::istream& in, std::vector<uint8_t>& bytes)
{
    for (;;) {
        const std::size_t had = bytes.size();
        bytes.resize(had + stream_chunk_bytes);
        in.read(reinterpret_cast<char*>(bytes.data() + had), static_cast<std::streamsize>(stream_chunk_bytes));
        const auto got = static_cast<std::size_t>(in.gcount());
        bytes.resize(had + got);
        if (in.eof())
            return true;
        if (!in)
            return false;
    }
}

}  // namespace

bool hueloom_theme_file_serializer_v1::read_theme_from_bytes(hueloom_theme_v1& theme, std::span<const uint8_t> bytes,
                                                             std::string& problem)
{
    theme_file_layout::file_view view;
    if (!theme_file_layout::parse(bytes, view, problem))
        return false;
    theme_file_layout::apply(view, theme);
    return true;
}

bool hueloom_theme_file_serializer_v1::deserialize(hueloom_theme_v1& theme, const theme_file_entry_v1* entry)
{
    if (entry == nullptr)
        return false;
    theme_file_layout::file_view view;
    view.format_version = entry->format_version;
    view.theme_version = entry->theme_version;
    view.uid = entry->uid;
    view.background = entry->background;
    view.name = std::string_view(entry->name).substr(0, UINT16_MAX);
    view.slot_count = static_cast<uint16_t>(std::min<std::size_t>(entry->slots.size(), UINT16_MAX));
    view.slots = std::span(reinterpret_cast<const uint8_t*>(entry->slots.data()), view.slot_count * theme_lut_entry_bytes);
    theme_file_layout::apply(view, theme);
    return true;
}

bool hueloom_theme_file_serializer_v1::read_theme_from_stream(hueloom_theme_v1& theme, std::istream& in,
                                                              std::string& problem)
{
    std::vector<uint8_t> bytes;
    if (!read_all(in, bytes)) {
        problem = fmt::format("reading failed after {} bytes", bytes.size());
        return false;
    }
    return read_theme_from_bytes(theme, bytes, problem);
}

bool hueloom_theme_file_serializer_v1::read_theme_from_stream(hueloom_theme_v1& theme, std::istream& in)
{
    std::string ignored;
    return read_theme_from_stream(theme, in, ignored);
}

bool hueloom_theme_file_serializer_v1::read_theme_from_vector(hueloom_theme_v1& theme, const std::vector<uint8_t>& bytes,
                                                              unsigned long offset)
{
    if (offset > bytes.size())
        return false;
    std::string ignored;
    return read_theme_from_bytes(theme, std::span(bytes).subspan(offset), ignored);
}

bool hueloom_theme_file_serializer_v1::read_theme_from_file(hueloom_theme_v1& theme, const std::string& path,
                                                            std::string& problem)
{
    std::vector<uint8_t> bytes;
    if (!read_bounded_file(path, largest_theme_file_bytes, bytes, problem))
        return false;
    return read_theme_from_bytes(theme, bytes, problem);
}

bool hueloom_theme_file_serializer_v1::read_theme_from_file(hueloom_theme_v1& theme, const std::string& path)
{
    std::string ignored;
    return read_theme_from_file(theme, path, ignored);
}

}  // namespace vl1
