// The record store: layouts and write orders, partial reads, the open forms and their messages,
// the plan listing, the nav volume and search, and the sector-delete rule.
#include "store/record_store.hpp"

#include <gtest/gtest.h>

#include "app/app_state.hpp"
#include "platform/services.hpp"
#include "store/record_props.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

using platform::PropVal;

std::vector<std::uint16_t> Ids(const std::vector<PropVal>& props) {
    std::vector<std::uint16_t> ids;
    for (const PropVal& p : props)
        ids.push_back(platform::PropNumber(p.propId));
    return ids;
}

std::vector<std::uint16_t> Range(std::uint16_t first, std::uint16_t last) {
    std::vector<std::uint16_t> ids;
    for (std::uint16_t i = first; i <= last; ++i)
        ids.push_back(i);
    return ids;
}

TEST(RecordLayout, EveryKindWritesAllItsPropertiesInItsOrderWithItsTypes) {
    using platform::PropType;
    EXPECT_EQ(Ids(ToProps(WaypointRecord{})), Range(100, 118));
    EXPECT_EQ(Ids(ToProps(MapRecord{})), Range(300, 313));
    EXPECT_EQ(Ids(ToProps(SectorRecord{})), Range(400, 419));
    EXPECT_EQ(Ids(ToProps(WindRecord{})), Range(500, 503));
    EXPECT_EQ(Ids(ToProps(AircraftRecord{})), Range(600, 628));
    EXPECT_EQ(Ids(ToProps(StationRecord{})), Range(700, 704));
    EXPECT_EQ(Ids(ToProps(EnvelopePointRecord{})),
              (std::vector<std::uint16_t>{801, 802, 803, 800}));

    // Types, as letters: s text, 2 I2, 4 I4, d R8, b BOOL.
    auto types = [](const std::vector<PropVal>& props) {
        std::string t;
        for (const PropVal& p : props) {
            switch (PropType(p.propId)) {
                case platform::kCevtLpwstr:
                    t += 's';
                    break;
                case platform::kCevtI2:
                    t += '2';
                    break;
                case platform::kCevtI4:
                    t += '4';
                    break;
                case platform::kCevtR8:
                    t += 'd';
                    break;
                case platform::kCevtBool:
                    t += 'b';
                    break;
                default:
                    t += '?';
            }
        }
        return t;
    };
    EXPECT_EQ(types(ToProps(WaypointRecord{})), "ss44d2s2sssssssssss");
    EXPECT_EQ(types(ToProps(MapRecord{})), "sddddddddddddd");
    EXPECT_EQ(types(ToProps(SectorRecord{})),
              "2ssssddd22dds"
              "d44442s");
    EXPECT_EQ(types(ToProps(WindRecord{})), "4222");
    EXPECT_EQ(types(ToProps(AircraftRecord{})),
              "sdd2d2dd2"
              "44d44dd2s4ddd22ddddb");
    EXPECT_EQ(types(ToProps(StationRecord{})), "ss2d4");
    EXPECT_EQ(types(ToProps(EnvelopePointRecord{})), "sd42");
    EXPECT_EQ(ToProps(SectorRecord{}).size(), 20u);
    EXPECT_EQ(ToProps(AircraftRecord{}).size(), 29u);
}

class RecordStoreTest : public ::testing::Test {
  protected:
    std::vector<std::string> Boxes() { return tp_.Ui().BoxTexts(); }
    testing::TestPlatform tp_;
};

