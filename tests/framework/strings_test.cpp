#include <gtest/gtest.h>

#include "framework/localize.h"
#include "framework/string_helpers.h"

namespace vl1 {
namespace {

using strings = std::vector<std::string>;

TEST(LocalizeText, PicksTheBlockOfTheLanguageWithoutFallbackAndLeavesOtherTextAlone)
{
    const struct {
        language_id language;
        const char* text;
        const char* expected;
    } cases[] = {
        {language_id::en, "{en:a}{de:b}", "a"},
        {language_id::de, "{en:a}{de:b}", "b"},
        {language_id::de, "{de:Abbrechen}{en:Cancel}", "Abbrechen"},
        {language_id::en, "x{en:a}y{de:b}z", "xayz"},
        {static_cast<language_id>(7), "{en:a}{de:b}", "a"},
        {language_id::en, "{fr:a}", ""},
        {language_id::en, "{en:a", "{en:a"},
        {language_id::de, "{en:a}{de:b", "{de:b"},  // an unclosed block ends the walk
        {language_id::en, "Value {0} of {1}", "Value {0} of {1}"},
        {language_id::en, "{e:a}", "{e:a}"},  // the tag is always two characters
        // Blocks nest and keep their placeholders; inner blocks are not processed.
        {language_id::en, "{en:a{b}c}", "a{b}c"},
        {language_id::de, "{en:a{b}c}", ""},
        {language_id::de, "{en:File {0} is missing.}{de:Datei {0} fehlt.}", "Datei {0} fehlt."},
        {language_id::en, "{en:x{de:y}z}", "x{de:y}z"},
        {language_id::en, "{0}{en:a}", "{0}a"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(localize_text(c.language, c.text), c.expected) << c.text;
}

TEST(Split, CutsAtEachSeparatorUpToTheLimit)
{
    EXPECT_EQ(split("a,,b", ','), (strings{"a", "", "b"}));
    EXPECT_EQ(split("a,b,", ','), (strings{"a", "b"}));
    EXPECT_EQ(split(",a", ','), (strings{"", "a"}));
    EXPECT_EQ(split("", ','), (strings{""}));
    EXPECT_EQ(split("a b\tc", ' '), (strings{"a", "b\tc"}));
    EXPECT_EQ(split("a,b,c,d", ',', 2), (strings{"a", "b", "c,d"}));
    EXPECT_EQ(split("a,b,c", ',', 0), (strings{"a", "b", "c"}));
    EXPECT_EQ(split(L"1  2", L' '), (std::vector<std::wstring>{L"1", L"", L"2"}));
}

}  // namespace
}  // namespace vl1
