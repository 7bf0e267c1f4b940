// The current aircraft in g_app and the fuel plan's two modes.
#include <gtest/gtest.h>

#include "aircraft/aircraft.hpp"
#include "aircraft/fuel_plan_dialog.hpp"
#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "store/record_store.hpp"
#include "test_platform.hpp"

namespace aerix::testing {
namespace {

class FuelPlanTest : public ::testing::Test {
  protected:
    void SetUp() override {
        CreateDefaultData();
        CreatePlanDatabase(u"Trip");
        g_app.settings.ActivePlanName.assign(u"Trip");
    }
    // Sectors with only phase, fuel and ground speed: what the fuel plan reads.
    void Sectors(std::initializer_list<std::pair<std::int16_t, double>> phaseFuel,
                 std::int16_t groundSpeed = 100) {
        DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
        for (auto [phase, fuel] : phaseFuel) {
            SectorRecord s;
            s.SectorNumber = next_++;
            s.Phase = phase;
            s.Fuel = fuel;
            s.GroundSpeed = groundSpeed;
            WriteSector(h, s, 0);
        }
    }
    TestPlatform platform_;
    std::int16_t next_ = 1;
};

TEST_F(FuelPlanTest, TheCurrentAircraftIsLoadedAtStartAndWhenChosen) {
    EXPECT_EQ(g_app.aircraft.FuelUnits, 0u);  // first start: the aircraft were only written
    platform_.Restart();
    g_app.settings.AircraftReg.assign(u"G-MALI");
    CreateDefaultData();
    EXPECT_EQ(g_app.aircraft.TaxiFuel, 1.5);
    EXPECT_EQ(g_app.aircraft.FuelUnits, kFuelUsGallons);
    EXPECT_TRUE(MakeAircraftCurrent(g_app.settings, g_app.aircraft, u"G-TIGR"));
    EXPECT_EQ(g_app.settings.AircraftReg.view(), u"G-TIGR");
    EXPECT_EQ(g_app.aircraft.TaxiFuel, 0.5);
    EXPECT_FALSE(MakeAircraftCurrent(g_app.settings, g_app.aircraft, u"G-NONE"));
    EXPECT_EQ(g_app.settings.AircraftReg.view(), u"G-TIGR");
    EXPECT_EQ(ListAircraft().size(), 6u);
    // The readings of the record agree with the default aircraft.
    for (const AircraftRecord& a : DefaultAircraft()) {
        EXPECT_GT(a.MaxRampWeight, a.MaxTakeoffWeight);
        EXPECT_GE(a.MaxTakeoffWeight, a.MaxLandingWeight);
        EXPECT_LT(a.ClimbTas, a.CruiseTas);
        EXPECT_GT(a.GraphWeightMax, a.MaxTakeoffWeight);
        EXPECT_EQ(a.FuelUnits, kFuelUsGallons);
        // The graph's ranges frame the envelope.
        for (const EnvelopePointRecord& p : DefaultEnvelopePoints()) {
            if (p.AircraftName != a.Name)
                continue;
            EXPECT_LE(a.GraphArmMin, p.Arm);
            EXPECT_GE(a.GraphArmMax, p.Arm);
            EXPECT_LE(a.GraphWeightMin, p.Weight);
            EXPECT_GE(a.GraphWeightMax, p.Weight);
            EXPECT_LE(p.Weight, a.MaxTakeoffWeight);
        }
    }
}

TEST_F(FuelPlanTest, CalculateModeSumsPhasesAndAddsContingencyAndHolding) {
    g_app.aircraft.TaxiFuel = 2.0;
    g_app.aircraft.FuelUnits = kFuelUsGallons;
    Sectors({{1, 10.0}, {2, 22.5}, {3, 7.5}, {4, 100.0}});  // phase 4 adds nothing
    FuelPlanDialog d{g_app.settings, g_app.aircraft};
    d.Open();
    EXPECT_EQ(platform_.Ui().Titles().back(), "Fuel plan");
    EXPECT_EQ(d.UnitsLabel(), "Fuel units: Usgal");
    EXPECT_EQ(d.Climb(), "10.0");
    EXPECT_EQ(d.Cruise(), "22.5");
    EXPECT_EQ(d.Descent(), "7.5");
    EXPECT_EQ(d.Taxi(), "2.0");
    EXPECT_EQ(d.Total(), "42");  // 40 + 2 + 0.5, truncated
    EXPECT_EQ(g_app.aircraft.PlanTripFuel, 40.0);
    d.SetContingency("10");
    d.SetHolding("5");
    EXPECT_EQ(d.Total(), "51");
    EXPECT_EQ(g_app.aircraft.PlanTotalFuel, 51u);
    d.SetHolding("five");  // reads as 0
    EXPECT_EQ(d.Total(), "46");
    EXPECT_EQ(d.Close(1), 1);
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");
}

TEST_F(FuelPlanTest, LoadedModeShowsTheReserve) {
    g_app.aircraft.TaxiFuel = 1.0;
    Sectors({{2, 20.0}});
    g_app.settings.FuelCalc = 0;
    FuelPlanDialog d{g_app.settings, g_app.aircraft};
    d.Open();
    EXPECT_FALSE(d.CalculateChecked());
    EXPECT_TRUE(d.LoadedFieldsShown());
    EXPECT_EQ(d.Reserve(), "-21");
    EXPECT_EQ(d.Total(), "0");
    d.SetInTanks("40");
    EXPECT_EQ(d.Reserve(), "19");
    EXPECT_EQ(g_app.aircraft.PlanTotalFuel, 40u);
    d.ChooseCalculate();
    EXPECT_EQ(g_app.settings.FuelCalc, 1);
    EXPECT_TRUE(d.CalculateFieldsShown());
    EXPECT_EQ(d.Total(), "21");
    d.ChooseLoaded();
    EXPECT_EQ(g_app.settings.FuelCalc, 0);
    EXPECT_EQ(d.Total(), "40");
}

// A headwind faster than the aircraft leaves a negative ground speed, time and fuel: the phase
// and every figure built on it show dashes, never a negative or wrapped number.
TEST_F(FuelPlanTest, ASectorThatCannotBeFlownLeavesNoFigures) {
    g_app.aircraft.TaxiFuel = 1.0;
    Sectors({{1, 3.0}});
    Sectors({{2, -9.2}}, -35);
    FuelPlanDialog d{g_app.settings, g_app.aircraft};
    d.Open();
    EXPECT_EQ(d.Climb(), "3.0");
    EXPECT_EQ(d.Cruise(), "---");
    EXPECT_EQ(d.Total(), "---");
    EXPECT_EQ(g_app.aircraft.PlanTotalFuel, 0u);
    d.SetContingency("10");
    d.SetHolding("5");
    EXPECT_EQ(d.Total(), "---");
    d.ChooseLoaded();
    d.SetInTanks("40");
    EXPECT_EQ(d.Reserve(), "---");
    EXPECT_EQ(d.Total(), "40");  // what is in the tanks stays a figure
    EXPECT_EQ(g_app.aircraft.PlanTotalFuel, 40u);
}

TEST_F(FuelPlanTest, AnEmptyPlanLeavesThePhaseFieldsAndTotalsTheTaxiFuel) {
    g_app.aircraft.TaxiFuel = 1.5;
    FuelPlanDialog d{g_app.settings, g_app.aircraft};
    d.Open();
    EXPECT_EQ(d.Climb(), "");
    EXPECT_EQ(d.UnitsLabel(), "");  // no fuel units known
    EXPECT_EQ(d.Total(), "2");      // 1.5 rounded half up
    EXPECT_EQ(g_app.aircraft.PlanTripFuel, 0.0);
}

}  // namespace
}  // namespace aerix::testing
