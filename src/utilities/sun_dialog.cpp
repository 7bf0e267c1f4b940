#include "utilities/sun_dialog.hpp"

#include <cmath>
#include <cstdio>
#include <optional>

#include "platform/message_box.hpp"
#include "platform/numeric.hpp"
#include "platform/services.hpp"
#include "utilities/entry_text.hpp"
#include "utilities/sun_times.hpp"

namespace aerix {

namespace {

constexpr double kMinutesToDegrees = 0.016666666666666666;
constexpr double kHundredthsToDegrees = 0.00016666666666666666;

std::string Format(const char* format, int value) {
    char buf[24];
    std::snprintf(buf, sizeof buf, format, value);
    return buf;
}

// CentiMinutes are hundredths of a minute already; rounding the whole value (rather than the
// hundredths alone) carries 12.996' up to 13.00' instead of showing 100 hundredths.
void SplitAngle(double centiMinutes, const char* degreeFormat, std::string& degrees,
                std::string& minutes, std::string& hundredths) {
    double total = std::round(std::fabs(centiMinutes));
    int whole = TruncInt32(total);
    degrees = Format(degreeFormat, whole / 6000);
    minutes = Format("%02d", whole % 6000 / 100);
    hundredths = Format("%02d", whole % 100);
}

std::optional<double> ReadAngle(const SunDialog& dialog, SunDialog::Field first) {
    double parts[3];
    for (int i = 0; i < 3; ++i) {
        auto value = ParseWholeNumber(dialog.Text(static_cast<SunDialog::Field>(first + i)));
        if (!value || *value < 0 || *value > 1000000)
            return std::nullopt;
        parts[i] = static_cast<double>(*value);
    }
    return parts[0] + parts[1] * kMinutesToDegrees + parts[2] * kHundredthsToDegrees;
}

}  // namespace

void SunDialog::Open(double latitude, double longitude) {
    platform::Sys().ui->SetTitle(kTitle);
    SplitAngle(latitude, "%02d", fields_[kLatDegrees], fields_[kLatMinutes],
               fields_[kLatHundredths]);
    SplitAngle(longitude, "%03d", fields_[kLonDegrees], fields_[kLonMinutes],
               fields_[kLonHundredths]);
    latHemisphere_ = latitude < 0 ? 'S' : 'N';
    lonHemisphere_ = longitude < 0 ? 'W' : 'E';

    platform::UtcTime now = platform::Sys().clock->UtcNow();
    char line[48];
    std::snprintf(line, sizeof line, "UTC time %02d/%02d/%d", now.day, now.month, now.year);
    dateLine_ = line;
    Compute();
}

void SunDialog::Edit(Field field, std::string_view text) {
    fields_[field] = text;
    if (field == kLatHundredths || field == kLonHundredths)
        LimitField(*this, field, 99);
}

void SunDialog::ToggleLatitudeHemisphere() {
    latHemisphere_ = latHemisphere_ == 'N' ? 'S' : 'N';
}

void SunDialog::ToggleLongitudeHemisphere() {
    lonHemisphere_ = lonHemisphere_ == 'E' ? 'W' : 'E';
}

bool SunDialog::Compute() {
    auto latitude = ReadAngle(*this, kLatDegrees);
    auto longitude = ReadAngle(*this, kLonDegrees);
    if (!latitude || !longitude) {
        platform::ShowError("Degrees, minutes and hundredths are whole numbers");
        return false;
    }
    if (*latitude > 90.0) {
        platform::ShowError("Latitude is at most 90 degrees");
        return false;
    }
    if (*longitude > 180.0) {
        platform::ShowError("Longitude is at most 180 degrees");
        return false;
    }
    if (latHemisphere_ == 'S')
        *latitude = -*latitude;
    if (lonHemisphere_ == 'W')
        *longitude = -*longitude;

    double rise = 0;
    double set = 0;
    SunTimes(*latitude, *longitude, platform::Sys().clock->UtcNow(), rise, set);
    sunrise_ = (rise == kSunNeverRises || rise == kSunNeverSets) ? "no rise" : FormatSunTime(rise);
    sunset_ = (set == kSunNeverRises || set == kSunNeverSets) ? "no set" : FormatSunTime(set);
    return true;
}

int SunDialog::Close() {
    platform::Sys().ui->SetTitle("Aerix");
    return 1;
}

void LimitField(SunDialog& dialog, SunDialog::Field control, int maximum) {
    auto value = ParseWholeNumber(dialog.Text(control));
    if (!value || *value <= maximum)
        return;
    platform::ShowError(Format("Max %d", maximum));
    dialog.SetText(control, Format("%d", maximum));
    dialog.SetFocus(control);
}

std::string FormatSunTime(double hours) {
    int whole = TruncInt32(hours);
    int minutes = TruncInt32((hours - whole) * 60.0);
    char buf[24];
    std::snprintf(buf, sizeof buf, "%02d:%02d", whole, minutes);
    return buf;
}

}  // namespace aerix
