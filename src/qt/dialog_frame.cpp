#include "qt/dialog_frame.hpp"

#include <QHBoxLayout>

namespace aerix::qt {

void PlaceOverMainWindow(QWidget* dialog, QWidget* parent) {
    QWidget* top = parent ? parent->window() : nullptr;
    if (top)
        dialog->setGeometry(QRect(top->mapToGlobal(QPoint(0, 0)), top->size()));
    else
        dialog->resize(240, 320);
}

DialogFrame::DialogFrame(QWidget* parent, const QString& title, bool withOk, bool withClose)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
    setWindowTitle(title);
    setObjectName(title);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);

    auto* bar = new QWidget(this);
    bar->setObjectName("titleBar");
    bar->setFixedHeight(26);
    bar->setAutoFillBackground(true);
    bar->setStyleSheet(
        "#titleBar { background: #0a246a; } QLabel { color: white; font-weight: bold; }"
        " QPushButton { color: white; background: #0a246a; border: 1px solid white;"
        " padding: 0 6px; }");
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(4, 2, 4, 2);
    title_ = new QLabel(title, bar);
    row->addWidget(title_, 1);
    if (withOk) {
        ok_ = new QPushButton(QStringLiteral("ok"), bar);
        ok_->setObjectName("ok");
        row->addWidget(ok_);
        connect(ok_, &QPushButton::clicked, this, [this] {
            if (OnOk())
                done(1);
        });
    }
    if (withClose) {
        close_ = new QPushButton(QStringLiteral("X"), bar);
        close_->setObjectName("close");
        row->addWidget(close_);
        connect(close_, &QPushButton::clicked, this, [this] {
            OnClose();
            done(2);
        });
    }
    outer->addWidget(bar);

    auto* page = new QWidget(this);
    body_ = new QVBoxLayout(page);
    body_->setContentsMargins(6, 6, 6, 6);
    outer->addWidget(page, 1);
}

int DialogFrame::Run() {
    PlaceOverMainWindow(this, parentWidget());
    return exec();
}

}  // namespace aerix::qt
