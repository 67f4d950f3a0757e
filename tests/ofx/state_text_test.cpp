// The state blob as base64 text, as the host keeps it in "binaryStateParam".
#include <gtest/gtest.h>

#include "ofx/ofx_state_bridge.h"

namespace vl1 {
namespace {

std::vector<uint8_t> counting_blob(size_t size)
{
    std::vector<uint8_t> blob(size);
    for (size_t i = 0; i < size; ++i)
        blob[i] = static_cast<uint8_t>(i * 7 + 1);
    return blob;
}

TEST(StateText, BlobsOfEveryLengthModuloThreeSurviveWithZeroPadding)
{
    for (size_t size : {3u * 16, 3u * 16 + 1, 3u * 16 + 2}) {
        const auto blob = counting_blob(size);
        const std::string text = encode_state_text(blob);
        EXPECT_EQ(text.size() % 4, 0u);
        const auto decoded = decode_state_text(text.c_str());
        ASSERT_EQ(decoded.size(), (text.size() / 4) * 3);
        EXPECT_TRUE(std::equal(blob.begin(), blob.end(), decoded.begin())) << size;
        for (size_t i = blob.size(); i < decoded.size(); ++i)
            EXPECT_EQ(decoded[i], 0) << "padding behind a blob of " << size << " bytes";
    }
}

TEST(StateText, TextThatCarriesNoStateDecodesToNothing)
{
    EXPECT_TRUE(decode_state_text(nullptr).empty());
    EXPECT_TRUE(decode_state_text("").empty());
    EXPECT_TRUE(decode_state_text("QQ=").empty()) << "fewer than four characters";
    EXPECT_TRUE(decode_state_text("not base64 at all!").empty());
    EXPECT_TRUE(decode_state_text("QUJD\xff\xfe").empty());
}

}  // namespace
}  // namespace vl1
