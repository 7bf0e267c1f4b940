// Aerix shows and reads numbers with a decimal point whatever the desktop's locale. Making the
// Qt application sets the C library's locale from the environment (LANG, LC_ALL), which would
// give printf-style formatting a decimal comma; the numbers go back to the C convention here.
#pragma once

#include <QLocale>
#include <clocale>

namespace aerix::qt {

// Call right after the Q(Gui)Application is made.
inline void UseDecimalPoint() {
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
}

}  // namespace aerix::qt
