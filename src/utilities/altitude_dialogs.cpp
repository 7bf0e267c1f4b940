#include "utilities/altitude_dialogs.hpp"

#include <cstdio>
#include <optional>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "utilities/altimetry.hpp"
#include "utilities/entry_text.hpp"

namespace aerix {

namespace {

std::optional<double> ReadQnh(const std::string& text) {
    auto value = ReadNumberField(text, "QNH");
    if (!value)
        return std::nullopt;
    auto hpa = QnhFromEntry(*value);
    if (!hpa)
        platform::ShowError("QNH must be 800 to 1100 hPa or 23.6 to 32.5 inches");
    return hpa;
}

std::optional<double> ReadAltitude(const std::string& text, std::string_view label) {
    auto value = ReadNumberField(text, label);
    if (!value)
        return std::nullopt;
    std::string error;
    if (!CheckAltitude(*value, label, error)) {
        platform::ShowError(error);
        return std::nullopt;
    }
    return value;
}

std::optional<double> ReadTemperature(const std::string& text) {
    auto value = ReadNumberField(text, "Temperature");
    if (!value)
        return std::nullopt;
    std::string error;
    if (!CheckTemperature(*value, error)) {
        platform::ShowError(error);
        return std::nullopt;
    }
    return value;
}

}  // namespace

std::string FormatFeet(double feet) {
    char buf[48];
    std::snprintf(buf, sizeof buf, "%.0f ft", feet);
    return buf;
}

void PressureDensityDialog::Open() {
    platform::SetTitle(kTitle);
}

int PressureDensityDialog::Close() {
    platform::SetTitle("Aerix");
    return 1;
}

bool PressureDensityDialog::Compute() {
    pressureText_.clear();
    densityText_.clear();
    auto elev = ReadAltitude(elevation, "Elevation");
    if (!elev)
        return false;
    auto hpa = ReadQnh(qnh);
    if (!hpa)
        return false;
    pressureAltitude_ = PressureAltitude(*elev, *hpa);
    pressureText_ = FormatFeet(pressureAltitude_);
    if (temperature.empty())
        return true;
    auto oat = ReadTemperature(temperature);
    if (!oat)
        return false;
    densityAltitude_ = DensityAltitude(pressureAltitude_, *oat);
    densityText_ = FormatFeet(densityAltitude_);
    return true;
}

void TrueAltitudeDialog::Open() {
    platform::SetTitle(kTitle);
}

int TrueAltitudeDialog::Close() {
    platform::SetTitle("Aerix");
    return 1;
}

bool TrueAltitudeDialog::Compute() {
    trueText_.clear();
    auto ind = ReadAltitude(indicated, "Indicated altitude");
    if (!ind)
        return false;
    auto hpa = ReadQnh(qnh);
    if (!hpa)
        return false;
    auto oat = ReadTemperature(temperature);
    if (!oat)
        return false;
    double station = 0;
    if (!stationElevation.empty()) {
        auto value = ReadAltitude(stationElevation, "Station elevation");
        if (!value)
            return false;
        station = *value;
    }
    trueAltitude_ = TrueAltitude(*ind, *hpa, *oat, station);
    trueText_ = FormatFeet(trueAltitude_);
    return true;
}

}  // namespace aerix
