// Starting and stopping the three feeds of the fix, as the main window's commands do: "Connect to
// GPS" / "Disconnect GPS", "Start simulation" / "Stop simulation", "Playback GPS data (Norm)" and
// "(Fast)" / "Stop playback". The receiver and the simulator share one thread slot, playback has
// its own. Threads are never killed: a stop closes the port or requests a stop, which the thread
// sees at its next step, and waits for it to end.
#pragma once

#include <mutex>

#include "gps/feed_commands.hpp"
#include "gps/gps_state.hpp"
#include "gps/leg_state.hpp"
#include "gps/simulator.hpp"
#include "settings/settings_state.hpp"

namespace aerix {

// Everything a feed is connected to, given by the shell when it starts one: the groups it works
// on, where it sends its own stop command, and the plan legs the simulator flies. The feed's
// thread keeps a copy for its whole run.
struct FeedWiring {
    GpsState& gps;
    LegState& leg;
    SettingsState& settings;
    FeedCommandSink commands;
    SimLegSource legs;
};

// Each start refuses outside the MAP, HSI and AERIX views with its "Select Map, HSI or AERIX
// view before ..." warning. True when the feed was started (the caller then updates the menu).
bool ConnectGps(const FeedWiring& feed);
bool StartSimulation(const FeedWiring& feed);
bool StartPlayback(const FeedWiring& feed, bool fast);

// The stop sequences. Safe to call from the feed's own thread (its "Disconnect GPS" or "Stop
// playback" command): the thread is then parked and joined at the next start or stop.
void DisconnectGps(GpsState& gps, SettingsState& settings);
void StopSimulation(GpsState& gps, SettingsState& settings);
void StopPlayback(GpsState& gps, SettingsState& settings);

// A feed's stop command: to the wiring's sink, or run at once when it has none.
void SendFeedCommand(const FeedWiring& feed, FeedCommand command);

// Guards the thread slots in GpsState, which the user-interface thread and (through a feed's own
// stop command) the feed thread both use. A thread is never joined while it is held.
std::mutex& FeedSlotMutex();

// The navigation-bar title for a GpsSource value.
const char* SourceTitle(unsigned source);

}  // namespace aerix
