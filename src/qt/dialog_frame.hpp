// The frame every dialog widget sits in: full-screen over the main window as the pocket
// computer's dialogs were, a title row with the done ("ok") and close (X) buttons, and a body for
// the dialog's controls. A dialog widget subclasses it, fills Body() and forwards events to its
// model; Accept() and Cancel() are where the model's OK and X go.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace aerix::qt {

class DialogFrame : public QDialog {
    Q_OBJECT
  public:
    // withOk: the title row has the done button; withClose: it has the X button.
    DialogFrame(QWidget* parent, const QString& title, bool withOk = true, bool withClose = true);

    QVBoxLayout* Body() { return body_; }
    QPushButton* OkButton() { return ok_; }
    QPushButton* CloseButton() { return close_; }
    // Runs modally; returns the end code (1 OK, 2 X, or what done() was given).
    int Run();

  protected:
    // The done button: the model's OK; return false to keep the dialog open.
    virtual bool OnOk() { return true; }
    // The X button: the model's cancel.
    virtual void OnClose() {}
    // Escape is the X button.
    void reject() override {
        OnClose();
        done(2);
    }

  private:
    QLabel* title_;
    QPushButton* ok_ = nullptr;
    QPushButton* close_ = nullptr;
    QVBoxLayout* body_;
};

// A dialog whose model is told when it closes, by the done button or the X alike.
template <typename Model>
class ClosingModelFrame : public DialogFrame {
  public:
    using DialogFrame::DialogFrame;

  protected:
    bool OnOk() override {
        model_.Close();
        return true;
    }
    void OnClose() override { model_.Close(); }

    Model model_;
};

// Where the dialogs cover: the main window's area.
void PlaceOverMainWindow(QWidget* dialog, QWidget* parent);

}  // namespace aerix::qt
