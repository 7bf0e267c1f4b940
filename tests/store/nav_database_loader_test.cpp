#include <gtest/gtest.h>

#include <filesystem>

#include "app/app_state.hpp"
#include "store/nav_database_loader.hpp"
#include "store/nav_volume_scope.hpp"
#include "store/record_store.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

using platform::PropVal;

class NavLoaderTest : public ::testing::Test {
  protected:
    void SetUp() override {
        g_app.settings.NavDatabaseName.assign(u"Test");
        // A small area: 50N..52N, 2W..1E.
        g_app.nav.AreaNorth = 52 * 6000;
        g_app.nav.AreaSouth = 50 * 6000;
        g_app.nav.AreaEast = 1 * 6000;
        g_app.nav.AreaWest = -2 * 6000;
    }
    // Writes raw property lists, so records may lack properties.
    void Write(const std::vector<std::vector<PropVal>>& records) {
        NavVolumeScope volume(g_app.nav, u"Test");
        CreateNavDatabase(g_app.nav, u"Test");
        DbHandle h = OpenNavDatabase(g_app.nav, u"Test", schema::kWptName);
        for (const auto& props : records)
            ASSERT_NE(h.Write(0, props), 0u);
    }
    static std::vector<PropVal> Wpt(std::u16string name, std::int32_t lat, std::int32_t lon) {
        return {PropVal::Text(100, std::move(name)),
                PropVal::Text(101, u"ID"),
                PropVal::I4(102, lat),
                PropVal::I4(103, lon),
                PropVal::I2(105, 1),
                PropVal::Text(108, u"GB"),
                PropVal::Text(109, u"ignored")};
    }
    std::vector<std::u16string> Names() const {
        std::vector<std::u16string> names;
        for (const NavEntry& e : g_app.nav.NavDatabase)
            names.emplace_back(e.name.view());
        return names;
    }
    testing::TestPlatform platform;
};

TEST_F(NavLoaderTest, KeepsWaypointsInsideTheBoundsInclusiveInNameOrder) {
    Write({
        Wpt(u"North edge", 52 * 6000, 0),
        Wpt(u"Past north", 52 * 6000 + 1, 0),
        Wpt(u"South edge", 50 * 6000, 0),
        Wpt(u"Past south", 50 * 6000 - 1, 0),
        Wpt(u"East edge", 51 * 6000, 6000),
        Wpt(u"Past east", 51 * 6000, 6001),
        Wpt(u"West edge", 51 * 6000, -12000),
        Wpt(u"Past west", 51 * 6000, -12001),
    });
    LoadNavDatabase(g_app.settings, g_app.nav);
    EXPECT_EQ(g_app.nav.NavEntryCount, 4u);
    EXPECT_EQ(Names(), (std::vector<std::u16string>{u"East edge", u"North edge", u"South edge",
                                                    u"West edge"}));
    EXPECT_EQ(g_app.nav.NavDatabase.capacity(), 4u);  // shrunk to the kept entries
    const NavEntry& e = g_app.nav.NavDatabase[0];
    EXPECT_EQ(e.ident.view(), u"ID");
    EXPECT_EQ(e.latitude, 51 * 6000);
    EXPECT_EQ(e.longitude, 6000);
    EXPECT_EQ(e.type, 1);
    EXPECT_EQ(e.extra.view(), u"GB");
    EXPECT_TRUE(platform.Ui().Boxes().empty());
    EXPECT_EQ(platform.Ui().WaitCursorShown(), 1);
    EXPECT_FALSE(platform.Ui().WaitCursor());
    EXPECT_EQ(g_app.nav.NavVolumeGuid, 0u);  // unmounted
}

TEST_F(NavLoaderTest, ADroppedEntryLeavesWhatTheNextRecordLacks) {
    // "A" lies outside and is overwritten by "B", which has no ident, type or 108.
    Write({Wpt(u"A", 0, 0),
           {PropVal::Text(100, u"B"), PropVal::I4(102, 51 * 6000), PropVal::I4(103, 0)}});
    LoadNavDatabase(g_app.settings, g_app.nav);
    ASSERT_EQ(g_app.nav.NavEntryCount, 1u);
    EXPECT_EQ(g_app.nav.NavDatabase[0].name.view(), u"B");
    EXPECT_EQ(g_app.nav.NavDatabase[0].ident.view(), u"ID");
    EXPECT_EQ(g_app.nav.NavDatabase[0].extra.view(), u"GB");
}

TEST_F(NavLoaderTest, NothingInsideGivesAnEmptyArray) {
    Write({Wpt(u"Far", 0, 0)});
    g_app.nav.NavDatabase.resize(3);
    g_app.nav.NavEntryCount = 3;
    LoadNavDatabase(g_app.settings, g_app.nav);
    EXPECT_EQ(g_app.nav.NavEntryCount, 0u);
    EXPECT_TRUE(g_app.nav.NavDatabase.empty());
}

TEST_F(NavLoaderTest, TextsLongerThanTheirFieldAreCutNotOverrun) {
    Write({{PropVal::Text(100, std::u16string(50, u'N')), PropVal::Text(101, u"TOOLONG"),
            PropVal::I4(102, 51 * 6000), PropVal::I4(103, 0),
            PropVal::Text(108, std::u16string(40, u'x'))}});
    LoadNavDatabase(g_app.settings, g_app.nav);
    ASSERT_EQ(g_app.nav.NavEntryCount, 1u);
    EXPECT_EQ(g_app.nav.NavDatabase[0].name.view(), std::u16string(35, u'N'));
    EXPECT_EQ(g_app.nav.NavDatabase[0].ident.view(), u"TOOLO");
    EXPECT_EQ(g_app.nav.NavDatabase[0].extra.view().size(), 23u);
}

TEST_F(NavLoaderTest, OpenFailureSaysSoTwiceAndKeepsThePreviousArray) {
    g_app.settings.NavDatabaseName.assign(u"Missing");
    g_app.nav.NavDatabase.resize(2);
    g_app.nav.NavEntryCount = 2;
    LoadNavDatabase(g_app.settings, g_app.nav);
    EXPECT_EQ(platform.Ui().BoxTexts(),
              (std::vector<std::string>{"Could not open Nav database",
                                        "Could not open nav database. Error:"}));
    EXPECT_EQ(g_app.nav.NavEntryCount, 2u);
    EXPECT_EQ(g_app.nav.NavDatabase.size(), 2u);
    EXPECT_NE(g_app.nav.NavVolumeGuid, 0u);  // the volume stays mounted
    EXPECT_TRUE(
        std::filesystem::exists(platform.Data().Resolve(u"\\My Documents\\aerix\\Missing.CDB")));
    EXPECT_EQ(platform.Ui().WaitCursorShown(), 0);
}

}  // namespace
}  // namespace aerix
