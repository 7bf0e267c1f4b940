#include "utilities/crosswind.hpp"

#include <cmath>
#include <cstdio>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "utilities/entry_text.hpp"

namespace aerix {

namespace {

constexpr double kToRadians = 0.017453292519943295;

}  // namespace

WindComponents RunwayWindComponents(double runwayHeading, double windDirection, double windSpeed) {
    double angle = (windDirection - runwayHeading) * kToRadians;
    WindComponents w;
    w.headwind = windSpeed * std::cos(angle);
    w.crosswind = windSpeed * std::sin(angle);
    // Keep a wind straight down the runway from reading as a crosswind of -0.
    if (std::fabs(w.crosswind) < 1e-9)
        w.crosswind = 0.0;
    if (std::fabs(w.headwind) < 1e-9)
        w.headwind = 0.0;
    return w;
}

std::optional<double> RunwayHeading(std::string_view runway) {
    while (!runway.empty() && runway.front() == ' ')
        runway.remove_prefix(1);
    while (!runway.empty() && runway.back() == ' ')
        runway.remove_suffix(1);
    if (!runway.empty()) {
        char side = runway.back();
        if (side == 'L' || side == 'C' || side == 'R' || side == 'l' || side == 'c' ||
            side == 'r') {
            runway.remove_suffix(1);
            if (runway.size() > 2)
                return std::nullopt;  // a suffix belongs to a designator only
        }
    }
    if (runway.empty() || runway.size() > 3)
        return std::nullopt;
    int value = 0;
    for (char ch : runway) {
        if (ch < '0' || ch > '9')
            return std::nullopt;
        value = value * 10 + (ch - '0');
    }
    if (runway.size() == 3)
        return value <= 360 ? std::optional<double>(value) : std::nullopt;
    if (value < 1 || value > 36)
        return std::nullopt;
    return value * 10.0;
}

bool CheckWind(double direction, double speed, std::string& error) {
    if (!(direction >= 0.0 && direction <= 360.0)) {
        error = "Wind direction must be 0 to 360 degrees";
        return false;
    }
    if (!(speed >= 0.0 && speed <= 300.0)) {
        error = "Wind speed must be 0 to 300 kt";
        return false;
    }
    return true;
}

void CrosswindDialog::Open() {
    platform::SetTitle(kTitle);
}

int CrosswindDialog::Close() {
    platform::SetTitle("Aerix");
    return 1;
}

bool CrosswindDialog::Compute() {
    headwindText_.clear();
    crosswindText_.clear();
    auto heading = RunwayHeading(runway);
    if (!heading) {
        platform::ShowError(
            "Runway: a number 01 to 36 (with L, C or R), or its heading 000 to 360");
        return false;
    }
    auto direction = ReadNumberField(windDirection, "Wind direction");
    if (!direction)
        return false;
    auto speed = ReadNumberField(windSpeed, "Wind speed");
    if (!speed)
        return false;
    std::string error;
    if (!CheckWind(*direction, *speed, error)) {
        platform::ShowError(error);
        return false;
    }
    result_ = RunwayWindComponents(*heading, *direction, *speed);

    char buf[64];
    long head = std::lround(result_.headwind);
    std::snprintf(buf, sizeof buf, "%s %ld kt", head < 0 ? "Tailwind" : "Headwind",
                  std::labs(head));
    headwindText_ = buf;
    long cross = std::lround(result_.crosswind);
    if (cross == 0)
        std::snprintf(buf, sizeof buf, "Crosswind 0 kt");
    else
        std::snprintf(buf, sizeof buf, "Crosswind %ld kt from the %s", std::labs(cross),
                      cross > 0 ? "right" : "left");
    crosswindText_ = buf;
    return true;
}

}  // namespace aerix
