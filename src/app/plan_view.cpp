#include "app/plan_view.hpp"

#include <algorithm>
#include <string>

#include "aircraft/fuel_plan_dialog.hpp"
#include "app/app_state.hpp"
#include "planning/flight_log.hpp"
#include "platform/text.hpp"

namespace aerix {

namespace {

using platform::Rect;

constexpr platform::Color kHeaderInk = platform::Rgb(0, 0, 128);
constexpr platform::Color kHighlight = platform::Rgb(255, 255, 160);
constexpr platform::Color kGrid = platform::Rgb(192, 192, 192);

// A sector's figures: number, magnetic heading, distance, ground speed, time, fuel. Wide enough
// for "359°M" and "GS ≤ 0" at the log's font.
struct Column {
    int left, right;
    unsigned align;
};
enum { kNumber, kHeading, kDistance, kSpeed, kTime, kFuel, kColumnCount };
constexpr Column kColumns[kColumnCount] = {
    {2, 20, platform::kTextLeft},     {22, 62, platform::kTextRight},
    {64, 104, platform::kTextRight},  {106, 152, platform::kTextRight},
    {154, 192, platform::kTextRight}, {194, 238, platform::kTextRight},
};
constexpr const char* kHeadings[kColumnCount] = {"#", "MH", "Dist", "GS", "Time", "Fuel"};

constexpr unsigned kOneLine = platform::kTextVCenter | platform::kTextSingleLine;

void Cell(platform::Canvas& canvas, int column, int y, int height, const std::string& text,
          platform::Color ink) {
    const auto& c = kColumns[column];
    canvas.DrawText(text, Rect{c.left, y, c.right, y + height}, c.align | kOneLine, ink,
                    platform::kWhite, true);
}

void Header(platform::Canvas& canvas) {
    canvas.SetFont(platform::Font{11, true});
    // Appended piece by piece: g++ 12 at -O3 warns falsely on chained operator+.
    std::string title = "PLAN ";
    title.append(Utf16ToUtf8(g_app.settings.ActivePlanName.view()));
    title.append("   A/c ");
    title.append(Utf16ToUtf8(g_app.settings.AircraftReg.view()));
    int y = PlanView::kTop;
    canvas.DrawText(title, Rect{2, y, 238, y + PlanView::kRowHeight},
                    platform::kTextLeft | kOneLine, kHeaderInk, platform::kWhite, true);
    y += PlanView::kRowHeight;
    for (int c = 0; c < kColumnCount; ++c)
        Cell(canvas, c, y, PlanView::kLineHeight, kHeadings[c], kHeaderInk);
    // The units under their headings.
    y += PlanView::kLineHeight;
    canvas.SetFont(platform::Font{9, false});
    const std::string units[kColumnCount] = {"",   "",     "nm",
                                             "kt", "h:mm", FuelUnitName(g_app.aircraft.FuelUnits)};
    for (int c = 0; c < kColumnCount; ++c)
        Cell(canvas, c, y, PlanView::kFirstRowY - y, units[c], kHeaderInk);
    canvas.SetPen(platform::Pen{platform::PenStyle::Solid, 1, kGrid});
    canvas.MoveTo(0, PlanView::kFirstRowY - 1);
    canvas.LineTo(240, PlanView::kFirstRowY - 1);
}

}  // namespace

std::vector<PlanView::Line> PlanView::LayOut(const FlightLog& log, int first) {
    std::vector<Line> lines;
    int count = static_cast<int>(log.rows.size());
    for (int i = std::max(first, 0); i < count; ++i) {
        const FlightLogRow& row = log.rows[static_cast<std::size_t>(i)];
        // A sector starts where the one before ends, so its start is usually named already.
        bool named = !lines.empty() && log.rows[static_cast<std::size_t>(i - 1)].To() == row.From();
        if (static_cast<int>(lines.size()) + (named ? 2 : 3) > kLines)
            break;
        if (!named)
            lines.push_back({i, LineKind::kFrom});
        lines.push_back({i, LineKind::kFigures});
        lines.push_back({i, LineKind::kTo});
    }
    return lines;
}

void PlanView::Paint(platform::Canvas& canvas) {
    FlightLog log = BuildFlightLog(g_app.settings, g_app.plan, g_app.leg);
    int count = static_cast<int>(log.rows.size());
    // Scrolled no further than the first sector from which the last one still shows.
    lastFirst_ = 0;
    for (int first = count - 1; first >= 0; --first) {
        auto lines = LayOut(log, first);
        if (lines.empty() || lines.back().sector != count - 1)
            break;
        lastFirst_ = first;
    }
    ScrollBy(0);

    canvas.FillRect(Rect{0, kTop, 240, kBottom}, platform::kWhite);
    Header(canvas);
    lines_.clear();
    if (log.rows.empty()) {
        canvas.SetFont(platform::Font{11, false});
        canvas.DrawText("No sectors - Edit, New sector", Rect{0, kFirstRowY, 240, kFirstRowY + 20},
                        platform::kTextCenter | platform::kTextSingleLine, platform::kBlack,
                        platform::kWhite, true);
        return;
    }

    lines_ = LayOut(log, static_cast<int>(g_app.view.PlanScrollRow));
    for (std::size_t l = 0; l < lines_.size(); ++l) {
        const Line& line = lines_[l];
        const FlightLogRow& row = log.rows[static_cast<std::size_t>(line.sector)];
        int y = kFirstRowY + static_cast<int>(l) * kLineHeight;
        if (line.kind != LineKind::kFigures) {
            canvas.SetFont(platform::Font{11, true});
            canvas.DrawText(line.kind == LineKind::kFrom ? row.From() : row.To(),
                            Rect{2, y, 238, y + kLineHeight}, platform::kTextLeft | kOneLine,
                            kHeaderInk, platform::kWhite, true);
            continue;
        }
        if (row.highlighted)
            canvas.FillRect(Rect{0, y, 240, y + kLineHeight}, kHighlight);
        canvas.SetFont(platform::Font{11, row.active});
        std::string number = row.active ? ">" : "";
        number.append(std::to_string(row.sector.SectorNumber));
        Cell(canvas, kNumber, y, kLineHeight, number, platform::kBlack);
        Cell(canvas, kHeading, y, kLineHeight, row.MagHeading(), platform::kBlack);
        Cell(canvas, kDistance, y, kLineHeight, row.Distance(), platform::kBlack);
        Cell(canvas, kSpeed, y, kLineHeight, row.GroundSpeed(), platform::kBlack);
        Cell(canvas, kTime, y, kLineHeight, row.Time(), platform::kBlack);
        Cell(canvas, kFuel, y, kLineHeight, row.Fuel(), platform::kBlack);
    }
    canvas.SetPen(platform::Pen{platform::PenStyle::Solid, 1, kGrid});
    canvas.MoveTo(0, kTotalY);
    canvas.LineTo(240, kTotalY);
    canvas.SetFont(platform::Font{11, true});
    canvas.DrawText("Total", Rect{2, kTotalY, 62, kTotalY + kRowHeight},
                    platform::kTextLeft | kOneLine, kHeaderInk, platform::kWhite, true);
    Cell(canvas, kDistance, kTotalY, kRowHeight, log.TotalDistance(), kHeaderInk);
    Cell(canvas, kTime, kTotalY, kRowHeight, log.TotalTime(), kHeaderInk);
    Cell(canvas, kFuel, kTotalY, kRowHeight, log.TotalFuel(), kHeaderInk);
}

void PlanView::ScrollBy(int rows) {
    int row = std::clamp(static_cast<int>(g_app.view.PlanScrollRow) + rows, 0, lastFirst_);
    g_app.view.PlanScrollRow = static_cast<std::uint32_t>(row);
}

void PlanView::PenDown(int /*x*/, int y) {
    dragY_ = y;
    if (y < kFirstRowY)
        return;
    auto line = static_cast<std::size_t>((y - kFirstRowY) / kLineHeight);
    if (line < lines_.size())
        g_app.plan.HighlightedSector = static_cast<std::uint32_t>(lines_[line].sector);
}

void PlanView::PenMove(int /*x*/, int y) {
    // A sector is two lines: its figures and the name it ends at.
    constexpr int kSectorHeight = 2 * kLineHeight;
    int rows = (dragY_ - y) / kSectorHeight;
    if (rows == 0)
        return;
    ScrollBy(rows);
    dragY_ -= rows * kSectorHeight;
}

}  // namespace aerix
