#include <gtest/gtest.h>

#include "app/app_state.hpp"
#include "store/csv_line.hpp"
#include "store/nav_volume_scope.hpp"
#include "store/record_store.hpp"
#include "store/waypoint_import.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

std::vector<int> ProblemLines(const WaypointParse& p) {
    std::vector<int> lines;
    for (const auto& problem : p.problems)
        lines.push_back(problem.line);
    return lines;
}

TEST(CsvLine, SplitsQuotedAndPlainFields) {
    struct Case {
        std::string line;
        std::vector<std::string> fields;
        bool closed;
    };
    const Case cases[] = {
        {"a,b,,c", {"a", "b", "", "c"}, true},
        {R"("Name, with comma","He said ""hi""",3)",
         {"Name, with comma", R"(He said "hi")", "3"},
         true},
        {"", {""}, true},
        {"x,", {"x", ""}, true},
        {R"("open,b)", {"open,b"}, false},
        {R"("a"b,c)", {"ab", "c"}, true},
    };
    for (const Case& c : cases) {
        std::vector<std::string> fields;
        EXPECT_EQ(SplitCsvLine(c.line, fields), c.closed) << c.line;
        EXPECT_EQ(fields, c.fields) << c.line;
    }
}

TEST(CupCoordinate, ReadsDegreesAndMinutesWithHemisphere) {
    struct Case {
        const char* text;
        bool latitude;
        bool ok;
        std::int32_t value;
    };
    const Case cases[] = {
        {"5130.500N", true, true, 309050},  {"5130.500S", true, true, -309050},
        {"00012.000W", false, true, -1200}, {"17959.990E", false, true, 1079999},
        {"9000.000N", true, true, 540000},  {"9000.001N", true, false, 0},
        {"5160.000N", true, false, 0},      {"130.500N", true, false, 0},
        {"5130.500E", true, false, 0},      {"51x0.500N", true, false, 0},
        {"-5130.500N", true, false, 0},     {"", true, false, 0},
    };
    for (const Case& c : cases) {
        std::int32_t v = 0;
        EXPECT_EQ(ParseCupCoordinate(c.text, c.latitude, &v), c.ok) << c.text;
        if (c.ok) {
            EXPECT_EQ(v, c.value) << c.text;
        }
    }
}

TEST(WaypointParse, CupFileWithBrokenLines) {
    const std::string cup =
        "name,code,country,lat,lon,elev,style,rwdir,rwlen,freq,desc\r\n"
        "\"Lasham, Hants\",LASHM,GB,5111.200N,00101.900W,189m,4,087,1200m,131.025,\"Gliding\"\r\n"
        "\"Broken lat\",BRK,GB,5199.000N,00101.900W,189m,1,,,,\r\n"
        "\"Detling VOR\",DET,GB,5118.240N,00035.870E,600ft,9,,,117.300,\r\n"
        "\"Mast\",MST,GB,5100.000N,00100.000W,,8,,,,\r\n"
        "\"\",NONAME,GB,5100.000N,00100.000W,,1,,,,\r\n"
        "\"Unclosed,X,GB,5100.000N,00100.000W,,1,,,,\r\n"
        "\"Bad elevation\",BE,GB,5100.000N,00100.000W,high,1,,,,\r\n"
        "\"A very long waypoint name that does not "
        "fit\",TOOLONG,GB,5100.000N,00100.000W,0m,19,,,,\r\n"
        "\"Huge\",HG,GB,5100.000N,00100.000W,,99999999999999999999999,,99999999m,,\r\n"
        "-----Related Tasks-----\r\n"
        "\"Task\",\"LASHM\",\"LASHM\"\r\n";
    WaypointParse p = ParseWaypointFile(cup, "x.cup");
    EXPECT_EQ(p.format, WaypointFormat::kCup);
    EXPECT_EQ(ProblemLines(p), (std::vector<int>{3, 6, 7, 8}));
    ASSERT_EQ(p.records.size(), 5u);
    const WaypointRecord& lasham = p.records[0];
    EXPECT_EQ(lasham.Name, u"Lasham, Hants");
    EXPECT_EQ(lasham.Ident, u"LASHM");
    EXPECT_EQ(lasham.Latitude, 307120);
    EXPECT_EQ(lasham.Longitude, -6190);
    EXPECT_DOUBLE_EQ(lasham.Value104, 620.0);  // 189 m
    EXPECT_EQ(lasham.WaypointType, 1);
    EXPECT_EQ(lasham.Number107, 1200);
    EXPECT_EQ(lasham.Text106, u"131.025");
    EXPECT_EQ(lasham.ExtraText, u"GB");
    EXPECT_EQ(lasham.FurtherTexts[kWptRunway], u"09/27");
    EXPECT_EQ(lasham.FurtherTexts[kWptMunicipality], u"Gliding");
    EXPECT_EQ(lasham.FurtherTexts[kWptSource], u"cup");
    EXPECT_EQ(p.records[1].WaypointType, 3);         // VOR
    EXPECT_DOUBLE_EQ(p.records[1].Value104, 600.0);  // feet kept
    EXPECT_EQ(p.records[2].WaypointType, 6);         // a landmark
    EXPECT_EQ(p.records[3].WaypointType, 7);         // reporting point
    EXPECT_EQ(p.records[3].Name.size(), kWptNameChars);
    EXPECT_EQ(p.records[3].Ident, u"TOOLO");
    EXPECT_EQ(p.records[4].WaypointType, 6);  // out-of-range style and length stay in range
    EXPECT_EQ(p.records[4].Number107, 32767);
}

TEST(WaypointParse, OurAirportsAirportsAndNavaids) {
    const std::string airports =
        "\"id\",\"ident\",\"type\",\"name\",\"latitude_deg\",\"longitude_deg\",\"elevation_ft\","
        "\"continent\",\"iso_country\",\"iso_region\",\"municipality\",\"scheduled_service\","
        "\"gps_code\",\"iata_code\",\"local_code\"\n"
        "1,\"EGLL\",\"large_airport\",\"London Heathrow\",51.4706,-0.461941,83,\"EU\",\"GB\","
        "\"GB-ENG\",\"London\",\"yes\",\"EGLL\",\"LHR\",\n"
        "2,\"AF-0005\",\"medium_airport\",\"Khost\",33.28,69.8,,\"AS\",\"AF\",\"AF-KHO\",\"Khost\","
        "\"no\",\"OAKS\",\"KHT\",\n"
        "3,\"X1\",\"closed\",\"Gone\",1,1,1,,,,,,,,\n"
        "4,\"H1\",\"heliport\",\"Pad\",1,1,1,,,,,,,,\n"
        "5,\"S1\",\"seaplane_base\",\"Lake\",91,1,1,,,,,,,,\n"
        "6,\"S2\",\"spaceport\",\"Odd\",1,1,1,,,,,,,,\n";
    WaypointParse a = ParseWaypointFile(airports, "airports.csv");
    EXPECT_EQ(a.format, WaypointFormat::kAirports);
    EXPECT_EQ(ProblemLines(a), (std::vector<int>{6, 7}));
    EXPECT_EQ(a.ignored, 1);
    ASSERT_EQ(a.records.size(), 3u);
    EXPECT_EQ(a.records[0].Latitude, 308824);  // 51.4706 * 6000 rounded
    EXPECT_EQ(a.records[0].Longitude, -2772);
    EXPECT_DOUBLE_EQ(a.records[0].Value104, 83.0);
    EXPECT_EQ(a.records[0].FurtherTexts[kWptMunicipality], u"London");
    EXPECT_EQ(a.records[0].FurtherTexts[kWptSource], u"ourairports");
    EXPECT_EQ(a.records[1].Ident, u"OAKS");  // "AF-0005" does not fit; the GPS code does
    EXPECT_EQ(a.records[2].WaypointType, 8);

    const std::string navaids =
        "\"id\",\"filename\",\"ident\",\"name\",\"type\",\"frequency_khz\",\"latitude_deg\","
        "\"longitude_deg\",\"elevation_ft\",\"iso_country\",\"associated_airport\"\n"
        "1,\"x\",\"BNN\",\"Bovingdon\",\"VOR-DME\",113750,51.726,-0.55,400,\"GB\",\n"
        "2,\"x\",\"WCO\",\"Westcott\",\"NDB\",335,51.85,-0.96,,\"GB\",\"EGTW\"\n"
        "3,\"x\",\"DTY\",\"Daventry\",\"VOR\",116400,52.18,-1.11,,\"GB\",\n"
        "4,\"x\",\"ILS\",\"Odd\",\"ILS\",110100,52.18,-1.11,,\"GB\",\n";
    WaypointParse n = ParseWaypointFile(navaids, "navaids.csv");
    EXPECT_EQ(n.format, WaypointFormat::kNavaids);
    EXPECT_EQ(ProblemLines(n), (std::vector<int>{5}));
    ASSERT_EQ(n.records.size(), 3u);
    EXPECT_EQ(n.records[0].WaypointType, 2);
    EXPECT_EQ(n.records[0].Text106, u"113.750");
    EXPECT_EQ(n.records[1].WaypointType, 4);
    EXPECT_EQ(n.records[1].Text106, u"335");
    EXPECT_EQ(n.records[1].FurtherTexts[kWptMunicipality], u"EGTW");
    EXPECT_EQ(n.records[2].WaypointType, 3);
}

TEST(WaypointParse, NumbersThatAreNotNumbersAndNulBytesAreListedSkips) {
    const std::string digits400(400, '9');
    struct Case {
        const char* file;
        std::string header, line;
        const char* why;
    } cases[] = {
        {"a.cup", "name,code,country,lat,lon,elev,style", "A,A,GB,5100.000N,00100.000W,1e23,1",
         "bad elevation"},
        {"a.cup", "name,code,country,lat,lon,elev,style",
         "A,A,GB,5100.000N,00100.000W,100000000000000000000000m,1", "elevation out of range"},
        {"a.cup", "name,code,country,lat,lon,elev,style",
         "A,A,GB,5100.000N,00100.000W," + digits400 + "ft,1", "elevation out of range"},
        {"a.cup", "name,code,country,lat,lon,elev,style", "A,A,GB,5100.000N,00100.000W,-9000m,1",
         "elevation out of range"},
        {"a.cup", "name,code,country,lat,lon,elev,style",
         std::string("A\0B,A,GB,5100.000N,00100.000W,,1", 32), "a NUL byte in the line"},
        {"airports.csv", "ident,type,name,latitude_deg,longitude_deg,elevation_ft",
         "X,small_airport,A,51,1," + digits400, "elevation out of range"},
        {"airports.csv", "ident,type,name,latitude_deg,longitude_deg,elevation_ft",
         "X,small_airport,A,51,1,100000000000000000000000", "elevation out of range"},
        {"airports.csv", "ident,type,name,latitude_deg,longitude_deg,elevation_ft",
         "X,small_airport,A," + digits400 + ",1,", "bad latitude or longitude"},
        {"airports.csv", "ident,type,name,latitude_deg,longitude_deg,elevation_ft",
         std::string("X,small_airport,A\0,51,1,", 24), "a NUL byte in the line"},
        {"navaids.csv", "ident,name,type,frequency_khz,latitude_deg,longitude_deg,elevation_ft",
         "X,A,NDB," + digits400 + ",51,1,", "bad frequency"},
    };
    for (const auto& c : cases) {
        WaypointParse p = ParseWaypointFile(c.header + "\n" + c.line + "\n", c.file);
        EXPECT_TRUE(p.records.empty()) << c.line;
        ASSERT_EQ(p.problems.size(), 1u) << c.line;
        EXPECT_EQ(p.problems[0].line, 2) << c.line;
        EXPECT_EQ(p.problems[0].message, c.why) << c.line;
    }
}

TEST(WaypointParse, UnknownHeaderAndLatin1Text) {
    WaypointParse unknown = ParseWaypointFile("a,b,c\n1,2,3\n", "data.csv");
    EXPECT_EQ(unknown.format, WaypointFormat::kUnknown);
    EXPECT_EQ(ProblemLines(unknown), (std::vector<int>{1}));
    EXPECT_TRUE(unknown.records.empty());

    // No header in a .cup file: the documented column order. Latin-1 names survive.
    WaypointParse latin =
        ParseWaypointFile("\"M\xFCnchen\",MUC,DE,4821.200N,01147.150E,\n", "a.cup");
    ASSERT_EQ(latin.records.size(), 1u);
    EXPECT_EQ(latin.records[0].Name, u"M\u00fcnchen");
}

TEST(WaypointImport, AddsToTheDatabaseWithoutDuplicates) {
    testing::TestPlatform platform;
    WaypointParse p = ParseWaypointFile(
        "name,code,country,lat,lon,elev,style\n"
        "\"One\",ONE,GB,5100.000N,00100.000W,10m,1\n"
        "\"Two\",TWO,GB,5200.000N,00100.000W,10m,1\n"
        "\"One\",ONE,GB,5100.000N,00100.000W,10m,1\n",
        "a.cup");
    WaypointImportResult first = ImportWaypoints(g_app.nav, u"Mine", p.records);
    EXPECT_TRUE(first.ok);
    EXPECT_EQ(first.added, 2u);
    EXPECT_EQ(first.duplicates, 1u);
    p.records[1].Latitude += 1;  // changed: a new record
    WaypointImportResult second = ImportWaypoints(g_app.nav, u"Mine", p.records);
    EXPECT_EQ(second.added, 1u);
    EXPECT_EQ(second.duplicates, 2u);
    EXPECT_EQ(g_app.nav.NavVolumeGuid, 0u);

    NavVolumeScope volume(g_app.nav, u"Mine");
    std::uint32_t count = 0;
    DbHandle h = OpenNavDatabase(g_app.nav, u"Mine", schema::kWptName, &count);
    EXPECT_EQ(count, 3u);
    EXPECT_TRUE(platform.Ui().Boxes().empty());
}

}  // namespace
}  // namespace aerix
