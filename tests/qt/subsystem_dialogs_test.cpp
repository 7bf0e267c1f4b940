// The subsystems' dialog widgets, each opened under the offscreen platform and driven once
// through its controls: what the pilot types must reach the model, the store and g_app.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "dialog_driver.hpp"
#include "gps/gps_port.hpp"
#include "planning/sector_computation.hpp"
#include "qt/qt_dialog_host.hpp"
#include "qt/subsystem_dialogs.hpp"
#include "store/nav_database_dialogs.hpp"
#include "store/record_store.hpp"
#include "test_platform.hpp"
#include "utilities/altitude_dialogs.hpp"
#include "views/map_types.hpp"

namespace aerix::qt {
namespace {

class SubsystemDialogsTest : public DialogTest {
  protected:
    void SetUp() override {
        DialogTest::SetUp();
        g_app.settings.CurrentPlanId = CreatePlanDatabase(u"Trip");
        g_app.settings.ActivePlanName.assign(u"Trip");
    }

    int Run(Dialog dialog, User user) {
        WhenShown(std::move(user));
        return host_.Run(dialog);
    }

    std::vector<SectorRecord> Sectors() {
        std::vector<SectorRecord> out;
        DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
        SectorRecord s;
        while (h && ReadSector(h, kFromCurrent, 0, s) != 0)
            out.push_back(s);
        return out;
    }
};

// --- planning ---

TEST_F(SubsystemDialogsTest, NewSectorFromSearchAndPositionThenEditIt) {
    g_app.settings.NavDatabaseName.assign(u"Test");
    ASSERT_TRUE(MountNavVolume(g_app.settings, g_app.nav));
    CreateNavDatabase(g_app.nav, u"Test");
    {
        DbHandle h = OpenNavDatabase(g_app.nav, u"Test", schema::kWptName);
        WaypointRecord w;
        w.Name = u"Wellesbourne";
        w.Ident = u"EGBW";
        w.Latitude = 52 * 6000 + 1150;
        w.Longitude = -1 * 6000 - 3700;
        WriteWaypoint(h, w, 0);
    }
    UnmountNavVolume(g_app.nav);

    int result = Run(Dialog::NewSector, [](QWidget* d) {
        EXPECT_EQ(d->windowTitle(), "New sector");
        Click(d, "chooseFrom");
        Type(d, "position", "51.5,-1.25");
        Click(d, "usePosition");
        Type(d, "search", "Welles");
        Click(d, "find");
        auto* list = Find<QListWidget>(d, "waypoints");
        ASSERT_EQ(list->count(), 1);
        Tap(list, 0);
        EXPECT_EQ(Find<QRadioButton>(d, "chooseTo")->text(), "To: Wellesbourne (EGBW)");
        EXPECT_FALSE(Text(d, "variation").isEmpty());  // from the magnetic model
        Type(d, "altitude", "3500");
        Find<QComboBox>(d, "phase")->setCurrentIndex(0);
        Click(d, "ok");
    });
    EXPECT_EQ(result, kDialogOk);
    auto sectors = Sectors();
    ASSERT_EQ(sectors.size(), 1u);
    EXPECT_EQ(sectors[0].Text402, u"Wellesbourne");
    EXPECT_EQ(sectors[0].StartLatitude, 51 * 6000 + 3000);
    EXPECT_EQ(sectors[0].Phase, 1);
    EXPECT_EQ(sectors[0].AltitudeText, u"3500");

    // A bad altitude keeps the dialog open; a good one is written over the sector.
    g_app.plan.HighlightedSector = 0;
    result = Run(Dialog::EditSector, [this](QWidget* d) {
        EXPECT_FALSE(Find<QRadioButton>(d, "chooseFrom")->isChecked());
        Type(d, "altitude", "high");
        Click(d, "ok");
        EXPECT_TRUE(d->isVisible());
        EXPECT_FALSE(platform_.Ui().BoxTexts().empty());
        Type(d, "altitude", "4500");
        Find<QCheckBox>(d, "stillAir")->click();
        Click(d, "ok");
    });
    EXPECT_EQ(result, kDialogOk);
    sectors = Sectors();
    ASSERT_EQ(sectors.size(), 1u);
    EXPECT_EQ(sectors[0].AltitudeText, u"4500");
    EXPECT_EQ(sectors[0].WindText, u"000/00");

    // Direct to the found waypoint from the present position, then back to the plan; neither
    // touches the plan.
    g_app.gps.Fix.latitude = 51 * 6000;
    g_app.gps.Fix.longitude = -1 * 6000 - 3700;  // due south of Wellesbourne
    g_app.gps.Fix.positionKnown = true;
    auto direct = [this](const char* button) {
        return Run(Dialog::NewSector, [button](QWidget* d) {
            Type(d, "search", "Welles");
            Click(d, "find");
            Tap(Find<QListWidget>(d, "waypoints"), 0);
            Click(d, button);
        });
    };
    EXPECT_EQ(direct("directTo"), kDialogCancel);
    EXPECT_EQ(g_app.leg.DirectToStartLatitude.load(), 51 * 6000);
    int course = g_app.leg.DirectToCourse.load();  // due north, truncated
    EXPECT_TRUE(course == 0 || course == 359) << course;
    EXPECT_EQ(direct("resumePlan"), kDialogCancel);
    EXPECT_EQ(g_app.leg.DirectToStartLatitude.load(), 0);
    EXPECT_EQ(Sectors().size(), 1u);
}

TEST_F(SubsystemDialogsTest, WindTableAddsThroughItsEditDialogAndRefusesBadFigures) {
    int rows = 0;
    int result = Run(Dialog::WindTable, [&](QWidget* d) {
        auto* list = Find<QListWidget>(d, "winds");
        rows = list->count();
        WhenShown([this](QWidget* edit) {
            EXPECT_EQ(edit->windowTitle(), "Add/Edit Wind data");
            Type(edit, "altitude", "7000");
            Type(edit, "direction", "270");
            Type(edit, "speed", "fast");
            Click(edit, "ok");  // refused: stays open
            EXPECT_TRUE(edit->isVisible());
            EXPECT_EQ(platform_.Ui().BoxTexts().back().rfind("Speed (kt)", 0), 0u);
            Type(edit, "speed", "25");
            Type(edit, "temperature", "2");
            Click(edit, "ok");
        });
        Click(d, "add");
        EXPECT_EQ(list->count(), rows + 1);
        EXPECT_TRUE(
            list->findItems("07000         270        25        02", Qt::MatchExactly).size() == 1);
        Click(d, "ok");
    });
    EXPECT_EQ(result, kDialogOk);
    EXPECT_EQ(OpenDatabase(u"WindTable", schema::kWindAltitude).RecordCount(),
              static_cast<std::uint32_t>(rows + 1));
}

// --- aircraft ---

TEST_F(SubsystemDialogsTest, FuelPlanTotalsFollowTheEntriesAndModes) {
    g_app.settings.FuelCalc = 1;
    g_app.aircraft.TaxiFuel = 2.0;
    int result = Run(Dialog::Fuel, [](QWidget* d) {
        EXPECT_EQ(d->windowTitle(), "Fuel plan");
        Type(d, "holding", "5");
        EXPECT_EQ(Text(d, "total"), "7");  // taxi 2 rounded, plus 5 holding
        EXPECT_FALSE(Find<QLineEdit>(d, "inTanks")->isVisibleTo(d));
        Click(d, "loaded");
        EXPECT_FALSE(Find<QLineEdit>(d, "holding")->isVisibleTo(d));
        Type(d, "inTanks", "50");
        EXPECT_EQ(Text(d, "reserve"), "48");
        Click(d, "ok");
    });
    EXPECT_EQ(result, kDialogOk);
    EXPECT_EQ(g_app.settings.FuelCalc, 0);
    EXPECT_EQ(g_app.aircraft.PlanTotalFuel, 50u);
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");
}

// --- GPS ---

TEST_F(SubsystemDialogsTest, GpsSetupStoresATypedAddressAndRefusesNonsense) {
    int result = Run(Dialog::GpsSetup, [this](QWidget* d) {
        auto* port = Find<QComboBox>(d, "port");
        EXPECT_GE(port->findText("gpsd"), 0);
        EXPECT_GE(port->findText("COM8:"), 0);
        port->setEditText("nonsense");
        Click(d, "ok");
        EXPECT_TRUE(d->isVisible());
        EXPECT_EQ(platform_.Ui().BoxTexts().size(), 1u);
        port->setEditText("tcp:localhost:2947");
        auto* baud = Find<QComboBox>(d, "baud");
        baud->setCurrentIndex(baud->findText("9600"));
        Click(d, "ok");
    });
    EXPECT_EQ(result, kDialogOk);
    EXPECT_EQ(ConfiguredPortName(g_app.gps, g_app.settings), u"tcp:localhost:2947");
    EXPECT_EQ(g_app.settings.BaudRate, 9600u);
}

TEST_F(SubsystemDialogsTest, GpsDataShowsThePublishedFixEachSecond) {
    int result = Run(Dialog::GpsData, [this](QWidget* d) {
        EXPECT_EQ(platform_.Ui().Titles().back(), "GPS data");
        auto* timer = Find<QTimer>(d, "repaint");
        EXPECT_EQ(timer->interval(), 1000);
        EXPECT_TRUE(timer->isActive());
        GpsFix fix;
        fix.groundSpeed = 96.4;
        fix.trueTrack = 5.0;
        fix.magneticVariation = 2.0;
        fix.variationKnown = true;
        fix.positionKnown = true;
        g_app.gps.PublishedFix.Publish(fix);
        QMetaObject::invokeMethod(timer, "timeout");
        EXPECT_EQ(Text(d, "speed"), "96 Kts");
        EXPECT_EQ(Text(d, "track"), QString::fromUtf8("007\u00B0M"));
        Click(d, "close");
    });
    EXPECT_EQ(result, kDialogCancel);
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");
}

// --- maps ---

TEST_F(SubsystemDialogsTest, LoadCalibrateAndRemoveCharts) {
    testing::WriteFile(platform::Sys().root->ResolveForWrite("\\My Documents\\Aerix\\Field.bmp"),
                       "BM");
    int result = Run(Dialog::MapLoad, [](QWidget* d) {
        EXPECT_EQ(Find<QListWidget>(d, "storage")->item(0)->text(), "Memory");
        Click(d, "ok");  // does nothing
        auto* list = Find<QListWidget>(d, "bitmaps");
        auto found = list->findItems("Field.bmp", Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1);
        emit list->itemClicked(found[0]);
    });
    EXPECT_EQ(result, kDialogOk);
    EXPECT_EQ(g_app.view.CurrentMapPath.view(), u"\\My Documents\\Aerix\\Field.bmp");

    g_app.view.CalibrateCorner = 1;
    result = Run(Dialog::Calibrate, [](QWidget* d) {
        Type(d, "latDeg", "51");
        Type(d, "latMin", "30");
        Click(d, "latHemisphere");
        Type(d, "lonDeg", "1");
        Type(d, "lonMin", "15");
        Click(d, "lonHemisphere");
        EXPECT_EQ(Find<QPushButton>(d, "lonHemisphere")->text(), "W");
        Click(d, "ok");
    });
    EXPECT_EQ(result, kDialogOk);
    EXPECT_DOUBLE_EQ(g_app.view.MapCalibration[kRefLat1], -51.5);
    EXPECT_DOUBLE_EQ(g_app.view.MapCalibration[kRefLon1], -1.25);
    EXPECT_EQ(g_app.view.CalibrationFirstDone, 1);

    // Removing asks first; No keeps the chart.
    auto maps = [] { return OpenDatabase(schema::kMapsName, schema::kMapPath).RecordCount(); };
    std::uint32_t before = maps();
    ASSERT_GT(before, 0u);
    platform_.Ui().AnswerNext(platform::kIdNo);
    platform_.Ui().AnswerNext(platform::kIdYes);
    Run(Dialog::MapEdit, [&](QWidget* d) {
        auto* list = Find<QListWidget>(d, "maps");
        EXPECT_EQ(static_cast<std::uint32_t>(list->count()), before);
        list->setCurrentRow(0);
        Click(d, "remove");
        EXPECT_EQ(static_cast<std::uint32_t>(list->count()), before);
        Click(d, "remove");
        EXPECT_EQ(static_cast<std::uint32_t>(list->count()), before - 1);
        Click(d, "close");
    });
    EXPECT_EQ(maps(), before - 1);
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");
}

// --- navigation databases ---

TEST_F(SubsystemDialogsTest, NewDatabaseThenAddEditAndDeleteAWaypoint) {
    EXPECT_EQ(Run(Dialog::DatabaseNew,
                  [](QWidget* d) {
                      Type(d, "name", "Strips");
                      Click(d, "ok");
                  }),
              kDialogOk);
    EXPECT_EQ(g_app.settings.NavDatabaseName.utf8(), "Strips");

    int result = Run(Dialog::DatabaseAdd, [this](QWidget* d) {
        Type(d, "name", "Home strip");
        Type(d, "ident", "XHOM");
        Type(d, "latitude", "north");
        Type(d, "longitude", "-1.25");
        Find<QComboBox>(d, "type")->setCurrentIndex(1);
        Click(d, "ok");  // refused: the latitude
        EXPECT_TRUE(d->isVisible());
        EXPECT_FALSE(platform_.Ui().BoxTexts().empty());
        Type(d, "latitude", "51.5");
        Click(d, "ok");
    });
    EXPECT_EQ(result, kDialogOk);
    auto lines = ListNavDatabase(g_app.settings, g_app.nav, "Home");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].text, "Home strip  XHOM");

