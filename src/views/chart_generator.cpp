#include "views/chart_generator.hpp"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "platform/data_root.hpp"
#include "platform/disk_space.hpp"
#include "platform/image_header.hpp"
#include "platform/message_box.hpp"
#include "platform/numeric.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "platform/text_numbers.hpp"
#include "views/map_geometry.hpp"
#include "views/raster.hpp"

namespace aerix {

using platform::Color;
using platform::Rgb;

namespace {

constexpr int kMargin = 35;
constexpr Color kSea = Rgb(178, 210, 235);
constexpr Color kLand = Rgb(240, 233, 200);
constexpr Color kCoast = Rgb(60, 100, 150);
constexpr Color kBorder = Rgb(140, 120, 140);
constexpr Color kGraticule = Rgb(100, 110, 160);
constexpr Color kAirport = Rgb(190, 0, 130);
constexpr Color kLabel = Rgb(30, 40, 90);

PointF Project(const MapCalibrationValues& c, const LonLat& p) {
    return {MapColumnExact(c, p.lon), MapRowExact(c, p.lat)};
}

std::vector<PointF> ProjectRing(const MapCalibrationValues& c, const Ring& ring) {
    std::vector<PointF> out;
    out.reserve(ring.size());
    for (const LonLat& p : ring)
        out.push_back(Project(c, p));
    return out;
}

// Longitude and latitude of a pixel.
double ColumnLon(const MapCalibrationValues& c, double x) {
    return c[kRefLon1] + (x - c[kRefX1]) * (c[kRefLon2] - c[kRefLon1]) / (c[kRefX2] - c[kRefX1]);
}
double RowLat(const MapCalibrationValues& c, double y) {
    return c[kRefLat1] + (y - c[kRefY1]) * (c[kRefLat2] - c[kRefLat1]) / (c[kRefY2] - c[kRefY1]);
}

std::string AngleLabel(double value, char positive, char negative, double step) {
    char hemisphere = value < 0 ? negative : positive;
    double a = std::fabs(value);
    int degrees = static_cast<int>(std::floor(a + 1e-9));
    int minutes = static_cast<int>(std::lround((a - degrees) * 60));
    if (minutes == 60) {
        ++degrees;
        minutes = 0;
    }
    char text[32];
    if (step >= 1.0 || minutes == 0)
        std::snprintf(text, sizeof text, "%d\xC2\xB0%c", degrees, hemisphere);
    else
        std::snprintf(text, sizeof text, "%d\xC2\xB0%02d'%c", degrees, minutes, hemisphere);
    return text;
}

void DrawAirportSymbol(platform::Bitmap& b, PointF p) {
    for (int i = 0; i < 32; ++i) {
        double a = i * (6.283185307179586 / 32);
        b.SetPixel(static_cast<int>(std::floor(p.x + 4 * std::cos(a))),
                   static_cast<int>(std::floor(p.y + 4 * std::sin(a))), kAirport);
    }
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            b.SetPixel(static_cast<int>(std::floor(p.x)) + dx,
                       static_cast<int>(std::floor(p.y)) + dy, kAirport);
}

bool Overlaps(const std::vector<platform::Rect>& taken, const platform::Rect& r) {
    return std::any_of(taken.begin(), taken.end(), [&](const platform::Rect& t) {
        return r.left < t.right && t.left < r.right && r.top < t.bottom && t.top < r.bottom;
    });
}

// Splits one line of the airports file, honouring quotes.
std::vector<std::string> CsvFields(const std::string& line) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (char ch : line) {
        if (ch == '"')
            quoted = !quoted;
        else if (ch == ',' && !quoted)
            fields.emplace_back();
        else if (ch != '\r')
            fields.back().push_back(ch);
    }
    return fields;
}

}  // namespace

platform::Point ChartSize(const MapCalibrationValues& c) {
    double east = std::max(MapColumnExact(c, c[kEastLimit]), MapColumnExact(c, c[kWestLimit]));
    double south = std::max(MapRowExact(c, c[kSouthLimit]), MapRowExact(c, c[kNorthLimit]));
    return {TruncInt32(east + 0.5) + kMargin, TruncInt32(south + 0.5) + kMargin};
}

double GraticuleStep(double pixelsPerDegree) {
    static constexpr double kSteps[] = {1.0 / 60, 2.0 / 60, 5.0 / 60, 10.0 / 60, 0.25, 0.5,
                                        1,        2,        5,        10,        15,   30};
    for (double step : kSteps)
        if (step * pixelsPerDegree >= 60)
            return step;
    return 30;
}