TEST_F(RecordStoreTest, SectorRoundTripsAndPartialRecordsLeaveFieldsUntouched) {
    CeOid plan = CreatePlanDatabase(u"Trip");
    ASSERT_NE(plan, 0u);
    DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
    ASSERT_TRUE(h);
    EXPECT_EQ(h.DatabaseOid(), plan);
    SectorRecord s;
    s.SectorNumber = 1;
    s.Text401 = u"EGKB";
    s.TrueCourse = 123.25;
    s.WindText = u"270/15";
    s.StartLatitude = -3000;
    s.EndLongitude = 42;
    s.Phase = 2;
    s.AltitudeText = u"3500";
    CeOid oid = WriteSector(h, s);
    ASSERT_NE(oid, 0u);
    SectorRecord back;
    EXPECT_EQ(ReadSector(h, kByOid, oid, back), oid);
    EXPECT_EQ(back.Text401, u"EGKB");
    EXPECT_EQ(back.TrueCourse, 123.25);
    EXPECT_EQ(back.WindText, u"270/15");
    EXPECT_EQ(back.StartLatitude, -3000);
    EXPECT_EQ(back.EndLongitude, 42);
    EXPECT_EQ(back.AltitudeText, u"3500");

    // A record carrying only two properties.
    CeOid bare = h.Write(0, std::vector{PropVal::I2(400, 2), PropVal::R8(406, 9.5)});
    SectorRecord caller;
    caller.Text401 = u"kept";
    caller.TrueCourse = 77.0;
    caller.Phase = 3;
    EXPECT_EQ(ReadSector(h, kByOid, bare, caller), bare);
    EXPECT_EQ(caller.SectorNumber, 2);
    EXPECT_EQ(caller.Distance, 9.5);
    EXPECT_EQ(caller.Text401, u"kept");
    EXPECT_EQ(caller.TrueCourse, 77.0);
    EXPECT_EQ(caller.Phase, 3);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(RecordStoreTest, EnvelopePointsComeBackInPointNumberOrder) {
    ASSERT_NE(CreateEnvelopesDatabase(), 0u);
    auto info = platform::Sys().store->EnumDatabases(platform::kObjectStoreVolume);
    ASSERT_EQ(info.size(), 1u);
    EXPECT_EQ(info[0].flags, 3u);
    DbHandle h = OpenEnvelopes();
    for (std::int16_t n : {3, 1, 4, 2})
        WriteEnvelopePoint(h, {n, u"G-TEST", 30.0 + n, 1000 + n});
    DbHandle r = OpenEnvelopes();
    std::vector<std::int16_t> order;
    EnvelopePointRecord p;
    while (ReadEnvelopePoint(r, kFromCurrent, 0, p))
        order.push_back(p.PointNumber);
    EXPECT_EQ(order, (std::vector<std::int16_t>{1, 2, 3, 4}));
    EXPECT_EQ(p.Weight, 1004);
}

TEST_F(RecordStoreTest, PlanListKeepsOnlyPlanDatabases) {
    ASSERT_NE(CreatePlanDatabase(u"Plan1"), 0u);
    ASSERT_NE(CreateDatabase(u"NotAPlan", 19900, schema::kMapPath), 0u);
    CeOid second = CreatePlanDatabase(u"Alps");
    ASSERT_NE(second, 0u);
    EXPECT_EQ(CreatePlanDatabase(u"Plan1"), 0u);
    EXPECT_EQ(DatabaseNames(schema::kPlanType), (std::vector<std::u16string>{u"Plan1", u"Alps"}));
    std::u16string name;
    EXPECT_TRUE(DatabaseOfType(second, schema::kPlanType, &name));
    EXPECT_EQ(name, u"Alps");
    EXPECT_FALSE(DatabaseOfType(second, schema::kMapsType));
    EXPECT_TRUE(DeleteDatabase(second));
    EXPECT_EQ(DatabaseNames(schema::kPlanType), (std::vector<std::u16string>{u"Plan1"}));
}

TEST_F(RecordStoreTest, OpenFailuresSayTheirMessageAndRecordNoDatabase) {
    DbHandle missing = OpenDatabase(u"Missing", schema::kSecNumber);
    EXPECT_FALSE(missing);
    EXPECT_EQ(missing.DatabaseOid(), 0u);
    DbHandle none;
    EXPECT_EQ(WriteWind(none, {1000, 90, 10, 5}), 0u);
    EXPECT_EQ(Boxes(),
              (std::vector<std::string>{"Could not open database", "Record write failed"}));
}

TEST_F(RecordStoreTest, OpenAlwaysVolumeIsCreatedEmptyAndTheNavOpenThenFails) {
    g_app.settings.NavDatabaseName.assign(u"Europe");
    ASSERT_TRUE(MountNavVolume(g_app.settings, g_app.nav));
    EXPECT_TRUE(std::filesystem::exists(tp_.Root() / "My Documents" / "aerix" / "Europe.CDB"));
    std::uint32_t count = 99;
    EXPECT_FALSE(OpenNavDatabase(g_app.nav, u"Europe", schema::kWptName, &count));
    EXPECT_EQ(Boxes(), (std::vector<std::string>{"Could not open Nav database"}));
    UnmountNavVolume(g_app.nav);
    EXPECT_EQ(g_app.nav.NavVolumeGuid, 0u);
}

TEST_F(RecordStoreTest, DamagedNavVolumeIsReportedAndKept) {
    g_app.settings.NavDatabaseName.assign(u"Bad");
    auto file = tp_.Root() / "My Documents" / "Aerix" / "Bad.CDB";
    testing::WriteFile(file, "not a volume");
    ASSERT_NE(CreateDatabase(u"Bad", schema::kMapsType, schema::kWptName), 0u);  // in the store
    EXPECT_FALSE(MountNavVolume(g_app.settings, g_app.nav));
    EXPECT_FALSE(OpenNavDatabase(g_app.nav, u"Bad", schema::kWptName));
    EXPECT_EQ(Boxes(), (std::vector<std::string>{"Could not create database volume",
                                                 "Could not open Nav database"}));
    EXPECT_EQ(testing::ReadFile(file), "not a volume");
}

TEST_F(RecordStoreTest, NavSearchMatchesNameOrIdentBySearchKey) {
    g_app.settings.NavDatabaseName.assign(u"Test");
    ASSERT_TRUE(MountNavVolume(g_app.settings, g_app.nav));
    ASSERT_NE(CreateNavDatabase(g_app.nav, u"Test"), 0u);
    {
        DbHandle h = OpenNavDatabase(g_app.nav, u"Test", schema::kWptName);
        WaypointRecord w;
        w.Name = u"Biggin Hill";
        w.Ident = u"EGKB";
        WriteWaypoint(h, w);
        w.Name = u"Abingdon";
        w.Ident = u"EGUD";
        WriteWaypoint(h, w);
    }
    struct Case {
        std::uint32_t key;
        const char16_t* search;
        std::vector<int> matches;
    };
    const std::vector<Case> cases{
        {schema::kWptName, u"in", {1, 1}},
        {schema::kWptName, u"hill", {0, 0}},  // case matters
        {schema::kWptIdent, u"EGK", {0, 1}},
        {schema::kWptIdent, u"Hill", {0, 0}},
    };
    for (const Case& c : cases) {
        g_app.nav.NavSearchKey = c.key;
        DbHandle h = OpenNavDatabase(g_app.nav, u"Test", schema::kWptName);
        std::vector<int> got;
        std::u16string text;
        int r;
        while ((r = ReadNavSearch(g_app.nav, h, c.search, text)) >= 0)
            got.push_back(r);
        EXPECT_EQ(got, c.matches);
    }
    DbHandle h = OpenNavDatabase(g_app.nav, u"Test", schema::kWptIdent);
    std::u16string line;
    ASSERT_NE(ReadNavListLine(h, line), 0u);
    EXPECT_EQ(line, u"Biggin Hill  EGKB");
    EXPECT_TRUE(DeleteWaypoint(g_app.settings, g_app.nav, 0));
    UnmountNavVolume(g_app.nav);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(RecordStoreTest, SectorDeleteRecomputesUnlessTheLoadedCountRulesItOut) {
    struct Case {
        std::uint32_t loadedCount;
        bool recompute;
    };
    // The plan holds three sectors when opened for the deletion.
    const std::vector<Case> cases{{0, false}, {2, false}, {3, true}, {1, true}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.loadedCount);
        g_app.settings.ActivePlanName.assign(u"P" +
                                             std::u16string(1, char16_t(u'0' + c.loadedCount)));
        ASSERT_NE(CreatePlanDatabase(g_app.settings.ActivePlanName.view()), 0u);
        {
            DbHandle h = OpenDatabase(g_app.settings.ActivePlanName.view(), schema::kSecNumber);
            for (std::int16_t n = 1; n <= 3; ++n) {
                SectorRecord s;
                s.SectorNumber = n;
                WriteSector(h, s);
            }
        }
        int calls = 0;
        EXPECT_TRUE(DeleteSector(g_app.settings, c.loadedCount, 1, [&calls] { ++calls; }));
        EXPECT_EQ(calls, c.recompute ? 1 : 0);
        SectorRecord s;
        EXPECT_TRUE(ReadActivePlanSector(g_app.settings, 1, s));
        EXPECT_EQ(s.SectorNumber, 3);
        EXPECT_FALSE(ReadActivePlanSector(g_app.settings, 2, s));
    }
}

}  // namespace
}  // namespace aerix
