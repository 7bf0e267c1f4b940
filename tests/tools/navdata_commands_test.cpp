// aerix-tool import waypoints / airspace, navdb load / search and airspace load on a fresh data
// root: the counts follow from the files' contents.
#include <gtest/gtest.h>

#include "tool_run.hpp"

#include <sys/wait.h>
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "support/test_platform.hpp"

namespace {

using aerix::testing::ToolRun;

// Every command here answers in JSON.
ToolRun Tool(const std::filesystem::path& home, const std::string& args) {
    return aerix::testing::RunToolAt(home, "--json " + args);
}

using aerix::testing::ReadFile;
using aerix::testing::TempDir;
using aerix::testing::WriteFile;

TEST(NavDataCommands, ImportedFilesLoadWithTheCountsTheirContentsImply) {
    TempDir home, files;
    auto cup = files.Path() / "club.cup";
    WriteFile(cup,
              "name,code,country,lat,lon,elev,style,rwdir,rwlen,freq,desc\r\n"
              "\"Lasham\",EGHL,GB,5111.200N,00101.900W,189m,4,087,1200m,131.025,\r\n"
              "\"Broken\",BRK,GB,51xx.000N,00101.900W,189m,1,,,,\r\n"
              "\"Detling\",DET,GB,5118.240N,00035.870E,600ft,9,,,117.300,\r\n"
              "\"Benson\",EGUB,GB,5136.970N,00105.700W,63m,5,,,,\r\n");
    auto openair = files.Path() / "london.txt";
    WriteFile(openair,
              "AC D\nAN CITY\nAL SFC\nAH 2500ft\n"
              "DP 51:30:00 N 000:00:00 E\nDP 51:40:00 N 000:10:00 E\nDP 51:30:00 N 000:20:00 E\n"
              "DP broken\n"
              "AC R\nAN DANGER\nV X=50:00:00 N 001:00:00 W\nDC 5\n");

    ToolRun imported = Tool(home.Path(), "import waypoints '" + cup.string() + "' --db Club");
    ASSERT_EQ(imported.status, 0) << imported.err;
    EXPECT_EQ(imported.out,
              "{\"format\": \"cup\", \"database\": \"Club\", \"added\": 3, \"duplicates\": 0, "
              "\"skipped\": 1, \"ignored\": 0}\n");
    EXPECT_NE(imported.err.find("club.cup:3: skipped: bad latitude or longitude"),
              std::string::npos);
    // Importing again adds nothing.
    ToolRun again = Tool(home.Path(), "import waypoints '" + cup.string() + "' --db Club");
    EXPECT_NE(again.out.find("\"added\": 0, \"duplicates\": 3"), std::string::npos);

    ToolRun air = Tool(home.Path(), "import airspace '" + openair.string() + "'");
    ASSERT_EQ(air.status, 0) << air.err;
    EXPECT_NE(air.out.find("\"outlines\": 2, \"lines\": 6, \"skipped\": 1"), std::string::npos)
        << air.out;

    ToolRun nav = Tool(home.Path(), "navdb load --db Club --list");
    ASSERT_EQ(nav.status, 0) << nav.err;
    EXPECT_EQ(nav.out.substr(0, nav.out.find('\n')), "{\"count\": 3}");
    EXPECT_NE(nav.out.find("\"name\": \"Benson\", \"ident\": \"EGUB\""), std::string::npos);
    EXPECT_EQ(Tool(home.Path(), "airspace load").out, "{\"count\": 6}\n");

    ToolRun search = Tool(home.Path(), "navdb search EG --icao --db Club");
    EXPECT_EQ(search.out.substr(0, search.out.find('\n')), "{\"count\": 2}");
    EXPECT_EQ(Tool(home.Path(), "navdb search eg --icao --db Club").out, "{\"count\": 0}\n");
}

TEST(NavDataCommands, FailuresAreClear) {
    TempDir home, files;
    auto bad = files.Path() / "bad.csv";
    WriteFile(bad, "a,b\n1,2\n");
    ToolRun unknown = Tool(home.Path(), "import waypoints '" + bad.string() + "' --db X");
    EXPECT_EQ(unknown.status, 1);
    EXPECT_NE(unknown.err.find("not a waypoint file"), std::string::npos);
    EXPECT_EQ(Tool(home.Path(), "import waypoints '" + bad.string() + "' --db a/b").status, 1);

    ToolRun missing = Tool(home.Path(), "navdb load --db Nowhere");
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.err.find("Could not open nav database. Error:"), std::string::npos);
    EXPECT_EQ(Tool(home.Path(), "navdb load").status, 1);  // none chosen

    // A file with no airspace in it leaves the airspace file as it was.
    auto airspace = home.Path() / "My Documents" / "Aerix" / "EuroAip.txt";
    WriteFile(airspace, "kept\r\n");
    auto gpx = files.Path() / "wp.gpx";
    WriteFile(gpx, "<gpx><wpt lat=\"51\" lon=\"0\"><name>A</name></wpt></gpx>\n");
    ToolRun wrong = Tool(home.Path(), "import airspace '" + gpx.string() + "'");
    EXPECT_EQ(wrong.status, 1);
    EXPECT_NE(wrong.err.find("wp.gpx: no airspace found in it"), std::string::npos) << wrong.err;
    EXPECT_EQ(wrong.out, "");
    EXPECT_EQ(ReadFile(airspace), "kept\r\n");
    EXPECT_FALSE(std::filesystem::exists(airspace.string() + ".1"));
}

// Every file under dir, as paths relative to it.
std::vector<std::string> FilesUnder(const std::filesystem::path& dir) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(dir))
        files.push_back(std::filesystem::relative(entry.path(), dir).string());
    std::sort(files.begin(), files.end());
    return files;
}

TEST(NavDataCommands, NamesThatWouldLeaveTheDataRootAreRefused) {
    TempDir base;
    auto home = base.Path() / "a" / "b" / "home";
    ToolRun escaped = Tool(home, "navdb load --db ../../../outside/escaped");
    EXPECT_EQ(escaped.status, 1);
    EXPECT_NE(escaped.err.find("is refused: it holds a \"..\" component"), std::string::npos)
        << escaped.err;
    EXPECT_EQ(Tool(home, "navdb search X --db /tmp/abs").status, 1);

    // The same name reached through the chosen database in the settings.
    ASSERT_EQ(Tool(home, "settings").status, 0);
    std::string hive = ReadFile(home / "registry.reg");
    std::size_t at = hive.find("\"CuDbase\"=\"\"");
    ASSERT_NE(at, std::string::npos);
    hive.replace(at, 12, "\"CuDbase\"=\"..\\\\..\\\\x\"");
    WriteFile(home / "registry.reg", hive);
    ToolRun chosen = Tool(home, "navdb load");
    EXPECT_EQ(chosen.status, 1);
    EXPECT_NE(chosen.err.find("\"\\My Documents\\aerix\\..\\..\\x.CDB\" is refused"),
              std::string::npos)
        << chosen.err;

    // A plan name is a database name, never a path.
    EXPECT_EQ(Tool(home, "plan new ../../../plan").status, 0);
    EXPECT_EQ(FilesUnder(base.Path()),
              (std::vector<std::string>{"a", "a/b", "a/b/home", "a/b/home/My Documents",
                                        "a/b/home/My Documents/Aerix",
                                        "a/b/home/My Documents/Aerix/World.CDB",
                                        "a/b/home/objectstore.sqlite", "a/b/home/registry.reg"}));
}

}  // namespace
