#include <gtest/gtest.h>

#include "tools/theme_generator/theme_recipe.h"

namespace vl1::themegen {
namespace {

std::string with_looks(const std::string& looks, const std::string& more = "")
{
    return R"({"name": "T", )" + more + R"("looks": [)" + looks + "]}";
}

const std::string two_looks = R"({"name": "A", "file": "a.cube", "rotation": 0},
                                 {"name": "B", "file": "b.cube", "rotation": 90})";

TEST(ThemeRecipe, ReadsLooksWithDefaultsForWhatIsLeftOut)
{
    const std::string text = R"(// comments are allowed
        {"name": "Dusk", "uid": "00ab", "version": 3,
         "background": {"file": "w.png", "size_px": 256},
         "looks": [{"name": "A", "file": "a.cube", "rotation": 10, "contrast": 1.2,
                    "shadows": {"hue": 200, "chroma": 0.02},
                    "hue_pulls": [{"hue": 60, "strength": 0.3, "width": 40}]},
                   {"name": "B", "file": "b.cube", "rotation": 12.5}],
         "post_processing": {"enabled": true, "name": "P", "file": "p.cube", "white_rolloff": 0.01}})";
    theme_recipe recipe;
    std::string error;
    ASSERT_TRUE(parse_theme_recipe(text, recipe, error)) << error;
    EXPECT_EQ(recipe.name, "Dusk");
    EXPECT_EQ(recipe.uid, 0xabu);
    EXPECT_EQ(recipe.version, 3u);
    EXPECT_EQ(recipe.background_file, "w.png");
    EXPECT_EQ(recipe.picture_size_px, 256);
    ASSERT_EQ(recipe.looks.size(), 2u);
    EXPECT_EQ(recipe.looks[0].params.contrast, 1.2);
    EXPECT_EQ(recipe.looks[0].params.shadows.hue, 200.0);
    ASSERT_EQ(recipe.looks[0].params.hue_pulls.size(), 1u);
    EXPECT_EQ(recipe.looks[0].params.hue_pulls[0].width, 40.0);
    EXPECT_EQ(recipe.looks[1].rotation, 12.5f);
    EXPECT_EQ(recipe.looks[1].params.saturation, look_params{}.saturation);
    ASSERT_TRUE(recipe.post_processing);
    EXPECT_TRUE(recipe.post_processing_enabled);
    EXPECT_EQ(recipe.post_processing->params.white_rolloff, 0.01);
}

TEST(ThemeRecipe, RefusesWhatWouldMakeABrokenThemeOrIsNoFileAndSaysWhere)
{
    const std::vector<std::pair<std::string, std::string>> cases{
        {"{", "JSON error"},
        {"[]", "must be a JSON object"},
        {with_looks(R"({"name": "A", "file": "a.cube", "rotation": 0})"), "needs 2 to"},
        {with_looks(R"({"name": "A", "file": "a.cube", "rotation": 10},
                       {"name": "B", "file": "b.cube", "rotation": 11})"),
         "looks[1].rotation: must be at least 2 degrees"},
        {with_looks(R"({"name": "A", "file": "a.cube"}, {"name": "B", "file": "b.cube", "rotation": 5})"),
         "looks[0]: \"rotation\" is missing"},
        {with_looks(R"({"name": "A", "file": "a.cube", "rotation": 0, "contrast": 9},
                       {"name": "B", "file": "b.cube", "rotation": 90})"),
         "looks[0].contrast: 9 is outside"},
        {with_looks(R"({"name": "A", "file": "a.cube", "rotation": 0, "saturation": "high"},
                       {"name": "B", "file": "b.cube", "rotation": 90})"),
         "looks[0].saturation: must be a number"},
        {with_looks(R"({"name": "A", "file": "../a.cube", "rotation": 0},
                       {"name": "B", "file": "b.cube", "rotation": 90})"),
         "looks[0].file: \"../a.cube\" must be a plain file name"},
        {with_looks(R"({"name": "A", "file": "a.cube", "rotation": 0},
                       {"name": "B", "file": "a.cube", "rotation": 90})"),
         "looks[1].file: file name \"a.cube\" is used twice"},
        {with_looks(two_looks, R"("version": 2, )"), "a version above 1 needs the \"uid\""},
        {with_looks(two_looks, R"("uid": "xyz", )"), "recipe.uid: \"xyz\" is not 1 to 8 hexadecimal digits"},
        {with_looks(two_looks, R"("colour": 1, )"), "recipe: unknown key \"colour\""},
        {with_looks(two_looks, R"("post_processing": {"name": "P", "file": "p.cube"}, )"),
         "\"enabled\": true or false"},
        {with_looks(R"({"name": "A", "file": "a.cube", "rotation": 0, "shadows": {"hue": 10, "chroma": 0.5}},
                       {"name": "B", "file": "b.cube", "rotation": 90})"),
         "looks[0].shadows.chroma: 0.5 is outside"},
    };
    for (const auto& [text, message] : cases) {
        theme_recipe recipe;
        recipe.name = "untouched";
        std::string error;
        EXPECT_FALSE(parse_theme_recipe(text, recipe, error)) << text;
        EXPECT_NE(error.find(message), std::string::npos) << "expected '" << message << "' in: " << error;
        EXPECT_EQ(recipe.name, "untouched");
    }
    theme_recipe recipe;
    std::string error;
    EXPECT_FALSE(read_theme_recipe("/nonexistent/recipe.json", recipe, error));
    EXPECT_NE(error.find("/nonexistent/recipe.json"), std::string::npos) << error;
}

}  // namespace
}  // namespace vl1::themegen
