#include "views/data_bar.hpp"

#include <cmath>
#include <cstdio>

#include "platform/numeric.hpp"
#include "platform/text.hpp"

namespace aerix {

std::string DataBarText(const DataBarInfo& info) {
    if (!info.valid)
        return "no active waypoint";
    // Eight characters of the name keep bearing and distance on the bar.
    std::string name = Utf16ToUtf8(info.name.substr(0, 8));
    if (!info.haveFix)
        return name + "  NO FIX";
    std::string bearing = DirectionText(info.bearing, info.reference, true);
    char distance[24];
    if (info.distance < 100)
        std::snprintf(distance, sizeof distance, "%.1f nm", info.distance);
    else
        std::snprintf(distance, sizeof distance, "%d nm", TruncInt32(std::round(info.distance)));
    int angle = TruncInt32(std::lround(info.relativeAngle));
    char text[96];
    if (!info.ahead)
        std::snprintf(text, sizeof text, "%s  BRG %s  %s  behind", name.c_str(), bearing.c_str(),
                      distance);
    else
        std::snprintf(text, sizeof text, "%s  BRG %s  %s  %c %d\xC2\xB0", name.c_str(),
                      bearing.c_str(), distance, angle < 0 ? 'L' : 'R', std::abs(angle));
    return text;
}

void DrawDataBar(platform::Canvas& canvas, const DataBarInfo& info, const platform::Rect& area) {
    canvas.SetFont({11, true});
    canvas.DrawText(DataBarText(info), area,
                    platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                    platform::kWhite, platform::Rgb(0, 0, 96), false);
}

}  // namespace aerix
