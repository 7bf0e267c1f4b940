// aerix-tool: the command-line companion of Aerix.
#include <CLI/CLI.hpp>
#include <iostream>

#include "tools/tool_context.hpp"

int main(int argc, char** argv) {
    using namespace aerix::tools;
    ToolContext ctx;
    CLI::App app{"aerix-tool: the command-line companion of Aerix, a pilot's navigation companion"};
    app.name("aerix-tool");
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "Every command with its options");
    std::string home;
    app.add_option("--home", home, "Data root (default $AERIX_HOME, else ~/.local/share/aerix)");
    app.add_flag("--json", ctx.json, "One JSON object per result");
    app.parse_complete_callback([&] {
        if (!home.empty())
            ctx.home = home;
    });

    AddMathCommands(app, ctx);
    AddSettingsCommands(app, ctx);
    AddUtilitiesCommands(app, ctx);
    AddNavDataCommands(app, ctx);
    AddGpsCommands(app, ctx);
    AddStoreCommands(app, ctx);
    AddWindCommands(app, ctx);
    AddPlanningCommands(app, ctx);
    AddRenderCommands(app, ctx);
    AddWeightBalanceCommands(app, ctx);

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForAllHelp& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        std::cerr << "aerix-tool: " << e.what() << '\n';
        return 2;
    } catch (const ToolFailure& e) {
        std::cerr << "aerix-tool: " << e.what() << '\n';
        return 1;
    } catch (const std::exception& e) {
        std::cerr << "aerix-tool: " << e.what() << '\n';
        return 1;
    }
    return ctx.StoreFailureShown() ? 1 : 0;
}
