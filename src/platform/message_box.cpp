#include "platform/message_box.hpp"

#include "platform/services.hpp"

namespace aerix::platform {

void ShowError(std::string_view text) {
    Sys().ui->MessageBox(text, "", kMbOk);
}

void SetTitle(std::string_view title) {
    if (Sys().ui)
        Sys().ui->SetTitle(title);
}

void ShowNotice(std::string_view text, std::string_view caption) {
    Sys().ui->MessageBox(text, caption, kMbOk);
}

bool AskWarning(std::string_view text) {
    return Sys().ui->MessageBox(text, "Warning", kMbYesNo | kMbIconWarning) == kIdYes;
}

}  // namespace aerix::platform
