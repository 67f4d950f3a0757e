#include <gtest/gtest.h>

#include "framework/localize.h"
#include "framework/string_helpers.h"

namespace vl1 {
namespace {

using strings = std::vector<std::string>;

std::string en(const std::string& s)
{
    return localize_text(language_id::en, s);
}

std::string de(const std::string& s)
{
    return localize_text(language_id::de, s);
}

TEST(LocalizeText, PicksTheBlockOfTheLanguage)
{
    EXPECT_EQ(en("{en:a}{de:b}"), "a");
    EXPECT_EQ(de("{en:a}{de:b}"), "b");
    EXPECT_EQ(de("{de:Abbrechen}{en:Cancel}"), "Abbrechen");
    EXPECT_EQ(en("x{en:a}y{de:b}z"), "xayz");
    EXPECT_EQ(localize_text(static_cast<language_id>(7), "{en:a}{de:b}"), "a");
}

TEST(LocalizeText, NoFallbackAndNoBlocks)
{
    EXPECT_EQ(en("{fr:a}"), "");
    EXPECT_EQ(en("{en:a"), "{en:a");
    EXPECT_EQ(de("{en:a}{de:b"), "{de:b");  // an unclosed block ends the walk
    EXPECT_EQ(en("Value {0} of {1}"), "Value {0} of {1}");
    EXPECT_EQ(en(""), "");
    EXPECT_EQ(en("{e:a}"), "{e:a}");  // the tag is always two characters
}

TEST(LocalizeText, BlocksNestAndKeepPlaceholders)
{
    EXPECT_EQ(en("{en:a{b}c}"), "a{b}c");
    EXPECT_EQ(de("{en:a{b}c}"), "");
    EXPECT_EQ(de("{en:File {0} is missing.}{de:Datei {0} fehlt.}"), "Datei {0} fehlt.");
    EXPECT_EQ(en("{en:x{de:y}z}"), "x{de:y}z");  // inner blocks are not processed
    EXPECT_EQ(en("{0}{en:a}"), "{0}a");
}

TEST(Split, CutsAtEachSeparator)
{
    EXPECT_EQ(split("a,,b", ','), (strings{"a", "", "b"}));
    EXPECT_EQ(split("a,b,", ','), (strings{"a", "b"}));
    EXPECT_EQ(split(",a", ','), (strings{"", "a"}));
    EXPECT_EQ(split("", ','), (strings{""}));
    EXPECT_EQ(split("abc", ','), (strings{"abc"}));
    EXPECT_EQ(split("a b\tc", ' '), (strings{"a", "b\tc"}));
}

TEST(Split, LimitLeavesTheRestWhole)
{
    EXPECT_EQ(split("a,b,c", ',', 1), (strings{"a", "b,c"}));
    EXPECT_EQ(split("a,b,c", ',', 2), (strings{"a", "b", "c"}));
    EXPECT_EQ(split("a,b,c,d", ',', 2), (strings{"a", "b", "c,d"}));
    EXPECT_EQ(split("a,b,c", ',', 0), (strings{"a", "b", "c"}));
    EXPECT_EQ(split(L"1  2", L' '), (std::vector<std::wstring>{L"1", L"", L"2"}));
}

TEST(StringHelpers, TrimCaseAndRemove)
{
    std::string s = " \t hello \r\n";
    EXPECT_EQ(ltrim_copy(s), "hello \r\n");
    EXPECT_EQ(rtrim_copy(s), " \t hello");
    trim(s);
    EXPECT_EQ(s, "hello");
    std::string blank = "   ";
    EXPECT_EQ(trim(blank), "");
    std::wstring w = L"  Wide\r";
    EXPECT_EQ(trim_copy(w), L"Wide");
    EXPECT_EQ(ltrim(w), L"Wide\r");

    EXPECT_EQ(lowercase("MiXeD 1\xc4"), "mixed 1\xc4");
    EXPECT_EQ(uppercase(std::wstring(L"abc")), L"ABC");
    EXPECT_EQ(remove("a-b-c", '-'), "abc");
    EXPECT_EQ(remove(std::wstring(L"--"), L'-'), L"");
}

}  // namespace
}  // namespace vl1
