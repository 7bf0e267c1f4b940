#include "app/main_window.hpp"

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <map>
#include <mutex>

#include "app/app_state.hpp"
#include "app/command_ids.hpp"
#include "app/default_data.hpp"
#include "app/loading_dialog.hpp"
#include "platform/recording_canvas.hpp"
#include "settings/settings.hpp"
#include "store/record_store.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

using namespace cmd;

class FakeWindow : public WindowHost {
  public:
    bool otherInstance = false;
    bool canCreate = true;
    bool latLonShown = false, scaleShown = false;
    int quits = 0, beeps = 0, childWindows = 0;
    std::filesystem::path helpPage;
    std::deque<std::function<void()>> posted;

    bool RaiseOtherInstance() override { return otherInstance; }
    bool CreateMainWindow() override { return canCreate; }
    void ShowMainWindow() override {}
    void CreateChildWindows() override { ++childWindows; }
    void ShowLatLonReadout(bool shown) override { latLonShown = shown; }
    void ShowScaleReadout(bool shown) override { scaleShown = shown; }
    void Post(std::function<void()> work) override { posted.push_back(std::move(work)); }
    void Beep() override { ++beeps; }
    bool OpenHelp(const std::filesystem::path& page) override {
        helpPage = page;
        return true;
    }
    void Quit(int) override { ++quits; }
    void RunPosted() {
        while (!posted.empty()) {
            auto work = std::move(posted.front());
            posted.pop_front();
            work();
        }
    }
};

class ScriptedDialogs : public DialogHost {
  public:
    std::map<Dialog, int> answers;  // missing: kDialogOk
    std::vector<Dialog> opened;
    int Run(Dialog dialog) override {
        opened.push_back(dialog);
        if (dialog == Dialog::Loading)
            g_app.nav.ArraysPending = 0;
        auto it = answers.find(dialog);
        return it == answers.end() ? kDialogOk : it->second;
    }
    int Count(Dialog dialog) const {
        return static_cast<int>(std::count(opened.begin(), opened.end(), dialog));
    }
};

class MainWindowTest : public ::testing::Test {
  public:
    testing::TestPlatform platform_;
    platform::FixedMemoryStatus memory_{40};
    FakeWindow window_;
    ScriptedDialogs dialogs_;
    std::unique_ptr<MainWindow> main_;

    MainWindowTest() { platform::Sys().memory = &memory_; }
    ~MainWindowTest() override {
        if (main_ && !main_->QuitRequested())
            main_->Destroy();
    }

    bool Start() {
        main_ = std::make_unique<MainWindow>(window_, dialogs_);
        // The chooser picks "World" when asked.
        platform_.Ui().ChooseNext(
            platform::FileDialogResult{platform_.Root() / "World.CDB", u"World.CDB"});
        return main_->InitInstance();
    }
    std::vector<std::string> Boxes() { return platform_.Ui().BoxTexts(); }
};

