// The PLAN view: the flight log of the active plan, one row a sector, the active sector marked,
// the highlighted sector (the one Edit, Insert and Delete act on) filled, scrolled by pen.
#pragma once

#include "platform/canvas.hpp"

namespace aerix {

class PlanView {
  public:
    static constexpr int kTop = 22;  // below the top status line
    static constexpr int kRowHeight = 16;
    static constexpr int kFirstRowY = kTop + 2 * kRowHeight;
    static constexpr int kBottom = 247;  // above the bottom status line

    void Paint(platform::Canvas& canvas);
    // A tap on a row highlights its sector; a drag scrolls by whole rows.
    void PenDown(int x, int y);
    void PenMove(int x, int y);
    // Scrolls by rows (negative: up), kept within the log.
    void ScrollBy(int rows);
    static int VisibleRows() { return (kBottom - kFirstRowY) / kRowHeight - 1; }

  private:
    int dragY_ = 0;
    int sectorCount_ = 0;
};

}  // namespace aerix
