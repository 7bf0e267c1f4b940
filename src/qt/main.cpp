// aerix: the program with its window.
#include <unistd.h>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <cstdlib>
#include <iostream>

#include "app/app_state.hpp"
#include "app/command_ids.hpp"
#include "platform/data_root.hpp"
#include "platform/services.hpp"
#include "qt/automation.hpp"
#include "qt/dbus_screen_awake.hpp"
#include "qt/decimal_point.hpp"
#include "qt/graphics/qt_graphics.hpp"
#include "qt/main_frame.hpp"
#include "qt/options.hpp"
#include "qt/qt_dialog_host.hpp"
#include "qt/qt_ui.hpp"
#include "qt/splash_image.hpp"
#include "qt/subsystem_dialogs.hpp"

namespace {

using namespace aerix;

// The largest whole factor at which the window (and its frame) fits the screen.
int FittingScale(int argc, char** argv) {
    QGuiApplication probe(argc, argv);
    QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return 1;
    QSize room = screen->availableSize();
    int scale = std::min(room.width() / 240, (room.height() - 40) / 320);
    return std::max(1, scale);
}

unsigned ViewCommand(const std::string& view) {
    if (view == "map")
        return cmd::kShowMap;
    if (view == "hsi")
        return cmd::kShowHsi;
    if (view == "aerix")
        return cmd::kShowAerix;
    return cmd::kShowPlan;
}

}  // namespace

int main(int argc, char** argv) {
    QElapsedTimer started;
    started.start();
    qt::Options options;
    if (auto code = qt::ParseOptions(argc, argv, &options))
        return *code;

    int scale = options.scale;
    if (scale == 0 && !qEnvironmentVariableIsSet("QT_SCALE_FACTOR") &&
        qgetenv("QT_QPA_PLATFORM") != "offscreen")
        scale = FittingScale(argc, argv);
    if (scale > 0)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));

    QApplication app(argc, argv);
    qt::UseDecimalPoint();
    QApplication::setApplicationName(QStringLiteral("Aerix"));
    // The splash and the disclaimer close before the main window shows; only the exit sequence
    // ends the program.
    QApplication::setQuitOnLastWindowClosed(false);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(11);
    QApplication::setFont(font);

    auto root = platform::DataRoot::Choose(options.home);
    qt::QtUi ui;
    bool automatic = qEnvironmentVariableIsSet("AERIX_SCRIPT");
    ui.SetAutomatic(automatic);
    platform::Platform platform(root, ui);
    qt::QtGraphics graphics;
    platform::Sys().graphics = &graphics;
    qt::DbusScreenAwake screenAwake;
    platform::Sys().screenAwake = &screenAwake;
    auto documents = platform.Root().ResolveForWrite("\\My Documents\\Aerix\\.");
    ui.SetDocumentsFolder(QString::fromStdString(documents.parent_path().string()));

    QString splashPath = QString::fromStdString(
        platform.Root().ResolveForWrite("\\My Documents\\Aerix\\splash2").string());
    qt::EnsureSplashFile(splashPath);

    qt::QtDialogHost dialogs;
    qt::ShellDialogOptions shellOptions;
    shellOptions.acceptDisclaimer = options.acceptDisclaimer;
    shellOptions.splashPath = splashPath;
    if (QByteArray ms = qgetenv("AERIX_SPLASH_MS"); !ms.isEmpty())
        shellOptions.splashMs = ms.toInt();
    qint64 splashMs = 0;
    shellOptions.splashElapsed = &splashMs;
    qt::RegisterShellDialogs(dialogs, shellOptions);
    qt::RegisterSubsystemDialogs(dialogs);

    // The socket lives in a folder only this user can enter; without one there is no
    // single-instance check rather than one another user could answer.
    QString instanceKey;
    if (auto folder = platform::PrivateRuntimeFolder(root); !folder.empty()) {
        instanceKey =
            QString::fromStdString(folder.string()) +
            QStringLiteral("/aerix-%1").arg(qHash(QString::fromStdString(root.string())), 0, 16);
    }
    qt::MainFrame frame(dialogs, instanceKey);
    dialogs.SetParent(&frame);
    ui.Attach(
        &frame, [&frame](const QString& title) { frame.SetTitleText(title); },
        [&frame] { frame.InvalidateView(); });
    if (qEnvironmentVariableIsSet("AERIX_TIMING")) {
        frame.onFirstPaint = [&] {
            std::cerr << "first-paint-ms: " << started.elapsed() - splashMs
                      << " splash-ms: " << splashMs << std::endl;
        };
    }
    platform.ReportLoadProblems();
    if (options.database) {
        auto file = documents.parent_path() / (*options.database + ".CDB");
        ui.AnswerNextFileWith(file);
    }

    if (!frame.Logic().InitInstance())
        return 0;
    ui.ClearFileAnswers();

    // Armed first: a view or feed started below may open a dialog that runs its own loop.
    if (options.screenshot) {
        QString file = QString::fromStdString(*options.screenshot);
        QTimer::singleShot(static_cast<int>(options.screenshotAfter * 1000), &frame,
                           [&frame, file] {
                               qt::SaveScreenshot(frame, file);
                               frame.Logic().OnCommand(cmd::kExit);
                           });
    }
    if (options.view)
        frame.Logic().OnCommand(ViewCommand(*options.view));
    if (options.simulate)
        frame.Logic().OnCommand(cmd::kStartSimulation);
    if (options.playback &&
        qt::PutPlaybackFile(*options.playback,
                            platform.Root().ResolveForWrite("\\My Documents\\GpsData.txt"),
                            std::cerr))
        frame.Logic().OnCommand(options.fast ? cmd::kPlaybackFast : cmd::kPlaybackNorm);

    if (automatic) {
        QStringList lines;
        if (!qt::Automation::Load(qEnvironmentVariable("AERIX_SCRIPT"), &lines))
            return 1;
        (new qt::Automation(frame, ui, lines))->Start();
    }

    int code = 0;
    if (!frame.Logic().QuitRequested())
        code = app.exec();
    // The window goes: the exit sequence runs again, saving the settings a second time.
    frame.Logic().Destroy();
    return code;
}
