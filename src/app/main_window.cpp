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

// Start items of the three feeds, and the items that only mean something while one runs.
constexpr unsigned kFeedStartItems[] = {kConnectGps, kStartSimulation, kPlaybackNorm,
                                        kPlaybackFast};
constexpr unsigned kFeedStopItems[] = {kDisconnectGps, kStopSimulation, kStopPlayback};

}  // namespace

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
