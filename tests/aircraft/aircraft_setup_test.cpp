// "Setup A/c": adding, editing, renaming and deleting aircraft with their stations and envelope,
// the checks on what the pilot types, and making an aircraft the active one.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "aircraft/aircraft.hpp"
#include "aircraft/aircraft_setup_dialog.hpp"
#include "aircraft/weight_balance_dialogs.hpp"
#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "platform/sqlite.hpp"
#include "store/record_store.hpp"
#include "test_platform.hpp"

namespace aerix::testing {
namespace {

using E = AircraftEditDialog;

class AircraftSetup : public ::testing::Test {
  protected:
    void SetUp() override {
        g_app.settings.AircraftReg.assign(u"G-CESS");
        CreateDefaultData();
        LoadCurrentAircraft(g_app.settings, g_app.aircraft);
        // A one-sector plan flown at the current aircraft's cruise speed.
        g_app.settings.CurrentPlanId = CreatePlanDatabase(u"Trip");
        g_app.settings.ActivePlanName.assign(u"Trip");
        DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
        SectorRecord s;
        s.SectorNumber = 1;
        s.Phase = 2;
        s.Distance = 100;
        s.TrueCourse = 90;
        s.WindText = u"000/00";
        s.AltitudeText = u"2000";
        WriteSector(h, s);
    }
    std::int16_t SectorTas() {
        DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
        SectorRecord s;
        ReadSector(h, kFromCurrent, 0, s);
        return s.TrueAirspeed;
    }
    int IndexOf(AircraftSetupDialog& d, std::u16string_view reg) {
        for (std::size_t i = 0; i < d.Registrations().size(); ++i)
            if (d.Registrations()[i] == reg)
                return static_cast<int>(i);
        return -1;
    }
    // A metric aircraft: kg, litres, metres; three-corner envelope.
    static E Metric(std::string_view reg) {
        E e = E::ForAdd();
        e.SetText(E::kRegistration, reg);
        e.SetText(E::kType, "DV20");
        e.SetWeightUnits(kWeightKilograms);
        e.SetFuelUnits(kFuelLitres);
        e.SetArmUnits(kArmMetres);
        for (auto [f, v] : {std::pair{E::kClimbRate, "700"},
                            {E::kClimbTas, "70"},
                            {E::kClimbFuelFlow, "25"},
                            {E::kCruiseTas, "105"},
                            {E::kCruiseFuelFlow, "20"},
                            {E::kDescentRate, "500"},
                            {E::kDescentTas, "100"},
                            {E::kDescentFuelFlow, "15"},
                            {E::kTaxiFuel, "2"},
                            {E::kEmptyWeight, "530"},
                            {E::kEmptyArm, "1.9"},
                            {E::kMaxTakeoffWeight, "800"},
                            {E::kMaxRampWeight, "802"},
                            {E::kMaxLandingWeight, "800"},
                            {E::kGraphArmMin, "1.8"},
                            {E::kGraphArmMax, "2.1"},
                            {E::kGraphWeightMin, "500"},
                            {E::kGraphWeightMax, "850"}})
            e.SetText(f, v);
        e.SetStationArm(1, "2.1");
        e.AddStation();
        e.SetStationName(2, "Seats");
        e.SetStationArm(2, "1.85");
        for (auto [arm, w] : {std::pair{"1.82", "500"}, {"1.82", "800"}, {"2.0", "800"}}) {
            e.InsertPoint(99);
            e.SetPointArm(e.Points().size() - 1, arm);
            e.SetPointWeight(e.Points().size() - 1, w);
        }
        return e;
    }
    TestPlatform platform_;
};

TEST_F(AircraftSetup, AddMetricAircraftMakeItActiveAndWorkItsBalance) {
    // A station left behind under the same name by an aircraft removed elsewhere is not taken on.
    {
        DbHandle h = OpenDatabase(u"Stations", schema::kStKind);
        WriteStation(h, StationRecord{u"OE-KDV", u"OLD", 3, 9.0, 0});
    }
    AircraftSetupDialog d{g_app.settings, g_app.aircraft, g_app.plan};
    d.Open();
    std::size_t before = d.Lines().size();
    E e = Metric("OE-KDV");
    EXPECT_EQ(e.Label(E::kTaxiFuel), "Taxi fuel (ltr)");
    EXPECT_EQ(e.Label(E::kEmptyArm), "Empty weight arm (m)");
    EXPECT_EQ(e.StationArmText(0), "1.9");        // the basic row follows the empty-weight arm
    platform_.Ui().AnswerNext(platform::kIdYes);  // "make active a/c?"
    ASSERT_TRUE(d.Finish(e, platform::kIdOk));
    EXPECT_EQ(d.Lines().size(), before + 1);
    EXPECT_EQ(platform_.Ui().Boxes().back().text, "make active a/c?");
    EXPECT_EQ(platform_.Ui().Boxes().back().caption, "Warning");
    EXPECT_EQ(g_app.settings.AircraftReg.view(), u"OE-KDV");
    EXPECT_EQ(g_app.aircraft.FuelUnits, static_cast<std::uint32_t>(kFuelLitres));
    EXPECT_EQ(SectorTas(), 105);  // the plan was recomputed with its airspeeds

    auto stations = ReadStations(u"OE-KDV");
    ASSERT_EQ(stations.size(), 3u);
    EXPECT_EQ(stations[0].Record.Weight, 530);
    EXPECT_EQ(stations[0].Record.Arm, 1.9);
    auto points = ReadEnvelopePoints(u"OE-KDV");
    ASSERT_EQ(points.size(), 4u);  // closed: the first repeated
    EXPECT_EQ(points[3].Record.Arm, 1.82);
    EXPECT_EQ(points[3].Record.Weight, 500);

    // 100 litres at 0.72 = 72 kg @ 2.1; 80 kg of seats @ 1.85; 530 @ 1.9: 682 kg, 1306.2 kg.m.
    WeightBalanceLoadingDialog load{g_app.settings, g_app.aircraft};
    ASSERT_TRUE(load.Open());
    EXPECT_EQ(load.Label(1), "FUEL (ltr)");
    load.SetText(1, "100");
    load.SetText(2, "80");
    EXPECT_EQ(load.Note(1), "= 72.0 kg");
    ASSERT_TRUE(load.Ok());
    WeightBalanceResultDialog result{g_app.aircraft};
    ASSERT_TRUE(result.Open());
    EXPECT_NEAR(result.Result().Weight, 682.0, 1e-9);
    EXPECT_NEAR(result.Result().Moment, 530 * 1.9 + 72 * 2.1 + 80 * 1.85, 1e-9);
    EXPECT_EQ(result.Figures()[1].second, "1306 kg.m");
}

TEST_F(AircraftSetup, EditRenamesStationsPointsAndTheCurrentSetting) {
    AircraftSetupDialog d{g_app.settings, g_app.aircraft, g_app.plan};
    d.Open();
    d.Select(IndexOf(d, u"G-CESS"));
    auto e = d.BeginEdit();
    ASSERT_TRUE(e);
    EXPECT_EQ(e->Text(E::kEmptyArm), "39");
    EXPECT_EQ(e->Points().size(), 5u);  // the closing repeat is not shown
    EXPECT_EQ(e->Stations().size(), 6u);
    e->SetText(E::kRegistration, "G-CESX");
    e->SetText(E::kCruiseTas, "120");
    e->SetText(E::kEmptyWeight, "1500");
    ASSERT_TRUE(d.Finish(*e, platform::kIdOk));
    // Already active: no question, the new figures apply and the plan follows.
    EXPECT_TRUE(platform_.Ui().Boxes().empty());
    EXPECT_EQ(g_app.settings.AircraftReg.view(), u"G-CESX");
    EXPECT_EQ(g_app.aircraft.CurrentAircraft.CruiseTas, 120);
    EXPECT_EQ(SectorTas(), 120);
    EXPECT_TRUE(ReadStations(u"G-CESS").empty());
    EXPECT_TRUE(ReadEnvelopePoints(u"G-CESS").empty());
    auto stations = ReadStations(u"G-CESX");
    ASSERT_EQ(stations.size(), 6u);
    EXPECT_EQ(stations[0].Record.Weight, 1500);
    EXPECT_EQ(ReadEnvelopePoints(u"G-CESX").size(), 6u);
    // Reserved properties travel unchanged.
    AircraftRecord r;
    ASSERT_TRUE(FindAircraft(u"G-CESX", r));
    EXPECT_EQ(r.MaxRampWeight, 2407);
    EXPECT_FALSE(FindAircraft(u"G-CESS", r));
}

TEST_F(AircraftSetup, AnAircraftWriteRefusedAfterItsStationsKeepsTheAircraftAsItWas) {
    // Another connection makes the store refuse the aircraft row, which is written last.
    platform::SqliteDb other;
    ASSERT_EQ(other.Open(platform_.Store().StoreFile(), false), 0);
    auto q = other.Prepare("SELECT oid FROM databases WHERE name='Aircraft'");
    ASSERT_EQ(q.Step(), SQLITE_ROW);
    std::string table = "r" + std::to_string(q.ColumnInt(0));
    q = {};
    for (const char* when : {"INSERT", "UPDATE"})
        ASSERT_TRUE(other.Exec(std::string("CREATE TRIGGER refuse_") + when + " BEFORE " + when +
                               " ON " + table + " BEGIN SELECT RAISE(ABORT, 'refused'); END"));
    other.Close();

    AircraftSetupDialog d{g_app.settings, g_app.aircraft, g_app.plan};
    d.Open();
    d.Select(IndexOf(d, u"G-CESS"));
    auto e = d.BeginEdit();
    ASSERT_TRUE(e);
    e->SetText(E::kRegistration, "G-CESX");
    e->RemoveStation(5);
    EXPECT_FALSE(d.Finish(*e, platform::kIdOk));
    EXPECT_EQ(platform_.Ui().Boxes().size(), 1u);
    EXPECT_EQ(g_app.settings.AircraftReg.view(), u"G-CESS");
    EXPECT_EQ(ReadStations(u"G-CESS").size(), 6u);
    EXPECT_EQ(ReadEnvelopePoints(u"G-CESS").size(), 6u);
    EXPECT_TRUE(ReadStations(u"G-CESX").empty());
    EXPECT_TRUE(ReadEnvelopePoints(u"G-CESX").empty());

    // A new aircraft refused the same way leaves no stations behind under its name.
    E added = Metric("OE-DVA");
    EXPECT_FALSE(added.Ok(g_app.settings));
    EXPECT_TRUE(ReadStations(u"OE-DVA").empty());
    EXPECT_TRUE(ReadEnvelopePoints(u"OE-DVA").empty());
}

TEST_F(AircraftSetup, BadFiguresAreRefusedWithTheirFieldAndNothingIsWritten) {
    struct Case {
        E::Field field;
        const char* text;
        const char* message;
    } cases[] = {
        {E::kRegistration, "  ", "Registration: enter the aircraft's registration"},
        {E::kRegistration, "G-ABCDEFGHIJKLMNOPQRSTUVW", "Registration: at most 23 characters"},
        {E::kRegistration, "g-tigr", "There is already an aircraft G-TIGR"},
        {E::kCruiseTas, "fast", "Cruise TAS (kt): enter a whole number from 1 to 999"},
        {E::kCruiseTas, "0", "Cruise TAS (kt): enter a whole number from 1 to 999"},
        {E::kClimbFuelFlow, "nan", "Climb fuel flow (US gal/h): enter a number from 0 to 10000"},
        {E::kEmptyWeight, "99999", "The empty weight is above the max take-off weight"},
        {E::kMaxRampWeight, "2300", "The max ramp weight is below the max take-off weight"},
        {E::kGraphArmMin, "60",
         "Graph ranges: the first figure must be below the second (both 0: fit the envelope)"},
    };
    for (const Case& c : cases) {
        AircraftSetupDialog d{g_app.settings, g_app.aircraft, g_app.plan};
        d.Open();
        d.Select(IndexOf(d, u"G-CESS"));
        auto e = d.BeginEdit();
        ASSERT_TRUE(e);
        e->SetText(c.field, c.text);
        EXPECT_FALSE(d.Finish(*e, platform::kIdOk)) << c.text;
        EXPECT_EQ(platform_.Ui().BoxTexts().back(), c.message);
    }
    AircraftSetupDialog d{g_app.settings, g_app.aircraft, g_app.plan};
    d.Open();
    d.Select(IndexOf(d, u"G-CESS"));
    auto e = d.BeginEdit();
    e->SetStationName(3, "row1");
    EXPECT_FALSE(e->Ok(g_app.settings));
    EXPECT_EQ(platform_.Ui().BoxTexts().back(), "Station 4: there is already a station row1");
    e->SetStationName(3, "ROW2");
    e->RemovePoint(0);
    e->RemovePoint(0);
    e->RemovePoint(0);
    EXPECT_FALSE(e->Ok(g_app.settings));
    EXPECT_EQ(platform_.Ui().BoxTexts().back(),
              "The envelope needs at least 3 different points (or none)");
    EXPECT_FALSE(e->RemoveStation(0));
    EXPECT_EQ(platform_.Ui().BoxTexts().back(), "The basic aircraft row cannot be removed");
    // The store is as it was.
    EXPECT_EQ(ReadStations(u"G-CESS").size(), 6u);
    EXPECT_EQ(ReadEnvelopePoints(u"G-CESS").size(), 6u);
    AircraftRecord r;
    ASSERT_TRUE(FindAircraft(u"G-CESS", r));
    EXPECT_EQ(r.CruiseTas, 114);
}

TEST_F(AircraftSetup, DeleteAsksAndTakesStationsAndPointsButNotTheCurrentAircraft) {
    AircraftSetupDialog d{g_app.settings, g_app.aircraft, g_app.plan};
    d.Open();
    d.Select(IndexOf(d, u"G-CESS"));
    EXPECT_FALSE(d.Delete());
    EXPECT_EQ(platform_.Ui().BoxTexts().back(),
              "The current aircraft cannot be deleted - make another one active first");

    d.Select(IndexOf(d, u"G-TIGR"));
    EXPECT_FALSE(d.Delete());  // answered No
    EXPECT_EQ(platform_.Ui().Boxes().back().caption, "Warning");
    EXPECT_EQ(ReadStations(u"G-TIGR").size(), 5u);

    platform_.Ui().AnswerNext(platform::kIdYes);
    EXPECT_TRUE(d.Delete());
    EXPECT_EQ(IndexOf(d, u"G-TIGR"), -1);
    EXPECT_EQ(d.Lines().size(), 5u);
    EXPECT_TRUE(ReadStations(u"G-TIGR").empty());
    EXPECT_TRUE(ReadEnvelopePoints(u"G-TIGR").empty());
    EXPECT_EQ(ReadStations(u"G-ARCH").size(), 5u);
}

TEST_F(AircraftSetup, ChoosingAnAircraftAsksThenMakesItActive) {
    AircraftSetupDialog d{g_app.settings, g_app.aircraft, g_app.plan};
    d.Open();
    d.Select(IndexOf(d, u"G-MALI"));
    EXPECT_FALSE(d.Choose());  // No
    EXPECT_EQ(g_app.settings.AircraftReg.view(), u"G-CESS");
    EXPECT_EQ(SectorTas(), 0);
    platform_.Ui().AnswerNext(platform::kIdYes);
    EXPECT_TRUE(d.Choose());
    EXPECT_EQ(g_app.settings.AircraftReg.view(), u"G-MALI");
    EXPECT_EQ(SectorTas(), 170);
    EXPECT_NE(d.Lines()[static_cast<std::size_t>(IndexOf(d, u"G-MALI"))].find('*'),
              std::string::npos);
}

}  // namespace
}  // namespace aerix::testing
