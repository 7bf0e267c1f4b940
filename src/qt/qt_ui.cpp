#include "qt/qt_ui.hpp"

#include <QApplication>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <QThread>
#include <iostream>

#include "platform/text.hpp"

namespace aerix::qt {

namespace {

bool OnGuiThread() {
    return QThread::currentThread() == qApp->thread();
}

}  // namespace

void QtUi::Attach(QWidget* owner, std::function<void(const QString&)> titleSink,
                  std::function<void()> invalidate) {
    owner_ = owner;
    titleSink_ = std::move(titleSink);
    invalidate_ = std::move(invalidate);
}

void QtUi::AnswerNextFileWith(std::filesystem::path path) {
    std::lock_guard lock(mutex_);
    fileAnswers_.push_back(std::move(path));
}

void QtUi::ClearFileAnswers() {
    std::lock_guard lock(mutex_);
    fileAnswers_.clear();
}

void QtUi::AnswerNext(int answer) {
    std::lock_guard lock(mutex_);
    answers_.push_back(answer);
}

int QtUi::MessageBox(std::string_view text, std::string_view caption, unsigned type) {
    QString qtext = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    QString qcaption = QString::fromUtf8(caption.data(), static_cast<qsizetype>(caption.size()));
    if (OnGuiThread())
        return ShowBox(qtext, qcaption, type);
    // A feed thread waits for the user like the original did.
    int answer = platform::kIdOk;
    QMetaObject::invokeMethod(
        this, [&] { answer = ShowBox(qtext, qcaption, type); }, Qt::BlockingQueuedConnection);
    return answer;
}

int QtUi::ShowBox(const QString& text, const QString& caption, unsigned type) {
    bool yesNo = platform::MessageBoxButtons(type) == platform::kMbYesNo;
    if (automatic_) {
        int answer = yesNo ? platform::kIdNo : platform::kIdOk;
        {
            std::lock_guard lock(mutex_);
            if (!answers_.empty()) {
                answer = answers_.front();
                answers_.pop_front();
            }
        }
        std::cerr << "box: [" << caption.toStdString() << "] " << text.toStdString() << " -> "
                  << answer << std::endl;
        return answer;
    }
    QMessageBox box(owner_);
    box.setWindowTitle(caption.isEmpty() ? QStringLiteral(" ") : caption);
    box.setText(text);
    unsigned icon = type & 0xF0;
    box.setIcon(icon == platform::kMbIconWarning       ? QMessageBox::Warning
                : icon == platform::kMbIconError       ? QMessageBox::Critical
                : icon == platform::kMbIconQuestion    ? QMessageBox::Question
                : icon == platform::kMbIconInformation ? QMessageBox::Information
                                                       : QMessageBox::NoIcon);
    if (yesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        return box.exec() == QMessageBox::Yes ? platform::kIdYes : platform::kIdNo;
    }
    if (platform::MessageBoxButtons(type) == platform::kMbOkCancel) {
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        return box.exec() == QMessageBox::Ok ? platform::kIdOk : platform::kIdCancel;
    }
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return platform::kIdOk;
}

void QtUi::SetTitle(std::string_view title) {
    QString text = QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size()));
    auto apply = [this, text] {
        title_ = text.toStdString();
        if (titleSink_)
            titleSink_(text);
    };
    if (OnGuiThread())
        apply();
    else
        QMetaObject::invokeMethod(this, apply, Qt::QueuedConnection);
}

void QtUi::InvalidateMainWindow(bool) {
    // Coalesced by Qt: many fixes between two paints give one paint.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (invalidate_)
                invalidate_();
        },
        Qt::QueuedConnection);
}

std::optional<platform::FileDialogResult> QtUi::ChooseFile(
    const platform::FileDialogRequest& request) {
    std::optional<std::filesystem::path> scripted;
    {
        std::lock_guard lock(mutex_);
        if (!fileAnswers_.empty()) {
            scripted = fileAnswers_.front();
            fileAnswers_.pop_front();
        }
    }
    if (scripted)
        return platform::FileDialogResult{*scripted, Utf8ToUtf16(scripted->filename().string())};
    if (automatic_)
        return std::nullopt;
    // The pocket computer's names ignored case; so does the filter.
    QString pattern = QString::fromStdString(request.pattern);
    QString filter =
        QString::fromStdString(request.filterName) + " (" + pattern + " " + pattern.toLower() + ")";
    QString chosen = request.mustExist
                         ? QFileDialog::getOpenFileName(
                               owner_, QString::fromStdString(request.title), documents_, filter)
                         : QFileDialog::getSaveFileName(
                               owner_, QString::fromStdString(request.title), documents_, filter);
    if (chosen.isEmpty())
        return std::nullopt;
    std::filesystem::path path(chosen.toStdString());
    return platform::FileDialogResult{path, Utf8ToUtf16(path.filename().string())};
}

void QtUi::SetWaitCursor(bool wait) {
    if (wait) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

}  // namespace aerix::qt