    platform_.Ui().AnswerNext(platform::kIdYes);
    Run(Dialog::DatabaseList, [](QWidget* d) {
        Type(d, "search", "Home");
        Click(d, "find");
        auto* list = Find<QListWidget>(d, "waypoints");
        ASSERT_EQ(list->count(), 1);
        list->setCurrentRow(0);
        WhenShown([](QWidget* form) {
            EXPECT_EQ(Text(form, "ident"), "XHOM");
            Type(form, "elevation", "350");
            Click(form, "ok");
        });
        Click(d, "edit");
        auto edited = ListNavDatabase(g_app.settings, g_app.nav, "Home");
        WaypointForm stored;
        ASSERT_EQ(edited.size(), 1u);
        ASSERT_TRUE(ReadWaypointForEdit(g_app.settings, g_app.nav, edited[0].oid, stored));
        EXPECT_EQ(stored.elevation, "350");
        list->setCurrentRow(0);
        Click(d, "delete");
        EXPECT_EQ(list->count(), 0);
        Click(d, "ok");
    });
    EXPECT_TRUE(ListNavDatabase(g_app.settings, g_app.nav, "Home").empty());
}

// --- utilities ---

TEST_F(SubsystemDialogsTest, TimerCountsTicksAndStopsOnClose) {
    int result = Run(Dialog::Timer, [this](QWidget* d) {
        EXPECT_EQ(d->findChild<QPushButton*>("ok"), nullptr);
        auto* timer = Find<QTimer>(d, "tick");
        EXPECT_EQ(timer->timerType(), Qt::PreciseTimer);
        Click(d, "start");
        EXPECT_TRUE(timer->isActive());
        EXPECT_EQ(timer->interval(), 975);
        // The timer wakes late, 1 s apart for a minute of the clock: the display follows the clock.
        for (int i = 0; i < 60; ++i) {
            platform_.Clock().Advance(1000);
            QMetaObject::invokeMethod(timer, "timeout");
        }
        EXPECT_EQ(Text(d, "display"), "00:01:01");
        EXPECT_EQ(timer->interval(), 62 * 975 - 60000);  // armed for the end of the period
        Click(d, "stop");
        EXPECT_FALSE(timer->isActive());
        Click(d, "start");
        Click(d, "close");
    });
    EXPECT_EQ(result, kDialogCancel);
    EXPECT_EQ(g_app.stopwatch.StopwatchTimer, 0u);
}

