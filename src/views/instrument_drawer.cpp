#include "views/instrument_drawer.hpp"

#include "platform/services.hpp"

namespace aerix {

namespace {

platform::Bitmap DrawWithSystemGraphics(const InstrumentFrameInput& in,
                                        platform::Graphics* graphics) {
    if (graphics == nullptr)
        return RenderInstrumentFrame(in, [](platform::Bitmap&) { return nullptr; });
    return RenderInstrumentFrame(in,
                                 [graphics](platform::Bitmap& b) { return graphics->CanvasOn(b); });
}

}  // namespace

InstrumentDrawer::InstrumentDrawer() : InstrumentDrawer(Renderer()) {}

InstrumentDrawer::InstrumentDrawer(Renderer renderer) : renderer_(std::move(renderer)) {}

InstrumentDrawer::~InstrumentDrawer() {
    Stop();
}

void InstrumentDrawer::SetRenderer(Renderer renderer) {
    Stop();
    renderer_ = std::move(renderer);
}

bool InstrumentDrawer::Start(InstrumentFrameInput input, platform::Ui* ui,
                             std::atomic<bool>& drawing) {
    if (running_.load())
        return false;
    // The last drawing has finished; only its thread object is left to join.
    if (thread_.joinable())
        thread_.join();
    running_.store(true);
    drawing.store(true);
    Renderer render = renderer_;
    if (!render) {
        platform::Graphics* graphics = platform::Sys().graphics;
        render = [graphics](const InstrumentFrameInput& in) {
            return DrawWithSystemGraphics(in, graphics);
        };
    }
    thread_ = std::jthread([this, input = std::move(input), render = std::move(render), ui,
                            &drawing](std::stop_token stop) mutable {
        input.stop = stop;
        platform::Bitmap frame = render(input);
        const bool wanted = !stop.stop_requested();
        if (wanted) {
            std::lock_guard lock(mutex_);
            ready_ = std::move(frame);
            haveReady_ = true;
        }
        finished_.fetch_add(1);
        drawing.store(false);
        running_.store(false);
        if (wanted && ui != nullptr)
            ui->InvalidateMainWindow(false);
    });
    return true;
}

void InstrumentDrawer::Wait() {
    if (thread_.joinable())
        thread_.join();
}

void InstrumentDrawer::Stop() {
    if (thread_.joinable()) {
        thread_.request_stop();
        thread_.join();
    }
    std::lock_guard lock(mutex_);
    haveReady_ = false;
    ready_ = platform::Bitmap();
}

void InstrumentDrawer::Reset() {
    Stop();
    shown_ = platform::Bitmap();
}

bool InstrumentDrawer::TakeFinished() {
    std::lock_guard lock(mutex_);
    if (!haveReady_)
        return false;
    std::swap(shown_, ready_);
    haveReady_ = false;
    return true;
}

void InstrumentDrawer::Paint(platform::Canvas& canvas) const {
    if (shown_.Empty()) {
        canvas.FillRect({0, 0, kInstrumentViewWidth, kInstrumentViewHeight},
                        platform::Rgb(8, 10, 16));
        return;
    }
    const platform::Rect whole{0, 0, shown_.Width(), shown_.Height()};
    canvas.StretchBlt(whole, shown_, whole);
}

}  // namespace aerix
