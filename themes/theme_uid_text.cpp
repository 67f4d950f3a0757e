// Theme uids as text: 8 lower-case hexadecimal digits in file names, theme.json and the
// server's manifest.
#include <sstream>

#include <fmt/format.h>

#include "themes/hueloom_theme_file_serializer_v1.h"

namespace vl1 {

std::string unsignedIntToHex(unsigned int value) { return fmt::format("{:08x}", value); }

std::string hueloom_theme_file_serializer_v1::unsignedIntToHexWithPrefixAndSuffix(unsigned int value, const char* prefix,
                                                                                  const char* suffix)
{
    std::string text = prefix != nullptr ? prefix : "";
    text += unsignedIntToHex(value);
    if (suffix != nullptr)
        text += suffix;
    return text;
}

unsigned int hueloom_theme_file_serializer_v1::hexToUnsignedInt(const std::string& text)
{
    std::istringstream in(text);
    unsigned int value = 0;
    in >> std::hex >> value;
    return value;
}

}  // namespace vl1
