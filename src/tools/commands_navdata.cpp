// airspace load, import airspace: the airspace overlay from the command line.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "app/state/app_state.hpp"
#include "store/airspace_loader.hpp"
#include "store/openair_import.hpp"
#include "tools/tool_context.hpp"

namespace aerix::tools {

namespace fs = std::filesystem;

namespace {

std::string ReadWhole(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw ToolFailure("cannot read " + path.string());
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

// Replaces the file atomically; the file it replaces is kept as <name>.bak.
void WriteReplacing(const fs::path& path, const std::string& text) {
    std::error_code ec;
    fs::create_directories(path.parent_path(), ec);
    fs::path tmp = path.string() + ".tmp";
    {
        std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
        out << text;
        out.flush();
        if (!out)
            throw ToolFailure("cannot write " + tmp.string());
    }
    if (fs::exists(path, ec))
        fs::copy_file(path, path.string() + ".bak", fs::copy_options::overwrite_existing, ec);
    fs::rename(tmp, path, ec);
    if (ec)
        throw ToolFailure("cannot replace " + path.string() + ": " + ec.message());
}

void AddAirspaceLoad(CLI::App& app, ToolContext& ctx) {
    auto* group = app.add_subcommand("airspace", "The airspace overlay");
    group->require_subcommand(1);
    auto* load = group->add_subcommand("load", "Load the airspace file as the instrument views do");
    auto file = std::make_shared<std::string>();
    load->add_option("FILE", *file, "Airspace file (default: the data root's EuroAip.txt)");
    load->callback([&ctx, file] {
        auto& platform = ctx.OpenPlatform();
        g_app.AirspaceEntryCount = 0;
        if (file->empty()) {
            LoadAirspace();
        } else {
            LoadAirspaceFrom(*file);
        }
        if (!ctx.Ui().Boxes().empty())
            throw ToolFailure("the airspace file could not be loaded");
        (void)platform;
        ctx.Out().Emit({{"count", g_app.AirspaceEntryCount}});
    });
}

void AddImportAirspace(CLI::App* import, ToolContext& ctx) {
    auto* cmd =
        import->add_subcommand("airspace", "Convert an OpenAir file into the airspace file");
    auto file = std::make_shared<std::string>();
    auto out = std::make_shared<std::string>();
    cmd->add_option("FILE", *file, "OpenAir text file")->required()->check(CLI::ExistingFile);
    cmd->add_option("--out", *out, "Where to write (default: the data root's EuroAip.txt)");
    cmd->callback([&ctx, file, out] {
        auto conversion = ConvertOpenAir(ReadWhole(*file));
        for (const auto& p : conversion.problems) {
            std::cerr << *file << ":" << p.line << ": skipped: " << p.message << '\n';
        }
        fs::path target = out->empty() ? ctx.OpenPlatform().Root().ResolveForWrite(kAirspaceFile)
                                       : fs::path(*out);
        WriteReplacing(target, conversion.text);
        ctx.Out().Emit({{"outlines", conversion.outlines},
                        {"lines", conversion.lines},
                        {"skipped", conversion.problems.size()},
                        {"file", target.string()}});
    });
}

}  // namespace

void AddNavDataCommands(CLI::App& app, ToolContext& ctx) {
    AddAirspaceLoad(app, ctx);
    auto* import = app.add_subcommand("import", "Import today's data formats");
    import->require_subcommand(1);
    AddImportAirspace(import, ctx);
}

}  // namespace aerix::tools
