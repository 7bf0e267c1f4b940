// The planning dialogs as a pilot uses them in flight: what the flight log reads after the wind
// table closes, and finding waypoints by ICAO code once Preferences allows it.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QKeyEvent>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>

#include "app/plan_view.hpp"
#include "dialog_driver.hpp"
#include "planning/flight_log.hpp"
#include "planning/sector_computation.hpp"
#include "platform/recording_canvas.hpp"
#include "store/record_store.hpp"

namespace aerix::qt {
namespace {

class PlanningDialogsTest : public DialogTest {
  protected:
    void SetUp() override {
        DialogTest::SetUp();
        ShellDialogOptions shell;
        RegisterShellDialogs(host_, shell);
        g_app.settings.CurrentPlanId = CreatePlanDatabase(u"Trip");
        g_app.settings.ActivePlanName.assign(u"Trip");
    }

    // One cruise sector due west at 2000 ft, the altitude of the wind table's second row.
    void WestboundSector() {
        DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
        SectorRecord s;
        s.SectorNumber = 1;
        s.Text401 = u"Here";
        s.Text402 = u"There";
        s.StartLatitude = s.EndLatitude = 51 * 6000;
        s.StartLongitude = 0;
        s.EndLongitude = -60 * 60;  // 60 minutes of longitude
        s.Phase = 2;
        s.AltitudeText = u"2000";
        WriteSector(h, s, 0);
        h.Close();
        RecomputePlanRoute(g_app.settings, g_app.plan, 1);
    }

    // Sets the 2000 ft row to a wind from the west, then closes the table by `close`.
    void WindFromWest(int speed, const std::function<void(QWidget*)>& close) {
        WhenShown([=, this](QWidget* d) {
            Tap(Find<QListWidget>(d, "winds"), 1);
            WhenShown([speed](QWidget* edit) {
                Type(edit, "direction", "270");
                Type(edit, "speed", QString::number(speed));
                Click(edit, "ok");
            });
            Click(d, "edit");
            close(d);
        });
        host_.Run(Dialog::WindTable);
    }

    // What the PLAN view shows.
    std::vector<std::string> PlanTexts() {
        platform::RecordingCanvas canvas;
        PlanView view;
        view.Paint(canvas);
        return canvas.Texts();
    }
};

bool Shows(const std::vector<std::string>& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

TEST_F(PlanningDialogsTest, EveryWayOfClosingTheWindTableRecomputesThePlan) {
    WestboundSector();
    FlightLogRow before = BuildFlightLog(g_app.settings, g_app.plan, g_app.leg).rows.at(0);
    EXPECT_EQ(before.TrueCourse(), "270°T");
    EXPECT_EQ(before.Wind(), "110°T/15kt");
    EXPECT_NE(before.MagHeading(), "270°M");  // the crosswind part turns the heading

    // A headwind of 50 kt takes 50 kt off the 114 kt cruise, each way the dialog is closed.
    struct Case {
        const char* how;
        int speed;
        std::function<void(QWidget*)> close;
    } cases[] = {
        {"X", 50, [](QWidget* d) { Click(d, "close"); }},
        {"Escape", 60, [](QWidget* d) { QTest::keyClick(d, Qt::Key_Escape); }},
        {"window closed", 70, [](QWidget* d) { d->close(); }},
        {"ok", 80, [](QWidget* d) { Click(d, "ok"); }},
    };
    for (const Case& c : cases) {
        WindFromWest(c.speed, c.close);
        FlightLogRow row = BuildFlightLog(g_app.settings, g_app.plan, g_app.leg).rows.at(0);
        EXPECT_EQ(row.Wind(), "270°T/" + std::to_string(c.speed) + "kt") << c.how;
        EXPECT_EQ(row.GroundSpeed(), std::to_string(114 - c.speed)) << c.how;
        EXPECT_EQ(row.MagHeading(), "270°M") << c.how;  // straight into the wind, no variation
        EXPECT_TRUE(Shows(PlanTexts(), std::to_string(114 - c.speed))) << c.how;
    }

    // A headwind as fast as the aircraft: the log says the sector cannot be flown.
    WindFromWest(150, [](QWidget* d) { Click(d, "close"); });
    auto texts = PlanTexts();
    EXPECT_TRUE(Shows(texts, "GS \u2264 0"));
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "--:--"), 2);  // the sector and the total
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "---"), 2);
    EXPECT_TRUE(Shows(texts, "Here"));
    EXPECT_TRUE(Shows(texts, "There"));
}

TEST_F(PlanningDialogsTest, IcaoSearchFromPreferencesFindsWaypointsByIdent) {
    ASSERT_EQ(g_app.settings.IcaoSearch, 0);
    g_app.settings.NavDatabaseName.assign(u"World");
    auto search = [this](const char* text) {
        QStringList shown;
        WhenShown([&shown, text](QWidget* d) {
            Type(d, "search", text);
            Click(d, "find");
            auto* list = Find<QListWidget>(d, "waypoints");
            for (int i = 0; i < list->count(); ++i)
                shown << list->item(i)->text();
            Click(d, "close");
        });
        host_.Run(Dialog::NewSector);
        return shown;
    };
    EXPECT_TRUE(search("EGKK").isEmpty());  // by name: no airport is called that

    WhenShown([](QWidget* d) {
        auto* box = Find<QCheckBox>(d, "pref9");
        EXPECT_EQ(box->text(), "Search waypoints by ICAO code");
        EXPECT_FALSE(box->isChecked());
        box->click();
        Click(d, "ok");
    });
    host_.Run(Dialog::Preferences);
    EXPECT_EQ(g_app.settings.IcaoSearch, 1);
    EXPECT_EQ(search("EGKK"), QStringList{"London Gatwick Airport  EGKK"});
}

}  // namespace
}  // namespace aerix::qt
