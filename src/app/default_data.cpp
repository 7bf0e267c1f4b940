#include "app/default_data.hpp"

#include <vector>

#include "aircraft/aircraft.hpp"
#include "app/app_state.hpp"
#include "app/default_nav_database.hpp"
#include "platform/message_box.hpp"
#include "store/record_store.hpp"

namespace aerix {

using platform::PropVal;

namespace {

AircraftRecord Aircraft(std::u16string name, std::u16string type, double climbRate,
                        double climbFlow, std::int16_t climbTas, double cruiseFlow,
                        std::int16_t cruiseTas, double descentRate, double descentFlow,
                        std::int16_t descentTas, std::int32_t mtow, std::int32_t emptyWeight,
                        double emptyArm, std::int32_t mzfw, std::int32_t mlw,
                        std::int32_t rampWeight, double taxiFuel, double armMax, double armMin,
                        double weightMax, double weightMin) {
    AircraftRecord a;
    a.Name = std::move(name);
    a.TypeDesignator = std::move(type);
    a.ClimbRate = climbRate;
    a.ClimbFuelFlow = climbFlow;
    a.ClimbTas = climbTas;
    a.CruiseFuelFlow = cruiseFlow;
    a.CruiseTas = cruiseTas;
    a.DescentRate = descentRate;
    a.DescentFuelFlow = descentFlow;
    a.DescentTas = descentTas;
    a.MaxTakeoffWeight = mtow;
    a.EmptyWeight = emptyWeight;
    a.EmptyArm = emptyArm;
    a.MaxZeroFuelWeight = mzfw;
    a.MaxLandingWeight = mlw;
    a.Spare614 = 0.0;
    a.Spare615 = 0.0;
    a.ArmUnits = 1;
    a.MaxRampWeight = rampWeight;
    a.Spare619 = 0.0;
    a.Spare620 = 0.0;
    a.TaxiFuel = taxiFuel;
    a.WeightUnits = 1;
    a.FuelUnits = 5;
    a.GraphArmMax = armMax;
    a.GraphArmMin = armMin;
    a.GraphWeightMax = weightMax;
    a.GraphWeightMin = weightMin;
    a.Flag628 = false;
    return a;
}

const std::vector<AircraftRecord>& AircraftTable() {
    static const std::vector<AircraftRecord> table{
        Aircraft(u"G-CESS", u"C172", 700.0, 15.0, 76, 8.5, 114, 500.0, 7.5, 107, 2400, 1467, 39.0,
                 2387, 2400, 2407, 1.0, 48.0, 34.0, 2500.0, 1500.0),
        Aircraft(u"G-TIGR", u"AA5B", 900.0, 12.0, 90, 9.1, 118, 500.0, 8.0, 120, 2400, 1373, 82.1,
                 0, 2400, 2408, 0.5, 93.5, 80.0, 2480.0, 1500.0),
        Aircraft(u"G-ARCH", u"PA28", 731.0, 12.0, 76, 10.5, 122, 500.0, 8.0, 115, 2550, 1618, 87.6,
                 0, 2550, 2556, 1.0, 94.0, 81.0, 2700.0, 1200.0),
        Aircraft(u"G-MALI", u"PA46", 1000.0, 18.0, 110, 16.0, 170, 750.0, 10.0, 170, 4100, 2812,
                 135.1, 0, 4100, 4118, 1.5, 148.5, 129.0, 4325.0, 2200.0),
        Aircraft(u"G-C152", u"C152", 900.0, 12.0, 76, 9.1, 102, 500.0, 8.0, 100, 1670, 1136, 29.93,
                 0, 1670, 1675, 0.5, 37.0, 30.0, 1800.0, 1000.0),
        Aircraft(u"G-SNCA", u"PA34", 900.0, 27.0, 91, 25.0, 149, 500.0, 20.0, 100, 4750, 3212, 88.5,
                 4470, 4513, 4773, 1.5, 96.0, 81.0, 4900.0, 2200.0),
    };
    return table;
}

const std::vector<StationRecord>& StationTable() {
    static const std::vector<StationRecord> table{
        {u"G-CESS", u"APS", 1, 39.0, 1467},    {u"G-CESS", u"FUEL", 2, 46.0, 0},
        {u"G-CESS", u"ROW1", 3, 37.0, 0},      {u"G-CESS", u"ROW2", 3, 73.0, 0},
        {u"G-CESS", u"BAG1", 4, 95.0, 0},      {u"G-CESS", u"BAG2", 4, 123.0, 0},
        {u"G-TIGR", u"APS", 1, 82.1, 1373},    {u"G-TIGR", u"FUEL", 2, 94.8, 0},
        {u"G-TIGR", u"ROW1", 3, 90.6, 0},      {u"G-TIGR", u"ROW2", 3, 126.0, 0},
        {u"G-TIGR", u"BAG1", 4, 151.0, 0},     {u"G-ARCH", u"APS", 1, 87.6, 1618},
        {u"G-ARCH", u"FUEL", 2, 95.0, 0},      {u"G-ARCH", u"ROW1", 3, 80.5, 0},
        {u"G-ARCH", u"ROW2", 3, 118.1, 0},     {u"G-ARCH", u"BAGS", 4, 142.8, 0},
        {u"G-MALI", u"APS", 1, 135.1, 2812},   {u"G-MALI", u"FUEL", 2, 150.3, 0},
        {u"G-MALI", u"ROW1", 3, 135.5, 0},     {u"G-MALI", u"ROW2", 3, 177.0, 0},
        {u"G-MALI", u"ROW3", 3, 218.7, 0},     {u"G-MALI", u"NOSE BAGS", 4, 88.6, 0},
        {u"G-MALI", u"AFT BAGS", 4, 248.2, 0}, {u"G-C152", u"APS", 1, 29.93, 1136},
        {u"G-C152", u"FUEL", 2, 42.0, 0},      {u"G-C152", u"ROW1", 3, 39.0, 0},
        {u"G-C152", u"BAGS1", 4, 64.0, 0},     {u"G-C152", u"BAGS2", 4, 84.0, 0},
        {u"G-SNCA", u"APS", 1, 88.5, 3212},    {u"G-SNCA", u"FUEL", 2, 93.6, 0},
        {u"G-SNCA", u"ROW1", 3, 85.5, 0},      {u"G-SNCA", u"ROW2", 3, 118.1, 0},
        {u"G-SNCA", u"ROW3", 3, 157.6, 0},     {u"G-SNCA", u"FWD BAGS", 4, 22.5, 0},
        {u"G-SNCA", u"AFT BAGS", 4, 178.7, 0},
    };
    return table;
}

struct EnvelopeCorner {
    double arm;
    std::int32_t weight;
};

void AddEnvelope(std::vector<EnvelopePointRecord>& out, const std::u16string& aircraft,
                 std::initializer_list<EnvelopeCorner> corners) {
    std::int16_t number = 1;
    for (const EnvelopeCorner& c : corners)
        out.push_back({number++, aircraft, c.arm, c.weight});
}

const std::vector<EnvelopePointRecord>& EnvelopeTable() {
    static const std::vector<EnvelopePointRecord> table = [] {
        std::vector<EnvelopePointRecord> t;
        AddEnvelope(
            t, u"G-CESS",
            {{35.0, 1500}, {35.0, 1950}, {39.5, 2400}, {47.3, 2400}, {47.3, 1500}, {35.0, 1500}});
        AddEnvelope(
            t, u"G-TIGR",
            {{80.9, 1520}, {81.3, 1920}, {89.2, 2400}, {92.5, 2400}, {92.1, 1520}, {80.9, 1520}});
        AddEnvelope(
            t, u"G-ARCH",
            {{82.0, 1200}, {82.0, 2050}, {88.5, 2550}, {93.0, 2550}, {93.0, 1200}, {82.0, 1200}});
        AddEnvelope(t, u"G-MALI",
                    {{130.7, 2200},
                     {130.7, 2450},
                     {136.1, 3680},
                     {143.3, 4100},
                     {147.1, 4100},
                     {147.1, 2200},
                     {130.7, 2200}});
        AddEnvelope(
            t, u"G-C152",
            {{31.0, 1000}, {31.0, 1350}, {32.6, 1670}, {36.5, 1670}, {36.5, 1000}, {31.0, 1000}});
        AddEnvelope(t, u"G-SNCA",
                    {{82.0, 2200},
                     {82.0, 3400},
                     {83.1, 3600},
                     {84.2, 3800},
                     {85.3, 4000},
                     {86.5, 4200},
                     {87.9, 4400},
                     {89.5, 4600},
                     {90.6, 4750},
                     {94.6, 4750},
                     {94.6, 2200},
                     {82.0, 2200}});
        return t;
    }();
    return table;
}

const std::vector<MapRecord>& MapTable() {
    static const std::vector<MapRecord> table{
        {u"\\My Documents\\Aerix\\World1.bmp",
         {2.3958333, 719.0, 144.0, 72.0, 360.0, 120.0, -120.0, 60.0, -60.0, -75.416, 75.416,
          -165.495, 165.078}},
        {u"\\My Documents\\Aerix\\Europe.bmp",
         {16.966, 695.0, 186.0, 170.0, 508.0, 30.0, 0.0, 60.0, 40.0, 31.89, 67.98, -8.89, 30.015}},
        {u"\\My Documents\\Aerix\\Usa.bmp",
         {14.4, 719.0, 71.0, 72.0, 288.0, -75.0, -120.0, 45.0, 30.0, 25.0, 47.57, -122.5, -67.638}},
        {u"\\My Documents\\Aerix\\Miami.bmp",
         {1264.4, 929.0, 43.0, 63.0, 388.0, -80.239066666667, -80.939766666667, 26.0, 25.764,
          25.513476923077, 26.020332307692, -80.946093528969, -80.191615199398}},
    };
    return table;
}

const std::vector<WindRecord>& WindTable() {
    static const std::vector<WindRecord> table{
        {0, 100, 10, 15},
        {2000, 110, 15, 11},
        {6000, 120, 20, 3},
        {10000, 130, 25, -5},
    };
    return table;
}

// Writes each row; a failed write has said "Record write failed" and the next row goes on. False
// when any row is missing.
template <typename Record, typename Writer>
bool WriteAll(DbHandle& h, std::span<const Record> rows, Writer write) {
    bool whole = true;
    for (const Record& r : rows)
        whole = write(h, r, 0) != 0 && whole;
    return whole;
}

// A default database is created with all its rows in one transaction: a kill or a full disk
// leaves it missing, to be made whole at the next start, never short of rows and taken for done.
// fill is given whether the database was created just now and returns whether it is whole. A
// store that cannot be written is told by the steps inside (the open's "Could not open
// database"), not by the transaction.
template <typename Create, typename Fill>
void CreateWhole(Create create, Fill fill) {
    RecordTransaction tx(false);
    bool whole = fill(create() != 0);
    if (whole && tx.Open())
        tx.Commit();
}

}  // namespace

std::span<const AircraftRecord> DefaultAircraft() {
    return AircraftTable();
}
std::span<const StationRecord> DefaultStations() {
    return StationTable();
}
std::span<const EnvelopePointRecord> DefaultEnvelopePoints() {
    return EnvelopeTable();
}
std::span<const MapRecord> DefaultMaps() {
    return MapTable();
}
std::span<const WindRecord> DefaultWinds() {
    return WindTable();
}

DefaultNavBuild CreateDefaultData() {
    // A fresh install offers a real navigation database to choose at start-up.
    DefaultNavBuild world = CreateDefaultNavDatabase();
    if (!world.problem.empty())
        platform::ShowError(world.problem);
    // A database that cannot be created is taken to exist already and is left as it is.
    CreateWhole(CreateAircraftDatabase, [](bool created) {
        DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
        if (h && created)
            return WriteAll(h, DefaultAircraft(), WriteAircraft);
        PropVal key = PropVal::Text(600, std::u16string(g_app.settings.AircraftReg.view()));
        if (h && h.SeekValue(key) != 0 &&
            ReadAircraft(h, kFromCurrent, 0, g_app.aircraft.CurrentAircraft))
            ApplyAircraftToState(g_app.aircraft, g_app.aircraft.CurrentAircraft);
        return !created;
    });
    CreateWhole(CreateStationsDatabase, [](bool created) {
        if (!created)
            return true;
        DbHandle h = OpenDatabase(schema::kStationsName, schema::kStKind);
        return h && WriteAll(h, DefaultStations(), WriteStation);
    });
    CreateWhole(CreateEnvelopesDatabase, [](bool created) {
        if (!created)
            return true;
        DbHandle h = OpenEnvelopes();
        return h && WriteAll(h, DefaultEnvelopePoints(), WriteEnvelopePoint);
    });
    CreateWhole(CreateMapsDatabase, [](bool created) {
        if (!created)
            return true;
        DbHandle h = OpenDatabase(schema::kMapsName, schema::kMapPath);
        if (!h)
            platform::ShowError("invalid handle");
        return h && WriteAll(h, DefaultMaps(), WriteMap);
    });
    CreateWhole([] { return CreateWindDatabase(schema::kWindName); },
                [](bool created) {
                    if (!created)
                        return true;
                    DbHandle h = OpenDatabase(schema::kWindName, schema::kWindAltitude);
                    return h && WriteAll(h, DefaultWinds(), WriteWind);
                });
    return world;
}

}  // namespace aerix
