// The "World" navigation database built on first start from the shipped airport list.
#include "app/default_nav_database.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "app/app_state.hpp"
#include "platform/volume_file.hpp"
#include "store/nav_database_loader.hpp"
#include "store/nav_volume_scope.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

namespace fs = std::filesystem;

TEST(DefaultNavDatabase, TheShippedListBecomesWorldOnceAndLoadsWhole) {
    testing::TestPlatform platform;
    EXPECT_EQ(CreateDefaultNavDatabase().added, 5210u);  // every row of the list is read
    fs::path volume = platform.Data().Resolve(u"\\My Documents\\Aerix\\World.CDB");
    EXPECT_TRUE(fs::exists(volume));
    EXPECT_FALSE(fs::exists(volume.string() + ".part"));
    EXPECT_EQ(CreateDefaultNavDatabase().added, 0u);  // there already
    EXPECT_EQ(platform::CheckVolumeFile(volume, u"World"), platform::VolumeFileState::kWhole);
    EXPECT_FALSE(fs::exists(volume.string() + "-wal"));

    g_app.settings.NavDatabaseName.assign(u"World");
    LoadNavDatabase(g_app.settings, g_app.nav);
    EXPECT_EQ(g_app.nav.NavEntryCount, 5210u);
    bool heathrow = false;
    for (const NavEntry& e : g_app.nav.NavDatabase)
        heathrow = heathrow || (e.ident.view() == u"EGLL" && e.type == 1);
    EXPECT_TRUE(heathrow);
    EXPECT_TRUE(platform.Ui().Boxes().empty());
}

TEST(DefaultNavDatabase, AnInterruptedBuildIsStartedAgainAndAMissingListBuildsNothing) {
    testing::TempDir resources;
    fs::create_directories(resources.Path() / "airports");
    testing::WriteFile(resources.Path() / "airports" / "airports.csv",
                       "\"ident\",\"type\",\"name\",\"latitude_deg\",\"longitude_deg\"\n"
                       "\"EGLL\",\"large_airport\",\"Heathrow\",51.47,-0.46\n");
    testing::TestPlatform platform;
    fs::path volume = platform.Data().ResolveForWrite(u"\\My Documents\\Aerix\\World.CDB");
    testing::WriteFile(volume.string() + ".part", "left over from a crash");

    ::setenv("AERIX_RESOURCES", "/nonexistent", 1);
    EXPECT_EQ(CreateDefaultNavDatabase().added, 0u);
    EXPECT_FALSE(fs::exists(volume));
    ::setenv("AERIX_RESOURCES", resources.Path().c_str(), 1);
    EXPECT_EQ(CreateDefaultNavDatabase().added, 1u);
    EXPECT_TRUE(fs::exists(volume));
    EXPECT_FALSE(fs::exists(volume.string() + ".part"));
    // A volume without the database (left empty) is kept beside and built again.
    fs::remove(volume);
    { NavVolumeScope empty(g_app.nav, NavVolumeScope::AtFile{volume}); }
    EXPECT_EQ(platform::CheckVolumeFile(volume, u"World"), platform::VolumeFileState::kDamaged);
    EXPECT_EQ(CreateDefaultNavDatabase().added, 1u);
    ::unsetenv("AERIX_RESOURCES");
    EXPECT_EQ(platform::CheckVolumeFile(volume, u"World"), platform::VolumeFileState::kWhole);
    EXPECT_TRUE(fs::exists(volume.string() + ".1"));
    EXPECT_TRUE(platform.Ui().Boxes().empty());
}

}  // namespace
}  // namespace aerix
