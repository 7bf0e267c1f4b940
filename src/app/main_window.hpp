// The main window's logic without the toolkit: start-up in its fixed order, the command table's
// dispatch with its guards and menu states, repaint by view, keys, pen and the exit sequence.
// The front end forwards its events here and implements WindowHost and DialogHost.
#pragma once

#include <functional>
#include <memory>

#include "app/command_table.hpp"
#include "app/dialog_host.hpp"
#include "app/plan_view.hpp"
#include "app/window_host.hpp"
#include "gps/feeds.hpp"
#include "platform/canvas.hpp"
#include "views/instrument_drawer.hpp"

namespace aerix {

// Virtual-key codes the main window handles.
namespace vk {
inline constexpr unsigned kLeft = 37;
inline constexpr unsigned kUp = 38;
inline constexpr unsigned kRight = 39;
inline constexpr unsigned kDown = 40;
inline constexpr unsigned kAction = 41;
inline constexpr unsigned kButton1 = 193;
inline constexpr unsigned kButton2 = 194;
inline constexpr unsigned kButton3 = 195;
inline constexpr unsigned kButton4 = 196;
}  // namespace vk

inline constexpr const char* kMemoryLowText =
    "Memory low - close down some applications or delete some files before running Aerixpad";
inline constexpr unsigned kMemoryLoadLimit = 75;
inline constexpr const char* kFirstPlanName = "Plan1";
inline constexpr const char* kManualPage = "\\My Documents\\Aerix\\Manual.htm";

// The MAP view as the window paints it from g_app.gps.Fix: the chart centred on the aircraft, with
// its readouts drawn in place. aerix-tool's headless rendering paints through it too.
void PaintMapFrame(platform::Canvas& canvas);

class MainWindow {
  public:
    MainWindow(WindowHost& host, DialogHost& dialogs);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    // Start-up in order; false when the program must quit (second instance, no window, EXIT in
    // the disclaimer, memory low, no navigation database chosen).
    bool InitInstance();

    void OnCommand(unsigned id);
    void OnPaint(platform::Canvas& canvas);
    void OnKeyUp(unsigned virtualKey);
    void OnPenDown(int x, int y);
    void OnPenMove(int x, int y);

    // The Exit command and the window's destruction run the same sequence; settings are saved
    // each time.
    void Exit();
    void Destroy();

    MenuState& Menu() { return menu_; }
    const MenuState& Menu() const { return menu_; }
    bool QuitRequested() const { return quitRequested_; }

    // The plan operations: reverse the active plan, recompute it (the sector computation's by
    // default; tests count them).
    void SetPlanOperations(std::function<void()> reverse, std::function<void()> recompute);

    // The instrument views' drawing thread (tests look at it).
    InstrumentDrawer& Instruments() { return instruments_; }

  private:
    void ExitSequence();
    // The stop command of the feed that runs, if any.
    void StopRunningFeed();
    // What a feed is connected to when it starts: the program's groups, this window's thread for
    // its own stop command, and the active plan's legs for the simulator.
    FeedWiring Feeds();
    void ShowView(unsigned id);
    void ShowInstruments(bool aerix);
    void LoadArraysIfPending();
    void ApplyReadouts();
    void FeedStarted(unsigned stopId);
    void FeedStopped(unsigned stopId);
    void NextWaypoint();
    void Button(unsigned id);
    void NewSector(Dialog dialog);
    void Repaint();
    void PaintInstruments(platform::Canvas& canvas);
    // Ends the drawing thread; the next paint draws afresh.
    void StopInstruments();

    WindowHost& host_;
    DialogHost& dialogs_;
    MenuState menu_;
    PlanView planView_;
    bool quitRequested_ = false;
    std::function<void()> reversePlan_;
    std::function<void()> recomputePlan_;
    // Cut when the window goes: a feed's stop command then runs at once on the feed's thread.
    std::shared_ptr<bool> feedsConnected_ = std::make_shared<bool>(true);
    // What the instrument frame last asked for was drawn from: the published fix and the
    // generation of commands, keys and views. A paint starts a drawing only when they moved on.
    std::uint64_t generation_ = 1;
    std::uint64_t drawnFix_ = 0;
    std::uint64_t drawnGeneration_ = 0;
    // Last: destroyed first, so its thread ends before anything it reads goes away.
    InstrumentDrawer instruments_;
};

}  // namespace aerix
