#include "tools/hueloom_theme/image_sniff.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <fmt/format.h>

namespace vl1::theme_tool {

namespace {

using bytes_view = std::span<const uint8_t>;

bool starts_with(bytes_view bytes, std::size_t offset, const char* magic)
{
    const std::size_t length = std::strlen(magic);
    return bytes.size() >= offset + length && std::memcmp(bytes.data() + offset, magic, length) == 0;
}

uint32_t big_endian(bytes_view b, std::size_t at, int count)
{
    uint32_t value = 0;
    for (int i = 0; i < count; ++i)
        value = (value << 8) | b[at + i];
    return value;
}

uint32_t little_endian(bytes_view b, std::size_t at, int count)
{
    uint32_t value = 0;
    for (int i = count - 1; i >= 0; --i)
        value = (value << 8) | b[at + i];
    return value;
}

// IHDR is always the first chunk: width and height, big-endian, at 16 and 20.
image_kind sniff_png(bytes_view b)
{
    image_kind kind{"PNG"};
    if (b.size() >= 24 && starts_with(b, 12, "IHDR")) {
        kind.width = big_endian(b, 16, 4);
        kind.height = big_endian(b, 20, 4);
    }
    return kind;
}

// The size stands in the first start-of-frame segment (markers C0..CF other than the
// tables C4, C8 and CC); the segments before it are skipped by their lengths.
image_kind sniff_jpeg(bytes_view b)
{
    image_kind kind{"JPEG"};
    std::size_t at = 2;
    while (at + 4 <= b.size()) {
        if (b[at] != 0xFF)
            break;
        const uint8_t marker = b[at + 1];
        if (marker == 0xFF) {  // fill byte
            ++at;
            continue;
        }
        const uint32_t length = big_endian(b, at + 2, 2);
        const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame) {
            if (at + 9 <= b.size()) {
                kind.height = big_endian(b, at + 5, 2);
                kind.width = big_endian(b, at + 7, 2);
            }
            break;
        }
        if (length < 2)
            break;
        at += 2 + length;
    }
    return kind;
}

image_kind sniff_bmp(bytes_view b)
{
    image_kind kind{"BMP"};
    if (b.size() >= 26) {
        kind.width = little_endian(b, 18, 4);
        // A negative height marks a top-down picture.
        const int32_t height = static_cast<int32_t>(little_endian(b, 22, 4));
        kind.height = height == INT32_MIN ? 0u : static_cast<uint32_t>(std::abs(height));
    }
    return kind;
}

image_kind sniff_webp(bytes_view b)
{
    image_kind kind{"WebP"};
    if (starts_with(b, 12, "VP8X") && b.size() >= 30) {
        kind.width = little_endian(b, 24, 3) + 1;
        kind.height = little_endian(b, 27, 3) + 1;
    } else if (starts_with(b, 12, "VP8L") && b.size() >= 25) {
        const uint32_t bits = little_endian(b, 21, 4);
        kind.width = (bits & 0x3FFF) + 1;
        kind.height = ((bits >> 14) & 0x3FFF) + 1;
    } else if (starts_with(b, 12, "VP8 ") && b.size() >= 30) {
        kind.width = little_endian(b, 26, 2) & 0x3FFF;
        kind.height = little_endian(b, 28, 2) & 0x3FFF;
    }
    return kind;
}

}  // namespace

image_kind sniff_image(std::span<const uint8_t> b)
{
    if (starts_with(b, 0, "\x89PNG\r\n\x1a\n"))
        return sniff_png(b);
    if (b.size() >= 3 && b[0] == 0xFF && b[1] == 0xD8 && b[2] == 0xFF)
        return sniff_jpeg(b);
    if (starts_with(b, 0, "GIF87a") || starts_with(b, 0, "GIF89a"))
        return b.size() >= 10 ? image_kind{"GIF", little_endian(b, 6, 2), little_endian(b, 8, 2)} : image_kind{"GIF"};
    if (starts_with(b, 0, "BM"))
        return sniff_bmp(b);
    if (starts_with(b, 0, "RIFF") && starts_with(b, 8, "WEBP"))
        return sniff_webp(b);
    const bool tiff_little = b.size() >= 4 && starts_with(b, 0, "II*") && b[3] == 0;
    const bool tiff_big = b.size() >= 4 && starts_with(b, 0, "MM") && b[2] == 0 && b[3] == '*';
    if (tiff_little || tiff_big)
        return {"TIFF"};
    return {};
}

std::string describe_image(std::span<const uint8_t> bytes)
{
    if (bytes.empty())
        return "no picture";
    const image_kind kind = sniff_image(bytes);
    if (kind.type.empty()) {
        std::string start;
        for (std::size_t i = 0; i < std::min<std::size_t>(bytes.size(), 4); ++i)
            start += fmt::format("{}{:02x}", i == 0 ? "" : " ", bytes[i]);
        return fmt::format("unknown format (starts {}), {} bytes", start, bytes.size());
    }
    if (kind.width == 0 || kind.height == 0)
        return fmt::format("{}, size unknown, {} bytes", kind.type, bytes.size());
    return fmt::format("{}, {} x {} px, {} bytes", kind.type, kind.width, kind.height, bytes.size());
}

}  // namespace vl1::theme_tool
