#include "store/openair_import.hpp"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <optional>
#include <sstream>

#include "platform/numbered_backup.hpp"
#include "platform/text.hpp"
#include "platform/text_numbers.hpp"
#include "store/field_splitter.hpp"

namespace aerix {

namespace fs = std::filesystem;

namespace {

constexpr double kNmToCentiMinutes = 100.0;  // one CentiMinute of latitude is 1/100 nm
constexpr double kDegreesToRadians = 0.017453292519943295;
constexpr double kCentiMinutesToRadians = kDegreesToRadians / 6000.0;
// Airspace is drawn within a few hundred miles of its centre; anything larger is a typing error
// or a number that is not one (inf, nan), and would put points off the globe.
constexpr double kMaxRadiusNm = 1000.0;
constexpr double kMaxLatitude = 90.0 * 6000.0;
constexpr double kMaxLongitude = 360.0 * 6000.0;  // an arc may run past the date line

// Bearing (degrees true) and distance (nm) from a centre to a point on the local plane: exact
// enough for the few tens of miles of an airspace arc, and free of any nudge for due north.
void BearingFromCentre(double centreLat, double centreLon, double lat, double lon, double* bearing,
                       double* distance) {
    double north = (lat - centreLat) / kNmToCentiMinutes;
    double east = (lon - centreLon) / kNmToCentiMinutes *
                  std::cos((lat + centreLat) * 0.5 * kCentiMinutesToRadians);
    *distance = std::hypot(north, east);
    *bearing = std::fmod(std::atan2(east, north) / kDegreesToRadians + 360.0, 360.0);
}

std::string_view Trim(std::string_view s) {
    return TrimBlanks(s);
}

// One angle: "52:30:15", "52:30.25", "52.5" in degrees; stops before the hemisphere letter.
std::optional<double> ParseAngle(std::string_view& s) {
    double parts[3] = {0, 0, 0};
    int count = 0;
    while (count < 3) {
        s = Trim(s);
        std::size_t n = 0;
        while (n < s.size() && (std::isdigit(static_cast<unsigned char>(s[n])) || s[n] == '.'))
            ++n;
        if (n == 0)
            return std::nullopt;
        parts[count++] = TextToDouble(s.substr(0, n));
        s.remove_prefix(n);
        if (s.empty() || s.front() != ':')
            break;
        s.remove_prefix(1);
    }
    if (parts[1] >= 60 || parts[2] >= 60)
        return std::nullopt;
    return parts[0] + parts[1] / 60.0 + parts[2] / 3600.0;
}

std::optional<double> ParseHemisphere(std::string_view& s, char positive, char negative,
                                      double degrees, double limit) {
    s = Trim(s);
    if (s.empty())
        return std::nullopt;
    char h = static_cast<char>(std::toupper(static_cast<unsigned char>(s.front())));
    if (h != positive && h != negative)
        return std::nullopt;
    s.remove_prefix(1);
    if (degrees > limit)
        return std::nullopt;
    return h == positive ? degrees : -degrees;
}

std::string Latin1(std::string_view utf8) {
    std::string out;
    for (char16_t c : Utf8ToUtf16(utf8)) {
        char b = c < 0x100 ? static_cast<char>(c) : '?';
        if (b == kFieldSeparator || b == '\r' || b == '\n')
            b = ' ';
        out += b;
    }
    return out;
}

struct Element {
    std::string keyword;
    double latitude = 0, longitude = 0;
    double a = 0, b = 0, c = 0;
    int d = 0;
};

class Converter {
  public:
    OpenAirConversion result;

    void Line(int number, std::string_view raw) {
        number_ = number;
        std::string_view line = Trim(raw);
        if (line.empty() || line.front() == '*')
            return;
        std::size_t space = line.find_first_of(" \t");
        std::string command(line.substr(0, space));
        for (auto& ch : command)
            ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
        std::string_view rest = space == std::string_view::npos ? "" : Trim(line.substr(space));
        if (line.find('\0') != std::string_view::npos) {
            // The airspace a broken AC line starts is left out whole, not merged into the last.
            if (command == "AC")
                Flush();
            return Problem("a NUL byte in the line");
        }
        if (command == "AC") {
            Flush();
            className_ = std::string(rest);
            inAirspace_ = true;
        } else if (command == "AN") {
            name_ = std::string(rest);
        } else if (command == "AL" || command == "AH" || command == "AT" || command == "SP" ||
                   command == "SB" || command == "AY" || command == "AF" || command == "AG") {
            // Levels, labels and pens have no place in the outline file.
        } else if (!inAirspace_) {
            Problem("a drawing command before any AC");
        } else if (command == "V") {
            Variable(rest);
        } else if (command == "DP") {
            Point(rest);
        } else if (command == "DA") {
            ArcByAngles(rest);
        } else if (command == "DB") {
            ArcByPoints(rest);
        } else if (command == "DC") {
            Circle(rest);
        } else {
            Problem("unknown command \"" + command + "\"");
        }
    }

