#include "gps/gps_data_dialog.hpp"

#include <cstdio>

#include "gps/direction_reference.hpp"
#include "platform/services.hpp"

namespace aerix {

GpsDataTexts GpsDataDialogModel::Texts(const GpsState& gps) const {
    GpsFix fix = gps.PublishedFix.Snapshot();
    GpsDataTexts texts;
    texts.position = std::u16string(fix.positionText.view());
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%1.0f Kts", fix.groundSpeed);
    texts.speed = Utf8ToUtf16(buffer);
    // The track in the reference every view uses: the receiver's variation, else the model's.
    DirectionReference reference =
        ChooseDirectionReference(fix, fix.positionKnown, fix.latitude, fix.longitude, nullptr);
    texts.track = Utf8ToUtf16(DirectionText(fix.trueTrack, reference, fix.positionKnown));
    return texts;
}

void GpsDataDialogModel::Close() {
    platform::Sys().ui->SetTitle("Aerix");
}

}  // namespace aerix
