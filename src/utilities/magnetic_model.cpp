#include "utilities/magnetic_model.hpp"

#include <charconv>
#include <chrono>
#include <cmath>
#include <fstream>
#include <memory>
#include <mutex>
#include <sstream>

#include "platform/data_root.hpp"
#include "platform/text_numbers.hpp"

namespace aerix {

namespace {

constexpr double kToRadians = 0.017453292519943295;
constexpr double kToDegrees = 57.29577951308232;
constexpr double kReferenceRadiusKm = 6371.2;
// WGS84 ellipsoid.
constexpr double kSemiMajorKm = 6378.137;
constexpr double kFlattening = 1.0 / 298.257223563;
constexpr double kEccentricity2 = kFlattening * (2.0 - kFlattening);
constexpr double kFeetToKm = 0.0003048;
// The largest degree we accept; WMM is 12, the high-resolution models go far beyond what
// navigation needs.
constexpr int kMaxDegree = 20;

constexpr int Index(int n, int m) {
    return n * (n + 1) / 2 + m;
}

// Splits a line at spaces and tabs.
std::vector<std::string_view> Words(std::string_view line) {
    std::vector<std::string_view> words;
    std::size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r'))
            ++i;
        std::size_t start = i;
        while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r')
            ++i;
        if (i > start)
            words.push_back(line.substr(start, i - start));
    }
    return words;
}

template <typename T>
bool ReadNumber(std::string_view word, T& value) {
    auto [end, ec] = std::from_chars(word.data(), word.data() + word.size(), value);
    if constexpr (std::is_floating_point_v<T>) {
        if (!std::isfinite(value))
            return false;
    }
    return ec == std::errc() && end == word.data() + word.size();
}

std::string LineError(std::string_view source, int line, std::string_view what) {
    return "Magnetic model " + std::string(source) + " line " + std::to_string(line) + ": " +
           std::string(what);
}

}  // namespace

std::optional<MagneticModel> MagneticModel::Load(const std::filesystem::path& path,
                                                 std::string& error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = "Magnetic model " + path.string() + " cannot be read";
        return std::nullopt;
    }
    std::ostringstream text;
    text << in.rdbuf();
    if (in.bad()) {
        error = "Magnetic model " + path.string() + " cannot be read";
        return std::nullopt;
    }
    return Parse(text.str(), path.string(), error);
}

std::optional<MagneticModel> MagneticModel::Parse(std::string_view text, std::string_view source,
                                                  std::string& error) {
    MagneticModel model;
    const int size = Index(kMaxDegree, kMaxDegree) + 1;
    model.g_.assign(size, 0.0);
    model.h_.assign(size, 0.0);
    model.gDot_.assign(size, 0.0);
    model.hDot_.assign(size, 0.0);
    std::vector<bool> seen(size, false);

    auto fail = [&](int line, std::string_view what) {
        error = LineError(source, line, what);
        return std::optional<MagneticModel>();
    };

    bool header = false;
    bool terminated = false;
    int lineNumber = 0;
    std::size_t pos = 0;
    while (pos < text.size() && !terminated) {
        std::size_t end = text.find('\n', pos);
        if (end == std::string_view::npos)
            end = text.size();
        std::string_view line = text.substr(pos, end - pos);
        pos = end + 1;
        ++lineNumber;
        auto words = Words(line);
        if (words.empty())
            continue;
        if (!header) {
            // "    2025.0            WMM-2025     11/13/2024": epoch, name, release date.
            if (words.size() < 2 || !ReadNumber(words[0], model.epoch_) || model.epoch_ < 1900.0 ||
                model.epoch_ > 2200.0)
                return fail(lineNumber, "expected the epoch and model name");
            model.name_ = std::string(words[1]);
            header = true;
            continue;
        }
        if (words[0].starts_with("9999")) {
            terminated = true;
            break;
        }
        int n = 0;
        int m = 0;
        double values[4];
        bool good = words.size() == 6 && ReadNumber(words[0], n) && ReadNumber(words[1], m);
        for (int i = 0; good && i < 4; ++i)
            good = ReadNumber(words[2 + i], values[i]);
        if (!good)
            return fail(lineNumber, "expected n m g h gdot hdot");
        if (n < 1 || n > kMaxDegree || m < 0 || m > n)
            return fail(lineNumber, "degree or order out of range");
        int k = Index(n, m);
        if (seen[k])
            return fail(lineNumber, "coefficient given twice");
        seen[k] = true;
        model.g_[k] = values[0];
        model.h_[k] = values[1];
        model.gDot_[k] = values[2];
        model.hDot_[k] = values[3];
        model.maxDegree_ = std::max(model.maxDegree_, n);
    }

    std::string what;
    if (!header)
        what = "the file is empty";
    else if (model.maxDegree_ == 0)
        what = "no coefficients";
    else if (!terminated)
        what = "the file is cut short (no 9999 line at its end)";
    for (int n = 1; what.empty() && n <= model.maxDegree_; ++n) {
        for (int m = 0; m <= n; ++m) {
            if (!seen[Index(n, m)]) {
                what = "coefficient n=" + std::to_string(n) + " m=" + std::to_string(m) +
                       " is missing";
                break;
            }
        }
    }
    if (!what.empty()) {
        error = "Magnetic model " + std::string(source) + ": " + what;
        return std::nullopt;
    }
    return model;
}

