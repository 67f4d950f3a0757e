#include "framework/io/json_checked.h"

#include <gtest/gtest.h>

namespace vl1 {
namespace {

TEST(JsonChecked, AssertionsOnUserDataThrowInsteadOfEndingTheProcess)
{
    rapidjson::Document document;
    document.Parse(R"({"version": "1"})");
    ASSERT_FALSE(document.HasParseError());
    EXPECT_THROW(document["version"].GetInt(), json_shape_error);
    EXPECT_THROW(document["version"].Size(), json_shape_error);
    EXPECT_THROW(document["version"]["x"], json_shape_error);
}

}  // namespace
}  // namespace vl1
