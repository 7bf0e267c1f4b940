// Driving an offscreen dialog as a pilot would: act once it is up, find its controls by name,
// click, type key by key and read what it shows.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTimer>
#include <functional>

#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "qt/qt_dialog_host.hpp"
#include "qt/subsystem_dialogs.hpp"
#include "test_platform.hpp"

namespace aerix::qt {

using User = std::function<void(QWidget*)>;

// Acts on the next modal dialog once it is up (a dialog opened from a dialog included).
inline void WhenShown(User user) {
    QTimer::singleShot(0, [user] {
        QWidget* shown = QApplication::activeModalWidget();
        ASSERT_NE(shown, nullptr);
        user(shown);
    });
}

template <typename W>
W* Find(QWidget* dialog, const char* name) {
    auto* widget = dialog->findChild<W*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
}

inline void Click(QWidget* dialog, const char* name) {
    if (auto* button = Find<QAbstractButton>(dialog, name))
        button->click();
}

// Types over a field's text key by key.
inline void Type(QWidget* dialog, const char* name, const QString& text) {
    auto* entry = Find<QLineEdit>(dialog, name);
    if (!entry)
        return;
    entry->selectAll();
    if (text.isEmpty())
        QTest::keyClick(entry, Qt::Key_Delete);
    QTest::keyClicks(entry, text);
}

// The text of a label or a field.
inline QString Text(QWidget* dialog, const char* name) {
    if (auto* label = dialog->findChild<QLabel*>(name))
        return label->text();
    if (auto* entry = dialog->findChild<QLineEdit*>(name))
        return entry->text();
    ADD_FAILURE() << name;
    return {};
}

// Every subsystem's dialogs over a 240 x 320 parent, on a fresh data root with the default data
// and G-CESS as the aircraft.
class DialogTest : public ::testing::Test {
  protected:
    testing::TestPlatform platform_;
    QWidget parent_;
    QtDialogHost host_{&parent_};

    void SetUp() override {
        // A window test run before in this process may have asked the application to quit,
        // which ends every later dialog at once; a short application loop clears that.
        QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
        QCoreApplication::exec();
        parent_.resize(240, 320);
        RegisterSubsystemDialogs(host_);
        g_app.settings.AircraftReg.assign(u"G-CESS");
        CreateDefaultData();
    }
};

inline void Tap(QListWidget* list, int row) {
    ASSERT_LT(row, list->count());
    list->setCurrentRow(row);
    emit list->itemClicked(list->item(row));
}

}  // namespace aerix::qt
