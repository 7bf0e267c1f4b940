#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "app/app_state.hpp"
#include "store/airspace_loader.hpp"
#include "store/field_splitter.hpp"
#include "store/openair_import.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

TEST(OpenAirCoordinate, AcceptsTheUsualForms) {
    struct Case {
        const char* text;
        double lat, lon;
    } cases[] = {
        {"52:30:00 N 001:20:00 W", 52.5 * 6000, -(1 + 20 / 60.0) * 6000},
        {"52:30.5N 1:20E", (52 + 30.5 / 60) * 6000, (1 + 20 / 60.0) * 6000},
        {"33:56:24 S 151:10:38 E", -(33 + 56 / 60.0 + 24 / 3600.0) * 6000,
         (151 + 10 / 60.0 + 38 / 3600.0) * 6000},
        {"45.25 n 7.5 w", 45.25 * 6000, -7.5 * 6000},
    };
    for (const auto& c : cases) {
        double lat = 0, lon = 0;
        ASSERT_TRUE(ParseOpenAirCoordinate(c.text, &lat, &lon)) << c.text;
        EXPECT_NEAR(lat, c.lat, 1e-6) << c.text;
        EXPECT_NEAR(lon, c.lon, 1e-6) << c.text;
    }
    for (const char* bad : {"", "52:30 N", "52:70:00 N 001:00:00 W", "95:00 N 001:00 W",
                            "52:30 X 001:00 W", "52:30 N 001:00 W junk"}) {
        double lat = 0, lon = 0;
        EXPECT_FALSE(ParseOpenAirCoordinate(bad, &lat, &lon)) << bad;
    }
}

TEST(OpenAirImport, ConvertsPolygonsCirclesAndArcsAndReportsBrokenLines) {
    const char* input =
        "* a comment\n"
        "AC D\n"
        "AN LONDON CITY CTR\n"
        "AL SFC\n"
        "AH 2500ft\n"
        "DP 51:30:00 N 000:00:00 E\n"
        "DP 51:40:00 N 000:10:00 E\n"
        "DP 51:30:00 N 000:20:00 E\n"
        "DP nonsense\n"
        "\n"
        "AC R\n"
        "AN DANGER\n"
        "V X=50:00:00 N 001:00:00 W\n"
        "DC 5\n"
        "AC C\n"
        "AN ARCS\n"
        "V D=-\n"
        "V X=48:00:00 N 002:00:00 E\n"
        "DA 10,90,180\n"
        "DZ 1\n"
        "DP 47:50:00 N 002:00:00 E\n";
    auto result = ConvertOpenAir(input);
    ASSERT_EQ(result.outlines, 3);
    ASSERT_EQ(result.problems.size(), 2u);
    EXPECT_EQ(result.problems[0].line, 9);
    EXPECT_EQ(result.problems[1].line, 20);

    // Read the result back with the real loader.
    testing::TestPlatform platform;
    auto file = platform.Root() / "out.txt";
    testing::WriteFile(file, result.text);
    LoadAirspaceFrom(g_app.nav, file);
    ASSERT_EQ(g_app.nav.AirspaceEntryCount, static_cast<std::uint32_t>(result.lines));
    const auto& e = g_app.nav.AirspaceOverlay;
    std::vector<std::u16string> keywords;
    for (const auto& entry : e)
        keywords.emplace_back(entry.keyword.view());
    std::vector<std::u16string> expected = {u"LONDON CI", u"GLINETO", u"GLINETO",
                                            u"GLINETO",   u"DANGER",  u"CIRCLE",
                                            u"ARCS",      u"ARC",     u"GLINETO"};
    EXPECT_EQ(keywords, expected);
    EXPECT_EQ(e[3].latitude, 51 * 6000 + 3000);  // closed back on the first point
    EXPECT_EQ(e[3].longitude, 0);
    EXPECT_EQ(e[5].latitude, 300000);
    EXPECT_EQ(e[5].longitude, -6000);
    EXPECT_DOUBLE_EQ(e[5].valueA, 5.0);
    EXPECT_DOUBLE_EQ(e[7].valueA, 10.0);
    EXPECT_DOUBLE_EQ(e[7].valueB, 90.0);
    EXPECT_DOUBLE_EQ(e[7].valueC, 180.0);
    EXPECT_EQ(e[7].valueD, -1);
    // The arc's outline starts where the arc does: 10 nm east of the centre.
    EXPECT_EQ(e[6].latitude, 48 * 6000);
    EXPECT_NEAR(e[6].longitude, 2 * 6000 + 1000 / std::cos(48 * 3.14159265358979 / 180), 1);
}

TEST(OpenAirImport, ArcByPointsUsesBearingsAndDistanceFromTheCentre) {
    auto result = ConvertOpenAir(
        "AC D\nAN B\nV X=50:00:00 N 000:00:00 E\n"
        "DB 50:10:00 N 000:00:00 E, 49:50:00 N 000:00:00 E\n");
    ASSERT_TRUE(result.problems.empty());
    testing::TestPlatform platform;
    auto file = platform.Root() / "b.txt";
    testing::WriteFile(file, result.text);
    LoadAirspaceFrom(g_app.nav, file);
    ASSERT_EQ(g_app.nav.AirspaceEntryCount, 2u);
    const auto& arc = g_app.nav.AirspaceOverlay[1];
    EXPECT_NEAR(arc.valueA, 10.0, 1e-3);
    EXPECT_NEAR(arc.valueB, 0.0, 1e-9);  // due north
    EXPECT_NEAR(arc.valueC, 180.0, 1e-9);
    EXPECT_EQ(arc.valueD, 1);
}

