// The plan dialogs, the sector dialog with its waypoint search, direct-to and the flight log.
#include <gtest/gtest.h>

#include "planning/flight_log.hpp"
#include "planning/plan_dialogs.hpp"
#include "planning/sector_dialog.hpp"
#include "planning/waypoint_search.hpp"
#include "planning_fixture.hpp"
#include "platform/sqlite.hpp"

namespace aerix::testing {
namespace {

using PlanEditingTest = PlanningTest;

constexpr std::int32_t kDeg = 6000;

TEST_F(PlanEditingTest, NewOpenAndDeletePlans) {
    NewPlanDialog create{g_app.settings, g_app.plan};
    create.SetName(u"");
    EXPECT_EQ(create.Ok(), 1);
    EXPECT_EQ(g_app.settings.ActivePlanName.view(), u"Trip");

    create.SetName(u"Trip");  // exists already
    EXPECT_EQ(create.Ok(), 1);
    EXPECT_EQ(platform_.Ui().BoxTexts().back(), "Could not create new plan");
    EXPECT_EQ(g_app.settings.ActivePlanName.view(), u"Trip");

    create.SetName(u"A name longer than twenty-three");
    EXPECT_EQ(create.Name(), u"A name longer than twen");
    EXPECT_EQ(create.Ok(), 1);
    EXPECT_EQ(g_app.settings.ActivePlanName.view(), u"A name longer than twen");
    EXPECT_EQ(g_app.plan.PlanSectorCount, 0u);
    EXPECT_TRUE(DatabaseOfType(g_app.settings.CurrentPlanId, schema::kPlanType));

    // A database of another type is no plan.
    CreateDatabase(u"NotAPlan", 4242, schema::kSecNumber);
    EXPECT_EQ(ListPlans(), (std::vector<std::u16string>{u"Trip", u"A name longer than twen"}));

    OpenPlanDialog open{g_app.settings, g_app.plan};
    open.Open();
    EXPECT_EQ(platform_.Ui().Titles().back(), "Open a plan");
    EXPECT_EQ(open.Choose(-1), 0);
    EXPECT_EQ(open.Choose(0), 1);
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");
    EXPECT_EQ(g_app.settings.ActivePlanName.view(), u"Trip");
    std::u16string name;
    EXPECT_TRUE(DatabaseOfType(g_app.settings.CurrentPlanId, schema::kPlanType, &name));
    EXPECT_EQ(name, u"Trip");

    platform_.Ui().Clear();
    DeletePlanDialog del{g_app.settings};
    del.Open();
    EXPECT_EQ(del.Choose(0), 1);  // the active plan
    ASSERT_EQ(platform_.Ui().Boxes().size(), 1u);
    EXPECT_EQ(platform_.Ui().Boxes()[0].text, "Cannot delete - active plan");
    EXPECT_EQ(platform_.Ui().Boxes()[0].caption, "Warning");
    EXPECT_EQ(ListPlans().size(), 2u);
    del.Open();
    EXPECT_EQ(del.Choose(1), 1);
    EXPECT_EQ(ListPlans(), std::vector<std::u16string>{u"Trip"});
}

class SectorEditingTest : public PlanningTest {
  protected:
    void SetUp() override {
        PlanningTest::SetUp();
        g_app.settings.NavDatabaseName.assign(u"Test");
        ASSERT_TRUE(MountNavVolume(g_app.settings, g_app.nav));
        CreateNavDatabase(g_app.nav, u"Test");
        DbHandle h = OpenNavDatabase(g_app.nav, u"Test", schema::kWptName);
        for (auto [name, ident, lat, lon] :
             {std::tuple{u"Oxford Kidlington", u"EGTK", 51 * kDeg + 500, -1 * kDeg - 1900},
              std::tuple{u"Wellesbourne", u"EGBW", 52 * kDeg + 1150, -1 * kDeg - 3700},
              std::tuple{u"Oxford VOR", u"OX", 51 * kDeg + 300, -1 * kDeg - 1000},
              std::tuple{u"Turweston", u"EGBT", 52 * kDeg + 230, -1 * kDeg - 600}}) {
            WaypointRecord w;
            w.Name = name;
            w.Ident = ident;
            w.Latitude = lat;
            w.Longitude = lon;
            WriteWaypoint(h, w, 0);
        }
        h.Close();
        UnmountNavVolume(g_app.nav);
    }

