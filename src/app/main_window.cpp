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

constexpr std::uint32_t kViewStatePreset = 0x64001F;
// CentiMinutes to degrees for the map.
constexpr double kDegreesPerUnit = 0.00016666666666666666;

// Start items of the three feeds, and the items that only mean something while one runs.
constexpr unsigned kFeedStartItems[] = {kConnectGps, kStartSimulation, kPlaybackNorm,
                                        kPlaybackFast};
constexpr unsigned kFeedStopItems[] = {kDisconnectGps, kStopSimulation, kStopPlayback};

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

MainWindow::MainWindow(WindowHost& host, DialogHost& dialogs)
    : host_(host),
      dialogs_(dialogs),
      // Reversing recomputes the route itself; an edited sector is recomputed with its own
      // airspeed.
      reversePlan_([] { ReversePlan(g_app.settings, g_app.plan); }),
      recomputePlan_([] { RecomputePlanRoute(g_app.settings, g_app.plan, 0); }) {}

MainWindow::~MainWindow() {
    instruments_.Stop();
    feedsConnected_.reset();
}

FeedWiring MainWindow::Feeds() {
    // A feed that ends itself asks for its stop command; it runs on this thread.
    auto commands = [this, connected = std::weak_ptr<bool>(feedsConnected_)](FeedCommand command) {
        if (connected.lock()) {
            host_.Post([this, command] { OnCommand(static_cast<unsigned>(command)); });
            return;
        }
        SendFeedCommand(FeedWiring{g_app.gps, g_app.leg, g_app.settings, {}, {}}, command);
    };
    return FeedWiring{g_app.gps, g_app.leg, g_app.settings, commands, PlanLegSource()};
}

void MainWindow::SetPlanOperations(std::function<void()> reverse, std::function<void()> recompute) {
    reversePlan_ = std::move(reverse);
    recomputePlan_ = std::move(recompute);
}

bool MainWindow::InitInstance() {
    if (host_.RaiseOtherInstance())
        return false;

    StartUp(g_app);
    g_app.view.ViewStateWord = kViewStatePreset;
    // The default charts are drawn once, on the first start (the front end's graphics draw
    // their labels).
    GenerateMissingCharts(DefaultMaps());
    InstallManual();

    if (!host_.CreateMainWindow())
        return false;
    Sys().ui->SetTitle(SourceTitle(g_app.settings.GpsSource));

    dialogs_.Run(Dialog::Splash);
    if (dialogs_.Run(Dialog::Disclaimer) == kDialogCancel)
        return false;

    if (auto* memory = Sys().memory) {
        platform::MemoryStatusRecord status;
        if (memory->Query(&status) && status.memoryLoad >= kMemoryLoadLimit) {
            platform::ShowError(kMemoryLowText);
            return false;
        }
    }

    if (g_app.settings.NavDatabaseName.empty() && ChooseNavDatabase(g_app.settings, g_app.nav) != 0)
        return false;

    if (g_app.settings.ActivePlanName.empty()) {
        g_app.settings.ActivePlanName.assign(Utf8ToUtf16(kFirstPlanName));
        g_app.settings.CurrentPlanId = CreatePlanDatabase(g_app.settings.ActivePlanName.view());
    }

    host_.ShowMainWindow();
    host_.CreateChildWindows();
    g_app.nav.ArraysPending = 1;
    if (g_app.settings.EnableHotKeys == 1)
        RegisterViewHotKeys();
    return true;
}

void MainWindow::Repaint() {
    Sys().ui->InvalidateMainWindow(true);
}

