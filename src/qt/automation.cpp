#include "qt/automation.hpp"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTimer>
#include <iostream>

#include "app/command_ids.hpp"
#include "qt/main_frame.hpp"
#include "qt/qt_ui.hpp"

namespace aerix::qt {

bool SaveScreenshot(QWidget& window, const QString& path) {
    // A dialog covers the main window while it is open: that is what the screen shows.
    QWidget* shown = QApplication::activeModalWidget();
    QPixmap shot = (shown && shown->isVisible() ? shown : &window)->grab();
    if (shot.isNull() || !shot.save(path, "PNG")) {
        std::cerr << "aerix: could not save screenshot " << path.toStdString() << std::endl;
        return false;
    }
    return true;
}

Automation::Automation(MainFrame& frame, QtUi& ui, QStringList lines)
    : QObject(&frame), frame_(frame), ui_(ui), lines_(std::move(lines)) {}

bool Automation::Load(const QString& path, QStringList* lines) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        std::cerr << "aerix: cannot read script " << path.toStdString() << std::endl;
        return false;
    }
    *lines = QString::fromUtf8(file.readAll()).split('\n');
    return true;
}

void Automation::Start() {
    QTimer::singleShot(0, this, &Automation::Step);
}

QWidget* Automation::Dialog() const {
    return QApplication::activeModalWidget();
}

void Automation::Step() {
    while (next_ < lines_.size()) {
        QString line = lines_[next_++].trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        QStringList words = line.split(' ', Qt::SkipEmptyParts);
        QString verb = words[0].toLower();
        // Actions on the main window wait until the open dialog has closed, as a user's would.
        if (Dialog() && (verb == "command" || verb == "key" || verb == "tap" || verb == "exit")) {
            --next_;
            QTimer::singleShot(50, this, &Automation::Step);
            return;
        }
        std::cerr << "step: " << line.toStdString() << std::endl;
        bool ok = true;
        if (verb == "command" && words.size() == 2) {
            unsigned id = words[1].toUInt(&ok);
            if (ok) {
                // A command may open a modal dialog: the script goes on inside its loop.
                QTimer::singleShot(0, this, &Automation::Step);
                frame_.Logic().OnCommand(id);
                return;
            }
        } else if (verb == "set" && words.size() >= 2) {
            // The rest of the line, spaces kept, is the text.
            QString text = line.section(' ', 2, -1, QString::SectionSkipEmpty);
            auto* entry = Dialog() ? Dialog()->findChild<QLineEdit*>(words[1]) : nullptr;
            ok = entry != nullptr;
            if (ok) {
                entry->setText(text);
                emit entry->textEdited(text);
            }
        } else if (verb == "click" && words.size() == 2) {
            auto* button = Dialog() ? Dialog()->findChild<QAbstractButton*>(words[1]) : nullptr;
            ok = button != nullptr;
            if (ok) {
                QTimer::singleShot(0, this, &Automation::Step);
                button->click();
                return;
            }
        } else if (verb == "tab" && words.size() == 3) {
            auto* tabs = Dialog() ? Dialog()->findChild<QTabWidget*>(words[1]) : nullptr;
            int index = words[2].toInt(&ok);
            ok = ok && tabs && index >= 0 && index < tabs->count();
            if (ok)
                tabs->setCurrentIndex(index);
        } else if (verb == "select" && words.size() == 3) {
            auto* list = Dialog() ? Dialog()->findChild<QListWidget*>(words[1]) : nullptr;
            auto* combo = Dialog() ? Dialog()->findChild<QComboBox*>(words[1]) : nullptr;
            int row = words[2].toInt(&ok);
            int rows = list ? list->count() : combo ? combo->count() : 0;
            ok = ok && row >= 0 && row < rows;
            if (ok && list) {
                // As a tap on the row: lists that act on the tap, not on the selection, act too.
                list->setCurrentRow(row);
                emit list->itemClicked(list->item(row));
            } else if (ok) {
                combo->setCurrentIndex(row);
            }
        } else if (verb == "key" && words.size() == 2) {
            frame_.Logic().OnKeyUp(words[1].toUInt(&ok));
        } else if (verb == "tap" && words.size() == 3) {
            bool okY = true;
            frame_.Logic().OnPenDown(words[1].toInt(&ok), words[2].toInt(&okY));
            ok = ok && okY;
        } else if (verb == "answer" && words.size() == 2) {
            static const std::map<QString, int> answers = {{"yes", platform::kIdYes},
                                                           {"no", platform::kIdNo},
                                                           {"ok", platform::kIdOk},
                                                           {"cancel", platform::kIdCancel}};
            auto it = answers.find(words[1].toLower());
            ok = it != answers.end();
            if (ok)
                ui_.AnswerNext(it->second);
        } else if (verb == "wait" && words.size() == 2) {
            double seconds = words[1].toDouble(&ok);
            if (ok) {
                QTimer::singleShot(static_cast<int>(seconds * 1000), this, &Automation::Step);
                return;
            }
        } else if (verb == "screenshot" && words.size() == 2) {
            SaveScreenshot(frame_, words[1]);
        } else if (verb == "exit") {
            frame_.Logic().OnCommand(cmd::kExit);
            return;
        } else {
            ok = false;
        }
        if (!ok)
            std::cerr << "aerix: script line not understood: " << line.toStdString() << std::endl;
        // Let the window paint between steps.
        QTimer::singleShot(0, this, &Automation::Step);
        return;
    }
}

}  // namespace aerix::qt
