// The HSI and AERIX pictures on the recording canvas, and their drawing thread.
#include <gtest/gtest.h>

#include <cmath>
#include <condition_variable>
#include <mutex>

#include "app/app_state.hpp"
#include "gps/nav_math.hpp"
#include "platform/recording_canvas.hpp"
#include "store/record_store.hpp"
#include "support/test_platform.hpp"
#include "views/instrument_drawer.hpp"
#include "views/instrument_frame.hpp"
#include "views/instrument_parts.hpp"

namespace aerix {
namespace {

using platform::CanvasCall;
using platform::RecordingCanvas;

constexpr double kUnitsPerNm = 100.0;  // CentiMinutes of latitude
constexpr double kLat = 50 * 6000.0;
constexpr double kLon = 1 * 6000.0;

InstrumentFrameInput Input(bool aerix, double track = 0.0) {
    InstrumentFrameInput in;
    in.aerix = aerix;
    in.centreX = aerix ? 215 : 120;
    in.centreY = aerix ? 193 : 135;
    in.fix.latitude = kLat;
    in.fix.longitude = kLon;
    in.fix.trueTrack = in.fix.magneticTrack = track;
    in.fix.groundSpeed = 100;
    in.haveFix = true;
    return in;
}

RecordingCanvas Draw(const InstrumentFrameInput& in) {
    RecordingCanvas c(2 * in.centreX, 2 * in.centreY);
    if (in.aerix)
        DrawAerixPicture(c, in);
    else
        DrawHsiPicture(c, in);
    return c;
}

double CardRadius(bool aerix) {
    return aerix ? 146.0 : 100.0;
}

bool HasText(const RecordingCanvas& c, const std::string& text) {
    for (const auto& t : c.Texts())
        if (t == text)
            return true;
    return false;
}

// A leg flown east along 50 N; the aircraft's offset north (nm) puts it left of course.
ActiveLeg EastboundLeg(double northOfCourseNm) {
    ActiveLeg leg;
    leg.valid = true;
    leg.course = 90.0;
    const double ahead = 10.0;
    leg.bar.valid = true;
    leg.bar.distance = std::hypot(ahead, northOfCourseNm);
    leg.bar.bearing = 90.0 + std::atan2(northOfCourseNm, ahead) * 180.0 / M_PI;
    leg.bar.ahead = true;
    leg.startLatitude = kLat;
    leg.startLongitude = kLon - 6000;
    leg.endLatitude = kLat;
    leg.endLongitude = kLon + 6000;
    return leg;
}

TEST(InstrumentPicture, CardTurnsToTheMagneticTrack) {
    const struct {
        double track;
        const char* top;
    } cases[] = {{0, "N"}, {90, "E"}, {180, "S"}, {270, "W"}, {300, "30"}, {30, "3"}};
    for (bool aerix : {false, true}) {
        for (const auto& k : cases) {
            SCOPED_TRACE(std::string(aerix ? "AERIX " : "HSI ") + k.top);
            InstrumentFrameInput in = Input(aerix, k.track);
            // The card follows the magnetic track, not the true one, and the readout says so.
            in.fix.trueTrack = k.track + 10;
            in.fix.magneticVariation = -10;
            in.leg.reference = {VariationSource::kReceiver, -10};
            RecordingCanvas c = Draw(in);
            const double scale = aerix ? 430.0 / 240.0 : 1.0;
            const double topY = in.centreY - CardRadius(aerix) + 20 * scale;
            bool found = false;
            for (const CanvasCall& call : c.CallsOf(CanvasCall::Text)) {
                if (call.text != k.top)
                    continue;
                const double x = (call.rect.left + call.rect.right) / 2.0;
                const double y = (call.rect.top + call.rect.bottom) / 2.0;
                if (std::fabs(x - in.centreX) <= 1 && std::fabs(y - topY) <= 1)
                    found = true;
            }
            EXPECT_TRUE(found);
            // A quarter turn clockwise of the track lies on the right.
            const char* figures[] = {"N", "3",  "6",  "E", "12", "15",
                                     "S", "21", "24", "W", "30", "33"};
            const int right = (static_cast<int>(k.track) / 30 + 3) % 12;
            bool onTheRight = false;
            for (const CanvasCall& call : c.CallsOf(CanvasCall::Text))
                if (call.text == figures[right] && call.rect.left > in.centreX + 40 &&
                    std::abs((call.rect.top + call.rect.bottom) / 2 - in.centreY) <= 1)
                    onTheRight = true;
            EXPECT_TRUE(onTheRight) << figures[right];
            char readout[16];
            std::snprintf(readout, sizeof readout, "%03d\xC2\xB0M",
                          k.track == 0 ? 360 : static_cast<int>(k.track));
            EXPECT_TRUE(HasText(c, readout)) << readout;
        }
    }
}

// The deviation bar: the course pointer's middle part, of the course colour and 3 wide.
std::vector<CanvasCall> CoursePointerLines(const RecordingCanvas& c, platform::Color course) {
    std::vector<CanvasCall> lines;
    for (const CanvasCall& call : c.CallsOf(CanvasCall::Polyline))
        if (call.pen.color == course && call.pen.width == 3 && call.points.size() == 2)
            lines.push_back(call);
    return lines;
}

TEST(InstrumentPicture, DeviationBarShowsWhereTheCourseLies) {
    const platform::Color hsiCourse = platform::Rgb(255, 200, 0);
    const struct {
        const char* name;
        double north;  // nm off course
        int side;      // where the bar lies: -1 left of the aircraft, +1 right
    } cases[] = {
        {"left of course: fly right", 1.0, +1},
        {"right of course: fly left", -1.0, -1},
        {"on course", 0.0, 0},
        {"far off: pinned beyond full scale", 40.0, +1},
    };
    for (const auto& k : cases) {
        SCOPED_TRACE(k.name);
        InstrumentFrameInput in = Input(false, 90.0);  // flying the course: it points up
        in.leg = EastboundLeg(k.north);
        RecordingCanvas c = Draw(in);
        auto lines = CoursePointerLines(c, hsiCourse);
        ASSERT_EQ(lines.size(), 3u);  // head, tail, deviation bar
        const CanvasCall& bar = lines[2];
        EXPECT_EQ(bar.points[0].x, bar.points[1].x);  // parallel to the course
        const int offset = bar.points[0].x - in.centreX;
        // 1 nm is one dot of 14 pixels; 5.5 dots at most.
        if (k.side == 0)
            EXPECT_EQ(offset, 0);
        else if (std::fabs(k.north) < 5)
            EXPECT_NEAR(offset, k.side * 14 * std::fabs(k.north), 1.5);
        else
            EXPECT_EQ(offset, k.side * 77);
        // The head points up the card.
        EXPECT_LT(lines[0].points[1].y, in.centreY);
    }
    // Flying north on an eastbound leg, the course pointer lies across to the right.
    InstrumentFrameInput in = Input(false, 0.0);
    in.leg = EastboundLeg(0.0);
    auto lines = CoursePointerLines(Draw(in), hsiCourse);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_GT(lines[0].points[1].x, in.centreX + 50);
    EXPECT_EQ(lines[0].points[1].y, in.centreY);
}

TEST(InstrumentPicture, RangeStepsScaleTheMapAndTheReadout) {
    // One waypoint 7 nm ahead: beyond the 5 nm card, inside the others.
    NavEntry wpt;
    wpt.ident.assign(u"AHEAD");
    wpt.type = 1;
    wpt.latitude = static_cast<std::int32_t>(kLat + 7 * kUnitsPerNm);
    wpt.longitude = static_cast<std::int32_t>(kLon);
    // 4 nm north and 4 east: 5.7 nm away, so outside the 5 nm card.
    NavEntry corner = wpt;
    corner.ident.assign(u"CORNR");
    corner.latitude = static_cast<std::int32_t>(kLat + 4 * kUnitsPerNm);
    corner.longitude =
        static_cast<std::int32_t>(kLon + 4 * kUnitsPerNm / std::cos(kLat * kCentiMinutesToRadians));
    NavEntry far = wpt;
    far.ident.assign(u"FAR");
    far.latitude = static_cast<std::int32_t>(kLat - 200 * kUnitsPerNm);
    std::vector<NavEntry> nav{wpt, corner, far};
    for (bool aerix : {false, true}) {
        for (std::uint32_t step : {1u, 2u, 4u, 8u, 16u}) {
            SCOPED_TRACE(std::to_string(step));
            InstrumentFrameInput in = Input(aerix);
            in.rangeStep = step;
            in.nav = nav;
            in.showScale = true;
            RecordingCanvas c = Draw(in);
            const std::string scale = "  " + std::to_string(5 * step) + " nm  ";
            EXPECT_TRUE(HasText(c, scale)) << scale;
            EXPECT_FALSE(HasText(c, "FAR"));
            EXPECT_EQ(HasText(c, "CORNR"), step > 1);
            bool drawn = false;
            for (const CanvasCall& call : c.CallsOf(CanvasCall::Text)) {
                if (call.text != "AHEAD")
                    continue;
                drawn = true;
                // Straight ahead, 7 nm of the card's 5 x step.
                const double expected = in.centreY - CardRadius(aerix) * 7.0 / (5.0 * step);
                EXPECT_NEAR((call.rect.top + call.rect.bottom) / 2.0, expected, 2);
            }
            EXPECT_EQ(drawn, step > 1);
        }
    }
    InstrumentFrameInput in = Input(false);
    in.showScale = false;
    EXPECT_FALSE(HasText(Draw(in), "  5 nm  "));
}

std::vector<CanvasCall> AirspaceCalls(const RecordingCanvas& c, CanvasCall::Kind kind) {
    std::vector<CanvasCall> out;
    for (const CanvasCall& call : c.CallsOf(kind))
        if (call.pen.color == kAirspaceColor)
            out.push_back(call);
    return out;
}

AirspaceEntry Element(const char16_t* keyword, double northNm, double eastNm, double a = 0,
                      double b = 0, double cValue = 0, int d = 0) {
    AirspaceEntry e;
    e.keyword.assign(keyword);
    e.latitude = static_cast<std::int32_t>(std::lround(kLat + northNm * kUnitsPerNm));
    e.longitude = static_cast<std::int32_t>(
        std::lround(kLon + eastNm * kUnitsPerNm / std::cos(kLat * kCentiMinutesToRadians)));
    e.valueA = a;
    e.valueB = b;
    e.valueC = cValue;
    e.valueD = d;
    return e;
}

TEST(InstrumentPicture, AirspaceOutlinesAndTheirSwitch) {
    // HSI at 5 nm: 20 pixels a mile, the aircraft at (120, 135), track north.
    std::vector<AirspaceEntry> airspace{
        Element(u"CTR1", 1, 0),
        Element(u"GLINETO", 1, 2),
        Element(u"ARC", 0, 0, 2, 90, 180, 1),  // clockwise from east to south, 2 nm out
        Element(u"GLINETO", -2, -2),           // from the arc's end, due south
        Element(u"CIRCLE", 2, 0, 1),
        Element(u"ARC", 0, 0, 3, 90, 0, -1),  // anticlockwise from east to north
    };
    InstrumentFrameInput in = Input(false);
    in.airspace = airspace;
    RecordingCanvas c = Draw(in);
    auto lines = AirspaceCalls(c, CanvasCall::Polyline);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].points, (std::vector<platform::Point>{{120, 115}, {160, 115}}));
    EXPECT_EQ(lines[1].points, (std::vector<platform::Point>{{120, 175}, {80, 175}}));
    auto circles = AirspaceCalls(c, CanvasCall::Ellipse);
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_EQ(circles[0].rect, (platform::Rect{100, 75, 140, 115}));
    auto arcs = AirspaceCalls(c, CanvasCall::Arc);
    ASSERT_EQ(arcs.size(), 2u);
    EXPECT_EQ(arcs[0].rect, (platform::Rect{80, 95, 160, 175}));
    EXPECT_DOUBLE_EQ(arcs[0].start, 0.0);    // east
    EXPECT_DOUBLE_EQ(arcs[0].sweep, -90.0);  // clockwise to south
    EXPECT_DOUBLE_EQ(arcs[1].start, 0.0);
    EXPECT_DOUBLE_EQ(arcs[1].sweep, 90.0);  // anticlockwise to north
    EXPECT_TRUE(HasText(c, "CTR1"));

