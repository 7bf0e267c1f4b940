// wind: the wind table ("WindTable"), changed exactly as the wind table dialog changes it.
#include <CLI/CLI.hpp>
#include <iostream>

#include "app/app_state.hpp"
#include "app/start_up.hpp"
#include "planning/wind_table.hpp"
#include "planning/wind_table_dialog.hpp"
#include "platform/text.hpp"
#include "store/record_store.hpp"
#include "tools/tool_context.hpp"

namespace aerix::tools {

namespace {

Json WindRowJson(int index, const std::string& line) {
    return {{"index", index}, {"line", line}};
}

}  // namespace

void AddWindCommands(CLI::App& app, ToolContext& ctx) {
    auto* wind = app.add_subcommand("wind", "The wind table (\"WindTable\")");
    wind->require_subcommand(1);

    wind->add_subcommand("list", "The rows in altitude order, as the wind table dialog lists them")
        ->callback([&ctx] {
            ctx.OpenStore();
            StartUp(g_app);
            WindTableDialog d{g_app.settings, g_app.plan};
            d.Refresh();
            for (std::size_t i = 0; i < d.Lines().size(); ++i)
                ctx.Out().Emit(WindRowJson(static_cast<int>(i + 1), d.Lines()[i]));
        });

    struct Row {
        int index = 0;
        std::string alt, dir, speed, temp;
    };
    auto row = std::make_shared<Row>();
    auto addValues = [row](CLI::App* cmd) {
        cmd->add_option("ALT", row->alt, "Altitude (ft)")->required();
        cmd->add_option("DIR", row->dir, "Direction (degrees true, from)")->required();
        cmd->add_option("SPEED", row->speed, "Speed (kt)")->required();
        cmd->add_option("TEMP", row->temp, "Temperature (degrees)")->required();
    };
    auto write = [&ctx, row](WindEditDialog edit) {
        edit.SetText(WindEditDialog::kAltitude, row->alt);
        edit.SetText(WindEditDialog::kDirection, row->dir);
        edit.SetText(WindEditDialog::kSpeed, row->speed);
        edit.SetText(WindEditDialog::kTemperature, row->temp);
        std::size_t before = ctx.Ui().BoxTexts().size();
        WindTableDialog d{g_app.settings, g_app.plan};
        d.Refresh();
        if (!d.Finish(edit, platform::kIdOk))
            ctx.FailWithLastBox(before, "row not written");
        d.Ok();
        ctx.Out().Emit({{"rows", d.Lines().size()}});
    };

    auto* add = wind->add_subcommand("add", "Adds a row");
    addValues(add);
    add->callback([&ctx, write] {
        ctx.OpenStore();
        StartUp(g_app);
        write(WindEditDialog::ForAdd());
    });

    auto* edit = wind->add_subcommand("edit", "Overwrites row INDEX (1 = lowest)");
    edit->add_option("INDEX", row->index, "Row, 1 = the lowest altitude")->required();
    addValues(edit);
    edit->callback([&ctx, row, write] {
        ctx.OpenStore();
        StartUp(g_app);
        WindTableDialog d{g_app.settings, g_app.plan};
        d.Refresh();
        d.Select(static_cast<int>(
            ZeroBased(row->index, static_cast<std::uint32_t>(d.Lines().size()), "wind table row")));
        auto dialog = d.BeginEdit();
        if (!dialog)
            throw ToolFailure("cannot read wind table row " + std::to_string(row->index));
        write(*dialog);
    });

    auto* del = wind->add_subcommand("delete", "Deletes row INDEX (refused below three rows)");
    del->add_option("INDEX", row->index, "Row, 1 = the lowest altitude")->required();
    del->callback([&ctx, row] {
        ctx.OpenStore();
        StartUp(g_app);
        WindTableDialog d{g_app.settings, g_app.plan};
        d.Refresh();
        std::size_t count = d.Lines().size();
        d.Select(static_cast<int>(
            ZeroBased(row->index, static_cast<std::uint32_t>(count), "wind table row")));
        std::size_t before = ctx.Ui().BoxTexts().size();
        d.Delete();
        if (d.Lines().size() == count)
            ctx.FailWithLastBox(before, "row not deleted");
        d.Ok();
        ctx.Out().Emit({{"rows", d.Lines().size()}});
    });

    auto* at = wind->add_subcommand("at", "Wind and temperature at an altitude");
    auto alt = std::make_shared<std::int32_t>(0);
    auto zero = std::make_shared<bool>(false);
    at->add_option("ALT", *alt, "Altitude (ft)")->required();
    at->add_flag("--zero", *zero, "From \"ZeroWindTable\"");
    at->callback([&ctx, alt, zero] {
        ctx.OpenStore();
        StartUp(g_app);
        WindAtResult w = WindAt(*alt, *zero);
        ctx.Out().Emit(
            {{"direction", w.direction}, {"speed", w.speed}, {"temperature", w.temperature}});
    });
}

}  // namespace aerix::tools
