// The default data set on a partial first start and on later starts.
#include "app/default_data.hpp"

#include <gtest/gtest.h>

#include "app/app_state.hpp"
#include "store/record_store.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

std::vector<WindRecord> Winds() {
    std::vector<WindRecord> rows;
    DbHandle h = OpenDatabase(schema::kWindName, schema::kWindAltitude);
    WindRecord w;
    while (ReadWind(h, kFromCurrent, 0, w))
        rows.push_back(w);
    return rows;
}

std::vector<std::u16string> MapPaths() {
    std::vector<std::u16string> paths;
    DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
    MapRecord m;
    while (ReadMap(h, kFromCurrent, 0, m))
        paths.push_back(m.Path);
    return paths;
}

std::uint32_t Count(std::u16string_view name, std::uint32_t sortProp) {
    std::uint32_t n = 0;
    OpenDatabase(name, sortProp, &n);
    return n;
}

TEST(DefaultData, WindTablePresentAndMapsMissingWritesOnlyTheMaps) {
    testing::TestPlatform tp;
    ASSERT_NE(CreateWindDatabase(schema::kWindName), 0u);
    {
        DbHandle h = OpenDatabase(schema::kWindName, schema::kWindAltitude);
        WriteWind(h, {5000, 270, 30, 1});
    }
    CreateDefaultData();
    ASSERT_EQ(Winds().size(), 1u);
    EXPECT_EQ(Winds()[0].Direction, 270);
    EXPECT_EQ(MapPaths(),
              (std::vector<std::u16string>{
                  u"\\My Documents\\Aerix\\Europe.bmp", u"\\My Documents\\Aerix\\Miami.bmp",
                  u"\\My Documents\\Aerix\\Usa.bmp", u"\\My Documents\\Aerix\\World1.bmp"}));
    EXPECT_EQ(Count(schema::kAircraftName, schema::kAcName), 6u);
    EXPECT_EQ(Count(schema::kStationsName, schema::kStKind), 35u);
    EXPECT_EQ(Count(schema::kEnvelopesName, schema::kEnvPointNumber), 43u);
    EXPECT_TRUE(tp.Ui().BoxTexts().empty());
}

TEST(DefaultData, LaterStartsKeepTheUsersDataAndLoadTheCurrentAircraft) {
    testing::TestPlatform tp;
    CreateDefaultData();
    EXPECT_TRUE(g_app.aircraft.CurrentAircraft.Name.empty())
        << "nothing is read on the creating start";
    EXPECT_TRUE(DeleteWind(0));
    tp.Restart();
    g_app.settings.AircraftReg.assign(u"G-MALI");
    CreateDefaultData();
    EXPECT_EQ(Winds().size(), 3u) << "single deleted records do not come back";
    EXPECT_EQ(g_app.aircraft.CurrentAircraft.Name, u"G-MALI");
    EXPECT_EQ(g_app.aircraft.CurrentAircraft.TypeDesignator, u"PA46");
    EXPECT_EQ(g_app.aircraft.CurrentAircraft.CruiseTas, 170);
    EXPECT_EQ(g_app.aircraft.CurrentAircraft.EmptyArm, 135.1);

    // A whole deleted database comes back with its defaults.
    std::uint32_t n = 0;
    CeOid maps = OpenDatabase(schema::kMapsName, schema::kMapPath, &n).DatabaseOid();
    ASSERT_TRUE(DeleteDatabase(maps));
    tp.Restart();
    g_app.settings.AircraftReg.assign(u"G-NONE");
    CreateDefaultData();
    EXPECT_EQ(MapPaths().size(), 4u);
    EXPECT_TRUE(g_app.aircraft.CurrentAircraft.Name.empty());
    EXPECT_TRUE(tp.Ui().BoxTexts().empty());
}

TEST(DefaultData, DamagedStoreIsReportedWithoutWriting) {
    testing::TestPlatform tp;
    testing::WriteFile(tp.Root() / "objectstore.sqlite", "damaged");
    tp.Restart();
    CreateDefaultData();
    auto boxes = tp.Ui().BoxTexts();
    ASSERT_FALSE(boxes.empty());
    EXPECT_EQ(boxes[0], "Could not open database");
    EXPECT_EQ(testing::ReadFile(tp.Root() / "objectstore.sqlite"), "damaged");
}

}  // namespace
}  // namespace aerix