    void Finish() { Flush(); }

  private:
    void Problem(std::string message) { result.problems.push_back({number_, std::move(message)}); }

    void Variable(std::string_view rest) {
        std::size_t eq = rest.find('=');
        if (eq == std::string_view::npos)
            return Problem("V needs NAME=value");
        std::string_view key = Trim(rest.substr(0, eq));
        std::string_view value = Trim(rest.substr(eq + 1));
        if (key == "X" || key == "x") {
            double lat = 0, lon = 0;
            if (!ParseOpenAirCoordinate(value, &lat, &lon))
                return Problem("bad centre coordinate");
            centreLat_ = lat;
            centreLon_ = lon;
            haveCentre_ = true;
        } else if (key == "D" || key == "d") {
            if (value == "+") {
                clockwise_ = true;
            } else if (value == "-") {
                clockwise_ = false;
            } else {
                Problem("V D= takes + or -");
            }
        }
    }

    void Point(std::string_view rest) {
        double lat = 0, lon = 0;
        if (!ParseOpenAirCoordinate(rest, &lat, &lon))
            return Problem("bad coordinate");
        Add({elements_.empty() ? Label() : "GLINETO", lat, lon});
        if (!haveFirst_) {
            firstLat_ = lat;
            firstLon_ = lon;
            haveFirst_ = true;
        }
        lastLat_ = lat;
        lastLon_ = lon;
        polygon_ = true;
    }

    void ArcByAngles(std::string_view rest) {
        if (!haveCentre_)
            return Problem("an arc needs a centre (V X=) first");
        double v[3];
        for (int i = 0; i < 3; ++i) {
            std::size_t comma = rest.find(',');
            std::string_view part = Trim(rest.substr(0, comma));
            if (part.empty() || (!std::isdigit(static_cast<unsigned char>(part[0])) &&
                                 part[0] != '.' && part[0] != '-')) {
                return Problem("DA takes radius, start and end angles");
            }
            v[i] = TextToDouble(part);
            if (comma == std::string_view::npos && i < 2) {
                return Problem("DA takes radius, start and end angles");
            }
            rest = comma == std::string_view::npos ? "" : rest.substr(comma + 1);
        }
        if (!(v[0] > 0))
            return Problem("an arc's radius must be positive");
        if (!(v[0] <= kMaxRadiusNm))
            return Problem("an arc's radius is over 1000 nm");
        if (!(std::fabs(v[1]) <= 360.0 && std::fabs(v[2]) <= 360.0))
            return Problem("an arc's angles must lie between -360 and 360");
        AddArc(v[0], v[1], v[2]);
    }

    void ArcByPoints(std::string_view rest) {
        if (!haveCentre_)
            return Problem("an arc needs a centre (V X=) first");
        std::size_t comma = rest.find(',');
        double lat1 = 0, lon1 = 0, lat2 = 0, lon2 = 0;
        if (comma == std::string_view::npos ||
            !ParseOpenAirCoordinate(rest.substr(0, comma), &lat1, &lon1) ||
            !ParseOpenAirCoordinate(rest.substr(comma + 1), &lat2, &lon2)) {
            return Problem("DB takes two coordinates");
        }
        double start = 0, radius = 0, end = 0, ignored = 0;
        BearingFromCentre(centreLat_, centreLon_, lat1, lon1, &start, &radius);
        BearingFromCentre(centreLat_, centreLon_, lat2, lon2, &end, &ignored);
        if (!(radius <= kMaxRadiusNm))
            return Problem("an arc's radius is over 1000 nm");
        AddArc(radius, start, end);
    }

    void AddArc(double radius, double start, double end) {
        if (elements_.empty()) {
            // The outline starts where the arc starts.
            double rad = start * kDegreesToRadians;
            double lat = centreLat_ + radius * kNmToCentiMinutes * std::cos(rad);
            double lon = centreLon_ + radius * kNmToCentiMinutes * std::sin(rad) /
                                          std::cos(centreLat_ * kCentiMinutesToRadians);
            // Near a pole the start point's longitude runs away.
            if (!(std::fabs(lat) <= kMaxLatitude && std::fabs(lon) <= kMaxLongitude))
                return Problem("the arc runs over a pole");
            Add({Label(), lat, lon});
        }
        Add({"ARC", centreLat_, centreLon_, radius, start, end, clockwise_ ? 1 : -1});
        polygon_ = false;  // the outline is closed by its own elements
    }

    void Circle(std::string_view rest) {
        if (!haveCentre_)
            return Problem("a circle needs a centre (V X=) first");
        double radius = TextToDouble(rest);
        if (!(radius > 0))
            return Problem("DC takes a positive radius in nautical miles");
        if (radius > kMaxRadiusNm)
            return Problem("a circle's radius is over 1000 nm");
        if (elements_.empty())
            Add({Label(), centreLat_, centreLon_});
        Add({"CIRCLE", centreLat_, centreLon_, radius});
        polygon_ = false;
    }

