// The state blob as text, as hosts keep it in "binaryStateParam": packed (fpzip for the
// float grids, zstd for the rest) and, as earlier versions wrote it, plain base64.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "framework/io/base64.h"
#include "framework/io/state_packing.h"
#include "framework/io/state_text.h"
#include "tests/support/forged_state.h"

namespace vl1 {
namespace {

constexpr std::size_t no_limit = std::numeric_limits<std::size_t>::max();

std::vector<uint8_t> counting_blob(size_t size)
{
    std::vector<uint8_t> blob(size);
    for (size_t i = 0; i < size; ++i)
        blob[i] = static_cast<uint8_t>(i * 7 + 1);
    return blob;
}

/// A blob with smooth float grids at odd offsets, special floats among them.
std::vector<uint8_t> blob_with_grids(std::vector<state_float_grid>& grids)
{
    std::vector<uint8_t> blob = counting_blob(40000 + 3);
    grids = {{13, 8, 8, 8, 3}, {13 + 6144 + 5, 16, 4, 2, 1}, {20001, 10, 10, 10, 3}};
    std::mt19937 rng(7);
    for (const state_float_grid& g : grids) {
        for (std::size_t i = 0; i < g.bytes() / 4; ++i) {
            float v = std::sin(float(i) * 0.01f) + std::uniform_real_distribution<float>(0.0f, 1e-6f)(rng);
            if (i % 97 == 0)
                v = (i / 97) % 3 == 0 ? std::numeric_limits<float>::quiet_NaN() : (i / 97) % 3 == 1 ? -0.0f : 1e-41f;
            std::memcpy(blob.data() + g.offset + 4 * i, &v, 4);
        }
    }
    return blob;
}

TEST(StateText, PackedTextGivesTheBlobBackByteForByte)
{
    std::vector<state_float_grid> grids;
    const std::vector<uint8_t> blob = blob_with_grids(grids);
    const std::string text = encode_state_text(blob, grids);
    ASSERT_EQ(text.rfind(packed_state_prefix, 0), 0u);
    EXPECT_EQ(decode_state_text(text.c_str(), blob.size()), blob);
    EXPECT_LT(text.size(), plain_state_text(blob).size() / 2);

    // Grids that overlap, reach past the blob or hold nothing are stored as plain bytes.
    const std::vector<state_float_grid> wrong = {{100, 4, 4, 4, 1}, {120, 4, 4, 4, 1}, {blob.size() - 8, 2, 2, 1, 1},
                                                 {30000, 0, 4, 4, 1}};
    EXPECT_EQ(decode_state_text(encode_state_text(blob, wrong).c_str(), blob.size()), blob);
    EXPECT_EQ(decode_state_text(encode_state_text({}, {}).c_str(), 10).size(), 0u);
}

TEST(StateText, PlainBase64FromEarlierVersionsReadsWithZeroPadding)
{
    // RFC 4648's vectors, both ways.
    const std::pair<std::string, std::string> vectors[] = {{"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"},
                                                           {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}};
    for (const auto& [plain, coded] : vectors) {
        const std::vector<uint8_t> bytes(plain.begin(), plain.end());
        EXPECT_EQ(to_base64(bytes), coded);
        std::vector<uint8_t> back = {1};
        EXPECT_TRUE(from_base64(coded, back) && back == bytes) << coded;
    }

    for (size_t size : {3u * 16, 3u * 16 + 1, 3u * 16 + 2}) {
        const auto blob = counting_blob(size);
        const std::string text = plain_state_text(blob);
        EXPECT_EQ(text.size() % 4, 0u);
        const auto decoded = decode_state_text(text.c_str(), size);
        ASSERT_EQ(decoded.size(), (text.size() / 4) * 3);
        EXPECT_TRUE(std::equal(blob.begin(), blob.end(), decoded.begin())) << size;
        for (size_t i = blob.size(); i < decoded.size(); ++i)
            EXPECT_EQ(decoded[i], 0) << "padding behind a blob of " << size << " bytes";
    }
}

TEST(StateText, TextThatCarriesNoStateDecodesToNothing)
{
    // Only canonical base64: "QR==" and "QUJ=" leave bits set that no encoder writes.
    for (const char* text : {(const char*)nullptr, "", "QQ=", "not base64 at all!", "QUJD\xff\xfe", "QR==", "QUJ=",
                             "A===", "QU=D", "QUJD QUJD", "hlz1:", "hlz1:QUJD", "hlz1:!!!!", "hlz2:QUJD"})
        EXPECT_TRUE(decode_state_text(text, no_limit).empty()) << (text ? text : "null");
}

TEST(StatePacking, RefusesWhatWouldGrowPastTheStateOrWasntWrittenByUs)
{
    std::vector<state_float_grid> grids;
    const std::vector<uint8_t> blob = blob_with_grids(grids);
    const std::vector<uint8_t> packed = pack_state(blob, grids);
    std::string error;
    EXPECT_EQ(unpack_state(packed.data(), packed.size(), blob.size(), error), blob);
    EXPECT_EQ(error, "");

    EXPECT_TRUE(unpack_state(packed.data(), packed.size(), blob.size() - 1, error).empty());
    EXPECT_EQ(error, "the packed state claims 40003 bytes, more than the 40002 bytes of a state");

    std::vector<uint8_t> damaged = packed;
    damaged[damaged.size() / 2] ^= 1;
    EXPECT_TRUE(unpack_state(damaged.data(), damaged.size(), blob.size(), error).empty());
    EXPECT_EQ(error, "the packed state is damaged: its digest doesn't match");

    const auto expect_refused = [&](const std::vector<uint8_t>& forged, const char* why) {
        EXPECT_TRUE(unpack_state(forged.data(), forged.size(), 1000, error).empty());
        EXPECT_NE(error.find(why), std::string::npos) << error;
    };
    using hueloom_test::forged_packed_state;
    expect_refused(forged_packed_state(0xffffffffu, 10, true), "claims 4294967295 bytes");
    expect_refused(forged_packed_state(1000, 1 << 24, true), "rest claims another size");
    expect_refused(forged_packed_state(1000, 1 << 24, false), "rest claims another size");
    expect_refused(forged_packed_state(1000, 999, true), "rest claims another size");
    const std::vector<uint8_t> honest = forged_packed_state(1000, 1000, true);
    EXPECT_EQ(unpack_state(honest.data(), honest.size(), 1000, error), std::vector<uint8_t>(1000, 0));
}

}  // namespace
}  // namespace vl1
