// Runway wind components for the "Xwind component" flight-computer dialog.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace aerix {

struct WindComponents {
    double headwind = 0;   // knots along the runway, negative for a tailwind
    double crosswind = 0;  // knots across it, positive from the right, negative from the left
};

// Resolves the wind (direction it blows from, speed) along and across a runway heading:
// headwind = V cos(wind - runway), crosswind = V sin(wind - runway).
WindComponents RunwayWindComponents(double runwayHeading, double windDirection, double windSpeed);

// The heading of a runway as the pilot names it: a designator of one or two digits (1 to 36,
// with an optional L, C or R) stands for ten times its number ("27L" is 270); three digits are
// the runway's own heading in degrees ("273"). nullopt for anything else.
std::optional<double> RunwayHeading(std::string_view runway);

class CrosswindDialog {
  public:
    static constexpr std::string_view kTitle = "Xwind component";

    void Open();
    int Close();

    std::string runway;         // "27", "09L", "273"
    std::string windDirection;  // degrees, 0 to 360
    std::string windSpeed;      // knots

    // Reads the fields and shows the components, or shows what is wrong and clears them.
    bool Compute();
    const std::string& HeadwindText() const { return headwindText_; }  // "Headwind 17 kt"
    const std::string& CrosswindText() const {
        return crosswindText_;
    }  // "Crosswind 10 kt from the right"
    const WindComponents& Result() const { return result_; }

  private:
    WindComponents result_;
    std::string headwindText_;
    std::string crosswindText_;
};

// Checks a wind entry; on failure sets `error` to a message for the pilot.
bool CheckWind(double direction, double speed, std::string& error);

}  // namespace aerix
