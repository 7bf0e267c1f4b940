// The PLAN view: the flight log of the active plan as a pilot's log, each waypoint's name on a
// line of its own and between two names the figures of the sector that joins them; the active
// sector marked, the highlighted sector (the one Edit, Insert and Delete act on) filled, scrolled
// by pen and by the buttons a sector at a time.
#pragma once

#include <vector>

#include "platform/canvas.hpp"

namespace aerix {

struct FlightLog;

class PlanView {
  public:
    static constexpr int kTop = 22;  // below the top status line
    static constexpr int kRowHeight = 16;
    static constexpr int kLineHeight = 14;  // a name or a sector's figures
    static constexpr int kFirstRowY = kTop + 2 * kRowHeight + 11;
    static constexpr int kBottom = 247;  // above the bottom status line
    static constexpr int kTotalY = kBottom - kRowHeight;
    static constexpr int kLines = (kTotalY - kFirstRowY) / kLineHeight;

    void Paint(platform::Canvas& canvas);
    // A tap on a sector's figures or names highlights it; a drag scrolls by whole sectors.
    void PenDown(int x, int y);
    void PenMove(int x, int y);
    // Scrolls by sectors (negative: up), kept within the log.
    void ScrollBy(int rows);

    enum class LineKind { kFrom, kFigures, kTo };
    struct Line {
        int sector;
        LineKind kind;
    };
    // The lines from sector first on that fit: a sector's start name (unless the line before
    // already names it), its figures and its end name.
    static std::vector<Line> LayOut(const FlightLog& log, int first);

  private:
    int dragY_ = 0;
    int lastFirst_ = 0;  // the last sector that can head the screen
    std::vector<Line> lines_;
};

}  // namespace aerix