TEST_F(MainWindowTest, StartUpCreatesPlan1AndChoosesTheDatabase) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(g_app.settings.ActivePlanName.utf8(), "Plan1");
    EXPECT_NE(g_app.settings.CurrentPlanId, 0u);
    EXPECT_TRUE(DatabaseOfType(g_app.settings.CurrentPlanId, schema::kPlanType));
    EXPECT_EQ(g_app.settings.NavDatabaseName.utf8(), "World");
    EXPECT_EQ(g_app.settings.PortName.utf8(), "COM1:");
    EXPECT_EQ(g_app.view.ViewStateWord, 0x64001Fu);
    EXPECT_EQ(g_app.nav.ArraysPending, 1);
    EXPECT_EQ(g_app.settings.ViewMode, static_cast<std::uint32_t>(kViewNone));
    EXPECT_EQ(window_.childWindows, 1);
    EXPECT_EQ(dialogs_.opened, (std::vector<Dialog>{Dialog::Splash, Dialog::Disclaimer}));
    // First run: EnableHotKeys is 1 in memory, so the buttons are registered.
    EXPECT_TRUE(platform_.Keys().IsRegistered(193));
    // The default charts are drawn on the first start.
    for (const MapRecord& map : DefaultMaps())
        EXPECT_TRUE(std::filesystem::exists(platform::Sys().root->Resolve(map.Path)))
            << Utf16ToUtf8(map.Path);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(MainWindowTest, StartUpRefusals) {
    struct Case {
        const char* name;
        std::function<void(MainWindowTest&)> arrange;
        std::vector<std::string> boxes;
    };
    const Case cases[] = {
        {"second instance", [](MainWindowTest& t) { t.window_.otherInstance = true; }, {}},
        {"no window", [](MainWindowTest& t) { t.window_.canCreate = false; }, {}},
        {"disclaimer EXIT",
         [](MainWindowTest& t) { t.dialogs_.answers[Dialog::Disclaimer] = kDialogCancel; },
         {}},
        {"memory at 75", [](MainWindowTest& t) { t.memory_.SetLoad(75); }, {kMemoryLowText}},
        {"chooser cancelled",
         [](MainWindowTest& t) { t.platform_.Ui().ChooseNext(std::nullopt); },
         {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        platform_.Restart();
        platform::Sys().memory = &memory_;
        memory_.SetLoad(74);
        window_ = FakeWindow{};
        dialogs_ = ScriptedDialogs{};
        platform_.Ui().Clear();
        c.arrange(*this);
        main_ = std::make_unique<MainWindow>(window_, dialogs_);
        EXPECT_FALSE(main_->InitInstance());
        EXPECT_EQ(Boxes(), c.boxes);
        EXPECT_EQ(window_.childWindows, 0);
        main_.reset();
    }
}

TEST_F(MainWindowTest, FeedsNeedAMovingView) {
    ASSERT_TRUE(Start());
    main_->OnCommand(kShowPlan);
    const std::pair<unsigned, const char*> refusals[] = {
        {kConnectGps, "Select Map, HSI or AERIX view before connecting GPS"},
        {kStartSimulation, "Select Map, HSI or AERIX view before starting simulation"},
        {kPlaybackNorm, "Select Map, HSI or AERIX view before GPS data playback"},
        {kPlaybackFast, "Select Map, HSI or AERIX view before GPS data playback"},
    };
    for (auto [id, text] : refusals) {
        platform_.Ui().Clear();
        main_->OnCommand(id);
        ASSERT_EQ(platform_.Ui().Boxes().size(), 1u);
        EXPECT_EQ(platform_.Ui().Boxes()[0].text, text);
        EXPECT_EQ(platform_.Ui().Boxes()[0].caption, "Warning");
        EXPECT_EQ(g_app.settings.GpsSource, static_cast<std::uint32_t>(kSourceNone));
        EXPECT_TRUE(main_->Menu().Enabled(id));
        EXPECT_FALSE(main_->Menu().Enabled(kStopSimulation));
    }
}

TEST_F(MainWindowTest, SimulationStartAndStopSwitchTheMenu) {
    ASSERT_TRUE(Start());
    main_->OnCommand(kShowMap);
    main_->OnCommand(kStartSimulation);
    EXPECT_EQ(g_app.settings.GpsSource, static_cast<std::uint32_t>(kSourceSimulated));
    EXPECT_EQ(platform_.Ui().Titles().back(), "Simulated GPS data");
    for (unsigned id : {kConnectGps, kStartSimulation, kPlaybackNorm, kPlaybackFast})
        EXPECT_FALSE(main_->Menu().Enabled(id)) << id;
    for (unsigned id : {kStopSimulation, kNextWaypoint, kGpsData})
        EXPECT_TRUE(main_->Menu().Enabled(id)) << id;
    // A second start while one runs changes nothing.
    main_->OnCommand(kStartSimulation);
    EXPECT_EQ(g_app.settings.GpsSource, static_cast<std::uint32_t>(kSourceSimulated));

    main_->OnCommand(kStopSimulation);
    EXPECT_EQ(g_app.settings.GpsSource, static_cast<std::uint32_t>(kSourceNone));
    EXPECT_EQ(platform_.Ui().Titles().back(), "Aerix");
    for (unsigned id : {kConnectGps, kStartSimulation, kPlaybackNorm})
        EXPECT_TRUE(main_->Menu().Enabled(id)) << id;
    for (unsigned id : {kStopSimulation, kNextWaypoint, kGpsData})
        EXPECT_FALSE(main_->Menu().Enabled(id)) << id;
}

TEST_F(MainWindowTest, InstrumentViewsLoadTheArraysOnce) {
    ASSERT_TRUE(Start());
    main_->OnCommand(kShowAerix);
    main_->OnCommand(kShowHsi);
    EXPECT_EQ(dialogs_.Count(Dialog::Loading), 1);
    EXPECT_FALSE(main_->Menu().Enabled(kScaleIn));
    EXPECT_FALSE(main_->Menu().Enabled(kScaleOut));
    // A new sector sets the arrays pending again.
    main_->OnCommand(kNewSector);
    main_->OnCommand(kShowAerix);
    EXPECT_EQ(dialogs_.Count(Dialog::Loading), 2);
}

TEST_F(MainWindowTest, KeysRouteByViewAndLimits) {
    ASSERT_TRUE(Start());
    const std::pair<unsigned, std::uint32_t> buttons[] = {
        {193, kViewPlan}, {194, kViewMap}, {195, kViewInstruments}, {196, kViewInstruments}};
    for (auto [key, view] : buttons) {
        main_->OnKeyUp(key);
        EXPECT_EQ(g_app.settings.ViewMode, view) << key;
    }
    main_->OnKeyUp(195);
    EXPECT_EQ(g_app.view.InstrumentAerix, 1);  // 195 is AERIX
    main_->OnKeyUp(196);
    EXPECT_EQ(g_app.view.InstrumentAerix, 0);  // 196 is HSI

    // Instrument range: Up doubles below 16, Down halves from 2.
    for (int i = 0; i < 6; ++i)
        main_->OnKeyUp(vk::kUp);
    EXPECT_EQ(g_app.view.InstrumentRangeStep, 16u);
    for (int i = 0; i < 6; ++i)
        main_->OnKeyUp(vk::kDown);
    EXPECT_EQ(g_app.view.InstrumentRangeStep, 1u);

    main_->OnKeyUp(194);
    for (int i = 0; i < 4; ++i)
        main_->OnKeyUp(vk::kUp);
    EXPECT_EQ(g_app.view.MapZoom, 4.0);
    for (int i = 0; i < 6; ++i)
        main_->OnKeyUp(vk::kDown);
    EXPECT_EQ(g_app.view.MapZoom, 0.25);
    main_->OnKeyUp(vk::kLeft);
    EXPECT_EQ(g_app.view.MapChangeRequest, 1);
    main_->OnKeyUp(vk::kRight);
    EXPECT_EQ(g_app.view.MapChangeRequest, -1);

    // Unregistered buttons do nothing.
    main_->OnCommand(kShowMap);
    platform_.Keys().Unregister(193);
    main_->OnKeyUp(193);
    EXPECT_EQ(g_app.settings.ViewMode, static_cast<std::uint32_t>(kViewMap));
}

TEST_F(MainWindowTest, ConfirmationsActOnlyOnYes) {
    ASSERT_TRUE(Start());
    int reversed = 0, recomputed = 0;
    main_->SetPlanOperations([&] { ++reversed; }, [&] { ++recomputed; });
    main_->OnCommand(kReversePlan);  // the scripted box answers No
    main_->OnCommand(kEditSector);
    EXPECT_EQ(reversed + recomputed, 0);
    EXPECT_EQ(dialogs_.Count(Dialog::EditSector), 0);
    platform_.Ui().AnswerNext(platform::kIdYes);
    main_->OnCommand(kReversePlan);
    platform_.Ui().AnswerNext(platform::kIdYes);
    main_->OnCommand(kEditSector);
    EXPECT_EQ(reversed, 1);
    EXPECT_EQ(recomputed, 2);
    EXPECT_EQ(dialogs_.Count(Dialog::EditSector), 1);
    auto boxes = platform_.Ui().Boxes();
    ASSERT_EQ(boxes.size(), 4u);
    EXPECT_EQ(boxes[0].text, "Reverse current plan?");
    EXPECT_EQ(boxes[1].text, "Edit highlighted sector?");
    EXPECT_EQ(boxes[1].caption, "Warning");
}

TEST_F(MainWindowTest, CalibrationPaintsOnceThenOpensTheDialog) {
    ASSERT_TRUE(Start());
    main_->OnCommand(kCalibrateNe);
    EXPECT_EQ(g_app.settings.ViewMode, static_cast<std::uint32_t>(kViewCalibrate));
    EXPECT_EQ(g_app.view.CalibrateCorner, 1);
    platform::RecordingCanvas canvas;
    main_->OnPaint(canvas);
    EXPECT_EQ(window_.beeps, 1);
    EXPECT_EQ(g_app.settings.ViewMode, static_cast<std::uint32_t>(kViewMapEdit));
    window_.RunPosted();
    EXPECT_EQ(dialogs_.Count(Dialog::Calibrate), 1);
}

TEST_F(MainWindowTest, ExitSavesTwiceAndStopsTheFeed) {
    ASSERT_TRUE(Start());
    int acRegWrites = 0;
    platform_.Registry().SetFaultInjector([&](platform::RegOp op, std::u16string_view name) {
        if (op == platform::RegOp::SetValue && name == u"AcReg")
            ++acRegWrites;
        return 0L;
    });
    main_->OnCommand(kShowMap);
    main_->OnCommand(kStartSimulation);
    main_->OnCommand(kExit);
    EXPECT_EQ(acRegWrites, 1);
    EXPECT_EQ(g_app.settings.GpsSource, static_cast<std::uint32_t>(kSourceNone));
    EXPECT_FALSE(g_app.gps.GpsThread.joinable());
    EXPECT_FALSE(platform_.Keys().IsRegistered(193));
    main_->Destroy();
    EXPECT_EQ(acRegWrites, 2);
    EXPECT_EQ(window_.quits, 1);
    platform_.Restart();
    CreateDefaultSettings(g_app.settings);
    LoadSettings(g_app.settings);
    EXPECT_EQ(g_app.settings.ActivePlanName.utf8(), "Plan1");
    EXPECT_EQ(g_app.settings.NavDatabaseName.utf8(), "World");
}

TEST_F(MainWindowTest, MenuTableIsComplete) {
    MenuState state;
    // Every identifier appears once; the greyed ones start disabled.
    std::map<unsigned, int> seen;
    for (const auto& e : MenuTable())
        ++seen[e.id];
    EXPECT_EQ(seen.size(), 50u);
    for (auto [id, n] : seen)
        EXPECT_EQ(n, 1) << id;
    for (unsigned id : {kNextWaypoint, kScaleIn, kScaleOut, kGpsData, kCalibrateNe, kCalibrateSw,
                        kStopPlayback, kStopSimulation, kDisconnectGps})
        EXPECT_FALSE(state.Enabled(id)) << id;
    EXPECT_TRUE(state.Enabled(kConnectGps));
}

}  // namespace
}  // namespace aerix

