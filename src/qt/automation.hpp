// A script of user actions for demonstrations and the end-to-end test, read from the file named
// by $AERIX_SCRIPT. One action a line, run in order once the main window is up:
//   command ID       the menu command or tool button ID
//   key VK           a key release (193-196 hardware buttons, 37-41 arrows and action)
//   tap X Y          a pen tap on the view at logical pixels
//   set NAME TEXT    types TEXT into the open dialog's field named NAME
//   click NAME       clicks the open dialog's button named NAME (ok, close, add, ...)
//   tab NAME INDEX   shows page INDEX (0 = first) of the open dialog's tabs named NAME
//   select NAME ROW  chooses row ROW (0 = first) of the open dialog's list named NAME
//   answer yes|no|ok|cancel   the answer to the next message box
//   wait SECONDS     pause
//   screenshot FILE  save the window as shown (PNG)
//   exit             the Exit command
// A command that opens a dialog lets the script go on inside it; command, key, tap and exit
// wait until no dialog is open.
// Message boxes are then not shown but written to stderr ("box: [caption] text -> answer").
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

namespace aerix::qt {

class MainFrame;
class QtUi;

class Automation : public QObject {
    Q_OBJECT
  public:
    Automation(MainFrame& frame, QtUi& ui, QStringList lines);
    // Reads the script; false with a message on stderr when it cannot be read.
    static bool Load(const QString& path, QStringList* lines);
    void Start();

  private:
    void Step();
    // The dialog open over the window, if any.
    QWidget* Dialog() const;

    MainFrame& frame_;
    QtUi& ui_;
    QStringList lines_;
    int next_ = 0;
};

// Saves the window as shown (the open dialog, if one covers it); false when the file cannot be
// written.
bool SaveScreenshot(QWidget& window, const QString& path);

}  // namespace aerix::qt
