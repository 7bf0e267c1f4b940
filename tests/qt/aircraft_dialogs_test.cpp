// "Setup A/c" and the weight-and-balance pair, opened under the offscreen platform and driven
// through their controls as a pilot would.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <functional>

#include "aircraft/aircraft.hpp"
#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "dialog_driver.hpp"
#include "planning/sector_computation.hpp"
#include "qt/qt_dialog_host.hpp"
#include "qt/subsystem_dialogs.hpp"
#include "store/record_store.hpp"
#include "test_platform.hpp"

namespace aerix::qt {
namespace {

class AircraftDialogsTest : public DialogTest {
  protected:
    void SetUp() override {
        DialogTest::SetUp();
        LoadCurrentAircraft(g_app.settings, g_app.aircraft);
    }

    int Run(Dialog dialog, User user) {
        WhenShown(std::move(user));
        return host_.Run(dialog);
    }
};

TEST_F(AircraftDialogsTest, LoadTwoAboardAndFuelThenSeeTheResult) {
    int loaded = Run(Dialog::WeightBalanceLoading, [](QWidget* d) {
        EXPECT_TRUE(Find<QLineEdit>(d, "load0")->isReadOnly());  // APS
        Type(d, "load1", "40");                                  // FUEL, US gal
        EXPECT_EQ(Text(d, "note1"), "= 239.8 lb");
        Type(d, "load2", "abc");
        Click(d, "ok");  // refused: stays open
        EXPECT_TRUE(d->isVisible());
        Type(d, "load2", "340");
        Click(d, "ok");
    });
    EXPECT_EQ(loaded, kDialogOk);
    EXPECT_EQ(platform_.Ui().BoxTexts().back(), "ROW1: enter a weight from 0 to 100000 lb");
    int shown = Run(Dialog::WeightBalanceResult, [](QWidget* d) {
        EXPECT_EQ(Text(d, "verdict"), "within envelope");
        EXPECT_EQ(Text(d, "weight"), "2046.8 lb");
        EXPECT_EQ(Text(d, "arm"), "39.49 in");
        auto* graph = Find<QWidget>(d, "graph");
        EXPECT_GE(graph->height(), 120);
        Click(d, "ok");
    });
    EXPECT_EQ(shown, kDialogOk);
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");
}

TEST_F(AircraftDialogsTest, WithoutAConfirmedLoadingTheResultSaysSoAndCloses) {
    EXPECT_EQ(host_.Run(Dialog::WeightBalanceResult), kDialogCancel);
    EXPECT_EQ(platform_.Ui().BoxTexts().back(), "Enter the loads first (Wt. Bal)");
}

TEST_F(AircraftDialogsTest, AddAnAircraftWithAStationAndEnvelopeThenMakeItActive) {
    platform_.Ui().AnswerNext(platform::kIdYes);  // "make active a/c?"
    int result = Run(Dialog::AircraftSetup, [](QWidget* d) {
        auto* list = Find<QListWidget>(d, "aircraft");
        int before = list->count();
        WhenShown([](QWidget* form) {
            Type(form, "registration", "G-NEWW");
            Type(form, "type", "C182");
            for (auto [name, value] : {std::pair{"climbTas", "80"},
                                       {"cruiseTas", "135"},
                                       {"descentTas", "120"},
                                       {"emptyWeight", "1700"},
                                       {"emptyArm", "40"},
                                       {"maxTakeoff", "3100"},
                                       {"graphArmMax", "50"},
                                       {"graphWeightMax", "3200"}})
                Type(form, name, value);
            auto* fuel = Find<QComboBox>(form, "fuelUnits");
            fuel->setCurrentIndex(fuel->findText("ltr"));
            auto* stations = Find<QTableWidget>(form, "stations");
            EXPECT_EQ(stations->rowCount(), 2);             // APS and FUEL
            EXPECT_EQ(stations->item(0, 2)->text(), "40");  // follows the empty-weight arm
            Click(form, "addStation");
            stations->item(2, 0)->setText("ROW1");
            stations->item(2, 2)->setText("37");
            auto* points = Find<QTableWidget>(form, "points");
            for (auto [arm, weight] : {std::pair{"35", "1500"}, {"48", "1500"}, {"48", "3100"}}) {
                Click(form, "addPoint");
                int r = points->rowCount() - 1;
                points->item(r, 0)->setText(arm);
                points->item(r, 1)->setText(weight);
            }
            Click(form, "ok");
        });
        Click(d, "add");
        EXPECT_EQ(list->count(), before + 1);
        Click(d, "ok");
    });
    EXPECT_EQ(result, kDialogOk);
    EXPECT_EQ(g_app.settings.AircraftReg.view(), u"G-NEWW");
    EXPECT_EQ(g_app.aircraft.FuelUnits, static_cast<std::uint32_t>(kFuelLitres));
    auto stations = ReadStations(u"G-NEWW");
    ASSERT_EQ(stations.size(), 3u);
    EXPECT_EQ(stations[2].Record.Arm, 37.0);
    EXPECT_EQ(ReadEnvelopePoints(u"G-NEWW").size(), 4u);
}

TEST_F(AircraftDialogsTest, TheCurrentAircraftIsNotDeleted) {
    Run(Dialog::AircraftSetup, [](QWidget* d) {
        auto* list = Find<QListWidget>(d, "aircraft");
        auto found = list->findItems("G-CESS", Qt::MatchStartsWith);
        ASSERT_EQ(found.size(), 1);
        list->setCurrentItem(found[0]);
        Click(d, "delete");
        EXPECT_EQ(list->count(), 6);
        Click(d, "close");
    });
    EXPECT_EQ(platform_.Ui().BoxTexts().back(),
              "The current aircraft cannot be deleted - make another one active first");
}

}  // namespace
}  // namespace aerix::qt
