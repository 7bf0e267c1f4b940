// Where the desktop has no inhibit service (no bus, as in these headless tests), holding the
// screen awake is quiet and the hold is still counted.
#include <gtest/gtest.h>

#include <QCoreApplication>

#include "qt/dbus_screen_awake.hpp"

namespace aerix::qt {
namespace {

TEST(DbusScreenAwake, WithoutADesktopServiceHoldingIsQuiet) {
    DbusScreenAwake awake;
    awake.Hold(platform::AwakeHolder::kGpsSlot, true);
    QCoreApplication::processEvents();
    EXPECT_TRUE(awake.Held());
    awake.Hold(platform::AwakeHolder::kGpsSlot, false);
    QCoreApplication::processEvents();
    EXPECT_FALSE(awake.Held());
}

}  // namespace
}  // namespace aerix::qt
