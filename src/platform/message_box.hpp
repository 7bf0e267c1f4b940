// The program's message boxes, owned by the main window: errors carry no caption and only OK;
// warnings and confirmations carry "Warning" and act only on Yes.
#pragma once

#include <string_view>

namespace aerix::platform {

// An error or notice with no caption and an OK button.
void ShowError(std::string_view text);
// A box with the given caption and an OK button.
void ShowNotice(std::string_view text, std::string_view caption);
// A Yes/No question captioned "Warning"; true only for Yes.
bool AskWarning(std::string_view text);
// The main window's title (a dialog names itself there); nothing without a screen.
void SetTitle(std::string_view title);

}  // namespace aerix::platform