    // Turned to track east, the circle to the north lies on the left.
    in.fix.trueTrack = in.fix.magneticTrack = 90;
    circles = AirspaceCalls(Draw(in), CanvasCall::Ellipse);
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_EQ(circles[0].rect, (platform::Rect{60, 115, 100, 155}));

    in.showAirspace = false;
    RecordingCanvas hidden = Draw(in);
    EXPECT_TRUE(AirspaceCalls(hidden, CanvasCall::Polyline).empty());
    EXPECT_TRUE(AirspaceCalls(hidden, CanvasCall::Ellipse).empty());
    EXPECT_TRUE(AirspaceCalls(hidden, CanvasCall::Arc).empty());
    EXPECT_FALSE(HasText(hidden, "CTR1"));
}

TEST(InstrumentPicture, ReadoutFigures) {
    DirectionReference magnetic{VariationSource::kReceiver, 2.0};
    EXPECT_EQ(DirectionText(-1.8, magnetic, true), "360\xC2\xB0M");
    EXPECT_EQ(DirectionText(-5, magnetic, true), "357\xC2\xB0M");
    EXPECT_EQ(DirectionText(87.4, magnetic, false), "---\xC2\xB0M");
    EXPECT_EQ(DirectionText(87.4, DirectionReference{}, true), "087\xC2\xB0T");
    EXPECT_EQ(EteText(10, 120, true), "0:05");
    EXPECT_EQ(EteText(150, 100, true), "1:30");
    EXPECT_EQ(EteText(10, 0.5, true), "--:--");
    EXPECT_EQ(CrossTrackText(1.26, true), "R 1.3");
    EXPECT_EQ(CrossTrackText(-0.5, true), "L 0.5");
    EXPECT_EQ(CrossTrackText(0.01, true), "0.0");
    EXPECT_NEAR(CrossTrackNm(EastboundLeg(1.0)), 1.0, 1e-9);
    EXPECT_NEAR(CrossTrackNm(EastboundLeg(-2.0)), -2.0, 1e-9);
}