MagneticField MagneticModel::Field(double latitude, double longitude, double heightKm,
                                   double year) const {
    // Geodetic (WGS84) to geocentric spherical coordinates.
    double phi = latitude * kToRadians;
    double sinPhi = std::sin(phi);
    double cosPhi = std::cos(phi);
    double rc = kSemiMajorKm / std::sqrt(1.0 - kEccentricity2 * sinPhi * sinPhi);
    double p = (rc + heightKm) * cosPhi;
    double z = (rc * (1.0 - kEccentricity2) + heightKm) * sinPhi;
    double r = std::hypot(p, z);
    double phiC = std::asin(z / r);
    double s = std::sin(phiC);
    double c = std::cos(phiC);
    // At a pole the east component has no direction; stay a hair off it.
    if (c < 1e-12)
        c = 1e-12;
    double lambda = longitude * kToRadians;
    double dt = year - epoch_;

    // Schmidt semi-normalised associated Legendre functions of sin(phiC) and their derivatives
    // with respect to phiC, by the standard recurrences.
    const int count = Index(maxDegree_, maxDegree_) + 1;
    std::vector<double> pnm(count, 0.0);
    std::vector<double> dpnm(count, 0.0);
    pnm[0] = 1.0;
    for (int n = 1; n <= maxDegree_; ++n) {
        if (n == 1) {
            pnm[Index(1, 1)] = c;
            dpnm[Index(1, 1)] = -s;
        } else {
            double k = std::sqrt((2.0 * n - 1.0) / (2.0 * n));
            const int prev = Index(n - 1, n - 1);
            pnm[Index(n, n)] = k * c * pnm[prev];
            dpnm[Index(n, n)] = k * (c * dpnm[prev] - s * pnm[prev]);
        }
        for (int m = 0; m < n; ++m) {
            double a = 2.0 * n - 1.0;
            double b = std::sqrt(static_cast<double>((n - 1) * (n - 1) - m * m));
            double d = std::sqrt(static_cast<double>(n * n - m * m));
            const int one = Index(n - 1, m);
            double p2 = m <= n - 2 ? pnm[Index(n - 2, m)] : 0.0;
            double dp2 = m <= n - 2 ? dpnm[Index(n - 2, m)] : 0.0;
            pnm[Index(n, m)] = (a * s * pnm[one] - b * p2) / d;
            dpnm[Index(n, m)] = (a * (c * pnm[one] + s * dpnm[one]) - b * dp2) / d;
        }
    }

    // Field components in the geocentric frame (north, east, down).
    double xc = 0;
    double yc = 0;
    double zc = 0;
    double ratio = kReferenceRadiusKm / r;
    double ratioPower = ratio * ratio;  // (a/r)^(n+2), starting at n = 0
    for (int n = 1; n <= maxDegree_; ++n) {
        ratioPower *= ratio;
        for (int m = 0; m <= n; ++m) {
            const int k = Index(n, m);
            double g = g_[k] + dt * gDot_[k];
            double h = h_[k] + dt * hDot_[k];
            double cosM = std::cos(m * lambda);
            double sinM = std::sin(m * lambda);
            double gh = g * cosM + h * sinM;
            xc -= ratioPower * gh * dpnm[k];
            yc += ratioPower * m * (g * sinM - h * cosM) * pnm[k] / c;
            zc -= ratioPower * (n + 1) * gh * pnm[k];
        }
    }

    // Rotate to the geodetic frame.
    double psi = phiC - phi;
    MagneticField field;
    field.north = xc * std::cos(psi) - zc * std::sin(psi);
    field.east = yc;
    field.down = xc * std::sin(psi) + zc * std::cos(psi);
    field.declination = kToDegrees * std::atan2(field.east, field.north);
    field.inclination = kToDegrees * std::atan2(field.down, std::hypot(field.north, field.east));
    return field;
}