    SectorEnd Find(std::u16string_view text) {
        auto found = SearchWaypoints(g_app.settings, g_app.nav, text);
        EXPECT_EQ(found.size(), 1u) << Utf16ToUtf8(text);
        return found.empty() ? SectorEnd{} : SectorEndOf(found.front());
    }
};

TEST_F(SectorEditingTest, SearchByNameOrIdent) {
    auto names = [](const std::vector<WaypointRecord>& found) {
        std::vector<std::u16string> out;
        for (const auto& w : found)
            out.push_back(w.Name);
        return out;
    };
    EXPECT_EQ(names(SearchWaypoints(g_app.settings, g_app.nav, u"Oxford")),
              (std::vector<std::u16string>{u"Oxford Kidlington", u"Oxford VOR"}));
    EXPECT_TRUE(SearchWaypoints(g_app.settings, g_app.nav, u"oxford").empty());  // case-sensitive
    EXPECT_TRUE(SearchWaypoints(g_app.settings, g_app.nav, u"EGB")
                    .empty());  // idents are not searched by name
    g_app.settings.IcaoSearch = 1;
    EXPECT_EQ(names(SearchWaypoints(g_app.settings, g_app.nav, u"EGB")),
              (std::vector<std::u16string>{u"Turweston", u"Wellesbourne"}));

    auto at = SectorEndAt("51.5,-0.25");
    ASSERT_TRUE(at);
    EXPECT_EQ(at->latitude, 309000);
    EXPECT_EQ(at->longitude, -1500);
    EXPECT_FALSE(SectorEndAt("95,0"));
    EXPECT_FALSE(SectorEndAt("Oxford"));
}

TEST_F(SectorEditingTest, NewInsertEditAndTheirChecks) {
    SectorDialog first = SectorDialog::ForNew(g_app.settings, g_app.plan, g_app.nav);
    EXPECT_TRUE(first.StartEditable());
    EXPECT_EQ(first.Ok(), 0);
    EXPECT_EQ(platform_.Ui().BoxTexts().back(), "Choose where the sector starts");
    first.SetStart(Find(u"Kidlington"));
    first.SetEnd(Find(u"Wellesbourne"));
    // Variation comes from the magnetic model: about a degree east (negative) in 2025.
    EXPECT_NE(first.VariationText(), "");
    first.SetAltitude("high");
    EXPECT_EQ(first.Ok(), 0);
    EXPECT_EQ(platform_.Ui().BoxTexts().back(),
              "Altitude (ft): enter a whole number of feet from -2000 to 99999");
    first.SetAltitude("3000");
    first.SetVariation("1.5");
    EXPECT_EQ(first.Ok(), 1);

    SectorDialog second = SectorDialog::ForNew(g_app.settings, g_app.plan, g_app.nav);
    EXPECT_FALSE(second.StartEditable());
    EXPECT_EQ(second.Start()->name, u"Wellesbourne");
    second.SetEnd(Find(u"Turweston"));
    second.SetPhase(3);
    second.SetStillAir(true);
    EXPECT_EQ(second.Ok(), 1);

    // Insert after the first: the new sector goes second and the old second follows it.
    SectorDialog insert = SectorDialog::ForInsert(g_app.settings, g_app.plan, g_app.nav, 0);
    insert.SetEnd(Find(u"Oxford VOR"));
    EXPECT_EQ(insert.Ok(), 1);
    auto s = Sectors();
    ASSERT_EQ(s.size(), 3u);
    EXPECT_EQ(g_app.plan.PlanSectorCount, 3u);
    std::vector<std::u16string> route{s[0].Text401, s[0].Text402, s[1].Text402, s[2].Text402};
    EXPECT_EQ(route, (std::vector<std::u16string>{u"Oxford Kidlington", u"Wellesbourne",
                                                  u"Oxford VOR", u"Turweston"}));
    EXPECT_EQ(s[2].Text401, u"Oxford VOR");
    EXPECT_EQ(s[2].Text403, u"OX");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(s[i].SectorNumber, i + 1);
    EXPECT_EQ(s[0].Variation, 1.5);
    EXPECT_EQ(s[0].TrueAirspeed, 114);
    EXPECT_EQ(s[2].TrueAirspeed, 107);
    EXPECT_EQ(s[2].WindText, u"000/00");
    EXPECT_GT(s[1].Distance, 0.0);

    // Edit: the third takes the wind again and climbs.
    auto edit = SectorDialog::ForEdit(g_app.settings, g_app.plan, g_app.nav, 2);
    ASSERT_TRUE(edit);
    EXPECT_FALSE(edit->StartEditable());
    EXPECT_TRUE(edit->StillAir());
    edit->SetStillAir(false);
    edit->SetPhase(1);
    EXPECT_EQ(edit->Ok(), 1);
    s = Sectors();
    EXPECT_NE(s[2].WindText, u"000/00");
    EXPECT_EQ(s[2].TrueAirspeed, 76);
    EXPECT_FALSE(SectorDialog::ForEdit(g_app.settings, g_app.plan, g_app.nav, 3));
}

TEST_F(SectorEditingTest, DirectToAndResume) {
    g_app.gps.Fix.latitude = 51 * kDeg + 0.9;
    g_app.gps.Fix.longitude = -1 * kDeg - 1000.7;
    g_app.gps.Fix.positionKnown = true;
    EXPECT_TRUE(DirectTo(g_app.leg, g_app.gps.Fix, Find(u"Turweston")));
    EXPECT_EQ(g_app.leg.DirectToStartLatitude.load(), 51 * kDeg);
    EXPECT_EQ(g_app.leg.DirectToStartLongitude.load(), -1 * kDeg - 1000);
    // 62.3' north and 4' east at 51.5N: atan(4 cos 51.5 / 62.3) = 2.3 degrees, truncated.
    EXPECT_EQ(g_app.leg.DirectToCourse.load(), 2);
    EXPECT_EQ(g_app.leg.LegChange.load(), 1);
    g_app.leg.LegChange = 0;
    ResumePlan(g_app.leg);
    EXPECT_EQ(g_app.leg.DirectToStartLatitude.load(), 0);
    EXPECT_EQ(g_app.leg.LegChange.load(), 1);
}

TEST_F(PlanEditingTest, ChangesTheStoreCannotTakeAreToldOnceAndLeaveThePlanAsItWas) {
    WriteSectors({Leg(1, 50 * kDeg, 0, 51 * kDeg, 0), Leg(2, 51 * kDeg, 0, 52 * kDeg, kDeg),
                  Leg(3, 52 * kDeg, kDeg, 52 * kDeg, 2 * kDeg)});
    RecomputePlanRoute(g_app.settings, g_app.plan, 0);
    auto before = Sectors();
    platform::SqliteDb other;  // another program, writing
    ASSERT_EQ(other.Open(platform_.Store().StoreFile(), false), 0);
    ASSERT_TRUE(other.Exec("BEGIN EXCLUSIVE"));

    std::size_t boxes = platform_.Ui().BoxTexts().size();
    SectorDialog insert = SectorDialog::ForInsert(g_app.settings, g_app.plan, g_app.nav, 0);
    insert.SetEnd({u"Mid", u"", 51 * kDeg, kDeg / 2});
    insert.SetAltitude("3000");
    EXPECT_EQ(insert.Ok(), 0);
    EXPECT_FALSE(ReversePlan(g_app.settings, g_app.plan));
    EXPECT_FALSE(DeletePlanSector(g_app.settings, g_app.plan, 1));
    EXPECT_FALSE(RecomputePlan(g_app.settings, g_app.plan, 1));
    auto texts = platform_.Ui().BoxTexts();
    EXPECT_EQ(
        std::vector<std::string>(texts.begin() + static_cast<std::ptrdiff_t>(boxes), texts.end()),
        std::vector<std::string>{kDataLockedText})
        << "told once, and nothing else";
    EXPECT_EQ(g_app.plan.PlanSectorCount, 3u);

    ASSERT_TRUE(other.Exec("COMMIT"));
    other.Close();
    platform_.Restart();
    g_app.settings.ActivePlanName.assign(u"Trip");
    auto after = Sectors();
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_EQ(after[i].SectorNumber, before[i].SectorNumber);
        EXPECT_EQ(after[i].StartLatitude, before[i].StartLatitude);
        EXPECT_EQ(after[i].EndLongitude, before[i].EndLongitude);
    }
}

TEST_F(PlanEditingTest, FlightLogRowsAndTotals) {
    WriteSectors({Leg(1, 0, 0, 0, kDeg, 2, u"000/00"), Leg(2, 0, kDeg, 0, 2 * kDeg, 2, u"000/00")});
    RecomputePlanRoute(g_app.settings, g_app.plan, 1);
    g_app.settings.GpsSource = kSourceSimulated;
    g_app.leg.ActiveSectorIndex = 1;
    FlightLog log = BuildFlightLog(g_app.settings, g_app.plan, g_app.leg);
    ASSERT_EQ(log.rows.size(), 2u);
    EXPECT_FALSE(log.rows[0].active);
    EXPECT_TRUE(log.rows[1].active);
    EXPECT_TRUE(log.rows[0].highlighted);
    const FlightLogRow& r = log.rows[0];
    EXPECT_EQ(r.From(), "A1");
    EXPECT_EQ(r.To(), "B1");
    EXPECT_EQ(r.Wind(), "000°T/00kt");
    EXPECT_EQ(r.Wind(LogStyle::kConsole), "000T/00");
    EXPECT_EQ(r.TrueCourse(), "090°T");
    EXPECT_EQ(r.MagHeading(LogStyle::kConsole), "090M");
    EXPECT_EQ(r.Distance(), "60.0");
    EXPECT_EQ(r.GroundSpeed(), "114");
    EXPECT_EQ(r.Time(), "0:32");
    EXPECT_EQ(r.Fuel(), "4.5");
    EXPECT_NEAR(log.totalDistance, 120.0, 1e-6);
    EXPECT_EQ(FormatLogTime(log.totalTime), "1:03");
    EXPECT_NEAR(log.totalFuel, 2 * 60.0 / 114.0 * 8.5, 1e-9);
    EXPECT_EQ(FormatLogTime(1.0 / 0.0), "--:--");
    EXPECT_NE(FlightLogTable(log).find("> 2"), std::string::npos);
}

}  // namespace
}  // namespace aerix::testing