TEST(InstrumentFrame, AerixIsShrunkIntoTheViewWithItsPanel) {
    InstrumentFrameInput in = Input(true);
    in.leg = EastboundLeg(0.5);
    platform::RecordingGraphics graphics;
    std::vector<std::pair<int, int>> sizes;
    platform::Bitmap frame = RenderInstrumentFrame(in, [&](platform::Bitmap& b) {
        sizes.emplace_back(b.Width(), b.Height());
        return graphics.CanvasOn(b);
    });
    EXPECT_EQ(frame.Width(), 240);
    EXPECT_EQ(frame.Height(), 268);
    EXPECT_EQ(sizes, (std::vector<std::pair<int, int>>{{430, 386}, {240, 268}}));
    in = Input(false);
    frame = RenderInstrumentFrame(in, [&](platform::Bitmap& b) { return graphics.CanvasOn(b); });
    EXPECT_EQ(frame.Width(), 240);
    EXPECT_EQ(frame.Height(), 270);
}

TEST(InstrumentFrame, ShrinkAveragesTheAreaUnderEachPixel) {
    platform::Bitmap src(4, 2, platform::kBlack);
    src.SetPixel(0, 0, platform::kWhite);
    src.SetPixel(1, 0, platform::kWhite);
    src.SetPixel(0, 1, platform::kWhite);
    src.SetPixel(1, 1, platform::kWhite);
    src.SetPixel(2, 0, platform::Rgb(200, 100, 0));
    platform::Bitmap dst(2, 3, platform::Rgb(1, 2, 3));
    ShrinkInto(src, dst, 1, 1);
    EXPECT_EQ(dst.Pixel(0, 0), platform::Rgb(1, 2, 3));  // above dstTop: untouched
    EXPECT_EQ(dst.Pixel(0, 1), platform::kWhite);
    EXPECT_EQ(dst.Pixel(1, 1), platform::Rgb(50, 25, 0));
    EXPECT_EQ(dst.Pixel(1, 2), platform::Rgb(1, 2, 3));
}

