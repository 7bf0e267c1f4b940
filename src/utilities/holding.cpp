#include "utilities/holding.hpp"

#include <cmath>
#include <cstdio>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "utilities/crosswind.hpp"
#include "utilities/entry_text.hpp"

namespace aerix {

namespace {

double Normalize360(double degrees) {
    double d = std::fmod(degrees, 360.0);
    return d < 0 ? d + 360.0 : d;
}

bool ValidDirection(double degrees) {
    return degrees >= 0.0 && degrees <= 360.0;
}

// Ground speed along a course through a wind, from the wind triangle.
std::optional<double> GroundSpeed(double course, double tas, double windDirection,
                                  double windSpeed) {
    WindComponents w = RunwayWindComponents(course, windDirection, windSpeed);
    if (std::fabs(w.crosswind) >= tas)
        return std::nullopt;
    double gs = std::sqrt(tas * tas - w.crosswind * w.crosswind) - w.headwind;
    if (gs <= 0.0)
        return std::nullopt;
    return gs;
}

}  // namespace

std::string_view HoldingEntryName(HoldingEntry entry) {
    switch (entry) {
        case HoldingEntry::kDirect:
            return "Direct";
        case HoldingEntry::kTeardrop:
            return "Teardrop";
        case HoldingEntry::kParallel:
            return "Parallel";
    }
    return "";
}

HoldingEntry HoldingEntryFor(double inboundCourse, double heading, bool leftTurns) {
    // Angle of the heading clockwise from the inbound course, mirrored for left turns.
    double rel = Normalize360(heading - inboundCourse);
    if (leftTurns)
        rel = Normalize360(-rel);
    if (rel < 110.0 || rel >= 290.0)
        return HoldingEntry::kDirect;
    if (rel < 180.0)
        return HoldingEntry::kTeardrop;
    return HoldingEntry::kParallel;
}

double StandardOutboundSeconds(double altitudeFeet) {
    return altitudeFeet > 14000.0 ? 90.0 : 60.0;
}

std::optional<double> WindCorrectedOutboundSeconds(double inboundSeconds, double inboundCourse,
                                                   double tas, double windDirection,
                                                   double windSpeed) {
    auto in = GroundSpeed(inboundCourse, tas, windDirection, windSpeed);
    auto out = GroundSpeed(inboundCourse + 180.0, tas, windDirection, windSpeed);
    if (!in || !out)
        return std::nullopt;
    return inboundSeconds * *in / *out;
}

std::optional<HoldingPlan> PlanHolding(double inboundCourse, double heading, bool leftTurns,
                                       double altitudeFeet, double tas, double windDirection,
                                       double windSpeed) {
    HoldingPlan plan;
    plan.entry = HoldingEntryFor(inboundCourse, heading, leftTurns);
    plan.outboundCourse = Normalize360(inboundCourse + 180.0);
    plan.teardropHeading = Normalize360(plan.outboundCourse + (leftTurns ? 30.0 : -30.0));
    plan.outboundSeconds = StandardOutboundSeconds(altitudeFeet);
    if (tas > 0.0) {
        auto seconds = WindCorrectedOutboundSeconds(plan.outboundSeconds, inboundCourse, tas,
                                                    windDirection, windSpeed);
        if (!seconds)
            return std::nullopt;
        plan.outboundSeconds = *seconds;
    }
    return plan;
}

std::string FormatMinutesSeconds(double seconds) {
    long total = std::lround(seconds);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%ld:%02ld", total / 60, total % 60);
    return buf;
}

void HoldingDialog::Open() {
    platform::SetTitle(kTitle);
}

int HoldingDialog::Close() {
    platform::SetTitle("Aerix");
    return 1;
}

bool HoldingDialog::Compute() {
    entryText_.clear();
    outboundText_.clear();
    teardropText_.clear();
    auto inbound = ReadNumberField(inboundCourse, "Inbound course");
    if (!inbound)
        return false;
    auto hdg = ReadNumberField(heading, "Heading");
    if (!hdg)
        return false;
    if (!ValidDirection(*inbound) || !ValidDirection(*hdg)) {
        platform::ShowError("Courses and headings are 0 to 360 degrees");
        return false;
    }
    double feet = 0;
    if (!altitude.empty()) {
        auto value = ReadNumberField(altitude, "Altitude");
        if (!value)
            return false;
        feet = *value;
    }
    double speed = 0;
    double windFrom = 0;
    double windKt = 0;
    if (!tas.empty() || !windDirection.empty() || !windSpeed.empty()) {
        auto t = ReadNumberField(tas, "True airspeed");
        if (!t)
            return false;
        auto d = ReadNumberField(windDirection, "Wind direction");
        if (!d)
            return false;
        auto s = ReadNumberField(windSpeed, "Wind speed");
        if (!s)
            return false;
        std::string error;
        if (!(*t > 0.0 && *t <= 1000.0))
            error = "True airspeed must be 1 to 1000 kt";
        else
            CheckWind(*d, *s, error);
        if (!error.empty()) {
            platform::ShowError(error);
            return false;
        }
        speed = *t;
        windFrom = *d;
        windKt = *s;
    }
    auto plan = PlanHolding(*inbound, *hdg, leftTurns, feet, speed, windFrom, windKt);
    if (!plan) {
        platform::ShowError("The wind is too strong for this airspeed to hold");
        return false;
    }
    plan_ = *plan;

    char buf[64];
    entryText_ = HoldingEntryName(plan_.entry);
    // In the reference the pilot entered: magnetic, as the chart and the controller give it.
    std::snprintf(buf, sizeof buf, "Outbound %03ld\u00B0M for %s",
                  std::lround(plan_.outboundCourse) % 360,
                  FormatMinutesSeconds(plan_.outboundSeconds).c_str());
    outboundText_ = buf;
    if (plan_.entry == HoldingEntry::kTeardrop) {
        std::snprintf(buf, sizeof buf, "Teardrop heading %03ld\u00B0M",
                      std::lround(plan_.teardropHeading) % 360);
        teardropText_ = buf;
    }
    return true;
}

}  // namespace aerix
