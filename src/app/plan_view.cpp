#include "app/plan_view.hpp"

#include <algorithm>
#include <cstdio>
#include <string>

#include "app/state/app_state.hpp"
#include "planning/flight_log.hpp"
#include "platform/text.hpp"

namespace aerix {

namespace {

using platform::Rect;

constexpr platform::Color kHeaderInk = platform::Rgb(0, 0, 128);
constexpr platform::Color kHighlight = platform::Rgb(255, 255, 160);
constexpr platform::Color kGrid = platform::Rgb(192, 192, 192);

// Columns: sector, from > to, magnetic heading, distance, time, fuel.
struct Column {
    int left, right;
    unsigned align;
};
constexpr Column kColumns[] = {
    {1, 18, platform::kTextLeft},     {20, 104, platform::kTextLeft},
    {105, 130, platform::kTextRight}, {132, 168, platform::kTextRight},
    {170, 202, platform::kTextRight}, {204, 238, platform::kTextRight},
};
constexpr const char* kHeadings[] = {"#", "From > To", "Hdg", "Dist", "Time", "Fuel"};

std::string Fixed(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

void Cell(platform::Canvas& canvas, int column, int y, const std::string& text,
          platform::Color ink) {
    const auto& c = kColumns[column];
    canvas.DrawText(text, Rect{c.left, y, c.right, y + PlanView::kRowHeight},
                    c.align | platform::kTextVCenter | platform::kTextSingleLine, ink,
                    platform::kWhite, true);
}

}  // namespace

void PlanView::Paint(platform::Canvas& canvas) {
    FlightLog log = BuildFlightLog();
    sectorCount_ = static_cast<int>(log.rows.size());
    ScrollBy(0);

    canvas.FillRect(Rect{0, kTop, 240, kBottom}, platform::kWhite);
    canvas.SetFont(platform::Font{11, true});
    // Appended piece by piece: g++ 12 at -O3 warns falsely on chained operator+.
    std::string title = "PLAN ";
    title.append(Utf16ToUtf8(g_app.ActivePlanName.view()));
    title.append("   A/c ");
    title.append(Utf16ToUtf8(g_app.AircraftReg.view()));
    canvas.DrawText(title, Rect{2, kTop, 238, kTop + kRowHeight},
                    platform::kTextLeft | platform::kTextVCenter | platform::kTextSingleLine,
                    kHeaderInk, platform::kWhite, true);
    int headerY = kTop + kRowHeight;
    for (int c = 0; c < 6; ++c)
        Cell(canvas, c, headerY, kHeadings[c], kHeaderInk);
    canvas.SetPen(platform::Pen{platform::PenStyle::Solid, 1, kGrid});
    canvas.MoveTo(0, kFirstRowY - 1);
    canvas.LineTo(240, kFirstRowY - 1);

    canvas.SetFont(platform::Font{11, false});
    if (log.rows.empty()) {
        canvas.DrawText("No sectors - Edit, New sector", Rect{0, kFirstRowY, 240, kFirstRowY + 20},
                        platform::kTextCenter | platform::kTextSingleLine, platform::kBlack,
                        platform::kWhite, true);
        return;
    }

    int rows = VisibleRows();
    int first = static_cast<int>(g_app.PlanScrollRow);
    for (int i = first; i < sectorCount_ && i < first + rows; ++i) {
        const auto& row = log.rows[static_cast<std::size_t>(i)];
        int y = kFirstRowY + (i - first) * kRowHeight;
        if (row.highlighted)
            canvas.FillRect(Rect{0, y, 240, y + kRowHeight}, kHighlight);
        canvas.SetFont(platform::Font{11, row.active});
        std::string number = row.active ? ">" : "";
        number.append(std::to_string(row.sector.SectorNumber));
        Cell(canvas, 0, y, number, platform::kBlack);
        std::string legText = row.From();
        legText.append(">");
        legText.append(row.To());
        Cell(canvas, 1, y, legText, platform::kBlack);
        Cell(canvas, 2, y, row.MagHeading(), platform::kBlack);
        Cell(canvas, 3, y, row.Distance(), platform::kBlack);
        Cell(canvas, 4, y, row.Time(), platform::kBlack);
        Cell(canvas, 5, y, row.Fuel(), platform::kBlack);
    }
    int totalY = kFirstRowY + rows * kRowHeight;
    canvas.MoveTo(0, totalY);
    canvas.LineTo(240, totalY);
    canvas.SetFont(platform::Font{11, true});
    Cell(canvas, 1, totalY, "Total", kHeaderInk);
    Cell(canvas, 3, totalY, Fixed("%.1f", log.totalDistance), kHeaderInk);
    Cell(canvas, 4, totalY, FormatLogTime(log.totalTime), kHeaderInk);
    Cell(canvas, 5, totalY, Fixed("%.1f", log.totalFuel), kHeaderInk);
}

void PlanView::ScrollBy(int rows) {
    int last = std::max(0, sectorCount_ - VisibleRows());
    int row = std::clamp(static_cast<int>(g_app.PlanScrollRow) + rows, 0, last);
    g_app.PlanScrollRow = static_cast<std::uint32_t>(row);
}

void PlanView::PenDown(int /*x*/, int y) {
    dragY_ = y;
    if (y < kFirstRowY)
        return;
    int row = (y - kFirstRowY) / kRowHeight;
    if (row >= VisibleRows())
        return;
    int sector = static_cast<int>(g_app.PlanScrollRow) + row;
    if (sector < sectorCount_)
        g_app.HighlightedSector = static_cast<std::uint32_t>(sector);
}

void PlanView::PenMove(int /*x*/, int y) {
    int rows = (dragY_ - y) / kRowHeight;
    if (rows == 0)
        return;
    ScrollBy(rows);
    dragY_ -= rows * kRowHeight;
}

}  // namespace aerix
