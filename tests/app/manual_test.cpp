// The user manual: put in place on the first start, never over the pilot's copy, and covering
// every menu command.
#include <gtest/gtest.h>

#include "app/command_table.hpp"
#include "app/main_window.hpp"
#include "app/manual.hpp"
#include "platform/data_root.hpp"
#include "platform/services.hpp"
#include "test_platform.hpp"

namespace aerix::testing {
namespace {

TEST(ManualTest, InstalledOnceAndLeftAloneAfterwards) {
    TestPlatform platform;
    auto page = platform::Sys().root->Resolve(kManualPage);
    ASSERT_FALSE(std::filesystem::exists(page));
    ASSERT_TRUE(InstallManual());
    std::string shipped = ReadFile(platform::ResourcePath("Manual.htm"));
    EXPECT_EQ(ReadFile(page), shipped);

    WriteFile(page, "my notes");
    EXPECT_TRUE(InstallManual());
    EXPECT_EQ(ReadFile(page), "my notes");
}

TEST(ManualTest, DescribesEveryMenuCommand) {
    std::string manual = ReadFile(platform::ResourcePath("Manual.htm"));
    for (const auto& entry : MenuTable())
        EXPECT_NE(manual.find(entry.caption), std::string::npos) << entry.caption;
    for (const char* file : {"registry.reg", "objectstore.sqlite", ".CDB", "EuroAip.txt",
                             "GpsData.txt", ".ndx", ".cup", "airports.csv", "OpenAir"})
        EXPECT_NE(manual.find(file), std::string::npos) << file;
}

}  // namespace
}  // namespace aerix::testing
