// A fresh data root with the default data, a plan "Trip" and helpers to lay out wind tables and
// sectors.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "planning/sector_computation.hpp"
#include "store/record_store.hpp"
#include "test_platform.hpp"

namespace aerix::testing {

class PlanningTest : public ::testing::Test {
  protected:
    void SetUp() override {
        g_app.settings.AircraftReg.assign(u"G-CESS");
        CreateDefaultData();
        g_app.settings.CurrentPlanId = CreatePlanDatabase(u"Trip");
        g_app.settings.ActivePlanName.assign(u"Trip");
    }

    void SetWinds(const std::vector<WindRecord>& rows, std::u16string_view table = u"WindTable") {
        DbHandle h = OpenDatabase(table, schema::kWindAltitude);
        if (!h) {
            CreateWindDatabase(table);
            h = OpenDatabase(table, schema::kWindAltitude);
        }
        while (h.RecordCount() != 0)
            h.DeleteRecord(h.Seek(kByIndex, 0));
        for (const WindRecord& r : rows)
            WriteWind(h, r, 0);
    }

    // A sector from one point to another (whole degrees given as CentiMinutes).
    static SectorRecord Leg(std::int16_t number, std::int32_t lat1, std::int32_t lon1,
                            std::int32_t lat2, std::int32_t lon2, std::int16_t phase = 2,
                            std::u16string wind = u"", std::u16string altitude = u"3500") {
        SectorRecord s;
        s.SectorNumber = number;
        s.StartLatitude = lat1;
        s.StartLongitude = lon1;
        s.EndLatitude = lat2;
        s.EndLongitude = lon2;
        s.Phase = phase;
        s.WindText = std::move(wind);
        s.AltitudeText = std::move(altitude);
        s.Text401 = u"A" + std::u16string(1, static_cast<char16_t>(u'0' + number));
        s.Text402 = u"B" + std::u16string(1, static_cast<char16_t>(u'0' + number));
        return s;
    }

    void WriteSectors(const std::vector<SectorRecord>& sectors) {
        DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
        for (const SectorRecord& s : sectors)
            WriteSector(h, s, 0);
        RefreshPlanSectorCount(g_app.settings, g_app.plan);
    }

    std::vector<SectorRecord> Sectors() {
        std::vector<SectorRecord> out;
        DbHandle h = OpenDatabase(g_app.settings.ActivePlanName.view(), schema::kSecNumber);
        SectorRecord s;
        while (h && ReadSector(h, kFromCurrent, 0, s) != 0)
            out.push_back(std::exchange(s, SectorRecord{}));
        return out;
    }

    TestPlatform platform_;
};

}  // namespace aerix::testing
