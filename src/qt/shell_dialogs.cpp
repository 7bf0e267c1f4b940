// The shell's dialogs: splash, disclaimer, loading, Preferences and About.
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QImageReader>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QTimer>

#include "app/loading_dialog.hpp"
#include "app/preferences_dialog.hpp"
#include "platform/services.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

namespace {

// Full screen, the splash bitmap at (0, 0) in 240 x 300; closes after its timer, on a tap or on
// any key.
class SplashDialog : public QDialog {
  public:
    SplashDialog(QWidget* parent, const QString& path, int ms)
        : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
        setObjectName("splash");
        QImageReader reader(path);
        image_ = reader.read();
        QTimer::singleShot(ms, this, [this] { done(1); });
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.fillRect(rect(), Qt::white);
        if (!image_.isNull())
            p.drawImage(QRect(0, 0, 240, 300), image_);
    }
    void mousePressEvent(QMouseEvent*) override { done(1); }
    void keyPressEvent(QKeyEvent*) override { done(1); }

  private:
    QImage image_;
};

class DisclaimerDialog : public DialogFrame {
  public:
    static constexpr const char* kTexts[] = {
        "This software may contain errors and ommissions. Aerixpad should not be used as a "
        "primary aid to navigation.",
        "Qorvane Software does not validate the data outputs from this program.It is the sole "
        "responsibility of the commander to verify the output of this program",
        "Qorvane Software accepts NO LIABILITY for loss, damage or injury that may be a "
        "consequence of use of this software",
    };

    explicit DisclaimerDialog(QWidget* parent)
        : DialogFrame(parent, QStringLiteral("DISCLAIMER"), false, false) {
        for (const char* text : kTexts) {
            auto* label = new QLabel(QString::fromUtf8(text), this);
            label->setWordWrap(true);
            Body()->addWidget(label);
        }
        Body()->addStretch(1);
        auto* accept = new QPushButton(QStringLiteral("Accept"), this);
        accept->setObjectName("accept");
        auto* exit = new QPushButton(QStringLiteral("EXIT"), this);
        exit->setObjectName("exit");
        Body()->addWidget(accept);
        Body()->addWidget(exit);
        connect(accept, &QPushButton::clicked, this, [this] { done(1); });
        connect(exit, &QPushButton::clicked, this, [this] { done(2); });
    }
};

class LoadingDialog : public DialogFrame {
  public:
    explicit LoadingDialog(QWidget* parent)
        : DialogFrame(parent, QStringLiteral("Aerix"), false, false) {
        auto* label = new QLabel(QString::fromUtf8(LoadingDialogModel::kText), this);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignCenter);
        Body()->addWidget(label, 1);
        // The text is painted before the arrays load.
        QTimer::singleShot(LoadingDialogModel::kTimerMs, this, [this] { done(model_.OnTimer()); });
    }

  private:
    LoadingDialogModel model_;
};

class PreferencesWidget : public DialogFrame {
  public:
    explicit PreferencesWidget(QWidget* parent)
        : DialogFrame(parent, QString::fromUtf8(PreferencesDialog::kTitle.data(),
                                                PreferencesDialog::kTitle.size())) {
        model_.Open();
        for (int b = 0; b < PreferencesDialog::kBoxCount; ++b) {
            auto box = static_cast<PreferencesDialog::Box>(b);
            auto label = PreferencesDialog::kLabels[b];
            auto* check = new QCheckBox(QString::fromUtf8(label.data(), label.size()), this);
            check->setObjectName(QStringLiteral("pref%1").arg(b));
            check->setChecked(model_.Checked(box));
            connect(check, &QCheckBox::clicked, this, [this, box] { model_.Click(box); });
            Body()->addWidget(check);
        }
        Body()->addStretch(1);
    }

  protected:
    bool OnOk() override {
        model_.Ok();
        return true;
    }
    void OnClose() override { model_.Cancel(); }

  private:
    PreferencesDialog model_;
};

class AboutDialog : public DialogFrame {
  public:
    explicit AboutDialog(QWidget* parent)
        : DialogFrame(parent, QStringLiteral("About"), true, false) {
        auto root = QString::fromStdString(platform::Sys().root->Root().string());
        auto* label = new QLabel(
            QStringLiteral("<h2>Aerix</h2><p>Version " AERIX_VERSION "</p>"
                           "<p>Pilot's navigation companion: flight plans with wind, GPS moving "
                           "map, instruments and the pilot's utilities.</p>"
                           "<p>Qorvane Software</p>"
                           "<p>Not a primary aid to navigation.</p>"
                           "<p><small>Data: %1</small></p>")
                .arg(root.toHtmlEscaped()),
            this);
        label->setWordWrap(true);
        Body()->addWidget(label);
        Body()->addStretch(1);
    }
};

template <typename D>
int RunFrame(QWidget* parent) {
    D dialog(parent);
    return dialog.Run();
}

}  // namespace

void RegisterShellDialogs(QtDialogHost& host, const ShellDialogOptions& options) {
    host.Register(Dialog::Splash, [options](QWidget* parent) {
        QElapsedTimer shown;
        shown.start();
        SplashDialog splash(parent, options.splashPath, options.splashMs);
        PlaceOverMainWindow(&splash, parent);
        int result = splash.exec();
        if (options.splashElapsed)
            *options.splashElapsed += shown.elapsed();
        return result;
    });
    host.Register(Dialog::Disclaimer, [options](QWidget* parent) {
        if (options.acceptDisclaimer)
            return 1;
        return RunFrame<DisclaimerDialog>(parent);
    });
    host.Register(Dialog::Loading, RunFrame<LoadingDialog>);
    host.Register(Dialog::Preferences, RunFrame<PreferencesWidget>);
    host.Register(Dialog::About, RunFrame<AboutDialog>);
}

}  // namespace aerix::qt
