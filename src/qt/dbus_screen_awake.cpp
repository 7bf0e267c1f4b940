#include "qt/dbus_screen_awake.hpp"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDir>
#include <QFileInfo>
#include <QThread>

namespace aerix::qt {

namespace {

const QString kScreenSaverService = QStringLiteral("org.freedesktop.ScreenSaver");
const QString kScreenSaverPath = QStringLiteral("/org/freedesktop/ScreenSaver");
const QString kLogindService = QStringLiteral("org.freedesktop.login1");
const QString kLogindPath = QStringLiteral("/org/freedesktop/login1");
const QString kLogindManager = QStringLiteral("org.freedesktop.login1.Manager");
const QString kWho = QStringLiteral("Aerix");
const QString kWhy = QStringLiteral("A GPS feed is running");

// Only a session bus that is there: asking for one that is not would have the D-Bus library
// start a daemon of its own.
bool SessionBusPresent() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(QDir(runtime).filePath(QStringLiteral("bus")));
}

}  // namespace

DbusScreenAwake::DbusScreenAwake(QObject* parent) : QObject(parent) {}

DbusScreenAwake::~DbusScreenAwake() {
    Want(false);
}

void DbusScreenAwake::Inhibit() {
    // A feed may stop itself from its own thread; the bus is used from this object's thread.
    if (QThread::currentThread() == thread())
        Want(true);
    else
        QMetaObject::invokeMethod(
            this, [this] { Want(true); }, Qt::QueuedConnection);
}

void DbusScreenAwake::Release() {
    if (QThread::currentThread() == thread())
        Want(false);
    else
        QMetaObject::invokeMethod(
            this, [this] { Want(false); }, Qt::QueuedConnection);
}

void DbusScreenAwake::Want(bool awake) {
    wanted_ = awake;
    if (awake) {
        if (!screenSaverAsked_)
            AskScreenSaver();
        if (!logindAsked_)
            AskLogind();
        return;
    }
    if (cookie_) {
        QDBusMessage un =
            QDBusMessage::createMethodCall(kScreenSaverService, kScreenSaverPath,
                                           kScreenSaverService, QStringLiteral("UnInhibit"));
        un << *cookie_;
        QDBusConnection::sessionBus().send(un);
        cookie_.reset();
        screenSaverAsked_ = false;
    }
    if (sleepLock_.isValid()) {
        sleepLock_ = QDBusUnixFileDescriptor();
        logindAsked_ = false;
    }
}

void DbusScreenAwake::AskScreenSaver() {
    if (!SessionBusPresent())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage call = QDBusMessage::createMethodCall(
        kScreenSaverService, kScreenSaverPath, kScreenSaverService, QStringLiteral("Inhibit"));
    call << kWho << kWhy;
    screenSaverAsked_ = true;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        QDBusPendingReply<uint> reply = *w;
        w->deleteLater();
        if (reply.isError()) {
            screenSaverAsked_ = false;  // no screen saver service: nothing to undo
            return;
        }
        cookie_ = reply.value();
        if (!wanted_)
            Want(false);  // released while the answer was on its way
    });
}

void DbusScreenAwake::AskLogind() {
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected())
        return;
    QDBusMessage call = QDBusMessage::createMethodCall(kLogindService, kLogindPath, kLogindManager,
                                                       QStringLiteral("Inhibit"));
    call << QStringLiteral("idle:sleep") << kWho << kWhy << QStringLiteral("block");
    logindAsked_ = true;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        QDBusPendingReply<QDBusUnixFileDescriptor> reply = *w;
        w->deleteLater();
        if (reply.isError() || !reply.value().isValid()) {
            logindAsked_ = false;
            return;
        }
        sleepLock_ = reply.value();
        if (!wanted_)
            Want(false);
    });
}

}  // namespace aerix::qt
