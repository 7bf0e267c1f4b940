// The dialogs on Qt: each dialog identifier maps to a runner that builds its widget over the
// main window, runs it and returns how it ended. Subsystems' dialog widgets register here.
#pragma once

#include <QWidget>
#include <functional>
#include <map>

#include "app/dialog_host.hpp"

namespace aerix::qt {

using DialogRunner = std::function<int(QWidget* parent)>;

class QtDialogHost : public DialogHost {
  public:
    explicit QtDialogHost(QWidget* parent = nullptr) : parent_(parent) {}
    void SetParent(QWidget* parent) { parent_ = parent; }
    void Register(Dialog dialog, DialogRunner runner) { runners_[dialog] = std::move(runner); }
    bool Has(Dialog dialog) const { return runners_.count(dialog) != 0; }
    int Run(Dialog dialog) override;

  private:
    QWidget* parent_;
    std::map<Dialog, DialogRunner> runners_;
};

struct ShellDialogOptions {
    bool acceptDisclaimer = false;  // --accept-disclaimer: the disclaimer answers Accept
    int splashMs = 5000;
    QString splashPath;               // the splash bitmap file
    qint64* splashElapsed = nullptr;  // receives how long the splash was shown (ms)
};

// The shell's own dialogs: splash, disclaimer, loading, Preferences, About.
void RegisterShellDialogs(QtDialogHost& host, const ShellDialogOptions& options);

}  // namespace aerix::qt
