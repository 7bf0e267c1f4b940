// course, wind-triangle, position: the navigation mathematics from the command line.
#include <CLI/CLI.hpp>

#include "gps/nav_math.hpp"
#include "gps/position_text.hpp"
#include "platform/text.hpp"
#include "tools/tool_context.hpp"

namespace aerix::tools {

namespace {

constexpr double kDegreesToCentiMinutes = 6000.0;

void AddCourse(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand("course",
                                   "Course (degrees true) and distance (nm) between two "
                                   "positions in decimal degrees, north and east positive");
    auto args = std::make_shared<std::array<double, 4>>();
    auto greatCircle = std::make_shared<bool>(false);
    cmd->add_option("LAT1", (*args)[0])->required()->check(CLI::Range(-90.0, 90.0));
    cmd->add_option("LON1", (*args)[1])->required()->check(CLI::Range(-180.0, 180.0));
    cmd->add_option("LAT2", (*args)[2])->required()->check(CLI::Range(-90.0, 90.0));
    cmd->add_option("LON2", (*args)[3])->required()->check(CLI::Range(-180.0, 180.0));
    cmd->add_flag("--great-circle", *greatCircle, "The great circle instead of the rhumb line");
    cmd->callback([&ctx, args, greatCircle] {
        double course = 0;
        double distance = 0;
        const auto& a = *args;
        CourseDistance(a[0] * kDegreesToCentiMinutes, a[1] * kDegreesToCentiMinutes,
                       a[2] * kDegreesToCentiMinutes, a[3] * kDegreesToCentiMinutes, course,
                       distance, *greatCircle ? 1 : 0);
        ctx.Out().Emit({{"course", course}, {"distance", distance}});
    });
}

void AddWindTriangle(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand("wind-triangle",
                                   "Heading and ground speed for a true airspeed and true course "
                                   "through a wind (direction it blows from, whole degrees)");
    struct Args {
        double tas = 0, course = 0;
        int windDirection = 0, windSpeed = 0;
    };
    auto a = std::make_shared<Args>();
    cmd->add_option("TAS", a->tas, "True airspeed (kt)")->required();
    cmd->add_option("COURSE", a->course, "True course (degrees)")->required();
    cmd->add_option("WIND_DIR", a->windDirection, "Wind direction (whole degrees true)")
        ->required();
    cmd->add_option("WIND_SPEED", a->windSpeed, "Wind speed (whole knots)")->required();
    cmd->callback([&ctx, a] {
        double heading = 0;
        double groundSpeed = 0;
        WindTriangle(a->tas, a->course, a->windDirection, a->windSpeed, heading, groundSpeed);
        ctx.Out().Emit({{"heading", heading}, {"groundSpeed", groundSpeed}});
    });
}

void AddPosition(CLI::App& app, ToolContext& ctx) {
    auto* cmd = app.add_subcommand("position", "A position in decimal degrees as the fix shows it");
    auto lat = std::make_shared<double>(0);
    auto lon = std::make_shared<double>(0);
    cmd->add_option("LAT", *lat)->required()->check(CLI::Range(-90.0, 90.0));
    cmd->add_option("LON", *lon)->required()->check(CLI::Range(-180.0, 180.0));
    cmd->callback([&ctx, lat, lon] {
        auto text = PositionText(*lat * kDegreesToCentiMinutes, *lon * kDegreesToCentiMinutes);
        ctx.Out().Emit({{"text", Utf16ToUtf8(text)}});
    });
}

}  // namespace

void AddMathCommands(CLI::App& app, ToolContext& ctx) {
    AddCourse(app, ctx);
    AddWindTriangle(app, ctx);
    AddPosition(app, ctx);
}

}  // namespace aerix::tools
