// Backups of a replaced file are numbered on and never written over.
#include <gtest/gtest.h>

#include "platform/numbered_backup.hpp"
#include "support/test_platform.hpp"

namespace aerix::platform {
namespace {

using testing::ReadFile;
using testing::WriteFile;

TEST(NumberedBackup, EachCopyTakesTheNextNumberAndNoneIsOverwritten) {
    testing::TempDir dir;
    auto file = dir.Path() / "GpsData.txt";
    std::error_code ec;
    EXPECT_TRUE(KeepNumberedBackup(file, ec).empty());  // nothing to keep yet
    EXPECT_FALSE(ec);

    WriteFile(file, "first");
    EXPECT_EQ(KeepNumberedBackup(file, ec), dir.Path() / "GpsData.txt.1");
    WriteFile(file, "second");
    EXPECT_EQ(KeepNumberedBackup(file, ec), dir.Path() / "GpsData.txt.2");
    EXPECT_EQ(ReadFile(dir.Path() / "GpsData.txt.1"), "first");
    EXPECT_EQ(ReadFile(dir.Path() / "GpsData.txt.2"), "second");

    // A deleted backup's number is not reused, so the numbers keep their order; names that only
    // look alike do not count.
    std::filesystem::remove(dir.Path() / "GpsData.txt.1");
    WriteFile(dir.Path() / "GpsData.txt.9x", "");
    WriteFile(dir.Path() / "GpsData.txt.bak", "");
    WriteFile(dir.Path() / "Other.txt.7", "");
    EXPECT_EQ(NextBackupName(file), dir.Path() / "GpsData.txt.3");
}

}  // namespace
}  // namespace aerix::platform
