// A Ui that records every box, title and repaint, and answers prompts from a script. Used by the
// tests and by headless tools.
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "platform/ui.hpp"

namespace aerix::platform {

struct RecordedBox {
    std::string text;
    std::string caption;
    unsigned type = 0;
    int answer = 0;
};

class ScriptedUi : public Ui {
  public:
    int MessageBox(std::string_view text, std::string_view caption, unsigned type) override;
    void SetTitle(std::string_view title) override;
    void InvalidateMainWindow(bool erase) override;
    std::optional<FileDialogResult> ChooseFile(const FileDialogRequest& request) override;
    void SetWaitCursor(bool wait) override;

    // Answers for the next boxes, in order. Without a scripted answer an OK box answers kIdOk and
    // a Yes/No box kIdNo (so nothing destructive happens by accident).
    void AnswerNext(int answer);
    // Answers for the next file dialogs; std::nullopt means the user cancels.
    void ChooseNext(std::optional<FileDialogResult> result);
    // Called with each box as it is shown (for example to echo it to stderr).
    void OnBox(std::function<void(const RecordedBox&)> sink);

    std::vector<RecordedBox> Boxes() const;
    std::vector<std::string> BoxTexts() const;
    std::vector<std::string> Titles() const;
    std::vector<FileDialogRequest> FileRequests() const;
    int InvalidateCount() const { return invalidations_.load(); }
    // Whether the wait cursor shows now, and how often it was put up.
    bool WaitCursor() const { return waitCursor_.load(); }
    int WaitCursorShown() const { return waitCursorShown_.load(); }
    void Clear();

  private:
    mutable std::mutex mutex_;
    std::deque<int> answers_;
    std::deque<std::optional<FileDialogResult>> fileAnswers_;
    std::vector<RecordedBox> boxes_;
    std::vector<std::string> titles_;
    std::vector<FileDialogRequest> fileRequests_;
    std::function<void(const RecordedBox&)> sink_;
    std::atomic<int> invalidations_{0};
    std::atomic<bool> waitCursor_{false};
    std::atomic<int> waitCursorShown_{0};
};

}  // namespace aerix::platform
