// --playback FILE puts FILE in the recording's place and keeps every earlier recording.
#include <gtest/gtest.h>

#include <sstream>

#include "qt/options.hpp"
#include "test_platform.hpp"

namespace aerix::qt {
namespace {

using testing::ReadFile;
using testing::WriteFile;

TEST(PlaybackFile, EveryEarlierRecordingIsKept) {
    testing::TempDir dir;
    auto target = dir.Path() / "GpsData.txt";
    auto first = dir.Path() / "first.nmea";
    auto second = dir.Path() / "second.nmea";
    WriteFile(target, "flown\r\n");
    WriteFile(first, "first\r\n");
    WriteFile(second, "second\r\n");

    std::ostringstream err;
    ASSERT_TRUE(PutPlaybackFile(first, target, err));
    ASSERT_TRUE(PutPlaybackFile(second, target, err));
    EXPECT_EQ(ReadFile(target), "second\r\n");
    EXPECT_EQ(ReadFile(dir.Path() / "GpsData.txt.1"), "flown\r\n");
    EXPECT_EQ(ReadFile(dir.Path() / "GpsData.txt.2"), "first\r\n");
    EXPECT_NE(err.str().find("the earlier recording is kept as " +
                             (dir.Path() / "GpsData.txt.2").string()),
              std::string::npos)
        << err.str();

    // Playing the recording itself copies nothing; a missing file changes nothing.
    ASSERT_TRUE(PutPlaybackFile(target, target, err));
    EXPECT_FALSE(PutPlaybackFile(dir.Path() / "missing.nmea", target, err));
    EXPECT_NE(err.str().find("no such file"), std::string::npos);
    EXPECT_EQ(ReadFile(target), "second\r\n");
    EXPECT_FALSE(std::filesystem::exists(dir.Path() / "GpsData.txt.3"));
}

}  // namespace
}  // namespace aerix::qt