platform::Bitmap DrawChart(const MapCalibrationValues& c, const Topology& world,
                           const std::vector<ChartAirport>& airports, const std::string& title,
                           platform::Graphics* graphics) {
    platform::Point size = ChartSize(c);
    if (size.x <= 0 || size.y <= 0 || size.x > 20000 || size.y > 20000)
        return {};
    platform::Bitmap chart(size.x, size.y, kSea);

    std::vector<std::vector<PointF>> land;
    for (const Ring& ring : world.Rings("land"))
        land.push_back(ProjectRing(c, ring));
    FillRings(chart, land, kLand);
    for (const auto& ring : land) {
        std::vector<PointF> closed(ring);
        if (!closed.empty())
            closed.push_back(closed.front());
        DrawPolyline(chart, closed, kCoast);
    }
    for (int arc : world.SharedArcs("countries"))
        DrawPolyline(chart, ProjectRing(c, world.arcs[static_cast<std::size_t>(arc)]), kBorder, 3);

    // Graticule over the whole bitmap, margins included.
    const double pxPerDegree = std::fabs(c[kScaleNumber]) > 0 ? std::fabs(c[kScaleNumber]) : 1;
    const double step = GraticuleStep(pxPerDegree);
    const double lonA = ColumnLon(c, 0), lonB = ColumnLon(c, size.x);
    const double latA = RowLat(c, 0), latB = RowLat(c, size.y);
    std::vector<std::pair<double, std::string>> lonLines, latLines;
    for (double lon = std::ceil(std::min(lonA, lonB) / step) * step; lon <= std::max(lonA, lonB);
         lon += step) {
        double x = MapColumnExact(c, lon);
        DrawLine(chart, {x, 0}, {x, double(size.y - 1)}, kGraticule);
        lonLines.emplace_back(x, AngleLabel(lon, 'E', 'W', step));
    }
    for (double lat = std::ceil(std::min(latA, latB) / step) * step; lat <= std::max(latA, latB);
         lat += step) {
        double y = MapRowExact(c, lat);
        DrawLine(chart, {0, y}, {double(size.x - 1), y}, kGraticule);
        latLines.emplace_back(y, AngleLabel(lat, 'N', 'S', step));
    }

    std::vector<PointF> shown;
    std::vector<const ChartAirport*> named;
    for (const ChartAirport& a : airports) {
        if (!a.major && pxPerDegree < 5)
            continue;
        PointF p = Project(c, {a.longitude, a.latitude});
        if (p.x < 0 || p.y < 0 || p.x >= size.x || p.y >= size.y)
            continue;
        DrawAirportSymbol(chart, p);
        shown.push_back(p);
        named.push_back(&a);
    }

    if (graphics == nullptr)
        return chart;
    std::unique_ptr<platform::Canvas> canvas = graphics->CanvasOn(chart);
    if (!canvas)
        return chart;
    const unsigned single = platform::kTextSingleLine;
    std::vector<platform::Rect> taken;
    canvas->SetFont({10, true});
    for (const auto& [x, text] : lonLines) {
        platform::Rect r{TruncInt32(x) + 2, 2, TruncInt32(x) + 60, 14};
        canvas->DrawText(text, r, single, kLabel, kSea, true);
        platform::Rect b{r.left, size.y - 14, r.right, size.y - 2};
        canvas->DrawText(text, b, single, kLabel, kSea, true);
    }
    for (const auto& [y, text] : latLines) {
        platform::Rect r{2, TruncInt32(y) - 13, 60, TruncInt32(y) - 1};
        canvas->DrawText(text, r, single, kLabel, kSea, true);
        platform::Rect e{size.x - 62, r.top, size.x - 2, r.bottom};
        canvas->DrawText(text, e, single | platform::kTextRight, kLabel, kSea, true);
    }
    canvas->SetFont({9, false});
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const std::string& ident = named[i]->ident;
        int w = static_cast<int>(ident.size()) * 6 + 2;
        platform::Rect r{TruncInt32(shown[i].x) + 6, TruncInt32(shown[i].y) - 6,
                         TruncInt32(shown[i].x) + 6 + w, TruncInt32(shown[i].y) + 5};
        if (ident.empty() || Overlaps(taken, r))
            continue;
        taken.push_back(r);
        canvas->DrawText(ident, r, single, kAirport, kLand, true);
    }
    if (!title.empty()) {
        platform::Rect box{kMargin + 4, size.y - kMargin - 22, kMargin + 124, size.y - kMargin - 4};
        canvas->SetPen({platform::PenStyle::Solid, 1, kLabel});
        canvas->SetBrush({false, platform::kWhite});
        canvas->Rectangle(box);
        canvas->SetFont({11, true});
        canvas->DrawText(title, box, platform::kTextCenter | platform::kTextVCenter | single,
                         kLabel, platform::kWhite, true);
    }
    return chart;
}

