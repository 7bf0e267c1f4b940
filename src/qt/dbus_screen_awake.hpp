// Keeps the desktop from blanking the screen and from suspending for idleness, over D-Bus: the
// freedesktop screen saver's Inhibit on the session bus and logind's "idle:sleep" inhibitor lock
// on the system bus. Where a bus or a service is missing the call simply does nothing.
#pragma once

#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <optional>

#include "platform/screen_awake.hpp"

namespace aerix::qt {

class DbusScreenAwake : public QObject, public platform::ScreenAwake {
    Q_OBJECT
  public:
    explicit DbusScreenAwake(QObject* parent = nullptr);
    ~DbusScreenAwake() override;

  protected:
    void Inhibit() override;
    void Release() override;

  private:
    // Runs on this object's thread, where the replies arrive.
    void Want(bool awake);
    void AskScreenSaver();
    void AskLogind();

    bool wanted_ = false;
    bool screenSaverAsked_ = false;  // a request, or its cookie, is outstanding
    std::optional<uint> cookie_;
    bool logindAsked_ = false;
    QDBusUnixFileDescriptor sleepLock_;  // the lock lasts while the descriptor is open
};

}  // namespace aerix::qt
