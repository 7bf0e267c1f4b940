// Where things go on an instrument card: the aircraft at the card's centre, the card turned to
// the track (track-up), positions laid out on a flat projection around the aircraft (plenty
// within the 80 nm of the widest range).
#pragma once

#include "platform/canvas.hpp"
#include "views/active_leg.hpp"

namespace aerix {

struct PointF {
    double x = 0.0, y = 0.0;
};

struct CardGeometry {
    double cx = 0.0, cy = 0.0;               // picture pixels of the aircraft
    double radius = 100.0;                   // the card's edge, pixels
    double rangeNm = 5.0;                    // distance at the card's edge
    double trueTrack = 0.0;                  // up, for the map layer (degrees true)
    double magneticTrack = 0.0;              // up, for the compass card's labels
    double latitude = 0.0, longitude = 0.0;  // the aircraft, CentiMinutes
    double cosLatitude = 1.0;

    double PixelsPerNm() const { return radius / rangeNm; }
    // Offset in nm east and north of the aircraft (longitude wraps at 180 degrees).
    PointF OffsetNm(double latitude, double longitude) const;
    // Picture pixels of a position.
    PointF Project(double latitude, double longitude) const;
    // Screen angle (degrees clockwise from up) of a true or a magnetic direction.
    double AngleOfTrue(double bearing) const { return bearing - trueTrack; }
    double AngleOfMagnetic(double bearing) const { return bearing - magneticTrack; }
    // The point at r pixels from the centre in the screen angle's direction.
    PointF At(double screenAngle, double r) const;
};

CardGeometry MakeCardGeometry(double cx, double cy, double radius, double rangeNm, double latitude,
                              double longitude, double trueTrack, double magneticTrack);

// Pixels, rounded and kept well inside what the toolkits draw.
platform::Point ToPixel(PointF p);

// Signed distance off course in nm: positive when the course line lies to the right of the
// aircraft (fly right), from the leg's bearing and distance to its end point.
double CrossTrackNm(const ActiveLeg& leg);
// The deviation in dots, 5 dots = kFullScaleDeviationNm, pinned just beyond full scale.
double DeviationDots(double crossTrackNm);

}  // namespace aerix
