#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "app/app_state.hpp"
#include "gps/fix_publication.hpp"
#include "platform/recording_canvas.hpp"
#include "store/record_store.hpp"
#include "support/test_platform.hpp"
#include "views/calibration_file.hpp"
#include "views/map_management.hpp"
#include "views/map_view.hpp"
#include "views/plan_sectors.hpp"

namespace aerix {
namespace {

using platform::CanvasCall;
using platform::Point;
using platform::RecordingCanvas;
using platform::Rect;

// A flat chart: 10 pixels per degree both ways, column 0 at 0 E, row 0 at 60 N.
MapCalibrationValues Flat(double scale = 10, double south = 0, double north = 60, double west = 0,
                          double east = 60) {
    return {scale, 0, scale * 10, 0, 10 * 10, 0, 10, 60, 50, south, north, west, east};
}

class MapViewTest : public ::testing::Test {
  protected:
    void SetUp() override {
        platform::Sys().graphics = &graphics;
        g_app.settings.ViewMode = kViewMap;
    }
    void TearDown() override { platform::Sys().graphics = nullptr; }
    void AddChart(const std::u16string& path, const MapCalibrationValues& c, int w = 600,
                  int h = 600) {
        testing::WriteFile(p.Data().ResolveForWrite(path), "x");
        graphics.AddImage(p.Data().Resolve(path).string(), w, h);
        DbHandle db = OpenDatabase(schema::kMapsName, schema::kMapPath);
        if (!db) {
            CreateMapsDatabase();
            db = OpenDatabase(schema::kMapsName, schema::kMapPath);
        }
        WriteMap(db, {path, c});
    }
    testing::TestPlatform p;
    platform::RecordingGraphics graphics;
};

TEST_F(MapViewTest, CrossIsClampedIntoTheChartRowsAndBlinks) {
    g_app.view.AircraftScreenX = 50;
    g_app.view.AircraftScreenY = 236;  // the tail reaches beyond row 252
    RecordingCanvas c;
    DrawAircraftSymbol(c, g_app.view, g_app.settings, g_app.gps.Fix);
    auto polygons = c.CallsOf(CanvasCall::Polygon);
    ASSERT_EQ(polygons.size(), 1u);
    const std::vector<Point> expected{{49, 242}, {53, 242}, {53, 248}, {59, 248}, {59, 252},
                                      {53, 252}, {53, 252}, {49, 252}, {49, 252}, {43, 252},
                                      {43, 248}, {49, 248}, {49, 242}};
    EXPECT_EQ(polygons[0].points, expected);
    EXPECT_EQ(polygons[0].pen.color, platform::Rgb(0, 255, 255));
    EXPECT_EQ(polygons[0].brush.color, platform::kWhite);
    c.Clear();
    DrawAircraftSymbol(c, g_app.view, g_app.settings, g_app.gps.Fix);
    EXPECT_EQ(c.CallsOf(CanvasCall::Polygon)[0].brush.color, platform::kBlack);
    g_app.view.AircraftScreenY = -10;
    c.Clear();
    DrawAircraftSymbol(c, g_app.view, g_app.settings, g_app.gps.Fix);
    EXPECT_EQ(c.CallsOf(CanvasCall::Polygon)[0].points[0].y, 14);
}

TEST_F(MapViewTest, TrackPointerGrowsWithSpeedAndNarrowsItsHead) {
    g_app.settings.ShowTrackPointer = 1;
    g_app.view.AircraftScreenX = 100;
    g_app.view.AircraftScreenY = 100;
    struct Case {
        double speed, track;
        Point tip;
        int half;
    } cases[] = {
        {10.0, 90, {0, 0}, 0},        // not above 10 kt: no pointer
        {42.0, 90, {120, 114}, 11},   // 20 px east
        {105.0, 0, {100, 64}, 7},     // 50 px north
        {210.0, 180, {100, 214}, 4},  // 100 px south
    };
    for (const Case& k : cases) {
        g_app.gps.Fix.groundSpeed = k.speed;
        g_app.gps.Fix.trueTrack = k.track;
        RecordingCanvas c;
        DrawAircraftSymbol(c, g_app.view, g_app.settings, g_app.gps.Fix);
        auto polygons = c.CallsOf(CanvasCall::Polygon);
        if (k.half == 0) {
            EXPECT_EQ(polygons.size(), 1u);
            continue;
        }
        ASSERT_EQ(polygons.size(), 2u) << k.speed;
        EXPECT_EQ(c.CallsOf(CanvasCall::MoveTo)[0].points[0], (Point{100, 114}));
        EXPECT_EQ(polygons[1].points[0], k.tip) << k.speed;
        // The head's corners sit L - 10 from the origin, half-angle apart from the track.
        const Point side = polygons[1].points[1];
        double angle = std::atan2(side.y - 114, side.x - 100) * 57.29577951308232;
        double theta = k.track - 90 - k.half;
        double diff = std::remainder(angle - theta, 360.0);
        EXPECT_NEAR(diff, 0, 2.0) << k.speed;
    }
    g_app.settings.ShowTrackPointer = 0;
    g_app.gps.Fix.groundSpeed = 200;
    RecordingCanvas c;
    DrawAircraftSymbol(c, g_app.view, g_app.settings, g_app.gps.Fix);
    EXPECT_EQ(c.CallsOf(CanvasCall::Polygon).size(), 1u);
}

TEST_F(MapViewTest, WhiteStripsByZoom) {
    g_app.view.MapLoaded = true;
    g_app.view.MapBitmap = platform::Bitmap(400, 300);
    g_app.view.MapWidth = 400;
    g_app.view.MapHeight = 300;
    g_app.settings.ViewMode = kViewMapEdit;  // no overlays
    struct Case {
        double zoom;
        int cx, cy;
        std::vector<Rect> strips;
        Rect source;
    } cases[] = {
        // Near the top left at zoom 2: left and top strips (left = -10, top = -20).
        {2.0, 50, 40, {{0, 14, 20, 254}, {0, 14, 240, 54}}, {-10, -20, 110, 100}},
        // Zoom 1 uses a span of 120, so the right strip starts late: left 300 + 120 > 400.
        {1.0, 420, 150, {{220, 14, 240, 254}}, {300, 30, 540, 270}},
        // Zoom 0.25: the 960 span passes both far edges.
        {0.25,
         200,
         150,
         {{170, 14, 240, 254}, {0, 14, 70, 254}, {0, 14, 240, 96}, {0, 172, 240, 254}},
         {-280, -330, 680, 630}},
        // Zoom 4: a 60 span.
        {4.0, 380, 280, {{240 - 40, 14, 240, 254}, {0, 254 - 40, 240, 254}}, {350, 250, 410, 310}},
    };
    for (const Case& k : cases) {
        g_app.view.MapZoom = k.zoom;
        g_app.view.MapCenterX = k.cx;
        g_app.view.MapCenterY = k.cy;
        RecordingCanvas c;
        PaintMapView(c, nullptr, {g_app.view, g_app.settings, g_app.gps, g_app.leg}, 1);
        auto blits = c.CallsOf(CanvasCall::Blit);
        ASSERT_EQ(blits.size(), 1u);
        EXPECT_EQ(blits[0].rect, (Rect{0, 14, 240, 254}));
        EXPECT_EQ(blits[0].source, k.source) << k.zoom;
        std::vector<Rect> strips;
        for (const auto& r : c.CallsOf(CanvasCall::Rectangle)) {
            EXPECT_EQ(r.brush.color, platform::kWhite);
            strips.push_back(r.rect);
        }
        EXPECT_EQ(strips, k.strips) << k.zoom;
    }
}

TEST_F(MapViewTest, CentringAtZoomOneMovesTheAircraftOffTheAnchorNearEdges) {
    AddChart(u"\\My Documents\\Aerix\\flat.bmp", Flat(), 600, 600);
    g_app.gps.Fix.latitude = 59.5 * 6000;   // row 5
    g_app.gps.Fix.longitude = 55.5 * 6000;  // column 555
    RecordingCanvas c;
    CenterMapOnPosition(c, nullptr, {g_app.view, g_app.settings, g_app.gps, g_app.leg}, 55.5, 59.5);
    EXPECT_EQ(g_app.view.CurrentMapPath.view(), u"\\My Documents\\Aerix\\flat.bmp");
    EXPECT_EQ(g_app.view.MapCenterY, 120);
    EXPECT_EQ(g_app.view.AircraftScreenY, 5);
    EXPECT_EQ(g_app.view.MapCenterX, 480);  // 0 + 600 - 120
    EXPECT_EQ(g_app.view.AircraftScreenX, 120 - 480 + 555);
    g_app.view.MapZoom = 2.0;
    CenterMapOnPosition(c, nullptr, {g_app.view, g_app.settings, g_app.gps, g_app.leg}, 55.5, 59.5);
    EXPECT_EQ(g_app.view.MapCenterX, 555);
    EXPECT_EQ(g_app.view.AircraftScreenY, 120);
}

TEST_F(MapViewTest, ChoiceKeepsTheOneSidedComparison) {
    AddChart(u"\\My Documents\\Aerix\\a490.bmp", Flat(490));
    AddChart(u"\\My Documents\\Aerix\\b480.bmp", Flat(480));
    AddChart(u"\\My Documents\\Aerix\\c600.bmp", Flat(600));
    AddChart(u"\\My Documents\\Aerix\\d700.bmp", Flat(700, 40, 45));  // elsewhere
    g_app.gps.Fix.latitude = 50 * 6000;
    g_app.gps.Fix.longitude = 5 * 6000;
    struct Case {
        double current;
        int request;
        std::u16string chosen;
    } cases[] = {
        {500, 0, u"a490.bmp"},   // within 10 below: taken at once, 600 never looked at
        {0, 0, u"c600.bmp"},     // nothing loaded: the most detailed
        {500, 1, u"c600.bmp"},   // next more detailed
        {500, -1, u"a490.bmp"},  // next less detailed
        {485, -1, u"b480.bmp"},
    };
    for (const Case& k : cases) {
        g_app.view.MapCalibration[kScaleNumber] = k.current;
        g_app.view.MapChangeRequest = k.request;
        g_app.view.CurrentMapPath.clear();
        SelectMapForPosition({g_app.view, g_app.settings, g_app.gps, g_app.leg});
        EXPECT_EQ(g_app.view.CurrentMapPath.view(), u"\\My Documents\\Aerix\\" + k.chosen)
            << k.current;
        EXPECT_EQ(g_app.view.MapChangeRequest, 0);
    }
    // 480 only when nothing larger turns up: remove 490 and 600 from the file system.
    std::filesystem::remove(p.Data().Resolve("\\My Documents\\Aerix\\a490.bmp"));
    std::filesystem::remove(p.Data().Resolve("\\My Documents\\Aerix\\c600.bmp"));
    g_app.view.MapCalibration[kScaleNumber] = 500;
    SelectMapForPosition({g_app.view, g_app.settings, g_app.gps, g_app.leg});
    EXPECT_EQ(g_app.view.CurrentMapPath.view(), u"\\My Documents\\Aerix\\b480.bmp");
    // Request 1 with nothing more detailed: the map and the request stay.
    g_app.view.MapChangeRequest = 1;
    SelectMapForPosition({g_app.view, g_app.settings, g_app.gps, g_app.leg});
    EXPECT_EQ(g_app.view.MapChangeRequest, 1);
}

TEST_F(MapViewTest, FailedLoadFallsBackOnTheWorldMapThenTellsIt) {
    AddChart(u"\\My Documents\\Aerix\\flat.bmp", Flat());
    graphics = platform::RecordingGraphics();  // the file exists but cannot be read
    g_app.gps.Fix.latitude = 50 * 6000;
    g_app.gps.Fix.longitude = 5 * 6000;
    SelectMapForPosition({g_app.view, g_app.settings, g_app.gps, g_app.leg});
    EXPECT_EQ(g_app.view.CurrentMapPath.view(), u"\\My Documents\\Aerix\\World1.bmp");
    EXPECT_FALSE(g_app.view.MapLoaded);
    ASSERT_FALSE(p.Ui().Boxes().empty());
    EXPECT_EQ(p.Ui().Boxes().back().text, kWorldMapNotFoundText);
    EXPECT_EQ(LoadMapBitmap(g_app.view, g_app.settings, g_app.leg, u""), 0);
}

TEST_F(MapViewTest, ScaleBarSearchesHundredToHundredFiftyPixels) {
    g_app.view.MapCalibration = Flat(10);  // 10 px a degree: 1 nm is 1/6 px
    struct Case {
        double pxPerDegree, zoom;
        int miles;  // 0: not shown
    } cases[] = {
        {600, 1.0, 10},  // 10 px a mile: up from 6 nm until 100 px
        {600, 4.0, 3},   // 40 px a mile: down from 6 to 150 px or less
        {60, 1.0, 0},    // 1 px a mile: more than 50 nm needed
    };
    for (const Case& k : cases) {
        g_app.view.MapCalibration[kRefY2] = k.pxPerDegree * 10;
        g_app.view.MapZoom = k.zoom;
        RecordingCanvas view;
        CanvasReadouts readouts(view);
        DrawScaleBar(readouts, g_app.view);
        auto texts = view.Texts();
        if (k.miles == 0) {
            EXPECT_TRUE(texts.empty());
            continue;
        }
        ASSERT_EQ(texts.size(), 2u);
        EXPECT_EQ(texts[0], std::string(65, ' '));
        EXPECT_EQ(texts[1], "  " + std::to_string(k.miles) + " nm  ");
    }
}

TEST_F(MapViewTest, RouteIsBurntWithHalfAPixelAdded) {
    g_app.settings.ActivePlanName.assign(u"Trip");
    CreatePlanDatabase(u"Trip");
    DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
    SectorRecord s;
    s.SectorNumber = 1;
    s.StartLatitude = 59 * 6000 + 240;  // row 9.6 -> 10
    s.StartLongitude = 1 * 6000 + 360;  // column 10.6 -> 11
    s.EndLatitude = 58 * 6000;
    s.EndLongitude = 2 * 6000;
    WriteSector(h, s);
    g_app.view.MapCalibration = Flat();
    RecordingCanvas map;
    DrawRouteOnMap(map, g_app.view, g_app.settings, g_app.leg);
    auto lines = map.CallsOf(CanvasCall::Polyline);
    ASSERT_EQ(lines.size(), 2u);
    const std::vector<Point> expected{{11, 10}, {20, 20}};
    EXPECT_EQ(lines[0].points, expected);
    EXPECT_EQ(lines[0].pen,
              (platform::Pen{platform::PenStyle::Solid, 5, platform::Rgb(255, 0, 255)}));
    EXPECT_EQ(lines[1].pen.style, platform::PenStyle::Dash);
}

TEST_F(MapViewTest, SequencesOnlyOnAFixThatHasLeftTheWaypointBehind) {
    g_app.settings.ActivePlanName.assign(u"Trip");
    CreatePlanDatabase(u"Trip");
    DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
    // South along 1 E to 50 N, then east to 2 E.
    for (int i = 0; i < 2; ++i) {
        SectorRecord s;
        s.SectorNumber = i + 1;
        s.StartLatitude = (51 - i) * 6000;
        s.StartLongitude = 1 * 6000;
        s.EndLatitude = 50 * 6000;
        s.EndLongitude = (1 + i) * 6000;
        s.TrueCourse = i == 0 ? 180 : 90;
        WriteSector(h, s);
    }
    struct Case {
        const char* name;
        bool published;
        double latitude;     // along 1 E
        bool feedRestarted;  // a feed started after the fix was published
        std::uint32_t active;
    } cases[] = {
        // From 0, 0 the first waypoint bears north, behind a southbound leg.
        {"no fix yet: the position is 0, 0", false, 0.0, false, 0},
        {"short of the waypoint", true, 50.5, false, 0},
        {"past the waypoint", true, 49.9, false, 1},
        {"past it, but left by the feed before", true, 49.9, true, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ResetAppState();
        g_app.settings.ViewMode = kViewMap;
        g_app.settings.ActivePlanName.assign(u"Trip");
        GpsFix fix;
        fix.latitude = c.latitude * 6000;
        fix.longitude = c.published ? 1 * 6000 : 0;
        fix.positionKnown = c.published;
        if (c.published)
            g_app.gps.PublishedFix.Publish(fix);
        if (c.feedRestarted)
            MarkFeedStart(g_app.gps);
        g_app.gps.Fix = fix;
        RecordingCanvas view;
        UpdateActiveLeg(view, {g_app.view, g_app.settings, g_app.gps, g_app.leg},
                        ReadPlanSectors(g_app.settings));
        EXPECT_EQ(g_app.leg.ActiveSectorIndex, c.active);
        EXPECT_EQ(g_app.leg.LegChange.load(), c.active != 0 ? 1 : 0);
    }
}

TEST_F(MapViewTest, CalibrationFileQuirks) {
    auto write = [&](std::string_view bytes) {
        testing::WriteFile(p.Data().ResolveForWrite("\\My Documents\\Aerix\\c.ndx"), bytes);
    };
    const std::string s = "\xB8";
    MapCalibrationValues v{};
    // Two lines: the last wins; field 0 is ignored; "12abc" reads as 12.
    write("x" + s + "1" + s + "2" + s + "3" + s + "4" + s + "5" + s + "6" + s + "7" + s + "8" + s +
          "9" + s + "10" + s + "11" + s + "12" + s + "13" + s + "\r\n" + "y" + s + "12abc" + s +
          "\r\n");
    ASSERT_TRUE(ReadCalibrationFile(u"\\My Documents\\Aerix\\c.ndx", v));
    // The short second line repeats its last field's number in every later field.
    EXPECT_EQ(v[0], 12);
    EXPECT_EQ(v[1], 12);
    EXPECT_EQ(v[12], 12);
    // A final line without its line feed calibrates nothing.
    v = {};
    write("x" + s + "5" + s);
    ASSERT_TRUE(ReadCalibrationFile(u"\\My Documents\\Aerix\\c.ndx", v));
    EXPECT_EQ(v, MapCalibrationValues{});
    EXPECT_EQ(CalibrationFilePath(u"\\x\\chart.bmp"), u"\\x\\chart.ndx");
    EXPECT_FALSE(ReadCalibrationFile(u"\\nothing.ndx", v));
    EXPECT_EQ(p.Ui().Boxes().back().text, kCalibFileOpenText);
}

TEST_F(MapViewTest, UncalibratedChartIsAutoCalibratedFromItsFile) {
    CreateMapsDatabase();
    testing::WriteFile(p.Data().ResolveForWrite("\\My Documents\\Aerix\\n.ndx"),
                       "x\xB8"
                       "5\xB8");
    testing::WriteFile(p.Data().ResolveForWrite("\\My Documents\\Aerix\\n.bmp"), "x");
    g_app.view.MapCalibration = Flat(3);
    LoadMapCalibration(u"\\My Documents\\Aerix\\n.bmp", g_app.view.MapCalibration);
    EXPECT_EQ(p.Ui().Boxes().back().text, kMapAutoCalibratedText);
    EXPECT_EQ(p.Ui().Boxes().back().caption, "Information");
    EXPECT_EQ(g_app.view.MapCalibration[kScaleNumber], 3);  // the line had no line feed
    LoadMapCalibration(u"\\My Documents\\Aerix\\other.bmp", g_app.view.MapCalibration);
    EXPECT_EQ(p.Ui().Boxes().back().text, kMapNotCalibratedText);
    EXPECT_EQ(p.Ui().Boxes().back().caption, "Warning");
}

TEST_F(MapViewTest, CalibrationFileThatPlacesNoChartIsRefused) {
    CreateMapsDatabase();
    const std::string s = "\xB8";
    auto line = [&](std::vector<std::string> fields) {
        std::string text = "x" + s;
        for (const std::string& f : fields)
            text += f + s;
        return text + "\r\n";
    };
    // Flat(10): 10 px per degree, reference columns 0 and 100, rows 0 and 100.
    const std::vector<std::string> good{"10", "0",  "100", "0",  "100", "0", "10",
                                        "60", "50", "0",   "60", "0",   "60"};
    struct Case {
        const char* name;
        int field;  // 1 to 13, replaced by text
        std::string text;
        const char* says;
    };
    const std::vector<Case> cases{
        {"nan", 6, "nan", "RefLon1 (field 6) is not a number"},
        {"text", 1, "abc", "pixels per degree (field 1) is not a number"},
        {"infinite", 11, "1e400", "north limit is not a finite number"},
        {"zero scale", 1, "0", "pixels per degree is 0, not above 0"},
        {"negative scale", 1, "-5", "pixels per degree is -5, not above 0"},
        {"one column", 3, "0", "RefX1 equals RefX2"},
        {"one parallel", 9, "60", "RefLat1 equals RefLat2"},
        {"south above north", 10, "61", "south limit 61 is not below north limit 60"},
        {"west not below east", 13, "0", "west limit 0 is not below east limit 0"},
    };
    const std::u16string chart = u"\\My Documents\\Aerix\\bad.bmp";
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> fields = good;
        fields[static_cast<std::size_t>(c.field - 1)] = c.text;
        // A good line first: the bad last line still wins.
        testing::WriteFile(p.Data().ResolveForWrite("\\My Documents\\Aerix\\bad.ndx"),
                           line(good) + line(fields));
        g_app.view.MapCalibration = Flat(7);
        LoadMapCalibration(chart, g_app.view.MapCalibration);
        EXPECT_EQ(
            p.Ui().Boxes().back().text,
            std::string("Calibration file \\My Documents\\Aerix\\bad.ndx refused: ") + c.says);
        EXPECT_EQ(g_app.view.MapCalibration, Flat(7));
        DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
        MapRecord r;
        EXPECT_EQ(ReadMap(h, kByIndex, 0, r), 0u);  // nothing written
    }
    // The same file made good calibrates; "12abc" still reads as 12.
    std::vector<std::string> fields = good;
    fields[0] = "12abc";
    testing::WriteFile(p.Data().ResolveForWrite("\\My Documents\\Aerix\\bad.ndx"), line(fields));
    LoadMapCalibration(chart, g_app.view.MapCalibration);
    EXPECT_EQ(p.Ui().Boxes().back().text, kMapAutoCalibratedText);
    MapCalibrationValues expected = Flat(10);
    expected[kScaleNumber] = 12;
    EXPECT_EQ(g_app.view.MapCalibration, expected);
}

TEST_F(MapViewTest, CalibrationPutsLimits35PixelsInside) {
    CreateMapsDatabase();
    g_app.view.CurrentMapPath.assign(u"\\My Documents\\Aerix\\new.bmp");
    g_app.view.MapWidth = 1035;
    g_app.view.MapHeight = 535;
    g_app.view.AnchorX = g_app.view.AnchorY = 120;
    g_app.view.AircraftScreenX = 120;
    g_app.view.AircraftScreenY = 120;
    CalibrateDialog d(g_app.view);
    g_app.view.CalibrateCorner = 1;  // NE first: pixel (1035, 106)
    g_app.view.MapCenterX = 1035;
    g_app.view.MapCenterY = 120;
    d.latDegrees = u"51";
    d.latMinutes = u"30.0";
    d.lonDegrees = u"1";
    // Typing slips are told, not read as their leading number or as 0.
    for (std::u16string slip : {u"xx", u"7,5", u"12x"}) {
        d.lonMinutes = slip;
        EXPECT_EQ(d.Ok(), 0);
        EXPECT_EQ(p.Ui().Boxes().back().text, "Longitude minutes: enter a number");
        EXPECT_EQ(g_app.view.CalibrationFirstDone, 0);
    }
    const std::size_t told = p.Ui().Boxes().size();
    d.lonMinutes = u"";  // empty counts as 0
    EXPECT_EQ(d.Ok(), 1);
    EXPECT_EQ(p.Ui().Boxes().size(), told);
    g_app.view.CalibrateCorner = 0;  // SW: pixel (135, 506), 9 degrees west, 1 degree south
    g_app.view.MapCenterX = 135;
    g_app.view.MapCenterY = 520;
    d.latDegrees = u"50";
    d.latMinutes = u"30";
    d.lonDegrees = u"8";
    d.lonMinutes = u"0";
    d.ToggleLonHemisphere();
    EXPECT_EQ(d.Ok(), 1);
    const MapCalibrationValues& c = g_app.view.MapCalibration;
    EXPECT_DOUBLE_EQ(c[kScaleNumber], 100);                  // 900 px over 9 degrees
    EXPECT_NEAR(c[kWestLimit], -9.0, 1e-12);                 // column 35
    EXPECT_NEAR(c[kEastLimit], 0.65, 1e-12);                 // column 1000
    EXPECT_NEAR(c[kNorthLimit], 51.5 + 71.0 / 400, 1e-12);   // row 35
    EXPECT_NEAR(c[kSouthLimit], 51.5 - 394.0 / 400, 1e-12);  // row 500
    EXPECT_EQ(p.Ui().Boxes().back().text, kCalibratedText);
    EXPECT_EQ(p.Ui().Boxes().back().caption, "Information...");
    EXPECT_EQ(g_app.view.CalibrationFirstDone, 0);
}

}  // namespace
}  // namespace aerix

