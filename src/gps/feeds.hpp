// Starting and stopping the three feeds of the fix, as the main window's commands do: "Connect to
// GPS" / "Disconnect GPS", "Start simulation" / "Stop simulation", "Playback GPS data (Norm)" and
// "(Fast)" / "Stop playback". The receiver and the simulator share one thread slot, playback has
// its own. Threads are never killed: a stop closes the port or requests a stop, which the thread
// sees at its next step, and waits for it to end.
#pragma once

#include <mutex>

namespace aerix {

// Each start refuses outside the MAP, HSI and AERIX views with its "Select Map, HSI or AERIX
// view before ..." warning. True when the feed was started (the caller then updates the menu).
bool ConnectGps();
bool StartSimulation();
bool StartPlayback(bool fast);

// The stop sequences. Safe to call from the feed's own thread (its "Disconnect GPS" or "Stop
// playback" command): the thread is then parked and joined at the next start or stop.
void DisconnectGps();
void StopSimulation();
void StopPlayback();

// Guards the thread slots in g_app, which the user-interface thread and (through a feed's own
// stop command) the feed thread both use. A thread is never joined while it is held.
std::mutex& FeedSlotMutex();

// The navigation-bar title for a GpsSource value.
const char* SourceTitle(unsigned source);

}  // namespace aerix