// A renderer the test lets go: it draws nothing until released, or until it is stopped.
class HeldRenderer {
  public:
    platform::Bitmap operator()(const InstrumentFrameInput& in) {
        std::unique_lock lock(mutex_);
        ++started_;
        changed_.notify_all();
        std::stop_token stop = in.stop;
        changed_.wait(lock, stop, [&] { return released_; });
        released_ = false;
        return platform::Bitmap(7, 5);
    }
    void Release() {
        std::lock_guard lock(mutex_);
        released_ = true;
        changed_.notify_all();
    }
    void WaitStarted(int n) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return started_ >= n; });
    }

  private:
    std::mutex mutex_;
    std::condition_variable_any changed_;
    bool released_ = false;
    int started_ = 0;
};

TEST(InstrumentDrawerTest, OneDrawingAtATimeAndItsFrameIsHandedOver) {
    testing::TestPlatform platform;
    HeldRenderer held;
    InstrumentDrawer drawer([&](const InstrumentFrameInput& in) { return held(in); });
    const int invalidations = platform.Ui().InvalidateCount();

    ASSERT_TRUE(
        drawer.Start(InstrumentFrameInput(), &platform.Ui(), g_app.gps.InstrumentDrawingRunning));
    held.WaitStarted(1);
    EXPECT_TRUE(drawer.Running());
    EXPECT_TRUE(g_app.gps.InstrumentDrawingRunning.load());
    EXPECT_FALSE(drawer.Start(InstrumentFrameInput(), &platform.Ui(),
                              g_app.gps.InstrumentDrawingRunning));  // no second thread
    EXPECT_FALSE(drawer.TakeFinished());

    held.Release();
    drawer.Wait();
    EXPECT_FALSE(drawer.Running());
    EXPECT_FALSE(g_app.gps.InstrumentDrawingRunning.load());
    EXPECT_EQ(platform.Ui().InvalidateCount(), invalidations + 1);
    ASSERT_TRUE(drawer.TakeFinished());
    EXPECT_EQ(drawer.Shown().Width(), 7);
    EXPECT_FALSE(drawer.TakeFinished());
    RecordingCanvas view;
    drawer.Paint(view);
    ASSERT_EQ(view.CallsOf(CanvasCall::Blit).size(), 1u);
    EXPECT_EQ(view.CallsOf(CanvasCall::Blit)[0].rect, (platform::Rect{0, 0, 7, 5}));

    // Stopped while drawing: it ends at once, clears the flag and hands nothing over.
    ASSERT_TRUE(
        drawer.Start(InstrumentFrameInput(), &platform.Ui(), g_app.gps.InstrumentDrawingRunning));
    held.WaitStarted(2);
    drawer.Stop();
    EXPECT_FALSE(drawer.Running());
    EXPECT_FALSE(g_app.gps.InstrumentDrawingRunning.load());
    EXPECT_FALSE(drawer.TakeFinished());
    EXPECT_EQ(platform.Ui().InvalidateCount(), invalidations + 1);
    EXPECT_EQ(drawer.Shown().Width(), 7);  // the last frame still shows
    drawer.Reset();
    EXPECT_TRUE(drawer.Shown().Empty());
}

