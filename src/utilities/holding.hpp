// Holding pattern entry and outbound timing for the "Holding pattern" flight-computer dialog.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace aerix {

enum class HoldingEntry { kDirect, kTeardrop, kParallel };

std::string_view HoldingEntryName(HoldingEntry entry);  // "Direct", "Teardrop", "Parallel"

struct HoldingPlan {
    HoldingEntry entry = HoldingEntry::kDirect;
    double outboundCourse = 0;    // inbound course + 180
    double teardropHeading = 0;   // outbound course turned 30° toward the holding side
    double outboundSeconds = 60;  // time on the outbound leg
};

// The entry for an aircraft reaching the fix on `heading` into a hold on `inboundCourse` (both
// degrees). The ICAO/FAA sectors, measured from the inbound course: with right turns a heading
// from 70° left to 110° right of it enters directly (180° of arc), from 110° to 180° right by
// teardrop (70°), and the remaining 110° by parallel entry; left turns mirror this. A heading on
// a boundary takes the entry of the sector clockwise of it for right turns and anticlockwise for
// left turns, though either is acceptable there.
HoldingEntry HoldingEntryFor(double inboundCourse, double heading, bool leftTurns);

// The standard outbound time in still air: 1 minute at or below 14,000 ft, 1.5 minutes above.
double StandardOutboundSeconds(double altitudeFeet);

// Outbound time that makes the inbound leg last `inboundSeconds` in a wind (equal leg lengths:
// t_out = t_in x GS_in / GS_out, each ground speed from the wind triangle on that leg).
// nullopt when the wind is too strong for the airspeed to hold either leg.
std::optional<double> WindCorrectedOutboundSeconds(double inboundSeconds, double inboundCourse,
                                                   double tas, double windDirection,
                                                   double windSpeed);

// Everything the dialog shows. Wind is optional: tas <= 0 means still air.
std::optional<HoldingPlan> PlanHolding(double inboundCourse, double heading, bool leftTurns,
                                       double altitudeFeet, double tas, double windDirection,
                                       double windSpeed);

class HoldingDialog {
  public:
    static constexpr std::string_view kTitle = "Holding pattern";

    void Open();
    int Close();

    std::string inboundCourse;  // degrees
    std::string heading;        // the aircraft's heading to the fix
    bool leftTurns = false;
    std::string altitude;  // feet; empty for the standard 1-minute leg
    // Wind for the outbound timing; all three empty for still air.
    std::string tas;
    std::string windDirection;
    std::string windSpeed;

    bool Compute();
    const std::string& EntryText() const { return entryText_; }        // "Teardrop"
    const std::string& OutboundText() const { return outboundText_; }  // "Outbound 180°M for 1:00"
    const std::string& TeardropText() const { return teardropText_; }  // "Teardrop heading 150°M"
    const HoldingPlan& Result() const { return plan_; }

  private:
    HoldingPlan plan_;
    std::string entryText_;
    std::string outboundText_;
    std::string teardropText_;
};

// "m:ss" of a time in seconds, rounded to the second.
std::string FormatMinutesSeconds(double seconds);

}  // namespace aerix
