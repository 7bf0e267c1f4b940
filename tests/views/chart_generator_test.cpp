#include <gtest/gtest.h>

#include "platform/data_root.hpp"
#include "platform/recording_canvas.hpp"
#include "platform/services.hpp"
#include "support/test_platform.hpp"
#include "views/chart_generator.hpp"
#include "views/map_geometry.hpp"
#include "views/raster.hpp"

namespace aerix {
namespace {

MapCalibrationValues World1() {
    return {2.3958333, 719.0, 144.0,   72.0,   360.0,    120.0,  -120.0,
            60.0,      -60.0, -75.416, 75.416, -165.495, 165.078};
}
MapCalibrationValues Europe() {
    return {16.966, 695.0, 186.0, 170.0, 508.0, 30.0, 0.0, 60.0, 40.0, 31.89, 67.98, -8.89, 30.015};
}

const Topology& World() {
    static Topology t = [] {
        Topology topo;
        EXPECT_TRUE(LoadTopology(platform::ResourcePath("natural-earth/countries-50m.json"), topo));
        return topo;
    }();
    return t;
}

TEST(ChartGenerator, SizesPutTheLimits35PixelsInsideTheEdges) {
    platform::Point world = ChartSize(World1());
    EXPECT_EQ(world.x, 862);
    EXPECT_EQ(world.y, 432);
    const MapCalibrationValues c = Europe();
    platform::Point europe = ChartSize(c);
    EXPECT_NEAR(MapColumnExact(c, c[kWestLimit]), 35, 0.5);
    EXPECT_NEAR(MapRowExact(c, c[kNorthLimit]), 35, 0.5);
    EXPECT_NEAR(europe.x - MapColumnExact(c, c[kEastLimit]), 35, 0.5);
    EXPECT_NEAR(europe.y - MapRowExact(c, c[kSouthLimit]), 35, 0.5);
}

TEST(ChartGenerator, LondonIsLandAndTheMidAtlanticSea) {
    const MapCalibrationValues europe = Europe();
    platform::Bitmap e = DrawChart(europe, World(), {}, "", nullptr);
    const platform::Color land = e.Pixel(MapColumn(europe, -0.6), MapRow(europe, 51.6));
    const platform::Color sea = e.Pixel(MapColumn(europe, -6.5), MapRow(europe, 46.5));
    EXPECT_NE(land, sea);
    EXPECT_GT(land.r, land.b);  // tan
    EXPECT_GT(sea.b, sea.r);    // blue

    const MapCalibrationValues world = World1();
    platform::Bitmap w = DrawChart(world, World(), {}, "", nullptr);
    EXPECT_EQ(w.Pixel(MapColumn(world, -40.0), MapRow(world, 35.0)), sea);
    EXPECT_EQ(w.Pixel(MapColumn(world, 20.0), MapRow(world, 10.0)), land);  // Chad
}

TEST(ChartGenerator, FillKeepsHolesOpenAndSamplesPixelCentres) {
    platform::Bitmap b(10, 10, platform::kWhite);
    FillRings(b, {{{1, 1}, {9, 1}, {9, 9}, {1, 9}}, {{4, 4}, {6, 4}, {6, 6}, {4, 6}}},
              platform::kBlack);
    EXPECT_EQ(b.Pixel(1, 1), platform::kBlack);
    EXPECT_EQ(b.Pixel(8, 8), platform::kBlack);
    EXPECT_EQ(b.Pixel(9, 9), platform::kWhite);
    EXPECT_EQ(b.Pixel(0, 5), platform::kWhite);
    EXPECT_EQ(b.Pixel(5, 5), platform::kWhite);  // the hole
}

TEST(ChartGenerator, GraticuleStepsKeepLinesApart) {
    EXPECT_EQ(GraticuleStep(2.3958333), 30);
    EXPECT_EQ(GraticuleStep(16.966), 5);
    EXPECT_NEAR(GraticuleStep(1264.4), 5.0 / 60, 1e-12);
}

TEST(ChartGenerator, MissingChartsAreWrittenOnceAsBmp) {
    testing::TestPlatform p;
    std::vector<MapRecord> records{{u"\\My Documents\\Aerix\\World1.bmp", World1()}};
    EXPECT_EQ(GenerateMissingCharts(records).drawn, 1);
    const auto file = p.Data().Resolve("\\My Documents\\Aerix\\World1.bmp");
    std::string bmp = testing::ReadFile(file);
    ASSERT_GT(bmp.size(), 54u);
    EXPECT_EQ(bmp.substr(0, 2), "BM");
    EXPECT_EQ(static_cast<unsigned char>(bmp[18]) | static_cast<unsigned char>(bmp[19]) << 8, 862);
    EXPECT_TRUE(ChartFileUsable(file.string()));
    EXPECT_EQ(GenerateMissingCharts(records).drawn, 0);
    // Cut short by a full disk or a kill, empty, or not an image the graphics can decode: drawn
    // again.
    platform::RecordingGraphics graphics;
    platform::Sys().graphics = &graphics;
    for (std::string damaged : {bmp.substr(0, 10000), std::string(), std::string("GIF89a junk")}) {
        testing::WriteFile(file, damaged);
        EXPECT_FALSE(ChartFileUsable(file.string()));
        ChartGeneration again = GenerateMissingCharts(records);
        EXPECT_EQ(again.drawn, 1);
        EXPECT_EQ(testing::ReadFile(file), bmp);
    }
    platform::Sys().graphics = nullptr;
    EXPECT_FALSE(std::filesystem::exists(file.string() + ".part"));
    EXPECT_TRUE(p.Ui().Boxes().empty());
}

TEST(ChartGenerator, MalformedTopologyIsRefused) {
    testing::TempDir dir;
    testing::WriteFile(dir.Path() / "bad.json", R"({"type":"Topology","arcs":[[["x"]]]})");
    Topology t;
    EXPECT_FALSE(LoadTopology(dir.Path() / "bad.json", t));
    EXPECT_FALSE(LoadTopology(dir.Path() / "missing.json", t));
}

}  // namespace
}  // namespace aerix
