#include <gtest/gtest.h>

#include <cstring>

#include "tests/framework/fixtures.h"

namespace vl1 {
namespace {

using fwtest::make_rig;

uint32_t u32_at(const std::vector<uint8_t>& blob, std::size_t offset)
{
    uint32_t v = 0;
    std::memcpy(&v, blob.data() + offset, 4);
    return v;
}

std::vector<uint8_t> header(int32_t count)
{
    std::vector<uint8_t> blob = {'s', '1', 'v', 'c', 0, 0, 0, 0};
    std::memcpy(blob.data() + 4, &count, 4);
    return blob;
}

void append_record(std::vector<uint8_t>& blob, const param_value& v, uid id)
{
    const auto bytes = param_value_to_bytes(v);
    blob.insert(blob.end(), bytes.begin(), bytes.end());
    const uint8_t* raw = reinterpret_cast<const uint8_t*>(&id.value);
    blob.insert(blob.end(), raw, raw + 4);
}

TEST(ComponentState, BlobLayout)
{
    auto r = make_rig();
    const auto blob = r.component->get_state();
    ASSERT_EQ(blob.size(), 8u + 48u * 4u);
    EXPECT_EQ(r.component->get_state_size(), blob.size());
    EXPECT_EQ(std::memcmp(blob.data(), "s1vc", 4), 0);
    EXPECT_EQ(u32_at(blob, 0), state_magic);
    EXPECT_EQ(u32_at(blob, 4), 4u);
    EXPECT_EQ(u32_at(blob, 8 + 44), uid("Amount").value);
    EXPECT_EQ(u32_at(blob, 8 + 48 + 44), uid("Steps").value);
    const param_value steps = param_value_from_bytes(blob.data() + 8 + 48);
    EXPECT_EQ(steps.value.i, 1);
    EXPECT_EQ(steps.max.i, 5);

    auto empty = make_rig([](fwtest::test_component&) {});
    EXPECT_TRUE(empty.component->get_state().empty());
    auto blob_copy = blob;
    EXPECT_FALSE(empty.component->set_state(blob_copy, true));
}

TEST(ComponentState, RoundTripSetsValuesWithTheCallersFlag)
{
    auto r = make_rig();
    r.param<cparameter_continuous_v1>("Amount")->set_value(0.125f, false);
    r.param<cparameter_color_v1>("Tint")->set_value({0.0f, 0.0f, 0.0f, 1.0f}, false);
    auto saved = r.component->get_state();

    r.component->reset_to_default();
    EXPECT_EQ(r.param<cparameter_continuous_v1>("Amount")->get_value(), 0.5f);
    r.host->events.clear();

    EXPECT_TRUE(r.component->set_state(saved, true));
    EXPECT_EQ(r.param<cparameter_continuous_v1>("Amount")->get_value(), 0.125f);
    EXPECT_EQ(r.param<cparameter_color_v1>("Tint")->get_value().b, 1.0f);
    EXPECT_EQ(r.host->count(event_param_set_by_host), 4);
    EXPECT_EQ(r.host->count(event_param_changed), 0);
}

TEST(ComponentState, RecordsKeepTheirUnusedValueBytesButLiveBoundsAndDefaultWin)
{
    auto r = make_rig();
    param_value bypass = r.param("Bypass")->get_param_value();
    bypass.value.b = 1;
    for (int i = 1; i < 16; ++i)
        bypass.value.bytes[i] = static_cast<uint8_t>(0xa0 + i);
    auto blob = header(2);
    append_record(blob, bypass, uid("Bypass"));
    append_record(blob, param_value::make_integral(-100, 100, 50, 42), uid("Steps"));
    ASSERT_TRUE(r.component->set_state(blob, false));

    EXPECT_TRUE(r.component->get_bypass());
    const auto saved = r.component->get_state();
    const param_value back = param_value_from_bytes(saved.data() + 8 + 2 * 48);
    EXPECT_EQ(std::memcmp(back.value.bytes, bypass.value.bytes, 16), 0);
    const param_value steps = r.param("Steps")->get_param_value();
    EXPECT_EQ(steps.value.i, 5);
    EXPECT_EQ(steps.min.i, -5);
    EXPECT_EQ(steps.default_value.i, 1);
}

TEST(ComponentState, MalformedBlobsAreRefusedOrReadSafely)
{
    auto r = make_rig();
    auto steps = r.param<cparameter_integral_v1>("Steps");
    steps->set_value(3, false);

    auto wrong_magic = header(1);
    wrong_magic[0] = 'x';
    append_record(wrong_magic, param_value::make_integral(-5, 5, 0, 1), uid("Steps"));
    auto zero = header(0), negative = header(-4);
    zero.push_back(0);
    negative.push_back(0);
    const std::pair<std::vector<uint8_t>, bool> blobs[] = {
        {{}, false}, {header(1), false}, {wrong_magic, false}, {zero, true}, {negative, true}};
    for (auto [blob, accepted] : blobs)
        EXPECT_EQ(r.component->set_state(blob, false), accepted) << blob.size() << " bytes";
    EXPECT_EQ(steps->get_value(), 3);

    // Claims 1000 records but holds one and a half: the whole one is read, nothing beyond.
    auto truncated = header(1000);
    append_record(truncated, param_value::make_integral(-5, 5, -2, 1), uid("Steps"));
    truncated.resize(truncated.size() + 24, 0xee);
    EXPECT_TRUE(r.component->set_state(truncated, false));
    EXPECT_EQ(steps->get_value(), -2);
}

TEST(ComponentState, RecordsOfUnknownParametersAreSkipped)
{
    auto r = make_rig();
    auto blob = header(2);
    append_record(blob, param_value::make_continuous(0.0f, 1.0f, 0.9f, 0.0f), uid("Removed"));
    append_record(blob, param_value::make_continuous(0.0f, 1.0f, 0.2f, 0.5f), uid("Amount"));
    ASSERT_TRUE(r.component->set_state(blob, true));
    EXPECT_EQ(r.param<cparameter_continuous_v1>("Amount")->get_value(), 0.2f);
    EXPECT_EQ(r.component->get_parameter_count(), 4);
}

TEST(ComponentState, CancelReturnsToTheSavedPoint)
{
    auto r = make_rig();
    auto amount = r.param<cparameter_continuous_v1>("Amount");
    amount->set_value(0.9f, false);
    r.component->cancel_effect();  // nothing saved yet: the empty state is refused
    EXPECT_EQ(amount->get_value(), 0.9f);

    r.component->save_cancel_state();
    amount->set_value(0.1f, false);
    r.component->cancel_effect();
    EXPECT_EQ(amount->get_value(), 0.9f);
}

}  // namespace
}  // namespace vl1