double DecimalYear(const platform::UtcTime& date) {
    std::int64_t start = platform::UnixMsFromUtc({date.year, 1, 1, 0, 0, 0, 0});
    std::int64_t next = platform::UnixMsFromUtc({date.year + 1, 1, 1, 0, 0, 0, 0});
    std::int64_t now = platform::UnixMsFromUtc(date);
    return date.year + static_cast<double>(now - start) / static_cast<double>(next - start);
}

MagneticVariationResult MagneticVariation(const MagneticModel& model, double latitude,
                                          double longitude, double altitudeFeet,
                                          const platform::UtcTime& date) {
    MagneticVariationResult result;
    result.decimalYear = DecimalYear(date);
    // Height above mean sea level stands in for height above the ellipsoid: the geoid is
    // within about 100 m of it, far below what moves the variation.
    MagneticField field =
        model.Field(latitude, longitude, altitudeFeet * kFeetToKm, result.decimalYear);
    result.ok = true;
    result.declination = field.declination;
    result.variation = -field.declination;
    if (result.decimalYear < model.Epoch() || result.decimalYear > model.ValidUntil()) {
        result.outsideValidity = true;
        result.message = "The date is outside the years of the magnetic model " + model.Name() +
                         " (" + FormatFixed(model.Epoch(), 1) + " to " +
                         FormatFixed(model.ValidUntil(), 1) + "); the variation is extrapolated";
    }
    return result;
}

MagneticVariationResult MagneticVariation(double latitude, double longitude, double altitudeFeet,
                                          const platform::UtcTime& date) {
    // Loaded once. A failed load is tried again (the file may be put back), but not on every
    // paint: at most every few seconds, its message kept in between.
    static std::mutex mutex;
    static std::unique_ptr<const MagneticModel> installed;
    static std::string lastError;
    static std::chrono::steady_clock::time_point lastTry;
    constexpr auto kRetryAfter = std::chrono::seconds(10);
    const MagneticModel* model = nullptr;
    std::string error;
    {
        std::lock_guard lock(mutex);
        auto now = std::chrono::steady_clock::now();
        if (!installed && (lastError.empty() || now - lastTry >= kRetryAfter)) {
            lastTry = now;
            lastError.clear();
            if (auto loaded = MagneticModel::Load(platform::ResourcePath("wmm/WMM.COF"), lastError))
                installed = std::make_unique<const MagneticModel>(std::move(*loaded));
            else if (lastError.empty())
                lastError = "The magnetic model could not be loaded";
        }
        model = installed.get();
        error = lastError;
    }
    if (!model) {
        MagneticVariationResult result;
        result.decimalYear = DecimalYear(date);
        result.message = error;
        return result;
    }
    return MagneticVariation(*model, latitude, longitude, altitudeFeet, date);
}

}  // namespace aerix
