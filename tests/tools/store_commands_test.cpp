// aerix-tool init and db: the first start leaves exactly the default rows, and damaged files are
// reported and left alone.
#include <gtest/gtest.h>

#include "tool_run.hpp"

#include <sys/wait.h>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

#include "support/test_platform.hpp"

namespace {

using aerix::testing::RunToolAt;
using aerix::testing::ToolRun;

using aerix::testing::ReadFile;
using aerix::testing::TempDir;
using aerix::testing::WriteFile;

// The dump without its object ids, which depend on the order of creation.
std::string WithoutOids(const std::string& dump) {
    return std::regex_replace(dump, std::regex(R"(\{"oid": \d+, "props": (\{.*\})\})"), "$1");
}

std::filesystem::path DataFile(const std::string& name) {
    // The source tree as the test run names it; __FILE__ may be relative to the build folder.
    const char* source = std::getenv("AERIX_SOURCE_DIR");
    std::filesystem::path here = source ? std::filesystem::path(source) / "tests" / "tools"
                                        : std::filesystem::path(__FILE__).parent_path();
    return here / "data" / name;
}

TEST(StoreCommands, InitLeavesExactlyTheDefaultRowsInSortOrder) {
    TempDir home;
    ToolRun init = RunToolAt(home.Path(), "init");
    ASSERT_EQ(init.status, 0) << init.err;
    EXPECT_EQ(init.err, "");
    const std::array<std::pair<const char*, const char*>, 5> databases{{
        {"Aircraft", "default_aircraft.jsonl"},
        {"Stations", "default_stations.jsonl"},
        {"Envelopes", "default_envelopes.jsonl"},
        {"Maps", "default_maps.jsonl"},
        {"WindTable", "default_windtable.jsonl"},
    }};
    for (const auto& [name, file] : databases) {
        SCOPED_TRACE(name);
        ToolRun dump = RunToolAt(home.Path(), std::string("db dump ") + name);
        ASSERT_EQ(dump.status, 0) << dump.err;
        EXPECT_EQ(WithoutOids(dump.out), ReadFile(DataFile(file)));
    }
    // A second start changes nothing.
    ASSERT_EQ(RunToolAt(home.Path(), "init").status, 0);
    ToolRun list = RunToolAt(home.Path(), "--json db list");
    EXPECT_NE(list.out.find(R"({"name": "Envelopes", "type": 20003, "records": 43,)"),
              std::string::npos)
        << list.out;
    EXPECT_NE(list.out.find(R"({"name": "Aircraft", "type": 20001, "records": 6,)"),
              std::string::npos);
}

// A 24-bit BMP holding every row its header promises.
bool WholeBmp(const std::filesystem::path& file) {
    std::string b = ReadFile(file);
    if (b.size() < 54 || b.compare(0, 2, "BM") != 0)
        return false;
    auto le32 = [&](std::size_t at) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(b[at])) |
               static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 1])) << 8 |
               static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 2])) << 16 |
               static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 3])) << 24;
    };
    return b.size() == 54 + (le32(18) * 3 + 3) / 4 * 4 * static_cast<std::size_t>(le32(22));
}

// A first start on a disk that fills up (a file size limit stands in for it: writes fail with
// EFBIG as on a full disk with ENOSPC) says so and fails; the next start finishes the job, also
// over charts cut short and a damaged World volume, which is kept beside.
TEST(StoreCommands, InitOnAFullDiskLeavesNothingHalfMade) {
    namespace fs = std::filesystem;
    TempDir home;
    const fs::path folder = home.Path() / "My Documents" / "Aerix";
    const std::string limited = "bash -c \"trap '' XFSZ; ulimit -f 1500; exec env -u AERIX_HOME '" +
                                std::string(AERIX_TOOL_PATH) + "' --home '" + home.Path().string() +
                                "' init\" >/dev/null 2>'" + (home.Path() / "err").string() + "'";
    int raw = std::system(limited.c_str());
    ASSERT_TRUE(WIFEXITED(raw));
    EXPECT_EQ(WEXITSTATUS(raw), 1);
    std::string err = ReadFile(home.Path() / "err");
    EXPECT_NE(err.find("Could not build the navigation database World: disk full"),
              std::string::npos)
        << err;
    EXPECT_NE(err.find("init failed: disk full"), std::string::npos) << err;
    // Nothing cut short in place: what could not be finished is not there at all.
    for (const char* gone :
         {"World.CDB", "World.CDB.part", "World.CDB.part-wal", "Miami.bmp", "Miami.bmp.part"})
        EXPECT_FALSE(fs::exists(folder / gone)) << gone;

    auto checkWhole = [&] {
        ToolRun init = RunToolAt(home.Path(), "init");
        ASSERT_EQ(init.status, 0) << init.err;
        ToolRun world = RunToolAt(
            home.Path(), "--json db list --volume '" + (folder / "World.CDB").string() + "'");
        EXPECT_NE(world.out.find(R"("name": "World", "type": 0, "records": 5210)"),
                  std::string::npos)
            << world.out << world.err;
        EXPECT_FALSE(fs::exists(folder / "World.CDB-wal"));
        for (const char* chart : {"World1.bmp", "Europe.bmp", "Usa.bmp", "Miami.bmp"})
            EXPECT_TRUE(WholeBmp(folder / chart)) << chart;
    };
    checkWhole();
    const auto europe = fs::file_size(folder / "Europe.bmp");

    // A chart cut short and a volume that is not a database are made again.
    fs::resize_file(folder / "Europe.bmp", 10000);
    WriteFile(folder / "Usa.bmp", "");
    const std::string garbage(8192, 'x');
    WriteFile(folder / "World.CDB", garbage);
    checkWhole();
    EXPECT_EQ(fs::file_size(folder / "Europe.bmp"), europe);
    EXPECT_EQ(ReadFile(folder / "World.CDB.1"), garbage);
}

TEST(StoreCommands, DamagedStoreIsReportedAndLeftAlone) {
    TempDir home;
    const std::string garbage(8192, 'x');
    WriteFile(home.Path() / "objectstore.sqlite", garbage);
    ToolRun init = RunToolAt(home.Path(), "init");
    EXPECT_EQ(init.status, 1);
    EXPECT_NE(init.err.find("Could not open database"), std::string::npos) << init.err;
    EXPECT_EQ(RunToolAt(home.Path(), "db list").status, 1);
    EXPECT_EQ(ReadFile(home.Path() / "objectstore.sqlite"), garbage);
}

TEST(StoreCommands, VolumeListingNeverCreatesTheFile) {
    TempDir home;
    ToolRun list =
        RunToolAt(home.Path(), "db list --volume '" + (home.Path() / "Nav.CDB").string() + "'");
    EXPECT_EQ(list.status, 1);
    EXPECT_NE(list.err.find("not found"), std::string::npos) << list.err;
    EXPECT_FALSE(std::filesystem::exists(home.Path() / "Nav.CDB"));
    EXPECT_EQ(RunToolAt(home.Path(), "db dump NoSuch").status, 1);
}

}  // namespace