class InstrumentSequencingTest : public ::testing::Test {
  protected:
    testing::TestPlatform p;
};

TEST_F(InstrumentSequencingTest, PreparingAFrameSequencesLikeTheMapAndAcknowledgesVoid) {
    ASSERT_NE(CreatePlanDatabase(u"Trip"), 0u);
    DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
    for (int i = 0; i < 2; ++i) {
        SectorRecord s;
        s.SectorNumber = i + 1;
        s.StartLatitude = (51 - i) * 6000;
        s.StartLongitude = 1 * 6000;
        s.EndLatitude = 50 * 6000;
        s.EndLongitude = (1 + i) * 6000;
        s.TrueCourse = i == 0 ? 180 : 90;
        s.Text404 = i == 0 ? u"ONE" : u"TWO";
        WriteSector(h, s);
    }
    g_app.settings.ActivePlanName.assign(u"Trip");
    GpsFix fix;
    fix.latitude = 49.9 * 6000;  // past the first waypoint
    fix.longitude = 1 * 6000;
    fix.FixVoid = 1;
    fix.positionKnown = true;
    g_app.gps.PublishedFix.Publish(fix);
    g_app.gps.Fix = fix;
    InstrumentFrameInput in =
        PrepareInstrumentFrame({g_app.view, g_app.settings, g_app.gps, g_app.leg}, g_app.nav);
    EXPECT_EQ(g_app.leg.ActiveSectorIndex, 1u);
    EXPECT_EQ(g_app.leg.LegChange.load(), 1);
    ASSERT_TRUE(in.leg.valid);
    EXPECT_EQ(in.leg.bar.name, u"TWO");
    EXPECT_DOUBLE_EQ(in.leg.course, 90.0);
    EXPECT_EQ(in.route.size(), 2u);
    // The banner goes into this frame only.
    EXPECT_TRUE(in.invalidSignal);
    EXPECT_EQ(g_app.gps.Fix.FixVoid, 0);
    EXPECT_FALSE(
        PrepareInstrumentFrame({g_app.view, g_app.settings, g_app.gps, g_app.leg}, g_app.nav)
            .invalidSignal);
}

}  // namespace
}  // namespace aerix