TEST(OpenAirImport, DrawingBeforeAnyAirspaceIsReported) {
    auto result = ConvertOpenAir("DP 50:00 N 001:00 W\nV X=50:00 N 001:00 W\nDC 3\n");
    EXPECT_EQ(result.outlines, 0);
    EXPECT_EQ(result.problems.size(), 3u);
}

TEST(OpenAirImport, NumbersThatAreNotNumbersAreListedSkips) {
    // Each drawing line follows a valid airspace header with a centre; a refused line leaves
    // only that header's first point, so no outline is written for it.
    const std::string head = "AC R\nAN T\nV X=50:00:00 N 001:00:00 W\n";
    struct Case {
        std::string line;
        const char* why;
    } cases[] = {
        {"DC nan", "DC takes a positive radius in nautical miles"},
        {"DC -3", "DC takes a positive radius in nautical miles"},
        {"DC 1e400", "a circle's radius is over 1000 nm"},
        {"DC " + std::string(400, '9'), "a circle's radius is over 1000 nm"},
        {"DA 1e400,0,90", "an arc's radius is over 1000 nm"},
        {"DA nan,0,90", "DA takes radius, start and end angles"},
        {"DA 5,1e125,90", "an arc's angles must lie between -360 and 360"},
        {"DA 5,0,-1e125", "an arc's angles must lie between -360 and 360"},
        {"DA 5,0," + std::string(130, '1'), "an arc's angles must lie between -360 and 360"},
        {"DB 50:00:00 N 179:00:00 E, 50:00:00 N 001:00:00 W", "an arc's radius is over 1000 nm"},
        {std::string("DC 5\0", 5), "a NUL byte in the line"},
    };
    for (const auto& c : cases) {
        auto result = ConvertOpenAir(head + c.line + "\n");
        ASSERT_EQ(result.problems.size(), 1u) << c.line;
        EXPECT_EQ(result.problems[0].line, 4) << c.line;
        EXPECT_EQ(result.problems[0].message, c.why) << c.line;
        EXPECT_EQ(result.outlines, 0) << c.line << result.text;
    }
    // An arc about a centre by the pole would start off the globe.
    auto pole = ConvertOpenAir("AC R\nV X=89:59:00 N 000:00:00 E\nDA 50,0,90\n");
    ASSERT_EQ(pole.problems.size(), 1u);
    EXPECT_EQ(pole.problems[0].message, "the arc runs over a pole");
    // A broken AC line drops its airspace; the lines after it are not merged into the one before.
    auto nul = ConvertOpenAir(std::string("AC D\nV X=50:00 N 001:00 W\nDC 2\nAC R\0\nDC 3\n", 42));
    EXPECT_EQ(nul.outlines, 1);
    ASSERT_EQ(nul.problems.size(), 2u);
    EXPECT_EQ(nul.problems[0].message, "a NUL byte in the line");
    EXPECT_EQ(nul.problems[1].line, 5);
    EXPECT_EQ(nul.text.find("3.0000"), std::string::npos);
}

TEST(OpenAirImport, AFileWithoutAirspaceLeavesTheAirspaceFileAndEveryReplacedOneIsKept) {
    testing::TempDir dir;
    auto target = dir.Path() / "EuroAip.txt";
    auto gpx = dir.Path() / "wp.gpx";
    auto openair = dir.Path() / "area.txt";
    testing::WriteFile(gpx, "<?xml version=\"1.0\"?>\n<gpx><wpt lat=\"51\" lon=\"0\"/></gpx>\n");
    testing::WriteFile(openair, "AC D\nAN ONE\nV X=50:00 N 001:00 W\nDC 3\n");
    testing::WriteFile(target, "old airspace\r\n");

    OpenAirImport refused = ImportOpenAir(gpx, target);
    EXPECT_FALSE(refused.ok);
    EXPECT_NE(refused.error.find("wp.gpx: no airspace found in it"), std::string::npos)
        << refused.error;
    EXPECT_EQ(testing::ReadFile(target), "old airspace\r\n");
    EXPECT_FALSE(std::filesystem::exists(dir.Path() / "EuroAip.txt.1"));

    OpenAirImport first = ImportOpenAir(openair, target);
    ASSERT_TRUE(first.ok) << first.error;
    EXPECT_EQ(first.backup, dir.Path() / "EuroAip.txt.1");
    EXPECT_EQ(testing::ReadFile(target), first.conversion.text);
    ASSERT_TRUE(ImportOpenAir(openair, target).ok);
    EXPECT_EQ(testing::ReadFile(dir.Path() / "EuroAip.txt.1"), "old airspace\r\n");
    EXPECT_EQ(testing::ReadFile(dir.Path() / "EuroAip.txt.2"), first.conversion.text);

    EXPECT_FALSE(ImportOpenAir(dir.Path() / "missing.txt", target).ok);
    EXPECT_EQ(testing::ReadFile(target), first.conversion.text);
}

}  // namespace
}  // namespace aerix