std::vector<ChartAirport> LoadChartAirports() {
    std::vector<ChartAirport> airports;
    std::ifstream in(platform::ResourcePath("airports/airports.csv"));
    std::string line;
    if (!in || !std::getline(in, line))
        return airports;
    while (std::getline(in, line)) {
        std::vector<std::string> f = CsvFields(line);
        if (f.size() < 13)
            continue;
        ChartAirport a;
        a.ident = !f[12].empty() ? f[12] : f[1];
        a.major = f[2] == "large_airport";
        a.latitude = TextToDouble(f[4]);
        a.longitude = TextToDouble(f[5]);
        airports.push_back(std::move(a));
    }
    return airports;
}

bool ChartFileUsable(const std::string& file) {
    namespace fs = std::filesystem;
    std::error_code ec;
    const std::uintmax_t size = fs::file_size(file, ec);
    if (ec || size == 0)
        return false;
    // An uncompressed BMP is whole when the file holds every row its header promises.
    if (auto header = platform::ReadImageHeader(file); header && header->bytesNeeded > 0)
        return header->height > 0 && size >= header->bytesNeeded;
    platform::Graphics* graphics = platform::Sys().graphics;
    if (graphics == nullptr)
        return true;  // nothing here can tell
    platform::Bitmap decoded;
    std::string error;
    return graphics->LoadImage(file, &decoded, &error);
}

ChartGeneration GenerateMissingCharts(std::span<const MapRecord> records) {
    namespace fs = std::filesystem;
    auto& root = *platform::Sys().root;
    Topology world;
    bool loaded = false;
    std::vector<ChartAirport> airports;
    ChartGeneration result;
    for (const MapRecord& r : records) {
        if (r.Path.empty())
            continue;
        // A chart cut short by a full disk or a kill is drawn again.
        std::error_code ec;
        const fs::path existing = root.Resolve(r.Path);
        if (fs::exists(existing, ec) && ChartFileUsable(existing.string()))
            continue;
        if (!loaded) {
            if (!LoadTopology(platform::ResourcePath("natural-earth/countries-50m.json"), world)) {
                platform::ShowError("Chart data not found: natural-earth/countries-50m.json");
                ++result.failed;
                return result;
            }
            airports = LoadChartAirports();
            loaded = true;
        }
        std::string file = fs::path(Utf16ToUtf8(r.Path)).filename().string();
        std::size_t slash = file.find_last_of('\\');
        std::string title = file.substr(slash == std::string::npos ? 0 : slash + 1);
        title = title.substr(0, title.find('.'));
        std::transform(title.begin(), title.end(), title.begin(),
                       [](unsigned char ch) { return static_cast<char>(std::toupper(ch)); });
        platform::Bitmap chart =
            DrawChart(r.Calibration, world, airports, title, platform::Sys().graphics);
        const fs::path target = root.ResolveForWrite(r.Path);
        const fs::path partial = target.string() + ".part";
        errno = 0;
        bool written = !chart.Empty() && WriteBmp(partial.string(), chart);
        int err = errno;
        written = written && platform::SyncFile(partial) && ChartFileUsable(partial.string());
        if (written) {
            fs::rename(partial, target, ec);
            written = !ec;
            if (written)
                platform::SyncFolder(target.parent_path());
        }
        if (!written) {
            bool full = !chart.Empty() &&
                        (platform::IsOutOfSpace(err) || platform::NoRoomLeft(target.parent_path()));
            fs::remove(partial, ec);
            platform::ShowError("Could not write chart " + Utf16ToUtf8(r.Path) +
                                (full ? ": disk full" : ""));
            ++result.failed;
            result.diskFull = result.diskFull || full;
            continue;
        }
        ++result.drawn;
    }
    return result;
}

}  // namespace aerix