namespace aerix {
namespace {

TEST(MemoryStatusTest, LoadFromProcMeminfo) {
    struct Case {
        const char* text;
        bool readable;
        std::uint32_t load;
    };
    const Case cases[] = {
        {"MemTotal:  1000 kB\nMemFree:  100 kB\nMemAvailable:  250 kB\n", true, 75},
        {"MemTotal:  1000 kB\nMemFree:  260 kB\n", true, 74},  // an old kernel: MemFree
        {"MemTotal:  0 kB\nMemAvailable:  0 kB\n", true, 0},
        {"MemFree:  100 kB\n", false, 0},
        {"", false, 0},
    };
    testing::TempDir dir;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        testing::WriteFile(dir.Path() / "meminfo", c.text);
        platform::ProcMemoryStatus status(dir.Path() / "meminfo");
        platform::MemoryStatusRecord record;
        ASSERT_EQ(status.Query(&record), c.readable);
        if (c.readable) {
            EXPECT_EQ(record.memoryLoad, c.load);
        }
    }
    platform::ProcMemoryStatus missing(dir.Path() / "none");
    platform::MemoryStatusRecord record;
    EXPECT_FALSE(missing.Query(&record));
}

}  // namespace
}  // namespace aerix

namespace aerix {
namespace {

TEST_F(MainWindowTest, OpeningAPlanStopsTheFeed) {
    ASSERT_TRUE(Start());
    main_->OnCommand(cmd::kShowMap);
    main_->OnCommand(cmd::kStartSimulation);
    g_app.nav.ArraysPending = 0;
    dialogs_.answers[Dialog::OpenPlan] = kDialogCancel;
    main_->OnCommand(cmd::kOpenPlan);
    EXPECT_EQ(g_app.settings.GpsSource, static_cast<std::uint32_t>(kSourceSimulated));
    dialogs_.answers[Dialog::OpenPlan] = kDialogOk;
    main_->OnCommand(cmd::kOpenPlan);
    EXPECT_EQ(g_app.settings.GpsSource, static_cast<std::uint32_t>(kSourceNone));
    EXPECT_EQ(g_app.nav.ArraysPending, 1);
    EXPECT_TRUE(main_->Menu().Enabled(cmd::kStartSimulation));
}

}  // namespace
}  // namespace aerix

