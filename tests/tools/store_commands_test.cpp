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
