#include "store/waypoint_import.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <optional>
#include <unordered_set>

#include "platform/message_box.hpp"
#include "platform/prop_codec.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "platform/text_numbers.hpp"
#include "store/csv_line.hpp"
#include "store/nav_volume_scope.hpp"
#include "store/record_props.hpp"
#include "store/record_store.hpp"
#include "store/strict_number.hpp"

namespace aerix {

namespace {

constexpr double kFeetPerMetre = 1.0 / 0.3048;
// Elevations on Earth: the Dead Sea shore to above the highest summit; anything beyond is a
// broken file, not a place.
constexpr double kLowestFeet = -1500.0;
constexpr double kHighestFeet = 30000.0;
// Radio aids are tuned below 1 GHz; a larger number is not a frequency.
constexpr double kHighestKhz = 1000000.0;

std::string_view Trim(std::string_view s) {
    return TrimBlanks(s);
}

std::string Lower(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

bool EndsWith(std::string_view s, std::string_view suffix) {
    return s.size() >= suffix.size() && Lower(s.substr(s.size() - suffix.size())) == suffix;
}

bool IsUtf8(std::string_view s) {
    for (std::size_t i = 0; i < s.size();) {
        auto c = static_cast<unsigned char>(s[i]);
        std::size_t extra = c < 0x80             ? 0
                            : (c & 0xE0) == 0xC0 ? 1
                            : (c & 0xF0) == 0xE0 ? 2
                            : (c & 0xF8) == 0xF0 ? 3
                                                 : 4;
        if (extra == 4)
            return false;
        for (std::size_t k = 1; k <= extra; ++k)
            if (i + k >= s.size() || (static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80)
                return false;
        i += extra + 1;
    }
    return true;
}

// A text cut to the characters the in-memory database keeps, never inside a surrogate pair.
std::u16string Cut(std::u16string text, std::size_t chars) {
    if (text.size() > chars) {
        text.resize(chars);
        if (!text.empty() && text.back() >= 0xD800 && text.back() <= 0xDBFF)
            text.pop_back();
    }
    return text;
}

std::optional<double> Number(std::string_view text) {
    return StrictNumber(text);
}

// Degrees to whole CentiMinutes, rounded to the nearest.
std::int32_t DegreesToCentiMinutes(double degrees) {
    return static_cast<std::int32_t>(std::lround(degrees * 6000.0));
}

// A length with its unit ("1200m", "0.6nm", "0.4ml", "400ft"); bare numbers are metres.
std::optional<double> LengthInMetres(std::string_view text) {
    text = Trim(text);
    std::string lower = Lower(text);
    struct Unit {
        const char* suffix;
        double metres;
    };
    static constexpr Unit units[] = {
        {"nm", 1852.0}, {"ml", 1609.344}, {"ft", 0.3048}, {"km", 1000.0}, {"m", 1.0}};
    for (const Unit& u : units) {
        if (EndsWith(lower, u.suffix)) {
            auto n =
                Number(std::string_view(lower).substr(0, lower.size() - std::strlen(u.suffix)));
            if (!n)
                return std::nullopt;
            return *n * u.metres;
        }
    }
    return Number(text);
}

// The runway designator pair for a runway direction in degrees: 87 -> "09/27".
std::u16string RunwayDesignator(int direction) {
    int first = static_cast<int>(std::lround(direction / 10.0)) % 36;
    if (first == 0)
        first = 36;
    int second = (first + 18 - 1) % 36 + 1;
    char text[8];
    std::snprintf(text, sizeof text, "%02d/%02d", std::min(first, second), std::max(first, second));
    return Utf8ToUtf16(text);
}

std::int16_t CupStyleToType(int style) {
    switch (style) {
        case 2:
        case 4:
        case 5:
            return 1;
        case 9:
            return 3;
        case 10:
            return 4;
        case 17:
            return 5;
        case 19:
            return 7;
        default:
            return 6;
    }
}

// Column positions looked up by header name; -1 when the file has no such column.
class Columns {
  public:
    Columns() = default;
    explicit Columns(const std::vector<std::string>& header) {
        for (std::size_t i = 0; i < header.size(); ++i)
            names_.push_back(Lower(Trim(header[i])));
    }
    int operator[](std::string_view name) const {
        for (std::size_t i = 0; i < names_.size(); ++i)
            if (names_[i] == name)
                return static_cast<int>(i);
        return -1;
    }
    bool Has(std::string_view name) const { return (*this)[name] >= 0; }

  private:
    std::vector<std::string> names_;
};

// The fields of one data line, by column name.
class Row {
  public:
    Row(const Columns& columns, const std::vector<std::string>& fields, bool latin1)
        : columns_(columns), fields_(fields), latin1_(latin1) {}
    std::string_view Raw(std::string_view column) const {
        int i = columns_[column];
        return i >= 0 && static_cast<std::size_t>(i) < fields_.size()
                   ? Trim(fields_[static_cast<std::size_t>(i)])
                   : std::string_view();
    }
    std::u16string Text(std::string_view column) const {
        return latin1_ ? BytesToUtf16(Raw(column)) : Utf8ToUtf16(Raw(column));
    }

  private:
    const Columns& columns_;
    const std::vector<std::string>& fields_;
    bool latin1_;
};

class Parser {
  public:
    Parser(std::string_view text, std::string_view fileName) : text_(text), fileName_(fileName) {
        latin1_ = !IsUtf8(text);
        if (text_.starts_with("\xEF\xBB\xBF"))
            text_.remove_prefix(3);
    }

    WaypointParse Run() {
        std::vector<std::string> fields;
        int number = 0;
        bool headerSeen = false;
        std::size_t at = 0;
        while (at < text_.size()) {
            std::size_t end = text_.find('\n', at);
            std::string_view line =
                text_.substr(at, end == std::string_view::npos ? std::string_view::npos : end - at);
            at = end == std::string_view::npos ? text_.size() : end + 1;
            ++number;
            if (!line.empty() && line.back() == '\r')
                line.remove_suffix(1);
            if (Trim(line).empty())
                continue;
            if (out_.format == WaypointFormat::kCup && Trim(line).starts_with("-----"))
                break;  // the task section that follows the waypoints
            bool closed = SplitCsvLine(line, fields);
            if (!headerSeen) {
                headerSeen = true;
                if (TakeHeader(fields))
                    continue;
                if (out_.format == WaypointFormat::kUnknown) {
                    Problem(number, "not a SeeYou .cup, airports.csv or navaids.csv header");
                    return std::move(out_);
                }
            }
            if (!closed) {
                Problem(number, "a quoted field is not closed");
                continue;
            }
            if (line.find('\0') != std::string_view::npos) {
                Problem(number, "a NUL byte in the line");
                continue;
            }
            TakeLine(number, fields);
        }
        return std::move(out_);
    }

  private:
    bool TakeHeader(const std::vector<std::string>& fields) {
        Columns columns(fields);
        if (columns.Has("frequency_khz") && columns.Has("latitude_deg")) {
            out_.format = WaypointFormat::kNavaids;
        } else if (columns.Has("latitude_deg") && columns.Has("type")) {
            out_.format = WaypointFormat::kAirports;
        } else if (columns.Has("name") && columns.Has("lat") && columns.Has("lon")) {
            out_.format = WaypointFormat::kCup;
        } else if (EndsWith(fileName_, ".cup")) {
            // No header: the columns in their documented order.
            out_.format = WaypointFormat::kCup;
            columns_ = Columns({"name", "code", "country", "lat", "lon", "elev", "style", "rwdir",
                                "rwlen", "freq", "desc"});
            return false;
        } else {
            return false;
        }
        columns_ = columns;
        return true;
    }

    void Problem(int line, std::string message) {
        out_.problems.push_back({line, std::move(message)});
    }

    void TakeLine(int number, const std::vector<std::string>& fields) {
        Row row(columns_, fields, latin1_);
        WaypointRecord r;
        std::string error;
        bool ok = false;
        switch (out_.format) {
            case WaypointFormat::kCup:
                ok = CupRecord(row, r, error);
                break;
            case WaypointFormat::kAirports:
                ok = AirportRecord(row, r, error);
                break;
            case WaypointFormat::kNavaids:
                ok = NavaidRecord(row, r, error);
                break;
            case WaypointFormat::kUnknown:
                break;
        }
        if (ok) {
            out_.records.push_back(std::move(r));
        } else if (error.empty()) {
            ++out_.ignored;
        } else {
            Problem(number, error);
        }
    }

    // Name, ident (cut to fit) and country; false without a name.
    static bool Names(const Row& row, std::string_view name, std::string_view ident,
                      std::string_view country, WaypointRecord& r, std::string& error) {
        r.Name = Cut(row.Text(name), kWptNameChars);
        if (r.Name.empty()) {
            error = "no name";
            return false;
        }
        r.Ident = Cut(row.Text(ident), kWptIdentChars);
        r.ExtraText = Cut(row.Text(country), kWptExtraChars);
        return true;
    }

    static bool DecimalPosition(const Row& row, WaypointRecord& r, std::string& error) {
        auto lat = Number(row.Raw("latitude_deg"));
        auto lon = Number(row.Raw("longitude_deg"));
        if (!lat || !lon || std::fabs(*lat) > 90.0 || std::fabs(*lon) > 180.0) {
            error = "bad latitude or longitude";
            return false;
        }
        r.Latitude = DegreesToCentiMinutes(*lat);
        r.Longitude = DegreesToCentiMinutes(*lon);
        return true;
    }

    static bool ElevationFeet(std::string_view text, WaypointRecord& r, std::string& error) {
        if (text.empty())
            return true;
        auto feet = Number(text);
        if (!feet) {
            error = "bad elevation";
            return false;
        }
        return KeepElevation(*feet, r, error);
    }

    static bool KeepElevation(double feet, WaypointRecord& r, std::string& error) {
        if (!(feet >= kLowestFeet && feet <= kHighestFeet)) {
            error = "elevation out of range";
            return false;
        }
        r.Value104 = feet;
        return true;
    }

    bool CupRecord(const Row& row, WaypointRecord& r, std::string& error) const {
        if (!Names(row, "name", "code", "country", r, error))
            return false;
        std::int32_t cmLat = 0, cmLon = 0;
        if (!ParseCupCoordinate(row.Raw("lat"), true, &cmLat) ||
            !ParseCupCoordinate(row.Raw("lon"), false, &cmLon)) {
            error = "bad latitude or longitude";
            return false;
        }
        r.Latitude = cmLat;
        r.Longitude = cmLon;
        if (!row.Raw("elev").empty()) {
            auto metres = LengthInMetres(row.Raw("elev"));
            if (!metres) {
                error = "bad elevation";
                return false;
            }
            if (!KeepElevation(std::round(*metres * kFeetPerMetre), r, error))
                return false;
        }
        int style = 0;
        if (!row.Raw("style").empty()) {
            auto s = Number(row.Raw("style"));
            if (!s) {
                error = "bad style";
                return false;
            }
            // A style beyond the known ones is an unknown style, however large.
            style = *s >= 0 && *s < 100 ? static_cast<int>(*s) : 0;
        }
        r.WaypointType = CupStyleToType(style);
        if (!row.Raw("rwdir").empty()) {
            auto dir = Number(row.Raw("rwdir"));
            if (!dir || *dir < 0 || *dir > 360) {
                error = "bad runway direction";
                return false;
            }
            r.FurtherTexts[kWptRunway] = RunwayDesignator(static_cast<int>(*dir));
        }
        if (!row.Raw("rwlen").empty()) {
            auto len = LengthInMetres(row.Raw("rwlen"));
            if (!len || *len < 0) {
                error = "bad runway length";
                return false;
            }
            r.Number107 = static_cast<std::int16_t>(std::lround(std::min(*len, 32767.0)));
        }
        r.Text106 = row.Text("freq");
        r.FurtherTexts[kWptMunicipality] = row.Text("desc");
        r.FurtherTexts[kWptSource] = u"cup";
        return true;
    }

    static bool AirportRecord(const Row& row, WaypointRecord& r, std::string& error) {
        std::string type = Lower(row.Raw("type"));
        if (type == "large_airport" || type == "medium_airport" || type == "small_airport") {
            r.WaypointType = 1;
        } else if (type == "heliport") {
            r.WaypointType = 8;
        } else if (type == "seaplane_base") {
            r.WaypointType = 9;
        } else if (type == "balloonport") {
            r.WaypointType = 6;
        } else if (type == "closed") {
            return false;  // ignored, not an error
        } else {
            error = "unknown airport type \"" + std::string(row.Raw("type")) + "\"";
            return false;
        }
        if (!Names(row, "name", "ident", "iso_country", r, error) ||
            !DecimalPosition(row, r, error) || !ElevationFeet(row.Raw("elevation_ft"), r, error))
            return false;
        // An ident too long to keep (OurAirports' own "AF-0005") gives way to a code that fits.
        if (row.Raw("ident").size() > kWptIdentChars) {
            for (const char* alt : {"gps_code", "local_code", "iata_code"}) {
                std::u16string code = row.Text(alt);
                if (!code.empty() && code.size() <= kWptIdentChars) {
                    r.Ident = code;
                    break;
                }
            }
        }
        r.FurtherTexts[kWptMunicipality] = row.Text("municipality");
        r.FurtherTexts[kWptSource] = u"ourairports";
        return true;
    }

    static bool NavaidRecord(const Row& row, WaypointRecord& r, std::string& error) {
        std::string type = Lower(row.Raw("type"));
        bool ndb = type == "ndb" || type == "ndb-dme";
        if (type == "vor") {
            r.WaypointType = 3;
        } else if (type == "vor-dme" || type == "vortac" || type == "dme" || type == "tacan") {
            r.WaypointType = 2;
        } else if (ndb) {
            r.WaypointType = 4;
        } else {
            error = "unknown navaid type \"" + std::string(row.Raw("type")) + "\"";
            return false;
        }
        if (!Names(row, "name", "ident", "iso_country", r, error) ||
            !DecimalPosition(row, r, error) || !ElevationFeet(row.Raw("elevation_ft"), r, error))
            return false;
        if (!row.Raw("frequency_khz").empty()) {
            auto khz = Number(row.Raw("frequency_khz"));
            if (!khz || !(*khz > 0 && *khz <= kHighestKhz)) {
                error = "bad frequency";
                return false;
            }
            // NDBs are tuned in kHz, the VHF aids in MHz.
            char text[32];
            if (ndb)
                std::snprintf(text, sizeof text, "%g", *khz);
            else
                std::snprintf(text, sizeof text, "%.3f", *khz / 1000.0);
            r.Text106 = Utf8ToUtf16(text);
        }
        r.FurtherTexts[kWptMunicipality] = row.Text("associated_airport");
        r.FurtherTexts[kWptSource] = u"ourairports";
        return true;
    }

    std::string_view text_;
    std::string_view fileName_;
    bool latin1_ = false;
    Columns columns_;
    WaypointParse out_;
};

std::string RecordKey(const WaypointRecord& r) {
    std::vector<std::uint8_t> blob;
    platform::EncodeProps(ToProps(r), blob);
    return std::string(blob.begin(), blob.end());
}

}  // namespace

bool ParseCupCoordinate(std::string_view text, bool latitude, std::int32_t* centiMinutes) {
    text = Trim(text);
    if (text.size() < 2)
        return false;
    char hemisphere = static_cast<char>(std::toupper(static_cast<unsigned char>(text.back())));
    bool positive = hemisphere == (latitude ? 'N' : 'E');
    if (!positive && hemisphere != (latitude ? 'S' : 'W'))
        return false;
    std::string_view number = text.substr(0, text.size() - 1);
    std::size_t dot = number.find('.');
    std::size_t whole = dot == std::string_view::npos ? number.size() : dot;
    // Degrees then two digits of whole minutes: DDMM.mmm or DDDMM.mmm.
    if (whole != (latitude ? 4u : 5u))
        return false;
    auto value = Number(number);
    if (!value || number.front() == '-' || number.front() == '+')
        return false;
    double degrees = std::floor(*value / 100.0);
    double minutes = *value - degrees * 100.0;
    if (minutes >= 60.0 || degrees + minutes / 60.0 > (latitude ? 90.0 : 180.0))
        return false;
    auto cm = static_cast<std::int32_t>(std::lround((degrees * 60.0 + minutes) * 100.0));
    *centiMinutes = positive ? cm : -cm;
    return true;
}

WaypointParse ParseWaypointFile(std::string_view text, std::string_view fileName) {
    return Parser(text, fileName).Run();
}

WaypointImportResult ImportWaypoints(NavDataState& nav, std::u16string_view databaseName,
                                     std::span<const WaypointRecord> records) {
    NavVolumeScope volume(nav, databaseName);
    if (!volume.Mounted())
        return {};
    return ImportWaypointsIntoMountedVolume(nav, databaseName, records);
}

WaypointImportResult ImportWaypointsIntoMountedVolume(const NavDataState& nav,
                                                      std::u16string_view databaseName,
                                                      std::span<const WaypointRecord> records) {
    WaypointImportResult result;
    // A database that is not there yet is made, not reported.
    DbHandle h =
        platform::Sys().store->OpenDatabase(platform::VolumeGuid{nav.NavVolumeGuid}, databaseName,
                                            schema::kWptName, platform::kOpenAutoIncrement);
    if (!h) {
        if (CreateNavDatabase(nav, databaseName) == 0) {
            platform::ShowError("Could not create Nav database");
            return result;
        }
        h = OpenNavDatabase(nav, databaseName, schema::kWptName);
        if (!h)
            return result;
    }
    std::unordered_set<std::string> present;
    for (;;) {
        WaypointRecord w;
        if (ReadWaypoint(h, kFromCurrent, 0, w) == 0)
            break;
        present.insert(RecordKey(w));
    }
    // One transaction for the whole import: fast, and a failure keeps the database as it was.
    h.BeginBatch();
    for (const WaypointRecord& r : records) {
        if (!present.insert(RecordKey(r)).second) {
            ++result.duplicates;
            continue;
        }
        if (WriteWaypoint(h, r) == 0) {
            result.added = 0;
            return result;  // said "Record write failed"; closing the handle drops the batch
        }
        ++result.added;
    }
    if (!h.CommitBatch()) {
        platform::ShowError("Record write failed");
        result.added = 0;
        return result;
    }
    result.ok = true;
    return result;
}

}  // namespace aerix
