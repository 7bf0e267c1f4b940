// What the main window logic needs from the toolkit's window: creation, the child windows, the
// readouts, posting work to the user-interface thread, the help viewer and quitting.
#pragma once

#include <filesystem>
#include <functional>

namespace aerix {

class WindowHost {
  public:
    virtual ~WindowHost() = default;
    // True when another instance runs; it has been asked to come to the front.
    virtual bool RaiseOtherInstance() = 0;
    // The main window with its menu bar; false when it cannot be created.
    virtual bool CreateMainWindow() = 0;
    virtual void ShowMainWindow() = 0;
    // The status child windows: latitude/longitude readout (hidden), status lines, list box.
    virtual void CreateChildWindows() = 0;
    virtual void ShowLatLonReadout(bool shown) = 0;
    virtual void ShowScaleReadout(bool shown) = 0;
    // Runs work on the user-interface thread after the present event.
    virtual void Post(std::function<void()> work) = 0;
    virtual void Beep() = 0;
    // Opens the manual in the desktop's browser; false when it cannot be started.
    virtual bool OpenHelp(const std::filesystem::path& page) = 0;
    // Ends the message loop with this exit code.
    virtual void Quit(int code) = 0;
};

}  // namespace aerix
