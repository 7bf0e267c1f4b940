// The user-facing services the logic needs from a front end: message boxes owned by the main
// window, the navigation-bar title, repaint requests and the file dialog.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace aerix::platform {

// Message box styles and answers, with the values the original used.
enum : unsigned {
    kMbOk = 0x0,
    kMbOkCancel = 0x1,
    kMbYesNo = 0x4,
    kMbIconError = 0x10,
    kMbIconQuestion = 0x20,
    kMbIconWarning = 0x30,
    kMbIconInformation = 0x40,
};
enum : int { kIdOk = 1, kIdCancel = 2, kIdYes = 6, kIdNo = 7 };

inline unsigned MessageBoxButtons(unsigned type) {
    return type & 0xF;
}

struct FileDialogRequest {
    std::string title;          // "Open a database"
    std::string filterName;     // "Databases"
    std::string pattern;        // "*.CDB"
    std::string initialFolder;  // pocket-computer folder, e.g. "aerix"
    bool mustExist = true;
};

struct FileDialogResult {
    std::filesystem::path path;  // full path of the chosen file
    std::u16string title;        // file name with extension, no folder
};

class Ui {
  public:
    virtual ~Ui() = default;

    // Shows a modal box; returns kIdOk, kIdCancel, kIdYes or kIdNo. Texts are UTF-8.
    virtual int MessageBox(std::string_view text, std::string_view caption, unsigned type) = 0;

    // The navigation-bar title.
    virtual void SetTitle(std::string_view title) = 0;

    // Asks the main window to repaint. Safe from any thread.
    virtual void InvalidateMainWindow(bool erase) = 0;

    // The file-open dialog; nothing when the user cancels.
    virtual std::optional<FileDialogResult> ChooseFile(const FileDialogRequest& request) = 0;

    // The wait cursor over a long operation (loading the navigation database); off restores the
    // normal cursor. Front ends without a pointer ignore it.
    virtual void SetWaitCursor(bool /*wait*/) {}
};

}  // namespace aerix::platform
