#include "utilities/conversions.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>

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
        {kKindVolume, D::kA, " 7.5 ", {{D::kB, "1.65"}, {D::kC, "1.98"}}},
        // Not wholly a number: the other fields empty, never the leading digits' value.
        {kKindVolume, D::kA, "10 litres", {{D::kB, ""}, {D::kC, ""}}},
        {kKindVolume, D::kA, "abc", {{D::kB, ""}}},
        {kKindVolume, D::kA, "7.5x", {{D::kB, ""}}},
        {kKindVolume, D::kA, "0000000000000001", {{D::kB, ""}}},  // over 15 characters
        {kKindFuel, D::kA, "100,5", {{D::kKg, ""}, {D::kLb, ""}}},
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

// A desktop with a decimal comma: "7,5" would read as 7 with a leading-number read, and "%1.2f"
// would write "1,65". The dialog keeps to the point either way and names a bad field.
TEST(ConversionsDialog, ReadsAndWritesOnlyPointsWhateverTheLocale) {
    testing::TestPlatform platform;
    struct Restore {
        std::string saved = std::setlocale(LC_ALL, nullptr);
        ~Restore() { std::setlocale(LC_ALL, saved.c_str()); }
    } restore;
    const char* comma = nullptr;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "nl_NL.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) && *std::localeconv()->decimal_point == ',') {
            comma = name;
            break;
        }
    }
    if (!comma)
        GTEST_SKIP() << "no locale with a decimal comma installed";

    D dialog;
    dialog.Edit(D::kA, "7.5");
    EXPECT_EQ(dialog.Text(D::kB), "1.65") << comma;
    EXPECT_EQ(dialog.Text(D::kC), "1.98");
    EXPECT_EQ(dialog.Problem(), "");
    dialog.Edit(D::kA, "7,5");
    EXPECT_EQ(dialog.Text(D::kB), "");
    EXPECT_EQ(dialog.Text(D::kC), "");
    EXPECT_EQ(dialog.Problem(), "Litres (ltr): enter a number");
    dialog.Leave(D::kA);
    ASSERT_EQ(platform.Ui().BoxTexts().size(), 1u);
    EXPECT_EQ(platform.Ui().BoxTexts().back(), "Litres (ltr): enter a number");

    dialog.SetKind(kKindFuel);
    EXPECT_EQ(dialog.Problem(), "");
    dialog.Edit(D::kSg, "0,8");
    EXPECT_EQ(dialog.Problem(), "Specific gravity (sg): enter a number");
    dialog.Edit(D::kA, "100");  // the gravity is read with the litres
    EXPECT_EQ(dialog.Text(D::kKg), "");
    EXPECT_EQ(dialog.Problem(), "Specific gravity (sg): enter a number");
    dialog.Edit(D::kSg, "0.8");
    dialog.Edit(D::kA, "100");
    EXPECT_EQ(dialog.Text(D::kKg), "80.00");
    dialog.Edit(D::kA, "");  // emptied: no complaint
    EXPECT_EQ(dialog.Problem(), "");
    dialog.Leave(D::kA);
    EXPECT_EQ(platform.Ui().BoxTexts().size(), 1u);
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
