// Recalibrating a chart: the new calibration is the one a load puts in force, and "Maps" keeps one
// record per chart, also when older versions left several.
#include <gtest/gtest.h>

#include "app/app_state.hpp"
#include "store/record_store.hpp"
#include "support/test_platform.hpp"
#include "views/map_management.hpp"
#include "views/map_view.hpp"

namespace aerix {
namespace {

constexpr std::u16string_view kChart = u"\\My Documents\\Aerix\\chart.bmp";
constexpr std::u16string_view kOther = u"\\My Documents\\Aerix\\other.bmp";

// Marks the NE corner at pixel (1035, 106) and the SW corner at (135, 506) of a 1035 x 535 chart,
// as the pilot does with "Calibrate NE" and "Calibrate SW".
void Calibrate(const char16_t* neLat, const char16_t* neLon, const char16_t* swLat,
               const char16_t* swLon) {
    g_app.view.CurrentMapPath.assign(kChart);
    g_app.view.MapWidth = 1035;
    g_app.view.MapHeight = 535;
    g_app.view.AnchorX = g_app.view.AnchorY = 120;
    g_app.view.AircraftScreenX = g_app.view.AircraftScreenY = 120;
    CalibrateDialog d(g_app.view);
    d.latMinutes = d.lonMinutes = u"0";
    g_app.view.CalibrateCorner = 1;
    g_app.view.MapCenterX = 1035;
    g_app.view.MapCenterY = 120;
    d.latDegrees = neLat;
    d.lonDegrees = neLon;
    d.Ok();
    g_app.view.CalibrateCorner = 0;
    g_app.view.MapCenterX = 135;
    g_app.view.MapCenterY = 520;
    d.latDegrees = swLat;
    d.lonDegrees = swLon;
    d.Ok();
}

std::vector<MapRecord> RecordsOf(std::u16string_view path) {
    std::vector<MapRecord> found;
    DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
    MapRecord r;
    for (std::uint32_t i = 0; ReadMap(h, kByIndex, i, r) != 0; ++i)
        if (r.Path == path)
            found.push_back(r);
    return found;
}

TEST(MapManagement, RecalibrationReplacesTheChartsCalibration) {
    testing::TestPlatform p;
    CreateMapsDatabase();
    MapCalibrationValues stale{}, older{};
    stale[kScaleNumber] = 7;
    older[kScaleNumber] = 8;
    {
        // An older data root appended a record per calibration; the later one is the newer.
        DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
        WriteMap(h, {std::u16string(kChart), stale});
        WriteMap(h, {std::u16string(kOther), stale});
        WriteMap(h, {std::u16string(kChart), older});
    }
    LoadMapCalibration(kChart, g_app.view.MapCalibration);
    EXPECT_EQ(g_app.view.MapCalibration[kScaleNumber], 8);

    Calibrate(u"51", u"1", u"50", u"-8");  // 900 px over 9 degrees
    EXPECT_EQ(p.Ui().Boxes().back().text, kCalibratedText);
    Calibrate(u"52", u"2", u"51", u"-1");  // 900 px over 3 degrees
    g_app.view.MapCalibration = {};
    LoadMapCalibration(kChart, g_app.view.MapCalibration);
    EXPECT_DOUBLE_EQ(g_app.view.MapCalibration[kScaleNumber], 300);
    EXPECT_DOUBLE_EQ(g_app.view.MapCalibration[kRefLat1], 52);
    EXPECT_DOUBLE_EQ(g_app.view.MapCalibration[kRefLon2], -1);

    std::vector<MapRecord> records = RecordsOf(kChart);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_DOUBLE_EQ(records[0].Calibration[kScaleNumber], 300);
    // Another chart's record is left alone.
    ASSERT_EQ(RecordsOf(kOther).size(), 1u);
    EXPECT_EQ(RecordsOf(kOther)[0].Calibration[kScaleNumber], 7);
}

TEST(MapManagement, CornersOnOneParallelStoreNothing) {
    testing::TestPlatform p;
    CreateMapsDatabase();
    Calibrate(u"51", u"1", u"51", u"-8");  // both corners at 51 N
    EXPECT_EQ(p.Ui().Boxes().back().text, "Calibration refused: RefLat1 equals RefLat2");
    EXPECT_TRUE(RecordsOf(kChart).empty());
    // The corners stay marked: entering the SW corner again completes the calibration.
    EXPECT_EQ(g_app.view.CalibrationFirstDone, 1);
    Calibrate(u"51", u"1", u"50", u"-8");
    EXPECT_EQ(p.Ui().Boxes().back().text, kCalibratedText);
    EXPECT_EQ(RecordsOf(kChart).size(), 1u);
}

}  // namespace
}  // namespace aerix
