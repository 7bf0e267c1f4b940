// The splash picture: drawn by the program (name, a compass rose with an aircraft, version) and
// written as a bitmap file "splash2" into the data root the first time it is missing.
#pragma once

#include <QImage>
#include <QString>

namespace aerix::qt {

QImage DrawSplashImage();
// Writes the splash to path unless a file is there; false when it cannot be written.
bool EnsureSplashFile(const QString& path);

}  // namespace aerix::qt
