// The store under aerix-tool when things go wrong: the process killed at each write in turn, the
// disk full from some write on, another program holding the lock. A plan is always the old one or
// the new one, and a command that could not do its work says why and exits 1.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include "tool_run.hpp"

#include <sys/wait.h>
#include <unistd.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "platform/sqlite.hpp"
#include "support/test_platform.hpp"

namespace {

namespace fs = std::filesystem;
using aerix::testing::RunToolAt;
using aerix::testing::TempDir;
using aerix::testing::ToolRun;
using Json = nlohmann::json;

constexpr const char* kLocked = "The data is locked by another program";
constexpr const char* kReadOnly =
    "The data cannot be written: a file in the data folder is read-only";

// The sectors' properties in sector order, as plan show --json prints them.
std::vector<Json> Sectors(const fs::path& home) {
    ToolRun r = RunToolAt(home, "--json plan show");
    EXPECT_EQ(r.status, 0) << r.err;
    std::vector<Json> sectors;
    std::istringstream in(r.out);
    for (std::string line; std::getline(in, line);) {
        Json j = Json::parse(line);
        if (j.contains("props"))
            sectors.push_back(j["props"]);
    }
    return sectors;
}

// Numbered 1..n, each sector starting where the one before ends, every leg longer than 0.
void ExpectWhole(const std::vector<Json>& s, const std::string& what) {
    for (std::size_t i = 0; i < s.size(); ++i) {
        EXPECT_EQ(s[i]["400"], i + 1) << what;
        EXPECT_GT(s[i]["406"].get<double>(), 0.0) << what;
        if (i > 0) {
            EXPECT_EQ(s[i]["414"], s[i - 1]["416"]) << what;
            EXPECT_EQ(s[i]["415"], s[i - 1]["417"]) << what;
        }
    }
}

void CopyHome(const fs::path& from, const fs::path& to) {
    fs::remove_all(to);
    fs::copy(from, to, fs::copy_options::recursive);
}

// aerix-tool under strace, which tampers with the Nth write system call and those it names.
int RunTampered(const fs::path& home, const std::string& inject, const std::string& args,
                std::string* err = nullptr) {
    TempDir dir;
    auto errFile = dir.Path() / "err";
    std::string command = "strace -f -o /dev/null -e inject=pwrite64:" + inject +
                          // LeakSanitizer cannot work under ptrace: it would abort the run.
                          " env -u AERIX_HOME ASAN_OPTIONS=detect_leaks=0 '" AERIX_TOOL_PATH
                          "' --home '" +
                          home.string() + "' " + args + " >/dev/null 2>'" + errFile.string() + "'";
    int raw = std::system(command.c_str());
    if (err)
        *err = aerix::testing::ReadFile(errFile);
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

class StoreFaults : public ::testing::Test {
  protected:
    void SetUp() override {
        home_ = dir_.Path() / "home";
        work_ = dir_.Path() / "work";
        for (const char* args :
             {"init", "plan new Trip",
              "plan add-sector 51.5,-0.5 51.75,-1.25 --alt 2000 --phase climb --variation 1",
              "plan add-sector 51.75,-1.25 52.2,-1.6 --alt 4500 --phase cruise --variation 1",
              "plan add-sector 52.2,-1.6 52.45,-1.75 --alt 3500 --phase descent --variation 1"})
            ASSERT_EQ(RunToolAt(home_, args).status, 0) << args;
        old_ = Sectors(home_);
        ASSERT_EQ(old_.size(), 3u);
    }
    // What the command makes of the plan when nothing goes wrong.
    std::vector<Json> Result(const std::string& args) {
        CopyHome(home_, work_);
        EXPECT_EQ(RunToolAt(work_, args).status, 0) << args;
        auto result = Sectors(work_);
        ExpectWhole(result, args);
        return result;
    }

    TempDir dir_;
    fs::path home_, work_;
    std::vector<Json> old_;
};

TEST_F(StoreFaults, AKillAtAnyWriteLeavesTheOldPlanOrTheNew) {
    if (std::system("strace -V >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "strace is not installed (scripts/deps test)";
    for (const std::string args :
         {"plan reverse", "plan insert-sector 1 51.9,-1.4 --alt 3000 --phase cruise --variation 1",
          "plan edit-sector 2 --to 52.1,-1.5", "plan delete-sector 2"}) {
        auto fresh = Result(args);
        int killed = 0;
        for (int n = 1; n < 200; ++n) {
            CopyHome(home_, work_);
            std::string inject = "signal=KILL:when=" + std::to_string(n);
            if (RunTampered(work_, inject, args) == 0)
                break;  // past the last write
            ++killed;
            auto after = Sectors(work_);
            std::string what = args + ", killed at write " + std::to_string(n);
            EXPECT_TRUE(after == old_ || after == fresh) << what;
            ExpectWhole(after, what);
        }
        EXPECT_GT(killed, 1) << args;
    }
}

TEST_F(StoreFaults, AFullDiskIsToldAndLeavesThePlanAsItWas) {
    if (std::system("strace -V >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "strace is not installed (scripts/deps test)";
    auto reversed = Result("plan reverse");
    int refused = 0;
    for (int n = 1; n < 200; ++n) {
        CopyHome(home_, work_);
        std::string err;
        int status = RunTampered(work_, "error=ENOSPC:when=" + std::to_string(n) + "+",
                                 "plan reverse", &err);
        auto after = Sectors(work_);
        if (status == 0) {
            EXPECT_EQ(after, reversed);
            break;
        }
        ++refused;
        EXPECT_EQ(status, 1) << n;
        EXPECT_NE(err.find("disk full"), std::string::npos) << n << ": " << err;
        EXPECT_EQ(after, old_) << n;
    }
    EXPECT_GT(refused, 1);
}

TEST_F(StoreFaults, ALockHeldElsewhereIsToldOnceAndEveryCommandExits1) {
    aerix::platform::SqliteDb other;
    ASSERT_EQ(other.Open(home_ / "objectstore.sqlite", false), 0);
    // Writers are kept out; readers still read.
    ASSERT_TRUE(other.Exec("BEGIN EXCLUSIVE"));
    ToolRun reverse = RunToolAt(home_, "plan reverse");
    EXPECT_EQ(reverse.status, 1);
    EXPECT_NE(reverse.err.find(kLocked), std::string::npos) << reverse.err;
    EXPECT_EQ(RunToolAt(home_, "plan list").status, 0);
    ASSERT_TRUE(other.Exec("COMMIT"));
    EXPECT_EQ(Sectors(home_), old_);

    // Now nobody else may even read.
    ASSERT_TRUE(other.Exec("PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE"));
    std::string render =
        "render map --lat 51.6 --lon -1 --out '" + (dir_.Path() / "m.png").string() + "'";
    for (const std::string& args :
         {std::string("plan show"), std::string("wind list"), std::string("plan list"),
          std::string("aircraft list"), std::string("fuel"), std::string("plan reverse"), render}) {
        ToolRun r = RunToolAt(home_, args);
        EXPECT_EQ(r.status, 1) << args;
        EXPECT_NE(r.err.find(kLocked), std::string::npos) << args << ": " << r.err;
        EXPECT_EQ(r.err.find("Could not open database"), std::string::npos) << args;
    }
    other.Close();
    EXPECT_EQ(Sectors(home_), old_);
}

// Each database of the object store with its record count, as db list prints them.
std::map<std::string, int> Databases(const fs::path& home) {
    ToolRun r = RunToolAt(home, "--json db list");
    std::map<std::string, int> out;
    std::istringstream in(r.out);
    for (std::string line; std::getline(in, line);) {
        Json j = Json::parse(line);
        out[j["name"].get<std::string>()] = j["records"].get<int>();
    }
    return out;
}

TEST_F(StoreFaults, AFirstStartKilledAtAnyWriteLeavesNoDatabaseShortOfRows) {
    if (std::system("strace -V >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "strace is not installed (scripts/deps test)";
    // The navigation volume and the charts are there; the object store is made afresh.
    const fs::path first = dir_.Path() / "first";
    CopyHome(home_, first);
    for (const char* name :
         {"objectstore.sqlite", "objectstore.sqlite-wal", "objectstore.sqlite-shm", "registry.reg"})
        fs::remove(first / name);
    CopyHome(first, work_);
    ASSERT_EQ(RunToolAt(work_, "init").status, 0);
    const auto whole = Databases(work_);
    ASSERT_EQ(whole.at("WindTable"), 4);
    int killed = 0;
    for (int n = 1; n < 400; ++n) {
        CopyHome(first, work_);
        if (RunTampered(work_, "signal=KILL:when=" + std::to_string(n), "init") == 0)
            break;
        ++killed;
        // The next start makes whole what the killed one left.
        ASSERT_EQ(RunToolAt(work_, "init").status, 0) << "killed at write " << n;
        EXPECT_EQ(Databases(work_), whole) << "killed at write " << n;
    }
    EXPECT_GT(killed, 5);
}

// A -shm left behind without write permission (a copy, a restore as another user): each command
// says so once and what to do, keeps the plan as it was, and works again once permission returns.
TEST_F(StoreFaults, AReadOnlyFileBesideTheStoreIsToldWithWhatToDo) {
    const fs::path shm = home_ / "objectstore.sqlite-shm";
    { std::ofstream{shm}; }
    // Root writes past a file's mode; only the immutable flag stops it.
    std::string protect = geteuid() == 0 ? "chattr +i '" + shm.string() + "' 2>/dev/null"
                                         : "chmod 0444 '" + shm.string() + "'";
    std::string release =
        geteuid() == 0 ? "chattr -i '" + shm.string() + "'" : "chmod 0644 '" + shm.string() + "'";
    if (std::system(protect.c_str()) != 0)
        GTEST_SKIP() << "this file system cannot make a file read-only for root";
    std::vector<ToolRun> runs{RunToolAt(home_, "plan new Other"), RunToolAt(home_, "plan reverse")};
    ASSERT_EQ(std::system(release.c_str()), 0);
    for (const ToolRun& r : runs) {
        EXPECT_EQ(r.status, 1) << r.err;
        // One box, and the tool's closing line that repeats it.
        int boxes = 0;
        std::istringstream lines(r.err);
        for (std::string line; std::getline(lines, line);)
            boxes += line.starts_with(kReadOnly);
        EXPECT_EQ(boxes, 1) << r.err;
    }
    EXPECT_EQ(Sectors(home_), old_);
    EXPECT_EQ(RunToolAt(home_, "plan new Other").status, 0);
}

}  // namespace
