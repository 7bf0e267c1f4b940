// The Ui services on Qt: message boxes owned by the main window with the program's exact texts,
// the navigation-bar title, repaint requests from any thread and the file dialog. Under
// automation the boxes are written to stderr and answered from the script instead of waiting.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "platform/ui.hpp"

namespace aerix::qt {

class QtUi : public QObject, public platform::Ui {
    Q_OBJECT
  public:
    int MessageBox(std::string_view text, std::string_view caption, unsigned type) override;
    void SetTitle(std::string_view title) override;
    void InvalidateMainWindow(bool erase) override;
    void SetWaitCursor(bool wait) override;
    std::optional<platform::FileDialogResult> ChooseFile(
        const platform::FileDialogRequest& request) override;

    // The window that owns the boxes and receives repaints, and where the title goes.
    void Attach(QWidget* owner, std::function<void(const QString&)> titleSink,
                std::function<void()> invalidate);
    // The data root's "My Documents/Aerix" folder, where the file dialog opens.
    void SetDocumentsFolder(QString folder) { documents_ = std::move(folder); }
    // The next file dialog is answered with this file ("--database NAME").
    void AnswerNextFileWith(std::filesystem::path path);
    void ClearFileAnswers();
    // Boxes are not shown but written to stderr and answered from AnswerNext (default: OK, No).
    void SetAutomatic(bool automatic) { automatic_ = automatic; }
    void AnswerNext(int answer);
    const std::string& Title() const { return title_; }

  private:
    int ShowBox(const QString& text, const QString& caption, unsigned type);

    QPointer<QWidget> owner_;
    std::function<void(const QString&)> titleSink_;
    std::function<void()> invalidate_;
    QString documents_;
    std::deque<std::filesystem::path> fileAnswers_;
    std::deque<int> answers_;
    std::mutex mutex_;
    bool automatic_ = false;
    std::string title_ = "Aerix";
};

}  // namespace aerix::qt
