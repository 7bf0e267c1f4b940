// The default charts drawn from Natural Earth data on first start: plate carree at the pixel
// scales of a chart's calibration, sized so that its limits lie 35 pixels inside its edges, with
// sea, land, coastlines, country borders, a labelled graticule and airports.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/canvas.hpp"
#include "store/records.hpp"
#include "views/map_types.hpp"
#include "views/topojson.hpp"

namespace aerix {

struct ChartAirport {
    double latitude = 0.0, longitude = 0.0;  // degrees
    std::string ident;
    bool major = false;  // a large airport, shown even on the world chart
};

// Width and height for a calibration.
platform::Point ChartSize(const MapCalibrationValues& calibration);
// Graticule spacing in degrees: lines some 60 pixels or more apart.
double GraticuleStep(double pixelsPerDegree);
// The chart in memory. Labels need text drawing: they are drawn only when graphics is given.
platform::Bitmap DrawChart(const MapCalibrationValues& calibration, const Topology& world,
                           const std::vector<ChartAirport>& airports, const std::string& title,
                           platform::Graphics* graphics);
// The airports of resources/airports/airports.csv (none when it is missing).
std::vector<ChartAirport> LoadChartAirports();
// Whether a chart file can be shown: not empty, not a BMP cut short, and decoded by the
// graphics when it is not a plain BMP.
bool ChartFileUsable(const std::string& file);

struct ChartGeneration {
    int drawn = 0;
    int failed = 0;
    bool diskFull = false;  // a chart could not be written for want of room
};
// Draws every chart of records whose bitmap file is missing or unusable, as a BMP at its path:
// written under a temporary name, flushed and checked, then renamed into place. A chart that
// cannot be written is told (a full disk in those words) and left for the next start.
ChartGeneration GenerateMissingCharts(std::span<const MapRecord> records);

}  // namespace aerix
