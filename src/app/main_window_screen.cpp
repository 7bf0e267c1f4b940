// What the window shows: the views and their painting, and the keys, buttons and taps on them.
#include "app/main_window.hpp"

#include "app/app_state.hpp"
#include "app/command_ids.hpp"
#include "app/default_data.hpp"
#include "app/manual.hpp"
#include "app/plan_legs.hpp"
#include "app/start_up.hpp"
#include "app/view_hot_keys.hpp"
#include "gps/feeds.hpp"
#include "gps/fix_publication.hpp"
#include "gps/gps_port.hpp"
#include "gps/port_device_setting.hpp"
#include "planning/plan_dialogs.hpp"
#include "planning/sector_computation.hpp"
#include "planning/sector_dialog.hpp"
#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "settings/settings.hpp"
#include "store/nav_database_chooser.hpp"
#include "store/record_store.hpp"
#include "store/schema.hpp"
#include "views/active_leg.hpp"
#include "views/calibration_view.hpp"
#include "views/chart_generator.hpp"
#include "views/instrument_frame.hpp"
#include "views/map_readouts.hpp"
#include "views/map_view.hpp"
#include "views/plan_sectors.hpp"

namespace aerix {

namespace {

using namespace cmd;
using platform::Sys;

// CentiMinutes to degrees for the map.
constexpr double kDegreesPerUnit = 0.00016666666666666666;

}  // namespace

void PaintMapFrame(platform::Canvas& canvas) {
    CanvasReadouts readouts(canvas);
    // Until a position arrives there is nothing to centre on: 0, 0 would choose the world chart.
    if (!g_app.gps.Fix.positionKnown) {
        PaintMapView(canvas, &readouts, {g_app.view, g_app.settings, g_app.gps, g_app.leg}, 0);
        return;
    }
    CenterMapOnPosition(canvas, &readouts, {g_app.view, g_app.settings, g_app.gps, g_app.leg},
                        g_app.gps.Fix.longitude * kDegreesPerUnit,
                        g_app.gps.Fix.latitude * kDegreesPerUnit);
}

void MainWindow::ShowView(unsigned id) {
    // The drawing of the view being left ends here; another instrument view starts afresh.
    instruments_.Reset();
    ++generation_;
    switch (id) {
        case kShowPlan:
            g_app.settings.ViewMode = kViewPlan;
            host_.ShowLatLonReadout(false);
            host_.ShowScaleReadout(false);
            break;
        case kShowMap:
            g_app.settings.ViewMode = kViewMap;
            menu_.Enable(kScaleIn, true);
            menu_.Enable(kScaleOut, true);
            menu_.Enable(kCalibrateNe, true);
            menu_.Enable(kCalibrateSw, true);
            ApplyReadouts();
            break;
        case kShowHsi:
            ShowInstruments(false);
            break;
        case kShowAerix:
            ShowInstruments(true);
            break;
    }
}

void MainWindow::ShowInstruments(bool aerix) {
    g_app.settings.ViewMode = kViewInstruments;
    g_app.view.InstrumentAerix = aerix ? 1 : 0;
    if (aerix) {
        g_app.view.InstrumentCentreX = 215;
        g_app.view.InstrumentCentreY = 193;
        // Three consecutive identifiers from "Scale in" (the third is no menu item).
        for (unsigned i = kScaleIn; i < kScaleIn + 3; ++i)
            menu_.Enable(i, false);
    } else {
        g_app.view.InstrumentCentreX = 120;
        g_app.view.InstrumentCentreY = 135;
    }
    ApplyReadouts();
    LoadArraysIfPending();
}

void MainWindow::LoadArraysIfPending() {
    if (!g_app.nav.ArraysPending)
        return;
    // The drawing reads the arrays the dialog replaces.
    StopInstruments();
    dialogs_.Run(Dialog::Loading);
}

void MainWindow::StopInstruments() {
    instruments_.Stop();
    ++generation_;
}

void MainWindow::PaintInstruments(platform::Canvas& canvas) {
    instruments_.TakeFinished();
    instruments_.Paint(canvas);
    const std::uint64_t fix = g_app.gps.PublishedFix.Sequence();
    if (instruments_.Running() || (fix == drawnFix_ && generation_ == drawnGeneration_))
        return;
    drawnFix_ = fix;
    drawnGeneration_ = generation_;
    instruments_.Start(
        PrepareInstrumentFrame({g_app.view, g_app.settings, g_app.gps, g_app.leg}, g_app.nav),
        Sys().ui, g_app.gps.InstrumentDrawingRunning);
}

void MainWindow::ApplyReadouts() {
    if (g_app.settings.ViewMode == kViewInstruments) {
        host_.ShowLatLonReadout(g_app.settings.ShowLatLonHsi == 1);
        host_.ShowScaleReadout(g_app.settings.ShowScaleHsi == 1);
    } else if (g_app.settings.ViewMode == kViewMap) {
        // The map view draws its readouts at their places itself (by shlinmap and shsinmap).
        host_.ShowLatLonReadout(false);
        host_.ShowScaleReadout(false);
    }
}

void MainWindow::Button(unsigned id) {
    switch (g_app.settings.ViewMode) {
        case kViewPlan:
            if (id != kButtonAction)
                planView_.ScrollBy(id == kButtonUp ? -1 : 1);
            break;
        case kViewMap:
            if (id == kButtonUp && g_app.view.MapZoom < 4.0)
                g_app.view.MapZoom *= 2;
            else if (id == kButtonDown && g_app.view.MapZoom > 0.25)
                g_app.view.MapZoom /= 2;
            break;
        case kViewInstruments:
            if (id == kButtonUp && g_app.view.InstrumentRangeStep < 16)
                g_app.view.InstrumentRangeStep *= 2;
            else if (id == kButtonDown && g_app.view.InstrumentRangeStep >= 2)
                g_app.view.InstrumentRangeStep /= 2;
            break;
    }
}

void MainWindow::OnPaint(platform::Canvas& canvas) {
    TakeFixSnapshot(g_app.gps);
    switch (g_app.settings.ViewMode) {
        case kViewPlan:
            planView_.Paint(canvas);
            break;
        case kViewInstruments:
            PaintInstruments(canvas);
            break;
        case kViewMap:
            PaintMapFrame(canvas);
            break;
        case kViewPickSector:
            g_app.settings.ViewMode = kViewMapEdit;
            [[fallthrough]];
        case kViewMapEdit:
            PaintCalibrationView(canvas, {g_app.view, g_app.settings, g_app.gps, g_app.leg});
            break;
        case kViewCalibrate:
            host_.Beep();
            PaintCalibrationView(canvas, {g_app.view, g_app.settings, g_app.gps, g_app.leg});
            g_app.settings.ViewMode = kViewMapEdit;
            // The dialog opens once this paint is over.
            host_.Post([this] { dialogs_.Run(Dialog::Calibrate); });
            break;
        default:
            break;
    }
}

void MainWindow::OnKeyUp(unsigned key) {
    // The hardware buttons act only while they are registered as hot keys.
    if (key >= vk::kButton1 && key <= vk::kButton4) {
        if (!Sys().hotKeys->IsRegistered(static_cast<int>(key)))
            return;
        // 195 and 196 are crossed on purpose: AERIX, then HSI.
        static constexpr unsigned kButtonViews[] = {kShowPlan, kShowMap, kShowAerix, kShowHsi};
        OnCommand(kButtonViews[key - vk::kButton1]);
        return;
    }
    if (g_app.settings.ViewMode == kViewMap) {
        if (key == vk::kUp && g_app.view.MapZoom < 4.0)
            OnCommand(kButtonUp);
        if (key == vk::kDown && g_app.view.MapZoom > 0.25)
            OnCommand(kButtonDown);
    } else if (g_app.settings.ViewMode == kViewInstruments) {
        if (key == vk::kUp && g_app.view.InstrumentRangeStep < 16)
            OnCommand(kButtonUp);
        if (key == vk::kDown && g_app.view.InstrumentRangeStep >= 2)
            OnCommand(kButtonDown);
    } else if (g_app.settings.ViewMode == kViewPlan && (key == vk::kUp || key == vk::kDown)) {
        // The flight log scrolls with the arrows too.
        OnCommand(key == vk::kUp ? kButtonUp : kButtonDown);
    }
    if (key == vk::kLeft)
        OnCommand(kScaleIn);
    else if (key == vk::kRight)
        OnCommand(kScaleOut);
    else if (key == vk::kAction)
        OnCommand(kButtonAction);
}

void MainWindow::OnPenDown(int x, int y) {
    if (g_app.settings.ViewMode == kViewPlan)
        planView_.PenDown(x, y);
    else if (g_app.settings.ViewMode == kViewMapEdit)
        CalibrationPenDown(x, y);
    else
        return;
    Repaint();
}

void MainWindow::OnPenMove(int x, int y) {
    if (g_app.settings.ViewMode == kViewPlan)
        planView_.PenMove(x, y);
    else if (g_app.settings.ViewMode == kViewMapEdit)
        CalibrationPenMove(g_app.view, x, y);
    else
        return;
    Repaint();
}

}  // namespace aerix
