#include "store/nav_database_chooser.hpp"

#include <filesystem>
#include <optional>
#include <string>

#include "platform/message_box.hpp"
#include "platform/services.hpp"

namespace aerix {

namespace {

std::optional<platform::FileDialogResult> AskForDatabase(const char* title) {
    platform::FileDialogRequest request;
    request.title = title;
    request.filterName = "Databases";
    request.pattern = "*.CDB";
    request.initialFolder = "aerix";
    request.mustExist = true;
    return platform::Sys().ui->ChooseFile(request);
}

// The file title without its last four characters (the ".CDB"), whatever they are. A title too
// short to cut names no database.
std::optional<std::u16string> DatabaseNameOf(const platform::FileDialogResult& chosen) {
    if (chosen.title.size() < 4)
        return std::nullopt;
    return chosen.title.substr(0, chosen.title.size() - 4);
}

}  // namespace

int ChooseNavDatabase(SettingsState& settings, NavDataState& nav) {
    auto chosen = AskForDatabase("Open a database");
    if (!chosen)
        return -1;
    auto name = DatabaseNameOf(*chosen);
    if (!name)
        return -1;
    settings.NavDatabaseName.assign(*name);
    nav.ArraysPending = 1;
    return 0;
}

void DeleteNavDatabase(const SettingsState& settings) {
    auto chosen = AskForDatabase("Delete a database");
    if (!chosen)
        return;
    auto name = DatabaseNameOf(*chosen);
    if (!name)
        return;
    if (*name == settings.NavDatabaseName.view()) {
        platform::ShowError("Cannot delete - active database");
        return;
    }
    if (!platform::AskWarning("Delete database - Are you sure?"))
        return;
    std::error_code ec;
    std::filesystem::remove(chosen->path, ec);  // a failed deletion is not reported
}

}  // namespace aerix