namespace aerix {
namespace {

class MapInFlightTest : public MapViewTest {
  protected:
    void SetUp() override {
        MapViewTest::SetUp();
        p.Clock().SetUtc({2026, 6, 1, 12, 0, 0});
        g_app.settings.ActivePlanName.assign(u"Trip");
        CreatePlanDatabase(u"Trip");
        AddSector(1, 50 * 6000, 4 * 6000, 50 * 6000, 6 * 6000, u"ONE");
        AddChart(kWorld, Flat(2, -90, 90, -180, 180));
        AddChart(kDetail, Flat(100, 45, 55, 0, 10));
    }
    void AddSector(int number, int lat1, int lon1, int lat2, int lon2, const char16_t* ident) {
        DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
        SectorRecord s;
        s.SectorNumber = static_cast<std::int16_t>(number);
        s.StartLatitude = lat1;
        s.StartLongitude = lon1;
        s.EndLatitude = lat2;
        s.EndLongitude = lon2;
        s.TrueCourse = 90;
        s.Text404 = ident;
        WriteSector(h, s);
    }
    void Fly(double latDeg, double lonDeg) {
        GpsFix fix;
        fix.latitude = latDeg * 6000;
        fix.longitude = lonDeg * 6000;
        fix.trueTrack = 90;
        fix.positionKnown = true;
        g_app.gps.PublishedFix.Publish(fix);
        TakeFixSnapshot(g_app.gps);
    }
    std::string Paint(bool centre) {
        RecordingCanvas view;
        if (centre)
            CenterMapOnPosition(view, nullptr, {g_app.view, g_app.settings, g_app.gps, g_app.leg},
                                g_app.gps.Fix.longitude / 6000, g_app.gps.Fix.latitude / 6000);
        else
            PaintMapView(view, nullptr, {g_app.view, g_app.settings, g_app.gps, g_app.leg}, 0);
        texts = view.Texts();
        aircraftDrawn = !view.CallsOf(CanvasCall::Polygon).empty();
        return texts.empty() ? "" : texts.front();
    }
    static constexpr const char16_t* kWorld = u"\\My Documents\\Aerix\\world.bmp";
    static constexpr const char16_t* kDetail = u"\\My Documents\\Aerix\\detail.bmp";
    std::vector<std::string> texts;
    bool aircraftDrawn = false;
};

TEST_F(MapInFlightTest, BeforeTheFirstFixNothingIsMadeUpThenTheFixChoosesItsChart) {
    // The world chart is up (shown before any fix), and no position has come in.
    g_app.view.CurrentMapPath.assign(kWorld);
    ASSERT_EQ(LoadMapBitmap(g_app.view, g_app.settings, g_app.leg, kWorld), 0);
    EXPECT_EQ(Paint(false), "ONE  NO FIX");
    EXPECT_FALSE(aircraftDrawn);
    EXPECT_NE(std::find(texts.begin(), texts.end(), kNoFixText), texts.end());
    EXPECT_EQ(g_app.view.CurrentMapPath.view(), kWorld);

    // The first fix, inside the world chart too: the detailed chart is chosen all the same.
    Fly(50, 5);
    std::string bar = Paint(true);
    EXPECT_EQ(g_app.view.CurrentMapPath.view(), kDetail);
    EXPECT_TRUE(aircraftDrawn);
    EXPECT_EQ(bar.substr(0, 8), "ONE  BRG") << bar;
    EXPECT_NE(bar.find("\xC2\xB0M  38.6 nm"), std::string::npos) << bar;
}

TEST_F(MapInFlightTest, TheBurntRouteFollowsThePlan) {
    Fly(50, 5);
    Paint(true);
    const std::size_t loads = graphics.loaded.size();
    Paint(true);
    EXPECT_EQ(graphics.loaded.size(), loads) << "an unchanged route keeps the chart";
    EXPECT_EQ(g_app.view.MapBurntRoute, RouteToBurn(ReadPlanSectors(g_app.settings), g_app.leg));

    // A sector added: the chart is drawn again with both legs.
    AddSector(2, 50 * 6000, 6 * 6000, 51 * 6000, 7 * 6000, u"TWO");
    Paint(true);
    EXPECT_EQ(graphics.loaded.size(), loads + 1);
    EXPECT_EQ(g_app.view.MapBurntRoute.size(), 8u);

    // A direct-to adds its leg, its end takes it away again.
    g_app.leg.DirectToTargetLatitude = 51 * 6000;
    g_app.leg.DirectToTargetLongitude = 7 * 6000;
    g_app.leg.DirectToStartLatitude = 50 * 6000;
    g_app.leg.DirectToStartLongitude = 5 * 6000;
    Paint(true);
    EXPECT_EQ(g_app.view.MapBurntRoute.size(), 12u);
    g_app.leg.DirectToStartLatitude = 0;
    Paint(true);
    EXPECT_EQ(g_app.view.MapBurntRoute.size(), 8u);
    EXPECT_EQ(graphics.loaded.size(), loads + 3);

    // A chart loaded outside the MAP view (Maps, Load) carries no route: the view draws it.
    g_app.settings.ViewMode = kViewMapEdit;
    ASSERT_EQ(LoadMapBitmap(g_app.view, g_app.settings, g_app.leg, kDetail), 0);
    EXPECT_FALSE(g_app.view.MapRouteBurnt);
    g_app.settings.ViewMode = kViewMap;
    Paint(true);
    EXPECT_TRUE(g_app.view.MapRouteBurnt);
    EXPECT_EQ(g_app.view.MapBurntRoute.size(), 8u);
}

}  // namespace
}  // namespace aerix
