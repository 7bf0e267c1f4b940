#include "utilities/conversions.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "support/test_platform.hpp"
#include "utilities/conversions_dialog.hpp"

namespace aerix {
namespace {

using D = ConversionsDialog;

struct EditCase {
    ConversionKind kind;
    D::Field field;
    const char* typed;
    std::vector<std::pair<D::Field, const char*>> expected;
};

TEST(ConversionsDialog, RecomputesTheOtherFields) {
    testing::TestPlatform platform;
    const EditCase cases[] = {
        {kKindVolume, D::kA, "10", {{D::kB, "2.20"}, {D::kC, "2.64"}}},
        {kKindVolume, D::kC, "1", {{D::kA, "3.79"}, {D::kB, "0.83"}}},
        {kKindMass, D::kA, "100", {{D::kB, "45.36"}}},
        {kKindMass, D::kB, "45.36", {{D::kA, "100.00"}}},  // 100.0017: the factors differ
        {kKindDistance, D::kA, "100", {{D::kB, "115.08"}, {D::kC, "185.20"}}},
        {kKindSpeed, D::kB, "100", {{D::kA, "86.90"}, {D::kC, "160.93"}}},
        {kKindTemperature, D::kA, "-40", {{D::kB, "-40.00"}}},
        {kKindTemperature, D::kB, "212", {{D::kA, "100.00"}}},
        {kKindPressure, D::kA, "1013.25", {{D::kB, "29.92"}}},
        {kKindPressure, D::kB, "29.92", {{D::kA, "1013.20"}}},
        {kKindFuel,
         D::kA,
         "100",
         {{D::kKg, "72.00"}, {D::kLb, "158.73"}, {D::kB, "26.48"}, {D::kC, "22.05"}}},
        {kKindFuel, D::kB, "26.48", {{D::kA, "100.01"}, {D::kKg, "72.01"}, {D::kC, "22.05"}}},
        {kKindFuel, D::kKg, "72", {{D::kA, "100.00"}, {D::kLb, "158.73"}, {D::kB, "26.48"}}},
        // The dialog reads 15 characters and the leading number of them.
        {kKindVolume, D::kA, "10 litres", {{D::kB, "2.20"}}},
        {kKindVolume, D::kA, "abc", {{D::kB, "0.00"}}},
        {kKindVolume, D::kA, "0000000000000001", {{D::kB, "0.00"}}},
    };
    for (const auto& c : cases) {
        D dialog;
        dialog.SetKind(c.kind);
        dialog.Edit(c.field, c.typed);
        EXPECT_EQ(dialog.Text(c.field), c.typed);
        for (auto [field, text] : c.expected)
            EXPECT_EQ(dialog.Text(field), text) << c.kind << " " << c.field << " " << c.typed;
    }
}

TEST(ConversionsDialog, FieldsAndLabelsFollowTheKind) {
    D dialog;
    EXPECT_EQ(dialog.Label(D::kA), "Litres (ltr)");
    EXPECT_EQ(dialog.Label(D::kC), "US Galls (usg)");
    EXPECT_FALSE(dialog.Visible(D::kSg));
    dialog.SetKind(kKindMass);
    EXPECT_FALSE(dialog.Visible(D::kC));
    dialog.Edit(D::kC, "5");  // hidden: nothing happens
    EXPECT_EQ(dialog.Text(D::kA), "");
    dialog.SetKind(kKindFuel);
    EXPECT_EQ(dialog.Label(D::kB), "US Gallons (usg)");
    EXPECT_EQ(dialog.Label(D::kSg), "Specific gravity (sg)");
    EXPECT_EQ(dialog.Label(D::kLb), "Pounds (lb)");
    EXPECT_EQ(dialog.Text(D::kSg), "0.72");
    dialog.Edit(D::kA, "10");
    dialog.SetKind(kKindSpeed);
    EXPECT_EQ(dialog.Text(D::kA), "");  // a new kind starts empty
    EXPECT_EQ(dialog.UnitCode(D::kC), "kph");
}

TEST(Conversions, FuelWithZeroGravityIsNotGuarded) {
    FuelQuantities q = FuelFrom(kFuelFromLitres, 100, 0.0);
    EXPECT_EQ(q.kg, 0.0);
    EXPECT_TRUE(std::isnan(q.usGallons));
    EXPECT_TRUE(std::isinf(FuelFrom(kFuelFromKg, 10, 0.0).litres));
    // The shared gallon routines: a US gallon of water weighs 8.32674 lb, an imperial 10.
    EXPECT_NEAR(UsGallonsFromKg(8.32674 / 2.2046, 1.0), 1.0, 1e-12);
    EXPECT_NEAR(ImpGallonsFromKg(10.0 / 2.2046, 1.0), 1.0, 1e-12);
}

}  // namespace
}  // namespace aerix
