#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "app/app_state.hpp"
#include "qt/qt_dialog_host.hpp"
#include "test_platform.hpp"

namespace aerix::qt {
namespace {

// Runs a dialog and, once it is up, acts on it as the user would.
int RunAndDrive(QtDialogHost& host, Dialog dialog, std::function<void(QWidget*)> user) {
    QTimer::singleShot(0, [user] {
        QWidget* shown = QApplication::activeModalWidget();
        ASSERT_NE(shown, nullptr);
        user(shown);
    });
    return host.Run(dialog);
}

void Click(QWidget* dialog, const char* name) {
    auto* button = dialog->findChild<QPushButton*>(name);
    ASSERT_NE(button, nullptr) << name;
    button->click();
}

class ShellDialogsTest : public ::testing::Test {
  protected:
    testing::TestPlatform platform_;
    QWidget parent_;
    QtDialogHost host_{&parent_};
    ShellDialogOptions options_;

    void SetUp() override {
        parent_.resize(240, 320);
        options_.splashMs = 60000;
        RegisterShellDialogs(host_, options_);
    }
};

TEST_F(ShellDialogsTest, DisclaimerShowsItsTextsAndEndsWithTheButton) {
    std::vector<QString> texts;
    int exitCode = RunAndDrive(host_, Dialog::Disclaimer, [&](QWidget* d) {
        EXPECT_EQ(d->windowTitle(), "DISCLAIMER");
        for (auto* label : d->findChildren<QLabel*>())
            texts.push_back(label->text());
        Click(d, "exit");
    });
    EXPECT_EQ(exitCode, 2);
    EXPECT_NE(std::find(texts.begin(), texts.end(),
                        "Qorvane Software does not validate the data outputs from this "
                        "program.It is the sole responsibility of the commander to verify the "
                        "output of this program"),
              texts.end());
    EXPECT_EQ(RunAndDrive(host_, Dialog::Disclaimer, [](QWidget* d) { Click(d, "accept"); }), 1);

    ShellDialogOptions accepting;
    accepting.acceptDisclaimer = true;
    QtDialogHost quiet;
    RegisterShellDialogs(quiet, accepting);
    EXPECT_EQ(quiet.Run(Dialog::Disclaimer), 1);
}

TEST_F(ShellDialogsTest, PreferencesCopyOnOkAndButtonsActAtOnce) {
    g_app.settings.ShowLatLonMap = 1;
    g_app.settings.EnableHotKeys = 0;
    // Cancel: the hot-key box still took effect, the others did not.
    int cancelled = RunAndDrive(host_, Dialog::Preferences, [](QWidget* d) {
        EXPECT_TRUE(d->findChild<QCheckBox*>("pref0")->isChecked());
        d->findChild<QCheckBox*>("pref0")->click();  // Show lat-long in MAP off
        d->findChild<QCheckBox*>("pref2")->click();  // Use buttons to change views on
        Click(d, "close");
    });
    EXPECT_EQ(cancelled, 2);
    EXPECT_EQ(g_app.settings.ShowLatLonMap, 1);
    EXPECT_EQ(g_app.settings.EnableHotKeys, 1);
    EXPECT_TRUE(platform_.Keys().IsRegistered(196));
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");

    int ok = RunAndDrive(host_, Dialog::Preferences, [](QWidget* d) {
        d->findChild<QCheckBox*>("pref0")->click();
        d->findChild<QCheckBox*>("pref8")->click();  // Show Track pointer in map on
        Click(d, "ok");
    });
    EXPECT_EQ(ok, 1);
    EXPECT_EQ(g_app.settings.ShowLatLonMap, 0);
    EXPECT_EQ(g_app.settings.ShowTrackPointer, 1);
}

TEST_F(ShellDialogsTest, LoadingClearsThePendingArrays) {
    g_app.nav.ArraysPending = 1;
    EXPECT_EQ(host_.Run(Dialog::Loading), 1);
    EXPECT_EQ(g_app.nav.ArraysPending, 0);
}

TEST_F(ShellDialogsTest, SplashClosesOnTapAboutOnOk) {
    EXPECT_EQ(RunAndDrive(host_, Dialog::Splash,
                          [](QWidget* d) {
                              QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5),
                                                QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                                                Qt::NoModifier);
                              QApplication::sendEvent(d, &press);
                          }),
              1);
    EXPECT_EQ(RunAndDrive(host_, Dialog::About, [](QWidget* d) { Click(d, "ok"); }), 1);
    EXPECT_EQ(host_.Run(Dialog::WindTable), kDialogUnavailable);
}

}  // namespace
}  // namespace aerix::qt

#include <QLineEdit>
#include <QListWidget>

#include "qt/plan_dialog_widgets.hpp"
#include "store/record_store.hpp"

namespace aerix::qt {
namespace {

TEST(PlanDialogWidgetsTest, NewOpenAndDeleteAPlan) {
    testing::TestPlatform platform;
    QWidget parent;
    QtDialogHost host(&parent);
    RegisterPlanDialogs(host);
    auto newPlan = [&](const QString& name) {
        return RunAndDrive(host, Dialog::NewPlan, [name](QWidget* d) {
            d->findChild<QLineEdit*>("name")->setText(name);
            Click(d, "ok");
        });
    };
    EXPECT_EQ(newPlan("Trip"), 1);
    EXPECT_EQ(newPlan("Home"), 1);
    EXPECT_EQ(g_app.settings.ActivePlanName.utf8(), "Home");

    auto tap = [&](Dialog dialog, const QString& name) {
        return RunAndDrive(host, dialog, [name](QWidget* d) {
            auto* list = d->findChild<QListWidget*>("plans");
            auto found = list->findItems(name, Qt::MatchExactly);
            ASSERT_EQ(found.size(), 1);
            emit list->itemClicked(found[0]);
        });
    };
    EXPECT_EQ(tap(Dialog::OpenPlan, "Trip"), 1);
    EXPECT_EQ(g_app.settings.ActivePlanName.utf8(), "Trip");
    // The active plan is refused; another goes without a question.
    EXPECT_EQ(tap(Dialog::DeletePlan, "Trip"), 1);
    EXPECT_EQ(platform.Ui().BoxTexts().back(), "Cannot delete - active plan");
    EXPECT_EQ(tap(Dialog::DeletePlan, "Home"), 1);
    EXPECT_EQ(DatabaseNames(schema::kPlanType), std::vector<std::u16string>{u"Trip"});
}

}  // namespace
}  // namespace aerix::qt
