#include "planning/wind_table.hpp"

#include "platform/message_box.hpp"
#include "platform/numeric.hpp"
#include "store/record_store.hpp"

namespace aerix {

namespace {

WindAtResult FromRow(const WindRecord& r) {
    return {r.Direction, r.Speed, static_cast<double>(r.Temperature)};
}

}  // namespace

WindAtResult WindAt(std::int32_t altitude, bool useZeroWindTable) {
    WindAtResult result;
    std::uint32_t count = 0;
    DbHandle h = OpenDatabase(useZeroWindTable ? schema::kZeroWindName : schema::kWindName,
                              schema::kWindAltitude, &count);
    if (!h)
        return result;
    if (count < 3) {
        platform::ShowNotice("Wind table has less than 3 records!", "Warning");
        return result;
    }
    WindRecord lower;
    if (ReadWind(h, kFromCurrent, 0, lower) == 0)
        return result;
    if (altitude <= lower.Altitude)
        return FromRow(lower);
    WindRecord upper = lower;
    bool found = false;
    for (;;) {
        WindRecord next;
        if (ReadWind(h, kFromCurrent, 0, next) == 0)
            break;
        lower = upper;
        upper = next;
        if (upper.Altitude >= altitude) {
            found = true;
            break;
        }
    }
    // Above the highest row: the highest row as it stands.
    if (!found || upper.Altitude == altitude)
        return FromRow(upper);

    double f = (static_cast<double>(altitude) - lower.Altitude) /
               (static_cast<double>(upper.Altitude) - lower.Altitude);
    // The wind turns the short way round.
    int d = upper.Direction - lower.Direction;
    if (d < -180)
        d += 360;
    if (d > 180)
        d -= 360;
    int direction = TruncInt32(d * f + lower.Direction);
    // 360 itself stays 360.
    if (direction > 360 || direction < 0)
        direction = direction < 361 ? direction + 360 : direction - 360;
    result.direction = direction;
    result.speed = TruncInt32((upper.Speed - lower.Speed) * f + lower.Speed);
    result.temperature =
        TruncInt32((upper.Temperature - lower.Temperature) * f + lower.Temperature);
    return result;
}

}  // namespace aerix
