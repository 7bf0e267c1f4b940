#include "gps/simulator.hpp"

#include <cmath>

#include "gps/position_text.hpp"
#include "gps/simulation_step.hpp"
#include "platform/services.hpp"

namespace aerix {

namespace {

void Invalidate() {
    if (auto* ui = platform::Sys().ui)
        ui->InvalidateMainWindow(false);
}

}  // namespace

void SimulatorThread(std::stop_token stop, GpsState& gps, LegState& flown,
                     const SimLegSource& source, SimStepObserver observer) {
    GpsFix fix = gps.PublishedFix.Snapshot();
    int legIndex = 0;
    SimLeg leg;  // speed and variation carry over to a direct-to leg
    while (!stop.stop_requested()) {
        std::int32_t startLatitude = 0;
        std::int32_t startLongitude = 0;
        double course = 0.0;
        std::int32_t directLatitude = flown.DirectToStartLatitude.load();
        const bool direct = directLatitude != 0;
        if (direct) {
            startLatitude = directLatitude;
            startLongitude = flown.DirectToStartLongitude.load();
            course = flown.DirectToCourse.load();
        } else {
            if (!source.readLeg || !source.readLeg(legIndex, &leg))
                break;
            startLatitude = leg.startLatitude;
            startLongitude = leg.startLongitude;
            course = leg.trueCourse;
            fix.groundSpeed = leg.groundSpeed;
        }
        fix.trueTrack = course;
        fix.magneticTrack = std::fmod(course + leg.magneticVariation, 360.0);
        if (fix.magneticTrack < 0)
            fix.magneticTrack += 360.0;

        double latitude = 0.0;
        double longitude = 0.0;
        SimulationStep(gps.SimulatedDistance, startLatitude, startLongitude, course, 0, 1, latitude,
                       longitude, stop);
        gps.SimulatorStepCount.fetch_add(1);
        fix.latitude = startLatitude;
        fix.longitude = startLongitude;
        fix.positionKnown = true;
        // The readouts show the text, so it must always match the position published with it.
        fix.positionText.assign(PositionText(fix.latitude, fix.longitude));
        gps.PublishedFix.Publish(fix);
        if (observer)
            observer(legIndex);
        if (stop.stop_requested())
            break;

        while (flown.LegChange.load() == 0 && !stop.stop_requested()) {
            SimulationStep(gps.SimulatedDistance, startLatitude, startLongitude, fix.trueTrack,
                           leg.groundSpeed, 0, fix.latitude, fix.longitude, stop);
            gps.SimulatorStepCount.fetch_add(1);
            fix.positionText.assign(PositionText(fix.latitude, fix.longitude));
            gps.PublishedFix.Publish(fix);
            Invalidate();
            if (observer)
                observer(legIndex);
        }
        if (stop.stop_requested())
            break;
        int count = source.sectorCount ? source.sectorCount() : 0;
        if (direct && flown.DirectToStartLatitude.load() == 0) {
            // The direct-to ended (reached, or "Resume plan"): the plan goes on from the sector
            // the views made active.
            legIndex = static_cast<int>(flown.ActiveSectorIndex.load());
        } else if (legIndex < count - 1) {
            ++legIndex;
        }
        flown.LegChange.store(0);
    }
}

}  // namespace aerix
