// aerix-tool render map: the MAP view drawn headless into a PNG, as the window shows it.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <array>
#include <cstdio>
#include <string>

#include "qt/graphics/qt_graphics.hpp"
#include "support/test_platform.hpp"

namespace {

using aerix::testing::ReadFile;
using aerix::testing::TempDir;
namespace platform = aerix::platform;

struct ToolRun {
    int status = -1;
    std::string out, err;
};

ToolRun Tool(const std::filesystem::path& home, const std::string& args) {
    TempDir scratch;
    auto errFile = scratch.Path() / "stderr";
    std::string cmd = std::string(AERIX_TOOL_PATH) + " --home '" + home.string() + "' " + args +
                      " 2>'" + errFile.string() + "'";
    ToolRun run;
    FILE* pipe = ::popen(cmd.c_str(), "r");
    if (!pipe)
        return run;
    std::array<char, 4096> buf;
    std::size_t n;
    while ((n = std::fread(buf.data(), 1, buf.size(), pipe)) > 0)
        run.out.append(buf.data(), n);
    int status = ::pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.err = ReadFile(errFile);
    return run;
}

int CountIn(const platform::Bitmap& b, platform::Rect r, bool (*test)(platform::Color)) {
    int count = 0;
    for (int y = r.top; y < r.bottom; ++y)
        for (int x = r.left; x < r.right; ++x)
            count += test(b.Pixel(x, y)) ? 1 : 0;
    return count;
}

TEST(RenderMap, DrawsTheChartTheAircraftAndThePositionReadout) {
    TempDir home;
    auto png = home.Path() / "frame.png";
    // Over the Miami chart, away from its edges: the aircraft sits at the view's anchor.
    ToolRun run =
        Tool(home.Path(), "render map --lat 25.77 --lon -80.57 --track 90 --speed 100 --out '" +
                              png.string() + "'");
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("Miami.bmp"), std::string::npos) << run.out;

    platform::Bitmap frame;
    std::string error;
    ASSERT_TRUE(aerix::qt::QtGraphics().LoadImage(png.string(), &frame, &error)) << error;
    ASSERT_EQ(frame.Width(), 240);
    ASSERT_EQ(frame.Height(), 320);
    // The cross's top edge, in cyan, six rows below the anchor (120, 120).
    EXPECT_EQ(frame.Pixel(121, 126), platform::Rgb(0, 255, 255));
    // A chart, not a blank view.
    int charted =
        CountIn(frame, {0, 14, 240, 254}, [](platform::Color c) { return c != platform::kWhite; });
    EXPECT_GT(charted, 240 * 240 / 2);
    // The yellow readout with its text in it.
    EXPECT_EQ(frame.Pixel(43, 45), platform::Rgb(255, 255, 0));
    int ink = CountIn(frame, {42, 44, 200, 60},
                      [](platform::Color c) { return c != platform::Rgb(255, 255, 0); });
    EXPECT_GT(ink, 40);
}

TEST(RenderMap, RefusesBadArguments) {
    TempDir home;
    std::string out = " --out '" + (home.Path() / "x.png").string() + "'";
    struct Case {
        std::string args;
        int status;
        const char* message;
    } cases[] = {
        {"render map --lat 91 --lon 0" + out, 2, "--lat"},
        {"render map --lat 0 --lon 0 --zoom 3" + out, 2, "--zoom"},
        {"render map --lat 0 --lon 0", 2, "--out"},
        {"render map --lat 0 --lon 0 --plan Nowhere" + out, 1, "no plan named \"Nowhere\""},
        {"render map --lat 0 --lon 0 --out '" + (home.Path() / "no/such/x.png").string() + "'", 1,
         "could not write"},
    };
    for (const Case& c : cases) {
        ToolRun run = Tool(home.Path(), c.args);
        EXPECT_EQ(run.status, c.status) << c.args << "\n" << run.err;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << c.args << "\n" << run.err;
    }
}

}  // namespace

namespace {

bool Near(platform::Color c, platform::Color want, int tolerance) {
    return std::abs(c.r - want.r) <= tolerance && std::abs(c.g - want.g) <= tolerance &&
           std::abs(c.b - want.b) <= tolerance;
}

TEST(RenderInstruments, DrawTheCardTheAircraftAndTheLegFlown) {
    TempDir home;
    // A plan east along 50 N; the aircraft half way along the first leg, a mile north of it.
    for (const std::string& step :
         {std::string("plan new Trip"),
          std::string("plan add-sector 50.0,-1.0 50.0,0.0 --alt 2000 --phase cruise --still-air"),
          std::string("plan add-sector 50.0,0.0 50.5,0.5 --alt 2000 --phase cruise --still-air")}) {
        ToolRun run = Tool(home.Path(), step);
        ASSERT_EQ(run.status, 0) << step << "\n" << run.err;
    }
    struct Case {
        const char* view;
        platform::Point aircraft;  // where the symbol's body is
        platform::Color colour;
        int tolerance;
    } cases[] = {
        {"hsi", {120, 133}, platform::Rgb(255, 140, 0), 0},
        // Shrunk with the picture: a blend near the symbol's yellow.
        {"aerix", {120, 107}, platform::Rgb(255, 230, 0), 60},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.view);
        auto png = home.Path() / (std::string(c.view) + ".png");
        ToolRun run = Tool(home.Path(), std::string("--json render ") + c.view +
                                            " --lat 50.0167 --lon -0.5 --track 90 --speed 100"
                                            " --range 2 --out '" +
                                            png.string() + "'");
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_NE(run.out.find("\"range_nm\": 10"), std::string::npos) << run.out;
        EXPECT_NE(run.out.find("\"active_sector\": 0"), std::string::npos) << run.out;
        platform::Bitmap frame;
        std::string error;
        ASSERT_TRUE(aerix::qt::QtGraphics().LoadImage(png.string(), &frame, &error)) << error;
        ASSERT_EQ(frame.Width(), 240);
        ASSERT_EQ(frame.Height(), 320);
        EXPECT_TRUE(Near(frame.Pixel(c.aircraft.x, c.aircraft.y), c.colour, c.tolerance));
        // The leg flown lies to the right of the aircraft: magenta there, none to the left.
        auto magenta = [](platform::Color p) { return p.r > 180 && p.g < 120 && p.b > 180; };
        EXPECT_GT(CountIn(frame, {122, 60, 200, 100}, magenta), 0);
        // The data bar names the waypoint ahead.
        EXPECT_GT(CountIn(frame, {0, 254, 240, 268},
                          [](platform::Color p) { return p == platform::kWhite; }),
                  30);
    }
    ToolRun bad = Tool(home.Path(), "render hsi --lat 0 --lon 0 --range 3 --out x.png");
    EXPECT_EQ(bad.status, 2);
    EXPECT_NE(bad.err.find("--range"), std::string::npos) << bad.err;
}

}  // namespace
