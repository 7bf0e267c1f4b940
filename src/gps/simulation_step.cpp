#include "gps/simulation_step.hpp"

#include <cmath>

#include "gps/nav_math.hpp"
#include "platform/services.hpp"

namespace aerix {

namespace {

constexpr double kCentiMinutesToRadiansStep = 2.9088820866572157e-6;
// A one-second step flies 1/1800 hour: the simulator runs at twice real time on purpose.
constexpr double kHoursPerStep = 0.0005555555555555556;
constexpr double kNauticalMilesToRadians = 0.0002908882086657216;
constexpr double kRadiansToCentiMinutes = 343774.6770784939;
constexpr double kPi = 3.141592653589793;

}  // namespace

double SimulationStep(double& distance, std::int32_t startLatitude, std::int32_t startLongitude,
                      double course, std::int32_t speed, std::uint8_t restart, double& latitude,
                      double& longitude, std::stop_token stop) {
    if (auto* idle = platform::Sys().idleTimer)
        idle->Reset();
    if (restart)
        distance = 0.0;
    double phi1 = startLatitude * kCentiMinutesToRadiansStep;
    double l1 = startLongitude * kCentiMinutesToRadiansStep;

    platform::Sys().clock->SleepMs(1000, stop);

    distance += speed * kHoursPerStep * kNauticalMilesToRadians;
    double tc = course * kDegreesToRadians;
    double d = distance;
    double phi = d * std::cos(tc) + phi1;
    double dPhi = std::log(std::tan(phi / 2 + kQuarterPi) / std::tan(phi1 / 2 + kQuarterPi));
    double q = std::fabs(phi - phi1) < std::sqrt(1e-15) ? std::cos(phi1) : (phi - phi1) / dPhi;
    double l = PositiveModulo(l1 + d * std::sin(tc) / q + kPi, kTwoPi) - kPi;
    latitude = phi * kRadiansToCentiMinutes;
    longitude = l * kRadiansToCentiMinutes;
    return latitude;
}

}  // namespace aerix
