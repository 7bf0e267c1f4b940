#include "utilities/magnetic_model.hpp"

#include <gtest/gtest.h>

#include "platform/data_root.hpp"
#include "support/test_platform.hpp"

namespace aerix {
namespace {

std::string CofText() {
    return testing::ReadFile(platform::ResourcePath("wmm/WMM.COF"));
}

TEST(MagneticModel, MatchesTheReferenceDeclinations) {
    std::string error;
    auto model = MagneticModel::Parse(CofText(), "WMM.COF", error);
    ASSERT_TRUE(model) << error;
    EXPECT_EQ(model->Name(), "WMM-2025");
    EXPECT_EQ(model->MaxDegree(), 12);

    struct Point {
        double year, heightKm, lat, lon, declination;
    };
    // NOAA's official test points for WMM2025.
    const Point points[] = {
        {2025.0, 0, 80, 0, 1.28},   {2025.0, 0, 0, 120, -0.16},   {2025.0, 0, -80, 240, 68.78},
        {2025.0, 100, 80, 0, 0.85}, {2025.0, 100, 0, 120, -0.15}, {2025.0, 100, -80, 240, 68.21},
        {2027.5, 0, 80, 0, 2.59},   {2027.5, 0, 0, 120, -0.24},   {2027.5, 0, -80, 240, 68.49},
        {2027.5, 100, 80, 0, 2.16}, {2027.5, 100, 0, 120, -0.23}, {2027.5, 100, -80, 240, 67.93},
    };
    for (const auto& p : points) {
        EXPECT_NEAR(model->Field(p.lat, p.lon, p.heightKm, p.year).declination, p.declination, 0.01)
            << p.year << " " << p.heightKm << " " << p.lat << " " << p.lon;
    }
}

TEST(MagneticModel, AirportVariationsFromTheInstalledModel) {
    struct Airport {
        const char* name;
        double lat, lon;
        platform::UtcTime date;
        double declination;
    };
    const Airport airports[] = {
        {"Heathrow", 51.4775, -0.4614, {2026, 6, 15}, 1.05},
        {"San Francisco", 37.6189, -122.375, {2026, 1, 1}, 12.86},
        {"Sydney", -33.9461, 151.1772, {2027, 3, 1}, 12.86},
        {"Guarulhos", -23.4356, -46.4731, {2025, 7, 1}, -21.90},
        {"Anchorage", 61.1743, -149.9983, {2028, 1, 1}, 13.60},
        {"Reykjavik", 64.13, -21.9406, {2029, 6, 30}, -10.24},
    };
    for (const auto& a : airports) {
        auto r = MagneticVariation(a.lat, a.lon, 0.0, a.date);
        ASSERT_TRUE(r.ok) << r.message;
        EXPECT_NEAR(r.declination, a.declination, 0.1) << a.name;
        EXPECT_EQ(r.variation, -r.declination) << a.name;  // west positive
        EXPECT_FALSE(r.outsideValidity) << a.name;
    }
    EXPECT_NEAR(DecimalYear({2026, 6, 15}), 2026.452055, 1e-6);
}

TEST(MagneticModel, DatesOutsideTheModelStillAnswerAndSaySo) {
    for (platform::UtcTime date :
         {platform::UtcTime{2024, 12, 31}, platform::UtcTime{2030, 6, 1}}) {
        auto r = MagneticVariation(51.4775, -0.4614, 0.0, date);
        ASSERT_TRUE(r.ok);
        EXPECT_TRUE(r.outsideValidity);
        EXPECT_NE(r.message.find("2025.0 to 2030.0"), std::string::npos) << r.message;
        EXPECT_NEAR(r.declination, 1.0, 1.5);
    }
}

TEST(MagneticModel, BadCoefficientFilesAreRefusedWithTheReason) {
    std::string good = CofText();
    auto without = [&](std::string_view row) {
        std::string text = good;
        text.erase(text.find(row), 49);
        return text;
    };
    struct Bad {
        std::string text;
        const char* reason;
    };
    const Bad cases[] = {
        {"", "the file is empty"},
        {"    2025.0   WMM-2025\n  1  0  -29351.8  0.0  12.0\n", "line 2: expected n m g h"},
        {good.substr(0, good.find(" 12 12")), "cut short"},
        {without("  3  2    1243.8"), "n=3 m=2 is missing"},
        {good.substr(0, good.find('\n') + 1) + "  1  0  -29351.8  0.0  12.0  0.0\n" +
             good.substr(good.find('\n') + 1),
         "given twice"},
        {"    2025.0   WMM-2025\n 13 14  1 1 1 1\n", "out of range"},
        {"WMM-2025\n", "line 1: expected the epoch"},
    };
    for (const auto& c : cases) {
        std::string error;
        EXPECT_FALSE(MagneticModel::Parse(c.text, "bad.COF", error));
        EXPECT_NE(error.find(c.reason), std::string::npos) << error;
        EXPECT_NE(error.find("bad.COF"), std::string::npos) << error;
    }
    std::string error;
    EXPECT_FALSE(MagneticModel::Load("/nonexistent/WMM.COF", error));
    EXPECT_EQ(error, "Magnetic model /nonexistent/WMM.COF cannot be read");
}

}  // namespace
}  // namespace aerix
