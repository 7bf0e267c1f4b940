// The instrument views' drawing thread. The paint handler shows the last finished frame and asks
// for a new one; a drawing starts only when none runs. While it draws, the flag given to Start
// (the feeds' InstrumentDrawingRunning) is set (the feeds leave the fix alone meanwhile); when it
// is done it hands its frame over, clears the flag and invalidates the main window so that the
// frame is shown. Nothing spins: a frame is drawn once per request.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/canvas.hpp"
#include "platform/ui.hpp"
#include "views/instrument_frame.hpp"

namespace aerix {

class InstrumentDrawer {
  public:
    // Draws one frame; runs on the drawing thread. The default draws through
    // platform::Sys().graphics, taken when the drawing starts.
    using Renderer = std::function<platform::Bitmap(const InstrumentFrameInput&)>;

    InstrumentDrawer();
    explicit InstrumentDrawer(Renderer renderer);
    ~InstrumentDrawer();
    InstrumentDrawer(const InstrumentDrawer&) = delete;
    InstrumentDrawer& operator=(const InstrumentDrawer&) = delete;

    // Replaces the renderer (between drawings).
    void SetRenderer(Renderer renderer);

    // Starts drawing a frame from input, unless a drawing runs (false then). drawing is set
    // until the frame is done; ui is told to repaint when the frame is ready.
    bool Start(InstrumentFrameInput input, platform::Ui* ui, std::atomic<bool>& drawing);
    bool Running() const { return running_.load(); }
    // Waits for a running drawing to finish and hand its frame over.
    void Wait();
    // Asks a running drawing to end, waits for it and drops its frame.
    void Stop();
    // Stops and forgets every frame: the next paint shows nothing old (another view).
    void Reset();

    // Takes a frame handed over since the last call; true when there was one.
    bool TakeFinished();
    // The frame shown, empty before the first one.
    const platform::Bitmap& Shown() const { return shown_; }
    // Blits the shown frame 1:1 at the view's top left, or a dark view while there is none.
    void Paint(platform::Canvas& canvas) const;
    std::uint64_t FramesFinished() const { return finished_.load(); }

  private:
    Renderer renderer_;
    std::jthread thread_;
    std::atomic<bool> running_{false};
    std::atomic<std::uint64_t> finished_{0};
    std::mutex mutex_;
    platform::Bitmap ready_;  // handed over, guarded by mutex_
    bool haveReady_ = false;
    platform::Bitmap shown_;  // user-interface thread only
};

}  // namespace aerix