namespace aerix {
namespace {

// Draws nothing until released or stopped; counts its drawings.
class HeldRenderer {
  public:
    platform::Bitmap operator()(const InstrumentFrameInput& in) {
        std::unique_lock lock(mutex_);
        ++started_;
        changed_.notify_all();
        std::stop_token stop = in.stop;
        changed_.wait(lock, stop, [&] { return released_ > 0; });
        if (released_ > 0)
            --released_;
        return platform::Bitmap(240, 268);
    }
    void Release() {
        std::lock_guard lock(mutex_);
        ++released_;
        changed_.notify_all();
    }
    void WaitStarted(int n) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return started_ >= n; });
    }
    int Started() {
        std::lock_guard lock(mutex_);
        return started_;
    }

  private:
    std::mutex mutex_;
    std::condition_variable_any changed_;
    int released_ = 0;
    int started_ = 0;
};

TEST_F(MainWindowTest, InstrumentViewDrawsOnItsOwnThreadOnlyWhenSomethingChanged) {
    ASSERT_TRUE(Start());
    HeldRenderer held;
    main_->Instruments().SetRenderer([&](const InstrumentFrameInput& in) { return held(in); });
    main_->OnCommand(kShowHsi);
    platform::RecordingCanvas view;
    main_->OnPaint(view);
    held.WaitStarted(1);
    EXPECT_TRUE(g_app.gps.InstrumentDrawingRunning.load());
    // Paints while it draws start nothing more.
    main_->OnPaint(view);
    main_->OnCommand(kButtonUp);
    main_->OnPaint(view);
    EXPECT_EQ(held.Started(), 1);
    held.Release();
    main_->Instruments().Wait();
    EXPECT_FALSE(g_app.gps.InstrumentDrawingRunning.load());

    // The frame is shown; the range changed meanwhile, so the next drawing starts.
    view.Clear();
    main_->OnPaint(view);
    EXPECT_EQ(view.CallsOf(platform::CanvasCall::Blit).size(), 1u);
    held.WaitStarted(2);
    held.Release();
    main_->Instruments().Wait();
    // Nothing new: the frame is shown again and no drawing starts.
    main_->OnPaint(view);
    main_->OnPaint(view);
    EXPECT_EQ(held.Started(), 2);
    // A new fix asks for a frame.
    g_app.gps.PublishedFix.Publish(GpsFix{});
    main_->OnPaint(view);
    held.WaitStarted(3);

    // Leaving the view ends the drawing at once and forgets its frames.
    main_->OnCommand(kShowMap);
    EXPECT_FALSE(main_->Instruments().Running());
    EXPECT_FALSE(g_app.gps.InstrumentDrawingRunning.load());
    EXPECT_TRUE(main_->Instruments().Shown().Empty());

    // So does the exit.
    main_->OnCommand(kShowAerix);
    main_->OnPaint(view);
    held.WaitStarted(4);
    main_->OnCommand(kExit);
    EXPECT_FALSE(main_->Instruments().Running());
    EXPECT_FALSE(g_app.gps.InstrumentDrawingRunning.load());
}

}  // namespace
}  // namespace aerix