void MainWindow::OnCommand(unsigned id) {
    switch (id) {
        // --- File ---
        case kNewPlan:
            dialogs_.Run(Dialog::NewPlan);
            break;
        case kOpenPlan:
            // Another plan: the arrays reload, the plan is recomputed with the aircraft's
            // airspeeds and a feed flying the old one stops.
            if (dialogs_.Run(Dialog::OpenPlan) == kDialogOk) {
                AfterPlanOpened(g_app.settings, g_app.plan, g_app.nav);
                StopRunningFeed();
            }
            break;
        case kDeletePlan:
            dialogs_.Run(Dialog::DeletePlan);
            break;
        case kReversePlan:
            if (platform::AskWarning("Reverse current plan?")) {
                if (reversePlan_)
                    reversePlan_();
                if (recomputePlan_)
                    recomputePlan_();
            }
            break;
        case kHelp: {
            auto page = Sys().root->Resolve(kManualPage);
            if (!std::filesystem::exists(page))
                page = platform::ResourcePath("Manual.htm");
            host_.OpenHelp(page);
            break;
        }
        case kExit:
            Exit();
            return;
        // --- Edit ---
        case kNewSector:
            NewSector(Dialog::NewSector);
            break;
        case kDeleteSector:
            if (platform::AskWarning("Delete highlighted sector?"))
                DeletePlanSector(g_app.settings, g_app.plan, g_app.plan.HighlightedSector);
            break;
        case kInsertSector:
            if (platform::AskWarning("Insert after highlighted sector?"))
                NewSector(Dialog::InsertSector);
            break;
        case kEditSector:
            if (platform::AskWarning("Edit highlighted sector?")) {
                dialogs_.Run(Dialog::EditSector);
                if (recomputePlan_)
                    recomputePlan_();
            }
            break;
        case kWindTable:
            dialogs_.Run(Dialog::WindTable);
            break;
        // --- View ---
        case kNextWaypoint:
            NextWaypoint();
            break;
        case kScaleIn:
        case kScaleOut:
            // The next more (or less) detailed chart.
            g_app.view.MapChangeRequest = id == kScaleIn ? 1 : -1;
            break;
        case kShowPlan:
        case kShowMap:
        case kShowHsi:
        case kShowAerix:
            ShowView(id);
            break;
        case kGpsData:
            dialogs_.Run(Dialog::GpsData);
            break;
        // --- Utils ---
        case kPreferences:
            if (dialogs_.Run(Dialog::Preferences) == kDialogOk)
                ApplyReadouts();
            break;
        case kMapLoad:
            // A bitmap chosen to calibrate: shown under the calibration cross.
            if (dialogs_.Run(Dialog::MapLoad) == kDialogOk) {
                g_app.settings.ViewMode = kViewMapEdit;
                BeginCalibrationView(g_app.view);
                LoadMapBitmap(g_app.view, g_app.settings, g_app.leg,
                              g_app.view.CurrentMapPath.view());
                menu_.Enable(kCalibrateNe, true);
                menu_.Enable(kCalibrateSw, true);
            }
            break;
        case kMapEdit:
            dialogs_.Run(Dialog::MapEdit);
            break;
        case kCalibrateNe:
        case kCalibrateSw:
            g_app.view.CalibrateCorner = id == kCalibrateNe ? 1 : 0;
            Repaint();
            g_app.settings.ViewMode = kViewCalibrate;
            break;
        case kSetupAircraft:
            dialogs_.Run(Dialog::AircraftSetup);
            ShowView(kShowPlan);
            break;
        case kAbout:
            dialogs_.Run(Dialog::About);
            break;
        // --- Tools ---
        case kTimer:
            dialogs_.Run(Dialog::Timer);
            break;
        case kConversions:
            dialogs_.Run(Dialog::Conversions);
            break;
        case kSunTimes:
            dialogs_.Run(Dialog::SunTimes);
            break;
        case kCrosswind:
            dialogs_.Run(Dialog::Crosswind);
            break;
        case kHolding:
            dialogs_.Run(Dialog::Holding);
            break;
        case kDensityAltitude:
            dialogs_.Run(Dialog::DensityAltitude);
            break;
        case kTrueAltitude:
            dialogs_.Run(Dialog::TrueAltitude);
            break;
        case kLogbook:
            dialogs_.Run(Dialog::Logbook);
            break;
        case kDatabaseAdd:
            dialogs_.Run(Dialog::DatabaseAdd);
            break;
        case kDatabaseEdit:
            dialogs_.Run(Dialog::DatabaseEdit);
            break;
        case kDatabaseList:
            dialogs_.Run(Dialog::DatabaseList);
            break;
        case kDatabaseNew:
            dialogs_.Run(Dialog::DatabaseNew);
            break;
        case kDatabaseOpen:
            ChooseNavDatabase(g_app.settings, g_app.nav);
            break;
        case kDatabaseDelete:
            DeleteNavDatabase(g_app.settings);
            break;
        case kPlaybackNorm:
        case kPlaybackFast:
            if (StartPlayback(Feeds(), id == kPlaybackFast))
                FeedStarted(kStopPlayback);
            break;
        case kStopPlayback:
            StopPlayback(g_app.gps, g_app.settings);
            FeedStopped(kStopPlayback);
            break;
        case kStartSimulation:
            if (StartSimulation(Feeds()))
                FeedStarted(kStopSimulation);
            break;
        case kStopSimulation:
            StopSimulation(g_app.gps, g_app.settings);
            FeedStopped(kStopSimulation);
            break;
        case kConnectGps:
            if (ConnectGps(Feeds()))
                FeedStarted(kDisconnectGps);
            break;
        case kDisconnectGps:
            DisconnectGps(g_app.gps, g_app.settings);
            FeedStopped(kDisconnectGps);
            break;
        case kGpsSetup:
            dialogs_.Run(Dialog::GpsSetup);
            break;
        case kFuel:
            dialogs_.Run(Dialog::Fuel);
            break;
        case kWeightBalance:
            if (dialogs_.Run(Dialog::WeightBalanceLoading) == kDialogOk)
                dialogs_.Run(Dialog::WeightBalanceResult);
            ShowView(kShowPlan);
            break;
        // --- menu-bar buttons ---
        case kButtonUp:
        case kButtonDown:
        case kButtonAction:
            Button(id);
            break;
        default:
            return;
    }
    ++generation_;
    Repaint();
}