    std::string Label() const {
        std::string label = Latin1(name_.empty() ? className_ : name_);
        label = std::string(Trim(label));
        if (label.empty())
            label = "AIRSPACE";
        if (label.size() > 9)
            label.resize(9);
        if (label == "GLINETO" || label == "CIRCLE" || label == "ARC")
            label += "_";
        return label;
    }

    void Add(Element e) { elements_.push_back(std::move(e)); }

    void Flush() {
        if (!elements_.empty()) {
            // Polygons close back on their first point.
            if (polygon_ && haveFirst_ && (lastLat_ != firstLat_ || lastLon_ != firstLon_)) {
                Add({"GLINETO", firstLat_, firstLon_});
            }
            for (const auto& e : elements_)
                Write(e);
            ++result.outlines;
        }
        elements_.clear();
        name_.clear();
        className_.clear();
        haveCentre_ = false;
        haveFirst_ = false;
        clockwise_ = true;
        polygon_ = false;
        inAirspace_ = false;
    }

    void Write(const Element& e) {
        char numbers[160];
        std::snprintf(numbers, sizeof numbers, "%ld%c%ld%c%.4f%c%.4f%c%.4f%c%d%c",
                      std::lround(e.latitude), kFieldSeparator, std::lround(e.longitude),
                      kFieldSeparator, e.a, kFieldSeparator, e.b, kFieldSeparator, e.c,
                      kFieldSeparator, e.d, kFieldSeparator);
        result.text += e.keyword + kFieldSeparator + numbers + "\r\n";
        ++result.lines;
    }

    int number_ = 0;
    bool inAirspace_ = false;
    std::string className_, name_;
    std::vector<Element> elements_;
    bool haveCentre_ = false, clockwise_ = true, haveFirst_ = false, polygon_ = false;
    double centreLat_ = 0, centreLon_ = 0, firstLat_ = 0, firstLon_ = 0, lastLat_ = 0, lastLon_ = 0;
};

}  // namespace

bool ParseOpenAirCoordinate(std::string_view text, double* latitude, double* longitude) {
    std::string_view s = text;
    auto latDegrees = ParseAngle(s);
    if (!latDegrees)
        return false;
    auto lat = ParseHemisphere(s, 'N', 'S', *latDegrees, 90.0);
    if (!lat)
        return false;
    auto lonDegrees = ParseAngle(s);
    if (!lonDegrees)
        return false;
    auto lon = ParseHemisphere(s, 'E', 'W', *lonDegrees, 180.0);
    if (!lon || !Trim(s).empty())
        return false;
    *latitude = *lat * 6000.0;
    *longitude = *lon * 6000.0;
    return true;
}

OpenAirConversion ConvertOpenAir(std::string_view input) {
    Converter converter;
    int number = 0;
    std::size_t pos = 0;
    while (pos <= input.size()) {
        std::size_t end = input.find('\n', pos);
        std::string_view line = input.substr(pos, end == std::string_view::npos ? end : end - pos);
        converter.Line(++number, line);
        if (end == std::string_view::npos)
            break;
        pos = end + 1;
    }
    converter.Finish();
    return std::move(converter.result);
}

OpenAirImport ImportOpenAir(const fs::path& source, const fs::path& target) {
    OpenAirImport result;
    std::string input;
    {
        std::ifstream in(source, std::ios::binary);
        if (!in.is_open()) {
            result.error = "cannot read " + source.string();
            return result;
        }
        std::stringstream text;
        text << in.rdbuf();
        input = text.str();
    }
    result.conversion = ConvertOpenAir(input);
    if (result.conversion.outlines == 0) {
        result.error = source.string() + ": no airspace found in it (no OpenAir AC line); " +
                       target.string() + " is unchanged";
        return result;
    }
    std::error_code ec;
    fs::create_directories(target.parent_path(), ec);
    fs::path tmp = target;
    tmp += ".tmp";
    {
        std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
        out << result.conversion.text;
        out.flush();
        if (!out) {
            fs::remove(tmp, ec);
            result.error =
                "cannot write " + tmp.string() + "; " + target.string() + " is unchanged";
            return result;
        }
    }
    result.backup = platform::KeepNumberedBackup(target, ec);
    if (ec) {
        fs::remove(tmp, ec);
        result.error =
            "cannot keep a copy of " + target.string() + ": " + ec.message() + "; it is unchanged";
        return result;
    }
    fs::rename(tmp, target, ec);
    if (ec) {
        result.error = "cannot replace " + target.string() + ": " + ec.message();
        return result;
    }
    result.ok = true;
    return result;
}

}  // namespace aerix