TEST_F(SubsystemDialogsTest, ConversionsRecomputeOnEachEditByKind) {
    Run(Dialog::Conversions, [](QWidget* d) {
        Type(d, "a", "10");
        EXPECT_EQ(Text(d, "b"), "2.20");
        EXPECT_EQ(Text(d, "c"), "2.64");
        Find<QComboBox>(d, "kind")->setCurrentIndex(1);  // mass
        EXPECT_FALSE(Find<QLineEdit>(d, "c")->isVisibleTo(d));
        Type(d, "b", "45.36");
        EXPECT_EQ(Text(d, "a"), "100.00");
        Find<QComboBox>(d, "kind")->setCurrentIndex(6);  // fuel
        EXPECT_EQ(Text(d, "sg"), "0.72");
        Type(d, "a", "100");
        EXPECT_EQ(Text(d, "kg"), "72.00");
        Click(d, "ok");
    });
}

TEST_F(SubsystemDialogsTest, SunTimesLimitsHundredthsAndComputes) {
    Run(Dialog::SunTimes, [this](QWidget* d) {
        EXPECT_EQ(platform_.Ui().Titles().back(), "Sunrise/sunset");
        Type(d, "latHun", "150");
        EXPECT_EQ(Text(d, "latHun"), "99");
        EXPECT_EQ(platform_.Ui().BoxTexts().back(), "Max 99");
        Type(d, "latDeg", "51");
        Click(d, "latHemisphere");
        EXPECT_EQ(Find<QPushButton>(d, "latHemisphere")->text(), "S");
        Click(d, "compute");
        EXPECT_TRUE(Text(d, "sunrise").contains(':'));
        EXPECT_TRUE(Text(d, "sunset").contains(':'));
        Click(d, "ok");
    });
}

