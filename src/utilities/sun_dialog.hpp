// The "Sunrise/sunset" dialog model: a position (starting as the present fix) split into
// degrees, minutes and hundredths with hemisphere buttons, today's UTC date, and the results.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace aerix {

class SunDialog {
  public:
    enum Field {
        kLatDegrees,
        kLatMinutes,
        kLatHundredths,
        kLonDegrees,
        kLonMinutes,
        kLonHundredths,
        kFieldCount,
        kNoField = kFieldCount
    };

    static constexpr std::string_view kTitle = "Sunrise/sunset";

    // Shows the title, fills the fields from the position (the present fix, in CentiMinutes) and
    // the date line from the UTC clock, and computes.
    void Open(double latitude, double longitude);
    // The user typed into a field; the hundredths fields are held to 99.
    void Edit(Field field, std::string_view text);
    // The hemisphere buttons toggle N/S and E/W.
    void ToggleLatitudeHemisphere();
    void ToggleLongitudeHemisphere();
    // Reads the position and shows sunrise and sunset for today's UTC date. A field that is not
    // a whole number, or a position off the globe, is reported and leaves the results as they
    // were; returns false then.
    bool Compute();
    // Closes the dialog, giving the navigation bar back its "Aerix" title; returns 1.
    int Close();

    const std::string& Text(Field field) const { return fields_[field]; }
    void SetText(Field field, std::string_view text) { fields_[field] = text; }
    char LatitudeHemisphere() const { return latHemisphere_; }
    char LongitudeHemisphere() const { return lonHemisphere_; }
    const std::string& DateLine() const { return dateLine_; }
    const std::string& SunriseText() const { return sunrise_; }
    const std::string& SunsetText() const { return sunset_; }
    // The field that has the input focus (kNoField until a field is given it).
    Field Focus() const { return focus_; }
    void SetFocus(Field field) { focus_ = field; }

  private:
    std::array<std::string, kFieldCount> fields_;
    char latHemisphere_ = 'N';
    char lonHemisphere_ = 'E';
    std::string dateLine_;
    std::string sunrise_;
    std::string sunset_;
    Field focus_ = kNoField;
};

// Reads the control's signed integer; when it exceeds maximum, shows "Max %d", writes the maximum
// into the field and gives it the focus. Text that is not a number is left alone.
void LimitField(SunDialog& dialog, SunDialog::Field control, int maximum);

// "%02d:%02d" of a time in hours (whole hours, minutes truncated), for the sun dialog.
std::string FormatSunTime(double hours);

}  // namespace aerix
