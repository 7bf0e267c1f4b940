// One QApplication for every test, on the offscreen platform.
#include <gtest/gtest.h>

#include <QApplication>

#include "qt/decimal_point.hpp"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    aerix::qt::UseDecimalPoint();  // as the program does
    QApplication::setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