namespace aerix {
namespace {

TEST(LoadingDialogTest, LoadsTheWaypointsAndTheAirspace) {
    testing::TestPlatform platform;
    CreateDefaultData();
    g_app.settings.NavDatabaseName.assign(u"World");
    testing::WriteFile(platform.Data().ResolveForWrite("\\My Documents\\Aerix\\EuroAip.txt"),
                       "CTR\xB8"
                       "300000\xB8"
                       "6000\xB8"
                       "0\xB8"
                       "0\xB8"
                       "0\xB8"
                       "0\xB8\r\n");
    g_app.nav.ArraysPending = 1;
    EXPECT_EQ(LoadingDialogModel().OnTimer(), 1);
    EXPECT_GT(g_app.nav.NavEntryCount, 1000u);
    EXPECT_EQ(g_app.nav.AirspaceEntryCount, 1u);
    EXPECT_EQ(g_app.nav.ArraysPending, 0);
    EXPECT_TRUE(platform.Ui().BoxTexts().empty());
}

}  // namespace
}  // namespace aerix

namespace aerix {
namespace {

TEST_F(MainWindowTest, NextWaypointMovesTheFeedOnAndEndsADirectTo) {
    ASSERT_TRUE(Start());
    DbHandle h = OpenDatabase(u"Plan1", schema::kSecNumber);
    for (int i = 0; i < 3; ++i) {
        SectorRecord s;
        s.SectorNumber = static_cast<std::int16_t>(i + 1);
        s.StartLatitude = 50 * 6000 + i * 600;
        s.EndLatitude = 50 * 6000 + (i + 1) * 600;
        WriteSector(h, s);
    }
    h = {};
    main_->OnCommand(kNextWaypoint);
    EXPECT_EQ(g_app.leg.ActiveSectorIndex.load(), 1u);
    EXPECT_EQ(g_app.leg.LegChange.load(), 1);  // the simulator follows
    g_app.leg.LegChange = 0;

    // During a direct-to to the third sector's start: the direct-to ends there.
    g_app.leg.DirectToTargetLatitude = 50 * 6000 + 1200;
    g_app.leg.DirectToTargetLongitude = 0;
    g_app.leg.DirectToStartLatitude = 49 * 6000;
    main_->OnCommand(kNextWaypoint);
    EXPECT_EQ(g_app.leg.DirectToStartLatitude.load(), 0);
    EXPECT_EQ(g_app.leg.ActiveSectorIndex.load(), 2u);
    EXPECT_EQ(g_app.leg.LegChange.load(), 1);
    g_app.leg.LegChange = 0;
    // At the last sector nothing moves.
    main_->OnCommand(kNextWaypoint);
    EXPECT_EQ(g_app.leg.ActiveSectorIndex.load(), 2u);
    EXPECT_EQ(g_app.leg.LegChange.load(), 0);
}

}  // namespace
}  // namespace aerix
