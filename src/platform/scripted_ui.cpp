#include "platform/scripted_ui.hpp"

namespace aerix::platform {

int ScriptedUi::MessageBox(std::string_view text, std::string_view caption, unsigned type) {
    RecordedBox box{std::string(text), std::string(caption), type, 0};
    std::function<void(const RecordedBox&)> sink;
    {
        std::lock_guard lock(mutex_);
        if (!answers_.empty()) {
            box.answer = answers_.front();
            answers_.pop_front();
        } else {
            unsigned buttons = MessageBoxButtons(type);
            box.answer = buttons == kMbYesNo ? kIdNo : kIdOk;
        }
        boxes_.push_back(box);
        sink = sink_;
    }
    if (sink)
        sink(box);
    return box.answer;
}

void ScriptedUi::SetTitle(std::string_view title) {
    std::lock_guard lock(mutex_);
    titles_.emplace_back(title);
}

void ScriptedUi::InvalidateMainWindow(bool) {
    invalidations_.fetch_add(1);
}

void ScriptedUi::SetWaitCursor(bool wait) {
    if (wait)
        waitCursorShown_.fetch_add(1);
    waitCursor_.store(wait);
}

std::optional<FileDialogResult> ScriptedUi::ChooseFile(const FileDialogRequest& request) {
    std::lock_guard lock(mutex_);
    fileRequests_.push_back(request);
    if (fileAnswers_.empty())
        return std::nullopt;
    auto answer = fileAnswers_.front();
    fileAnswers_.pop_front();
    return answer;
}

void ScriptedUi::AnswerNext(int answer) {
    std::lock_guard lock(mutex_);
    answers_.push_back(answer);
}

void ScriptedUi::ChooseNext(std::optional<FileDialogResult> result) {
    std::lock_guard lock(mutex_);
    fileAnswers_.push_back(std::move(result));
}

void ScriptedUi::OnBox(std::function<void(const RecordedBox&)> sink) {
    std::lock_guard lock(mutex_);
    sink_ = std::move(sink);
}

std::vector<RecordedBox> ScriptedUi::Boxes() const {
    std::lock_guard lock(mutex_);
    return boxes_;
}

std::vector<std::string> ScriptedUi::BoxTexts() const {
    std::lock_guard lock(mutex_);
    std::vector<std::string> texts;
    for (const auto& b : boxes_)
        texts.push_back(b.text);
    return texts;
}

std::vector<std::string> ScriptedUi::Titles() const {
    std::lock_guard lock(mutex_);
    return titles_;
}

std::vector<FileDialogRequest> ScriptedUi::FileRequests() const {
    std::lock_guard lock(mutex_);
    return fileRequests_;
}

void ScriptedUi::Clear() {
    std::lock_guard lock(mutex_);
    answers_.clear();
    fileAnswers_.clear();
    boxes_.clear();
    titles_.clear();
    fileRequests_.clear();
    invalidations_ = 0;
}

}  // namespace aerix::platform