void MainWindow::NewSector(Dialog dialog) {
    int result = dialogs_.Run(dialog);
    if (result == kDialogOk || result == kDialogPickOnMap)
        g_app.nav.ArraysPending = 1;
    if (result == kDialogPickOnMap)
        g_app.settings.ViewMode = kViewPickSector;
}

void MainWindow::NextWaypoint() {
    if (g_app.settings.ActivePlanName.empty())
        return;
    auto h = Sys().store->OpenDatabase(platform::kObjectStoreVolume,
                                       g_app.settings.ActivePlanName.view(), schema::kSecNumber, 0);
    if (!h)
        return;
    std::uint32_t count = h.RecordCount();
    h = {};
    if (g_app.leg.DirectToStartLatitude.load() != 0) {
        // "Next wpt" during a direct-to takes it as reached: on with the plan from there.
        g_app.leg.ActiveSectorIndex =
            SectorAfterDirectTo(ReadPlanSectors(g_app.settings), g_app.leg.DirectToTargetLatitude,
                                g_app.leg.DirectToTargetLongitude, g_app.leg.ActiveSectorIndex);
        g_app.leg.DirectToStartLatitude.store(0);
    } else if (count > 0 && g_app.leg.ActiveSectorIndex < count - 1) {
        ++g_app.leg.ActiveSectorIndex;
    } else {
        return;
    }
    // The simulator flies on with the leg the views now show.
    g_app.leg.LegChange.store(1);
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

void MainWindow::FeedStarted(unsigned stopId) {
    for (unsigned start : kFeedStartItems)
        menu_.Enable(start, false);
    menu_.Enable(stopId, true);
    menu_.Enable(kNextWaypoint, true);
    menu_.Enable(kGpsData, true);
}

void MainWindow::FeedStopped(unsigned stopId) {
    for (unsigned start : kFeedStartItems)
        menu_.Enable(start, true);
    menu_.Enable(stopId, false);
    menu_.Enable(kNextWaypoint, false);
    menu_.Enable(kGpsData, false);
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

void MainWindow::Exit() {
    ExitSequence();
}

void MainWindow::Destroy() {
    ExitSequence();
}

void MainWindow::StopRunningFeed() {
    switch (g_app.settings.GpsSource) {
        case kSourceRealtime:
            OnCommand(kDisconnectGps);
            break;
        case kSourceSimulated:
            OnCommand(kStopSimulation);
            break;
        case kSourceRecorded:
            OnCommand(kStopPlayback);
            break;
    }
}

void MainWindow::ExitSequence() {
    SaveSettings(g_app.settings);
    SavePortDevice(g_app.gps);
    StopInstruments();
    CloseGpsPort(g_app.gps);
    StopRunningFeed();
    if (g_app.settings.EnableHotKeys == 1)
        UnregisterViewHotKeys();
    if (!quitRequested_) {
        quitRequested_ = true;
        host_.Quit(0);
    }
}

}  // namespace aerix