TEST_F(SubsystemDialogsTest, FlightComputerDialogsShowTheirResults) {
    Run(Dialog::Crosswind, [](QWidget* d) {
        Type(d, "runway", "27");
        Type(d, "windDirection", "300");
        Type(d, "windSpeed", "20");
        Click(d, "compute");
        EXPECT_EQ(Text(d, "headwind"), "Headwind 17 kt");
        EXPECT_EQ(Text(d, "crosswind"), "Crosswind 10 kt from the right");
        Click(d, "ok");
    });
    Run(Dialog::Holding, [](QWidget* d) {
        Type(d, "inboundCourse", "360");
        Type(d, "heading", "360");
        Click(d, "compute");
        EXPECT_EQ(Text(d, "entry"), "Direct");
        Click(d, "ok");
    });
    PressureDensityDialog density;
    density.elevation = "2000";
    density.qnh = "1000";
    density.temperature = "30";
    density.Compute();
    Run(Dialog::DensityAltitude, [&](QWidget* d) {
        Type(d, "elevation", "2000");
        Type(d, "qnh", "1000");
        Type(d, "temperature", "30");
        Click(d, "compute");
        EXPECT_EQ(Text(d, "pressureAltitude").toStdString(), density.PressureAltitudeText());
        EXPECT_EQ(Text(d, "densityAltitude").toStdString(), density.DensityAltitudeText());
        Click(d, "ok");
    });
    TrueAltitudeDialog trueAltitude;
    trueAltitude.indicated = "5000";
    trueAltitude.qnh = "1013";
    trueAltitude.temperature = "-10";
    trueAltitude.Compute();
    Run(Dialog::TrueAltitude, [&](QWidget* d) {
        Type(d, "indicated", "5000");
        Type(d, "qnh", "1013");
        Type(d, "temperature", "-10");
        Click(d, "compute");
        EXPECT_EQ(Text(d, "trueAltitude").toStdString(), trueAltitude.TrueAltitudeText());
        Click(d, "ok");
    });
    Run(Dialog::Logbook, [this](QWidget* d) {
        for (const char* time : {"1:30", "2:45", "bad"}) {
            Type(d, "time", time);
            Click(d, "add");
        }
        EXPECT_EQ(Find<QListWidget>(d, "entries")->count(), 2);
        EXPECT_EQ(Text(d, "total"), "Total 04:15");
        EXPECT_FALSE(platform_.Ui().BoxTexts().empty());
        Click(d, "ok");
    });
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");
}

}  // namespace
}  // namespace aerix::qt
