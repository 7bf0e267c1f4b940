// The pieces both instrument pictures are made of, at the picture's own resolution (scale 1 for
// the HSI, about 1.8 for the AERIX picture).
#pragma once

#include "platform/canvas.hpp"
#include "views/instrument_frame.hpp"
#include "views/instrument_geometry.hpp"
#include "views/map_readouts.hpp"

namespace aerix {

inline constexpr platform::Color kAirspaceColor = platform::Rgb(70, 130, 255);
inline constexpr platform::Color kBearingColor = platform::Rgb(0, 230, 255);

struct CardStyle {
    double scale = 1.0;
    platform::Color background;  // around the card
    platform::Color face;        // the card itself
    platform::Color marks;       // ticks and figures
    platform::Color course;      // course pointer and deviation bar
    platform::Color route;       // the plan's legs
    platform::Color active;      // the leg being flown
    platform::Color aircraft;
};

int Scaled(const CardStyle& style, double pixels);

// The map layer: airspace (when shown), the plan route with the active leg, the waypoints in
// range with their idents; then what lies beyond the card is covered again.
void DrawMapLayer(platform::Canvas& c, const CardGeometry& g, const CardStyle& style,
                  const InstrumentFrameInput& in);
// The ring at half range with its distance.
void DrawRangeRing(platform::Canvas& c, const CardGeometry& g, const CardStyle& style);
// Covers everything outside the card with the background colour.
void MaskOutsideCard(platform::Canvas& c, const CardGeometry& g, const CardStyle& style);
// Ticks every 5 degrees, figures every 30, turned to the magnetic track; the lubber mark at top.
void DrawCompassCard(platform::Canvas& c, const CardGeometry& g, const CardStyle& style);
// Course pointer with its deviation bar, dots and TO/FROM mark; bearing pointer to the waypoint.
void DrawCourseDeviation(platform::Canvas& c, const CardGeometry& g, const CardStyle& style,
                         const ActiveLeg& leg);
void DrawBearingPointer(platform::Canvas& c, const CardGeometry& g, const CardStyle& style,
                        const ActiveLeg& leg);
void DrawAircraft(platform::Canvas& c, const CardGeometry& g, const CardStyle& style);

// Readout figures: "---" until there is something to show.
std::string DistanceText(double nm, bool valid);           // "12.4" / "123"
std::string EteText(double nm, double knots, bool valid);  // "0:12", "--:--"
std::string CrossTrackText(double nm, bool valid);         // "R 0.4", "L 1.2"

}  // namespace aerix
