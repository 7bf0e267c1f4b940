// What every aerix-tool command shares: the global options, the output and, when a command needs
// the data root, the platform services over it.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "platform/scripted_ui.hpp"
#include "platform/services.hpp"
#include "tools/output.hpp"

namespace CLI {
class App;
}

namespace aerix::tools {

// A failure reported as "aerix-tool: <message>" with exit code 1.
struct ToolFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class ToolContext {
  public:
    ToolContext();
    ~ToolContext();

    std::optional<std::filesystem::path> home;
    bool json = false;

    Output& Out();
    // The platform over the data root (created on first use). Message boxes go to stderr.
    platform::Platform& OpenPlatform();
    // Message boxes shown so far (for commands that turn them into a failure).
    platform::ScriptedUi& Ui() { return ui_; }
    // The platform with its object store open; a ToolFailure that says why when the store cannot
    // be opened (held by another program, not a valid file, ...).
    platform::Platform& OpenStore();
    // Whether a box said the store could not be read or written: the command then exits 1 even
    // when the flow behind it carried on.
    bool StoreFailureShown() const;
    // Fails the command with the last box a flow showed since `before` (or with fallback): the
    // planning flows still tell their failures only as boxes.
    [[noreturn]] void FailWithLastBox(std::size_t before, const std::string& fallback);

  private:
    platform::ScriptedUi ui_;
    std::unique_ptr<Output> out_;
    std::unique_ptr<platform::Platform> platform_;
};

// Each command group adds its subcommands.
// A 1-based index given on the command line as a 0-based one, checked against count.
std::uint32_t ZeroBased(int index, std::uint32_t count, const char* what);

void AddMathCommands(CLI::App& app, ToolContext& ctx);
void AddSettingsCommands(CLI::App& app, ToolContext& ctx);
void AddUtilitiesCommands(CLI::App& app, ToolContext& ctx);
void AddNavDataCommands(CLI::App& app, ToolContext& ctx);
void AddGpsCommands(CLI::App& app, ToolContext& ctx);
void AddStoreCommands(CLI::App& app, ToolContext& ctx);
void AddPlanningCommands(CLI::App& app, ToolContext& ctx);
void AddWindCommands(CLI::App& app, ToolContext& ctx);
void AddRenderCommands(CLI::App& app, ToolContext& ctx);
// After AddPlanningCommands: adds to its "aircraft" command.
void AddWeightBalanceCommands(CLI::App& app, ToolContext& ctx);

}  // namespace aerix::tools
