#include "qt/graphics/headless.hpp"

#include <QGuiApplication>
#include <cstdio>

#include "platform/services.hpp"
#include "qt/decimal_point.hpp"
#include "qt/graphics/qt_graphics.hpp"

namespace aerix::qt {

namespace {

// QGuiApplication keeps references to these for its whole life.
int g_argc = 1;
char g_name[] = "aerix-tool";
char* g_argv[] = {g_name, nullptr};

// Without a session, Qt warns that it has no runtime folder; nothing here needs one, and the
// tools keep stderr for real messages.
void QuietMessages(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtWarningMsg && message.startsWith(QStringLiteral("QStandardPaths:")))
        return;
    std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
}

}  // namespace

struct HeadlessGraphics::Impl {
    std::unique_ptr<QGuiApplication> app;
    QtGraphics graphics;
    platform::Graphics* previous = nullptr;
};

HeadlessGraphics::HeadlessGraphics() : impl_(std::make_unique<Impl>()) {
    if (QCoreApplication::instance() == nullptr) {
        // Text needs a font database, which needs a platform; no display is needed for it.
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler(QuietMessages);
        impl_->app = std::make_unique<QGuiApplication>(g_argc, g_argv);
        UseDecimalPoint();
    }
    impl_->previous = platform::Sys().graphics;
    platform::Sys().graphics = &impl_->graphics;
}

HeadlessGraphics::~HeadlessGraphics() {
    platform::Sys().graphics = impl_->previous;
}

platform::Graphics& HeadlessGraphics::Graphics() {
    return impl_->graphics;
}

}  // namespace aerix::qt
