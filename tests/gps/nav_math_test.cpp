#include "gps/nav_math.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "app/app_state.hpp"
#include "gps/position_text.hpp"

namespace aerix {
namespace {

constexpr double kPi = 3.141592653589793;
constexpr double D = 6000.0;  // CentiMinutes per degree

TEST(PositiveModulo, BringsIntoZeroToXWithXReachable) {
    const struct {
        double y, x, expected;
    } cases[] = {{5, 3, 2},
                 {-1, 3, 2},
                 {0, kTwoPi, 0},
                 {kTwoPi, kTwoPi, 0},
                 {-kTwoPi, kTwoPi, kTwoPi},  // trunc(-1) = -1: y + x * 2 = x, not 0
                 {-3, 3, 3},
                 {-7, 3, 2},
                 {1.5 * kTwoPi, kTwoPi, kPi}};
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(PositiveModulo(c.y, c.x), c.expected) << c.y << " mod " << c.x;
}

struct Leg {
    const char* name;
    double lat1, lon1, lat2, lon2;  // degrees
    double course, distance;        // expected: degrees true, nm
};

void ExpectLeg(const Leg& leg, unsigned char greatCircle, double tolerance) {
    double course = -1, distance = -1;
    CourseDistance(leg.lat1 * D, leg.lon1 * D, leg.lat2 * D, leg.lon2 * D, course, distance,
                   greatCircle);
    EXPECT_NEAR(course, leg.course, tolerance) << leg.name;
    EXPECT_NEAR(distance, leg.distance, tolerance) << leg.name;
}

// References from the textbook formulas (east positive, 1' = 1 nm): rhumb
// d = sqrt(dLat^2 + q^2 dLon^2) * 60 * 180/pi with q = dLat /
// ln(tan(pi/4+phi2/2)/tan(pi/4+phi1/2)), course = atan2(dLon, dPsi); great circle by the spherical
// law of cosines.
TEST(CourseDistance, RhumbLineMatchesReferenceLegs) {
    const Leg legs[] = {
        {"London-Paris", 51.5074, -0.1278, 48.8566, 2.3522, 149.08329080696709, 185.3889727280871},
        {"tool example", 51.5, -0.5, 48.8, 2.3, 146.40492905512286, 194.4850650611466},
        {"JFK-Heathrow", 40.6413, -73.7781, 51.47, -0.4543, 77.93074367721127, 3107.322004380406},
        // Due east on the equator: 10 degrees of longitude are 600 nm of departure.
        {"equator east", 0, 0, 0, 10, 90, 600},
        // Due west at 60N: departure 10 * 60 * cos(60) = 300 nm.
        {"60N west", 60, 10, 60, 0, 270, 300},
        // Across the 180th meridian the short way: 2 degrees of longitude, 120 nm.
        {"dateline east", 0, 179, 0, -179, 90, 120},
        {"dateline west", 0, -179, 0, 179, 270, 120},
        {"dateline 10N", 10, 179, 10, -179, 90, 118.17693036146362}};
    for (const auto& leg : legs)
        ExpectLeg(leg, 0, 1e-6);
}

TEST(CourseDistance, GreatCircleMatchesReferenceLegs) {
    const Leg legs[] = {
        {"London-Paris", 51.5074, -0.1278, 48.8566, 2.3522, 148.11561687105336, 185.3804327454},
        {"tool example", 51.5, -0.5, 48.8, 2.3, 145.3125634089736, 194.4736552552971},
        {"JFK-Heathrow", 40.6413, -73.7781, 51.47, -0.4543, 51.352520866425486, 2989.35112517436},
        {"equator east", 0, 0, 0, 10, 90, 600},
        {"60N west", 60, 10, 60, 0, 274.3328739520715, 299.71428539038715},
        {"dateline 10N", 10, 179, 10, -179, 89.8263347199293, 118.17674942430632}};
    // acos near 1 loses about half the digits of a short distance.
    for (const auto& leg : legs)
        ExpectLeg(leg, 1, 1e-4);
}

// The longitude nudge applies to both solutions, so identical points are 1e-5 rad of departure
// apart, due west: 1e-5 * cos(lat) * 3437.75 nm, about 0.034 nm at the equator.
TEST(CourseDistance, IdenticalPointsFollowTheLongitudeNudge) {
    for (unsigned char greatCircle : {0, 1}) {
        for (double lat : {0.0, 60.0, -45.0}) {
            double course = -1, distance = -1;
            CourseDistance(lat * D, 7 * D, lat * D, 7 * D, course, distance, greatCircle);
            double expected = 1e-5 * std::cos(lat * kPi / 180) * 3437.7467707849396;
            EXPECT_NEAR(distance, expected, greatCircle ? 1e-4 : 1e-12);
            EXPECT_NEAR(course, 270, greatCircle ? 0.5 : 1e-9);
        }
    }
    double course = -1, distance = -1;
    CourseDistance(0, 0, 0, 0, course, distance, 0);
    EXPECT_NEAR(distance, 0.034377467707849, 1e-12);
    // Near the pole the nudge vanishes in cos(d) rounding to 1: the great circle gives 0 and 0.
    CourseDistance(89.95 * D, 0, 89.95 * D, 0, course, distance, 1);
    EXPECT_EQ(course, 0);
    EXPECT_EQ(distance, 0);
}

TEST(CourseDistance, DueNorthAndSouthComeOutAHairOff) {
    double course = 0, distance = 0;
    // 10 degrees north along one meridian: 600 nm; the nudge tilts the course just west of north.
    CourseDistance(0, 0, 10 * D, 0, course, distance, 0);
    EXPECT_NEAR(distance, 600, 1e-6);
    EXPECT_GT(course, 359.99);
    EXPECT_LT(course, 360);
    CourseDistance(0, 0, -10 * D, 0, course, distance, 0);
    EXPECT_NEAR(distance, 600, 1e-6);
    EXPECT_GT(course, 180);
    EXPECT_LT(course, 180.01);
    // A westward offset too small to register wraps -0 to a full 360.0, not 0.0.
    CourseDistance(0, 0, 10 * D, -1e-12, course, distance, 0);
    EXPECT_EQ(course, 360.0);
}

TEST(WindTriangle, SolvesHeadingAndGroundSpeed) {
    const struct {
        double tas, course;
        int wd, ws;
        double heading, groundSpeed;
    } cases[] = {// Wind from 000 on course 090: wca = asin(20 sin(-90) / 100) = -11.537;
                 // gs = 100 cos(wca) - 20 cos(-90) = 97.980.
                 {100, 90, 0, 20, 78.46304096718451, 97.97958971132712},
                 {120, 0, 90, 30, 14.477512185929925, 116.1895003862225},
                 {100, 270, 270, 20, 270, 80},  // straight down the course: tas - ws
                 {100, 90, 270, 20, 90, 120},   // straight up it
                 {100, 5, 270, 30, 347.6109505468927, 98.04441875146584},  // heading wraps below 0
                 {100, 355, 90, 30, 12.389049453107305, 98.04441875146584},  // ...and above 360
                 {100, 123.4, 0, 0, 123.4, 100}};
    for (const auto& c : cases) {
        double heading = -1, groundSpeed = -1;
        double returned = WindTriangle(c.tas, c.course, c.wd, c.ws, heading, groundSpeed);
        EXPECT_NEAR(heading, c.heading, 1e-4) << c.course << " " << c.wd;
        EXPECT_NEAR(groundSpeed, c.groundSpeed, 1e-4) << c.course << " " << c.wd;
        EXPECT_EQ(returned, groundSpeed);
    }
}

TEST(WindTriangle, ImpossibleTrianglesGiveNotANumber) {
    const struct {
        double tas, course;
        int wd, ws;
    } cases[] = {{0, 90, 90, 10}, {0, 90, 0, 10}, {0, 90, 90, 0}, {50, 0, 90, 60}};
    for (const auto& c : cases) {
        double heading = 0, groundSpeed = 0;
        WindTriangle(c.tas, c.course, c.wd, c.ws, heading, groundSpeed);
        EXPECT_TRUE(std::isnan(heading)) << c.tas << " " << c.wd;
        EXPECT_TRUE(std::isnan(groundSpeed)) << c.tas << " " << c.wd;
    }
}

TEST(FormatPosition, WritesDegreesAndDecimalMinutes) {
    const struct {
        double lat, lon;  // CentiMinutes
        const char* text;
    } cases[] = {{52 * D + 1234.5, -(1 * D + 2345.6), "  N52°12.345 W001°23.456"},
                 {-3000, 0, "  S00°30.000 E000°00.000"},
                 {0, 0, "  N00°00.000 E000°00.000"},
                 {-(89 * D + 5999.9), 179 * D + 5999.9, "  S89°59.999 E179°59.999"},
                 {7 * D, -(180 * D), "  N07°00.000 W180°00.000"},
                 {-0.0, -0.0, "  N00°00.000 E000°00.000"}};
    for (const auto& c : cases) {
        ResetAppState();
        g_app.gps.Fix.latitude = c.lat;
        g_app.gps.Fix.longitude = c.lon;
        FormatPosition(g_app.gps.Fix);
        EXPECT_EQ(g_app.gps.Fix.positionText.utf8(), c.text);
    }
    ResetAppState();
}

}  // namespace
}  // namespace aerix
