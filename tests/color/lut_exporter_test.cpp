#include <gtest/gtest.h>

#include "color/lut_exporter.h"

namespace vl1 {
namespace {

// The smallest exporter: hands out a fixed table, as a component would its result.
class fixed_exporter : public lut_exporter {
public:
    bool query_interface(const std::string& name, iobject** out) override
    {
        const bool match = uid(name) == ifc_id;
        *out = match ? this : nullptr;
        return match;
    }

    bool get_lut(lut_argb_variable* lut) override
    {
        if (!lut)
            return false;
        lut->edge = 32;
        lut->data = lut_argb<32>().data;
        lut->text.clear();
        return true;
    }
};

TEST(LutExporter, IdentifierIsTheHashOfItsName)
{
    EXPECT_EQ(lut_exporter::ifc_id.value, 0xAABC8F0Eu);
}

TEST(LutExporter, IsReachedThroughQueryInterface)
{
    fixed_exporter exporter;
    iobject* found = nullptr;
    ASSERT_TRUE(exporter.query_interface("lut_exporter", &found));
    auto* as_exporter = dynamic_cast<lut_exporter*>(found);
    ASSERT_NE(as_exporter, nullptr);
    lut_argb_variable lut;
    lut.text = "stale";
    EXPECT_TRUE(as_exporter->get_lut(&lut));
    EXPECT_EQ(lut.edge, 32u);
    EXPECT_EQ(lut.data.size(), 32768u);
    EXPECT_TRUE(lut.text.empty());
    EXPECT_FALSE(as_exporter->get_lut(nullptr));
}

}  // namespace
}  // namespace vl1
