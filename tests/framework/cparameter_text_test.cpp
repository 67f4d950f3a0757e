#include <gtest/gtest.h>

#include <locale>

#include "tests/framework/fixtures.h"

namespace vl1 {
namespace {

using fwtest::make_rig;

// A locale that writes a decimal comma: numbers of the parameters must not follow it.
struct comma_numpunct : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST(ParameterText, NumbersUseTheClassicLocaleAndAreClamped)
{
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new comma_numpunct));
    auto r = make_rig();
    auto amount = r.param("Amount");
    std::string text;
    param_value v = amount->get_param_value();
    v.value.f = 1.0f / 3.0f;
    EXPECT_TRUE(amount->get_string_from_value(v, text, 3));
    EXPECT_EQ(text, "0.333");

    param_value parsed = amount->get_param_value();
    EXPECT_TRUE(amount->get_value_from_string("0.25", parsed));
    EXPECT_EQ(parsed.value.f, 0.25f);
    EXPECT_TRUE(amount->get_value_from_string("7.5", parsed));
    EXPECT_EQ(parsed.value.f, 1.0f);
    std::locale::global(before);

    auto steps = r.param("Steps");
    v = steps->get_param_value();
    v.value.i = 99;  // beyond max: shown clamped
    EXPECT_TRUE(steps->get_string_from_value(v, text, 6));
    EXPECT_EQ(text, "5");
}

TEST(ParameterText, RefusesWrongTypesUnfitValuesAndNonNumbers)
{
    auto r = make_rig();
    auto amount = r.param("Amount");
    std::string text = "unchanged";
    param_value v = r.param("Steps")->get_param_value();
    EXPECT_FALSE(amount->get_string_from_value(v, text, 3));
    v = amount->get_param_value();
    v.value.f = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(amount->get_string_from_value(v, text, 3));
    EXPECT_EQ(text, "unchanged");

    param_value out = amount->get_param_value();
    EXPECT_FALSE(amount->get_value_from_string("abc", out));
    EXPECT_EQ(out.value.f, 0.5f);
    out.value.f = 3.0f;  // fails the check before parsing
    EXPECT_FALSE(amount->get_value_from_string("0.1", out));
}

TEST(ParameterText, BooleansAsWordsAndColoursAsHexWithBlankFill)
{
    auto r = make_rig();
    auto bypass = r.param("Bypass");
    std::string text;
    param_value flag = bypass->get_param_value();
    EXPECT_TRUE(bypass->get_string_from_value(flag, text, 0));
    EXPECT_EQ(text, "false");
    EXPECT_TRUE(bypass->get_value_from_string("true", flag));
    EXPECT_EQ(flag.value.b, 1);
    EXPECT_FALSE(bypass->get_value_from_string("yes", flag));

    auto tint = r.param("Tint");
    param_value v = tint->get_param_value();
    v.value.argb = {1.0f, 1.0f, 1.0f, 1.0f};
    EXPECT_TRUE(tint->get_string_from_value(v, text, 0));
    EXPECT_EQ(text, "#ffffffff");
    param_value back = tint->get_param_value();
    EXPECT_TRUE(tint->get_value_from_string(text, back));
    EXPECT_EQ(back.value.argb.a, 1.0f);
    EXPECT_EQ(back.value.argb.b, 1.0f);

    v.value.argb = {0.0f, 1.0f, 0.5f, 0.25f};  // 0, 255, 127, 63
    EXPECT_TRUE(tint->get_string_from_value(v, text, 0));
    EXPECT_EQ(text, "# 0ff7f3f");

    EXPECT_TRUE(tint->get_value_from_string("#FF00FF80", back));
    EXPECT_EQ(back.value.argb.a, 1.0f);
    EXPECT_EQ(back.value.argb.r, 0.0f);
    EXPECT_EQ(back.value.argb.g, 1.0f);
    EXPECT_FLOAT_EQ(back.value.argb.b, 128.0f / 255.0f);
    EXPECT_FALSE(tint->get_value_from_string("#", back));
}

}  // namespace
}  // namespace vl1
