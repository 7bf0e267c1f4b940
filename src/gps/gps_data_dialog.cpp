#include "gps/gps_data_dialog.hpp"

#include <cstdio>

#include "app/state/app_state.hpp"
#include "platform/services.hpp"

namespace aerix {

GpsDataTexts GpsDataDialogModel::Texts() const {
    GpsFix fix = g_app.PublishedFix.Snapshot();
    GpsDataTexts texts;
    texts.position = std::u16string(fix.positionText.view());
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%1.0f Kts", fix.groundSpeed);
    texts.speed = Utf8ToUtf16(buffer);
    std::snprintf(buffer, sizeof buffer, "%03.0f\u00B0m", fix.magneticTrack);
    texts.track = Utf8ToUtf16(buffer);
    return texts;
}

void GpsDataDialogModel::Close() {
    platform::Sys().ui->SetTitle("Aerix");
}

}  // namespace aerix
