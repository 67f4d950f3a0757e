// Texts that carry several languages in one string: "{en:Cancel}{de:Abbrechen}".
#pragma once

#include <string>

#include "framework/types.h"

namespace vl1 {

/// Reduces `s` to what `language` shows: blocks "{xx:text}" of the selected tag ("de" for
/// language_id::de, "en" otherwise) give their text unchanged, blocks of other tags vanish,
/// text around blocks stays. A "{" counts as a block only if the character three places
/// behind it is ":", so "{0}" placeholders pass through; braces inside a block nest.
std::string localize_text(language_id language, const std::string& s);

}  // namespace vl1
