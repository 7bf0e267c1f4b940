#include <gtest/gtest.h>

#include "support/test_platform.hpp"
#include "utilities/altimetry.hpp"
#include "utilities/altitude_dialogs.hpp"
#include "utilities/crosswind.hpp"
#include "utilities/holding.hpp"
#include "utilities/logbook.hpp"

namespace aerix {
namespace {

TEST(Crosswind, ComponentsAndRunwayNames) {
    struct Case {
        double runway, direction, speed, head, cross;
    };
    const Case cases[] = {
        {270, 300, 20, 17.32, 10.0},  // the classic 30° off the nose: half the wind across
        {270, 240, 20, 17.32, -10.0},
        {90, 270, 15, -15.0, 0.0},  // straight down the tail
        {360, 90, 25, 0.0, 25.0},
    };
    for (const auto& c : cases) {
        auto w = RunwayWindComponents(c.runway, c.direction, c.speed);
        EXPECT_NEAR(w.headwind, c.head, 0.01) << c.runway << " " << c.direction;
        EXPECT_NEAR(w.crosswind, c.cross, 0.01) << c.runway << " " << c.direction;
    }
    EXPECT_EQ(RunwayHeading("27"), 270.0);
    EXPECT_EQ(RunwayHeading("09L"), 90.0);
    EXPECT_EQ(RunwayHeading("4r"), 40.0);
    EXPECT_EQ(RunwayHeading("273"), 273.0);
    for (const char* bad : {"", "0", "37", "361", "27X", "273L", "2 7", "-9", "1234"})
        EXPECT_FALSE(RunwayHeading(bad)) << bad;
}

TEST(Crosswind, DialogShowsComponentsOrTheMistake) {
    testing::TestPlatform platform;
    CrosswindDialog dialog;
    dialog.runway = "27";
    dialog.windDirection = "240";
    dialog.windSpeed = "20";
    ASSERT_TRUE(dialog.Compute());
    EXPECT_EQ(dialog.HeadwindText(), "Headwind 17 kt");
    EXPECT_EQ(dialog.CrosswindText(), "Crosswind 10 kt from the left");
    dialog.windSpeed = "twenty";
    EXPECT_FALSE(dialog.Compute());
    EXPECT_EQ(dialog.HeadwindText(), "");
    dialog.windSpeed = "20";
    dialog.windDirection = "400";
    EXPECT_FALSE(dialog.Compute());
    EXPECT_EQ(platform.Ui().BoxTexts(),
              (std::vector<std::string>{"Wind speed: enter a number",
                                        "Wind direction must be 0 to 360 degrees"}));
}

TEST(Holding, EntrySectors) {
    struct Case {
        double inbound, heading;
        bool left;
        HoldingEntry entry;
    };
    using E = HoldingEntry;
    const Case cases[] = {
        // Right turns, inbound 360: direct from 290 through 360 to 109, teardrop 110 to 179,
        // parallel 180 to 289.
        {360, 0, false, E::kDirect},
        {360, 90, false, E::kDirect},
        {360, 290, false, E::kDirect},
        {360, 110, false, E::kTeardrop},
        {360, 150, false, E::kTeardrop},
        {360, 180, false, E::kParallel},
        {360, 270, false, E::kParallel},
        {360, 289, false, E::kParallel},
        // Left turns mirror the sectors.
        {360, 270, true, E::kDirect},
        {360, 210, true, E::kTeardrop},
        {360, 90, true, E::kParallel},
        {360, 150, true, E::kParallel},
        // A course not on north: inbound 090, right turns.
        {90, 200, false, E::kTeardrop},
        {90, 0, false, E::kParallel},
        {90, 30, false, E::kDirect},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(HoldingEntryFor(c.inbound, c.heading, c.left), c.entry)
            << c.inbound << " " << c.heading << (c.left ? " left" : " right");
    }
}

TEST(Holding, OutboundLegTiming) {
    auto still = PlanHolding(360, 150, false, 5000, 0, 0, 0);
    ASSERT_TRUE(still);
    EXPECT_EQ(still->outboundCourse, 180.0);
    EXPECT_EQ(still->teardropHeading, 150.0);
    EXPECT_EQ(still->outboundSeconds, 60.0);
    EXPECT_EQ(PlanHolding(360, 0, true, 15000, 0, 0, 0)->teardropHeading, 210.0);
    EXPECT_EQ(StandardOutboundSeconds(14000), 60.0);
    EXPECT_EQ(StandardOutboundSeconds(14001), 90.0);
    // 20 kt on the nose inbound at 100 kt: 80 kt in, 120 kt out, so 40 s out for 1 min in.
    EXPECT_NEAR(*WindCorrectedOutboundSeconds(60, 360, 100, 360, 20), 40.0, 1e-9);
    EXPECT_FALSE(PlanHolding(360, 0, false, 0, 50, 90, 60));  // crosswind beyond the airspeed
    EXPECT_EQ(FormatMinutesSeconds(90), "1:30");
}

TEST(Altimetry, IsaTableAndWorkedExamples) {
    // ISA table: 1000 hPa stands at 364 ft, 700 hPa at 9882 ft.
    EXPECT_NEAR(PressureAltitude(0, 1000.0), 364, 1);
    EXPECT_NEAR(PressureAltitude(9882, kIsaSeaLevelHpa), 9882, 0.5);
    // Elevation 1165 ft, altimeter 29.95 in: 1165 + (29.92 - 29.95) x 1000 = 1135 ft by the
    // 1000 ft per inch rule.
    EXPECT_NEAR(PressureAltitude(1165, *QnhFromEntry(29.95)), 1135, 10);
    // 1800 ft, QNH 1027: 1380 ft by the 30 ft per hPa rule, which overstates near sea level
    // (27.3 ft per hPa): 1431 ft.
    EXPECT_NEAR(PressureAltitude(1800, 1027), 1431, 1);

    EXPECT_NEAR(DensityAltitude(5000, IsaTemperature(5000)), 5000, 0.5);
    // 3700 ft at 28 °C: 6124 ft by the 120 ft per °C rule; the exact density gives 6009 ft.
    EXPECT_NEAR(DensityAltitude(3700, 28), 6124, 150);
    EXPECT_NEAR(DensityAltitude(1380, 20), 2340, 100);

    // 4 percent of the height per 10 °C below ISA: 5000 ft indicated at ISA-10 is 4800 ft.
    EXPECT_NEAR(TrueAltitude(5000, kIsaSeaLevelHpa, IsaTemperature(5000) - 10, 0), 4800, 30);
    EXPECT_NEAR(TrueAltitude(5000, kIsaSeaLevelHpa, IsaTemperature(5000) + 10, 0), 5200, 30);
    // Over a station, only the height above it is corrected; at ISA nothing changes.
    EXPECT_NEAR(TrueAltitude(3000, 1020, IsaTemperature(PressureAltitude(3000, 1020)) - 20, 3000),
                3000, 1e-9);
    EXPECT_NEAR(TrueAltitude(6000, 1020, IsaTemperature(PressureAltitude(6000, 1020)), 2000), 6000,
                1e-9);

    EXPECT_NEAR(*QnhFromEntry(29.92), 1013.2, 0.1);
    EXPECT_FALSE(QnhFromEntry(500));
    EXPECT_FALSE(QnhFromEntry(40));
}

TEST(Altimetry, DialogsReportBadEntries) {
    testing::TestPlatform platform;
    PressureDensityDialog pd;
    pd.elevation = "1800";
    pd.qnh = "1027";
    pd.temperature = "20";
    ASSERT_TRUE(pd.Compute());
    EXPECT_EQ(pd.PressureAltitudeText(), "1431 ft");
    pd.qnh = "2000";
    EXPECT_FALSE(pd.Compute());
    EXPECT_EQ(pd.PressureAltitudeText(), "");

    TrueAltitudeDialog ta;
    ta.indicated = "5000";
    ta.qnh = "29.92";
    ta.temperature = "-100";
    EXPECT_FALSE(ta.Compute());
    ta.temperature = "5";
    ta.stationElevation = "99999";
    EXPECT_FALSE(ta.Compute());
    EXPECT_EQ(platform.Ui().BoxTexts(),
              (std::vector<std::string>{"QNH must be 800 to 1100 hPa or 23.6 to 32.5 inches",
                                        "Temperature must be between -90 and 60 °C",
                                        "Station elevation must be between -1500 and 36000 ft"}));
}

TEST(Logbook, AddsEntriesAndRefusesBadOnes) {
    testing::TestPlatform platform;
    LogbookDialog dialog;
    for (const char* t : {"1:30", "02:45", " 95:50 ", "0:00"})
        EXPECT_TRUE(dialog.Add(t)) << t;
    EXPECT_EQ(dialog.TotalText(), "100:05");
    dialog.Remove(2);
    EXPECT_EQ(dialog.TotalText(), "04:15");
    EXPECT_EQ(dialog.Entries(), (std::vector<std::string>{"01:30", "02:45", "00:00"}));
    for (const char* bad : {"1:60", "130", "1:5", "1.30", "-1:00", "a:bc", "123456:00", ""})
        EXPECT_FALSE(dialog.Add(bad)) << bad;
    EXPECT_EQ(dialog.TotalMinutes(), 255);
    EXPECT_EQ(platform.Ui().BoxTexts().front(), "\"1:60\": minutes must be 00 to 59");
    EXPECT_EQ(platform.Ui().BoxTexts()[1],
              "\"130\" is not a time: write hours and minutes as HH:MM");
}

}  // namespace
}  // namespace aerix
