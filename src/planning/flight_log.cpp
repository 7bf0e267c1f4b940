#include "planning/flight_log.hpp"

#include <cmath>
#include <cstdio>

#include "app/state/app_state.hpp"
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
std::string FlightLogRow::Wind() const {
    return Utf16ToUtf8(sector.WindText);
}
std::string FlightLogRow::Tas() const {
    return std::to_string(sector.TrueAirspeed);
}
std::string FlightLogRow::TrueCourse() const {
    return Format("%03.0f", sector.TrueCourse);
}
std::string FlightLogRow::MagHeading() const {
    return Format("%03.0f", sector.MagneticHeading);
}
std::string FlightLogRow::Distance() const {
    return Format("%.1f", sector.Distance);
}
std::string FlightLogRow::GroundSpeed() const {
    return std::to_string(sector.GroundSpeed);
}
std::string FlightLogRow::Time() const {
    return FormatLogTime(sector.Time);
}
std::string FlightLogRow::Fuel() const {
    return Format("%.1f", sector.Fuel);
}

std::string FormatLogTime(double minutes) {
    if (!std::isfinite(minutes) || minutes < 0 || minutes > 1e6)
        return "--:--";
    long whole = std::lround(minutes);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%ld:%02ld", whole / 60, whole % 60);
    return buf;
}

FlightLog BuildFlightLog() {
    FlightLog log;
    if (g_app.ActivePlanName.empty())
        return log;
    auto h = platform::Sys().store->OpenDatabase(platform::kObjectStoreVolume,
                                                 g_app.ActivePlanName.view(), schema::kSecNumber,
                                                 platform::kOpenAutoIncrement);
    for (std::uint32_t i = 0; h; ++i) {
        FlightLogRow row;
        row.oid = ReadSector(h, kFromCurrent, 0, row.sector);
        if (row.oid == 0)
            break;
        row.active = g_app.GpsSource != kSourceNone && i == g_app.ActiveSectorIndex;
        row.highlighted = i == g_app.HighlightedSector;
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

constexpr const char* kNumbers = " %6s %6s %4s %4s %4s %6s %4s %6s %6s\n";
constexpr std::size_t kNameWidth = 22;

}  // namespace

std::string FlightLogTable(const FlightLog& log) {
    std::string out =
        "  #   " + Column("From", kNameWidth) + " " + Column("To", kNameWidth) +
        Numbers(kNumbers, "Alt", "Wind", "TAS", "TC", "MH", "Dist", "GS", "Time", "Fuel");
    for (const FlightLogRow& r : log.rows) {
        char number[16];
        std::snprintf(number, sizeof number, "%c %-3d ", r.active ? '>' : ' ',
                      r.sector.SectorNumber);
        out += number + Column(r.From(), kNameWidth) + " " + Column(r.To(), kNameWidth) +
               Numbers(kNumbers, r.Altitude(), r.Wind(), r.Tas(), r.TrueCourse(), r.MagHeading(),
                       r.Distance(), r.GroundSpeed(), r.Time(), r.Fuel());
    }
    out += "      " + Column("Total", kNameWidth) + " " + Column("", kNameWidth) +
           Numbers(kNumbers, "", "", "", "", "", Format("%.1f", log.totalDistance), "",
                   FormatLogTime(log.totalTime), Format("%.1f", log.totalFuel));
    return out;
}

}  // namespace aerix
