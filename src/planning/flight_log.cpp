#include "planning/flight_log.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "platform/services.hpp"
#include "platform/text.hpp"
#include "store/record_store.hpp"

namespace aerix {

namespace {

std::string Format(const char* format, double value) {
    if (!std::isfinite(value))
        return "---";
    char buf[64];
    std::snprintf(buf, sizeof buf, format, value);
    return buf;
}

// "°T" in the window, "T" on a terminal.
std::string Reference(LogStyle style, char reference) {
    return (style == LogStyle::kWindow ? "\u00B0" : "") + std::string(1, reference);
}

// Whole degrees, three digits, with the reference.
std::string Direction(double degrees, LogStyle style, char reference) {
    if (!std::isfinite(degrees))
        return "---";
    return Format("%03.0f", degrees) + Reference(style, reference);
}

std::string NameOr(const std::u16string& name, const std::u16string& ident) {
    return Utf16ToUtf8(name.empty() ? ident : name);
}

}  // namespace

std::string FlightLogRow::From() const {
    return NameOr(sector.Text401, sector.Text403);
}
std::string FlightLogRow::To() const {
    return NameOr(sector.Text402, sector.Text404);
}
std::string FlightLogRow::Altitude() const {
    return Utf16ToUtf8(sector.AltitudeText);
}
std::string FlightLogRow::Wind(LogStyle style) const {
    // Stored as "ddd/ss": the direction (true, from) and the speed in knots.
    std::string text = Utf16ToUtf8(sector.WindText);
    auto slash = text.find('/');
    if (slash == std::string::npos)
        return text;
    return text.substr(0, slash) + Reference(style, 'T') + "/" + text.substr(slash + 1) +
           (style == LogStyle::kWindow ? "kt" : "");
}
std::string FlightLogRow::Tas() const {
    return std::to_string(sector.TrueAirspeed);
}
std::string FlightLogRow::TrueCourse(LogStyle style) const {
    return Direction(sector.TrueCourse, style, 'T');
}
std::string FlightLogRow::MagHeading(LogStyle style) const {
    return Direction(sector.MagneticHeading, style, 'M');
}
std::string FlightLogRow::Distance() const {
    return Format("%.1f", sector.Distance);
}
std::string FlightLogRow::GroundSpeed(LogStyle style) const {
    if (!Flyable())
        return style == LogStyle::kWindow ? "GS \u2264 0" : "GS <= 0";
    return std::to_string(sector.GroundSpeed);
}
std::string FlightLogRow::Time() const {
    return Flyable() ? FormatLogTime(sector.Time) : std::string(kNoTime);
}
std::string FlightLogRow::Fuel() const {
    return Flyable() ? Format("%.1f", sector.Fuel) : std::string(kNoFuel);
}

bool FlightLog::Flyable() const {
    for (const FlightLogRow& r : rows)
        if (!r.Flyable())
            return false;
    return true;
}
std::string FlightLog::TotalDistance() const {
    return Format("%.1f", totalDistance);
}
std::string FlightLog::TotalTime() const {
    return Flyable() ? FormatLogTime(totalTime) : std::string(kNoTime);
}
std::string FlightLog::TotalFuel() const {
    return Flyable() ? Format("%.1f", totalFuel) : std::string(kNoFuel);
}

std::string FormatLogTime(double minutes) {
    if (!std::isfinite(minutes) || minutes < 0 || minutes > 1e6)
        return "--:--";
    long whole = std::lround(minutes);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%ld:%02ld", whole / 60, whole % 60);
    return buf;
}

FlightLog BuildFlightLog(const SettingsState& settings, const PlanState& plan,
                         const LegState& leg) {
    FlightLog log;
    if (settings.ActivePlanName.empty())
        return log;
    auto h = platform::Sys().store->OpenDatabase(platform::kObjectStoreVolume,
                                                 settings.ActivePlanName.view(), schema::kSecNumber,
                                                 platform::kOpenAutoIncrement);
    for (std::uint32_t i = 0; h; ++i) {
        FlightLogRow row;
        row.oid = ReadSector(h, kFromCurrent, 0, row.sector);
        if (row.oid == 0)
            break;
        row.active = settings.GpsSource != kSourceNone && i == leg.ActiveSectorIndex;
        row.highlighted = i == plan.HighlightedSector;
        log.totalDistance += row.sector.Distance;
        log.totalTime += row.sector.Time;
        log.totalFuel += row.sector.Fuel;
        log.rows.push_back(std::move(row));
    }
    return log;
}

namespace {

// Pads or cuts to width characters (not bytes: names carry degree signs).
std::string Column(const std::string& text, std::size_t width) {
    std::u16string wide = Utf8ToUtf16(text);
    if (wide.size() > width)
        wide.resize(width);
    wide.append(width - wide.size(), u' ');
    return Utf16ToUtf8(wide);
}

std::string Numbers(const char* format, const std::string& a, const std::string& b,
                    const std::string& c, const std::string& d, const std::string& e,
                    const std::string& f, const std::string& g, const std::string& h,
                    const std::string& i) {
    char line[160];
    std::snprintf(line, sizeof line, format, a.c_str(), b.c_str(), c.c_str(), d.c_str(), e.c_str(),
                  f.c_str(), g.c_str(), h.c_str(), i.c_str());
    return line;
}

constexpr const char* kNumbers = " %6s %8s %4s %4s %4s %6s %7s %6s %6s\n";
// Names are as wide as the longest (a record keeps at most 35 characters).
std::size_t NameWidth(const FlightLog& log) {
    std::size_t width = 5;
    for (const FlightLogRow& r : log.rows)
        width = std::max({width, Utf8ToUtf16(r.From()).size(), Utf8ToUtf16(r.To()).size()});
    return std::min<std::size_t>(width, 35);
}

}  // namespace

std::string FlightLogTable(const FlightLog& log, std::string_view fuelUnit) {
    const std::size_t nameWidth = NameWidth(log);
    std::string out =
        "  #   " + Column("From", nameWidth) + " " + Column("To", nameWidth) +
        Numbers(kNumbers, "Alt", "Wind", "TAS", "TC", "MH", "Dist", "GS", "Time", "Fuel");
    out += "      " + Column("", nameWidth) + " " + Column("", nameWidth) +
           Numbers(kNumbers, "ft", "T/kt", "kt", "", "", "nm", "kt", "h:mm", std::string(fuelUnit));
    for (const FlightLogRow& r : log.rows) {
        char number[16];
        std::snprintf(number, sizeof number, "%c %-3d ", r.active ? '>' : ' ',
                      r.sector.SectorNumber);
        out += number + Column(r.From(), nameWidth) + " " + Column(r.To(), nameWidth) +
               Numbers(kNumbers, r.Altitude(), r.Wind(LogStyle::kConsole), r.Tas(),
                       r.TrueCourse(LogStyle::kConsole), r.MagHeading(LogStyle::kConsole),
                       r.Distance(), r.GroundSpeed(LogStyle::kConsole), r.Time(), r.Fuel());
    }
    out += "      " + Column("Total", nameWidth) + " " + Column("", nameWidth) +
           Numbers(kNumbers, "", "", "", "", "", log.TotalDistance(), "", log.TotalTime(),
                   log.TotalFuel());
    return out;
}

}  // namespace aerix
