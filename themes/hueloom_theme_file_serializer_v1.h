// The theme file (.hlt): the durable form of one theme, in which the built-in theme, the
// app-data folder and the theme server keep every theme.
//
// Layout of format version 3, the one that is written (little-endian, B background bytes,
// N name bytes, C slots):
//   0  u32 magic 0x686C7431 ("1tlh" on disk)   4  u32 format version
//   8  u32 theme version                        12 u32 uid
//   16 u32 B, then B bytes of background image (undecoded)
//   20+B u16 N, then N name bytes (no terminator)
//   22+B+N u16 C, then C slots of 393224 bytes (theme_lut_entry_v1)
// Slot 0 is the post-processing slot (angle 1.0 with a LUT, -1.0 without); slots 1..C-1 are
// the wheel LUTs in theme order. Format 1 lacks the theme version field (the theme reads as
// version 1) and, like format 2, has no post-processing slot. Formats above 3 read as 3.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "color/hueloom_theme_v1.h"
#include "themes/theme_lut_entry_v1.h"

namespace vl1 {

inline constexpr uint32_t theme_file_magic = 0x686C7431;
/// The format version that is written.
inline constexpr uint32_t theme_file_format_version = 3;

/// A theme file in memory, field by field; the sizes stored in the file are the sizes of
/// the three arrays.
struct theme_file_entry_v1 {
    uint32_t magic = theme_file_magic;
    uint32_t format_version = theme_file_format_version;
    uint32_t theme_version = 1;
    uint32_t uid = 0;
    std::vector<uint8_t> background;
    /// At most 65535 bytes, any bytes.
    std::string name;
    /// At most 65535 slots.
    std::vector<theme_lut_entry_v1> slots;
};

/// The largest theme file any reader takes: above the largest theme an import makes (360
/// wheel LUTs of 393224 bytes and a 64 MiB background, some 210 MB).
inline constexpr std::uintmax_t largest_theme_file_bytes = 256ull << 20;

/// Stateless reader and writer of theme files.
class hueloom_theme_file_serializer_v1 {
public:
    /// The file record of `theme` in format 3. Names longer than 65535 bytes are cut there.
    /// Null if the theme can't be stored: more than 65534 wheel LUTs, a background of 4 GiB
    /// or more, or a LUT whose table has fewer than 32768 cells.
    static std::unique_ptr<theme_file_entry_v1> serialize(const hueloom_theme_v1& theme);

    /// Replaces name, uid, version and background of `theme` by the record's and appends its
    /// wheel LUTs; slot 0 of format 3 and above becomes the post-processing LUT when its
    /// angle is above 0.0. Every table cell gets alpha 1.0. False only for a null record.
    static bool deserialize(hueloom_theme_v1& theme, const theme_file_entry_v1* entry);

    /// Writes the whole file to `out`. False if the theme can't be stored (see serialize)
    /// or the stream fails.
    static bool write_theme_to_stream(const hueloom_theme_v1& theme, std::ostream& out);

    /// Writes the file at `path` in one step (framework/io): what stood there stays until the
    /// whole file is on the disk, and no temporary file is left. False, with `problem`
    /// naming the file, if the theme can't be stored or any write fails.
    static bool write_theme_to_file(const hueloom_theme_v1& theme, const std::string& path, std::string& problem);
    static bool write_theme_to_file(const hueloom_theme_v1& theme, const std::string& path);

    /// Reads a whole theme file from `bytes`. Refuses (false, theme untouched, reason in
    /// `problem`) a wrong magic, format version 0, and every size or count that the bytes
    /// don't hold; nothing is allocated for what the bytes don't contain. Bytes after the
    /// last slot are ignored.
    static bool read_theme_from_bytes(hueloom_theme_v1& theme, std::span<const uint8_t> bytes, std::string& problem);

    /// read_theme_from_bytes on everything the stream delivers from its position on.
    static bool read_theme_from_stream(hueloom_theme_v1& theme, std::istream& in);
    static bool read_theme_from_stream(hueloom_theme_v1& theme, std::istream& in, std::string& problem);

    /// read_theme_from_bytes on the bytes from `offset` to the end; false for an offset
    /// past the end.
    static bool read_theme_from_vector(hueloom_theme_v1& theme, const std::vector<uint8_t>& bytes, unsigned long offset);

    /// Reads the regular file at `path` of at most largest_theme_file_bytes. False, with
    /// `problem` naming the file, if it isn't one, is larger, can't be read, or is refused.
    static bool read_theme_from_file(hueloom_theme_v1& theme, const std::string& path);
    static bool read_theme_from_file(hueloom_theme_v1& theme, const std::string& path, std::string& problem);

    /// prefix + `value` as 8 lower-case hexadecimal digits + suffix; a null prefix or suffix
    /// stands for nothing. ("theme_", ".hlt") names a theme's file: 1 gives "theme_00000001.hlt".
    static std::string unsignedIntToHexWithPrefixAndSuffix(unsigned int value, const char* prefix, const char* suffix);

    /// Base-16 extraction as a C++ stream does it: leading white space and a "0x" are taken,
    /// the number ends at the first character that can't belong to it, text that doesn't
    /// begin with a hexadecimal number gives 0, and a number above 32 bits gives 0xffffffff.
    /// Never fails.
    static unsigned int hexToUnsignedInt(const std::string& text);
};

/// `value` as 8 lower-case hexadecimal digits.
std::string unsignedIntToHex(unsigned int value);

}  // namespace vl1
