#include "utilities/sun_times.hpp"

#include <gtest/gtest.h>

#include "app/app_state.hpp"
#include "support/test_platform.hpp"
#include "utilities/sun_dialog.hpp"

namespace aerix {
namespace {

struct SunCase {
    const char* name;
    double lat, lon;
    platform::UtcTime date;
    double rise, set;  // UT hours, or the never values
};

TEST(SunTimes, AlmanacAndPolarDays) {
    const SunCase cases[] = {
        // The almanac's own worked example (Wooster, Ohio): rise 9.441 UT.
        {"almanac", 40.9, -74.3, {1990, 6, 25}, 9.4414, 0.5501},
        // Sydney: the rise falls on the previous UTC evening and wraps past 24.
        {"wraps", -33.9, 151.2, {2025, 6, 21}, 20.9987, 6.8940},
        {"pole in June", 90.0, 0.0, {2025, 6, 21}, kSunNeverSets, kSunNeverSets},
        {"south pole in June", -90.0, 0.0, {2025, 6, 21}, kSunNeverRises, kSunNeverRises},
        {"70N late December", 70.0, 20.0, {2025, 12, 21}, kSunNeverRises, kSunNeverRises},
    };
    for (const auto& c : cases) {
        double rise = 0;
        double set = 0;
        SunTimes(c.lat, c.lon, c.date, rise, set);
        EXPECT_NEAR(rise, c.rise, 1e-4) << c.name;
        EXPECT_NEAR(set, c.set, 1e-4) << c.name;
    }
}

TEST(SunTimes, FormatTruncatesMinutes) {
    EXPECT_EQ(FormatSunTime(9.4414), "09:26");
    EXPECT_EQ(FormatSunTime(5.9999), "05:59");
    EXPECT_EQ(FormatSunTime(20.0), "20:00");
}

class SunDialogTest : public ::testing::Test {
  protected:
    testing::TestPlatform platform_;
};

TEST_F(SunDialogTest, OpensOnTheFixAndTodaysUtcDate) {
    platform_.Clock().SetUtc({2025, 6, 25, 12, 0, 0, 0});
    g_app.gps.Fix.latitude = 40.9 * 6000;    // 40°54.00' N
    g_app.gps.Fix.longitude = -74.3 * 6000;  // 074°18.00' W
    g_app.gps.Fix.latitude += 0.996;         // rounds up into the next hundredth... and minute
    SunDialog dialog;
    dialog.Open(g_app.gps.Fix.latitude, g_app.gps.Fix.longitude);
    EXPECT_EQ(platform_.Ui().Titles().back(), "Sunrise/sunset");
    EXPECT_EQ(dialog.Text(SunDialog::kLatDegrees), "40");
    EXPECT_EQ(dialog.Text(SunDialog::kLatMinutes), "54");
    EXPECT_EQ(dialog.Text(SunDialog::kLatHundredths), "01");
    EXPECT_EQ(dialog.Text(SunDialog::kLonDegrees), "074");
    EXPECT_EQ(dialog.Text(SunDialog::kLonMinutes), "18");
    EXPECT_EQ(dialog.Text(SunDialog::kLonHundredths), "00");
    EXPECT_EQ(dialog.LatitudeHemisphere(), 'N');
    EXPECT_EQ(dialog.LongitudeHemisphere(), 'W');
    EXPECT_EQ(dialog.DateLine(), "UTC time 25/06/2025");
    EXPECT_EQ(dialog.SunriseText(), "09:26");

    // The same place in the southern hemisphere in June has a shorter day.
    dialog.ToggleLatitudeHemisphere();
    ASSERT_TRUE(dialog.Compute());
    EXPECT_EQ(dialog.LatitudeHemisphere(), 'S');
    EXPECT_EQ(dialog.SunriseText(), "12:22");
    EXPECT_EQ(dialog.Close(), 1);
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");
}

TEST_F(SunDialogTest, PolarDaysShowNoRiseNoSet) {
    platform_.Clock().SetUtc({2025, 6, 21, 0, 0, 0, 0});
    g_app.gps.Fix.latitude = 90.0 * 6000;
    SunDialog dialog;
    dialog.Open(g_app.gps.Fix.latitude, g_app.gps.Fix.longitude);
    EXPECT_EQ(dialog.SunriseText(), "no rise");
    EXPECT_EQ(dialog.SunsetText(), "no set");
}

TEST_F(SunDialogTest, HundredthsAreHeldTo99) {
    SunDialog dialog;
    dialog.Open(g_app.gps.Fix.latitude, g_app.gps.Fix.longitude);
    dialog.Edit(SunDialog::kLonHundredths, "150");
    EXPECT_EQ(platform_.Ui().BoxTexts(), std::vector<std::string>{"Max 99"});
    EXPECT_EQ(dialog.Text(SunDialog::kLonHundredths), "99");
    EXPECT_EQ(dialog.Focus(), SunDialog::kLonHundredths);
    dialog.Edit(SunDialog::kLatHundredths, "99");
    dialog.Edit(SunDialog::kLatMinutes, "150");  // only the hundredths are limited
    EXPECT_EQ(platform_.Ui().BoxTexts().size(), 1u);
}

TEST_F(SunDialogTest, BadFieldsAreReportedAndKeepTheResults) {
    SunDialog dialog;
    dialog.Open(g_app.gps.Fix.latitude, g_app.gps.Fix.longitude);
    std::string rise = dialog.SunriseText();
    for (auto [field, text] :
         {std::pair{SunDialog::kLatDegrees, "4x"}, std::pair{SunDialog::kLatDegrees, "91"},
          std::pair{SunDialog::kLonDegrees, "181"}}) {
        SunDialog d = dialog;
        d.Edit(field, text);
        EXPECT_FALSE(d.Compute()) << text;
        EXPECT_EQ(d.SunriseText(), rise);
    }
    EXPECT_EQ(platform_.Ui().BoxTexts(),
              (std::vector<std::string>{"Degrees, minutes and hundredths are whole numbers",
                                        "Latitude is at most 90 degrees",
                                        "Longitude is at most 180 degrees"}));
}

}  // namespace
}  // namespace aerix
