// Runs the built aerix-tool as a user would and keeps what it printed.
#pragma once

#include <filesystem>
#include <string>

namespace aerix::testing {

struct ToolRun {
    int status = -1;  // exit code, -1 when it did not exit normally
    std::string out;  // standard output
    std::string err;  // standard error
    std::string Both() const { return out + err; }
};

// The arguments go through the shell as written. AERIX_HOME is cleared so that --home and the
// defaults decide.
ToolRun RunTool(const std::string& args);
// The same with --home DIR first.
ToolRun RunToolAt(const std::filesystem::path& home, const std::string& args);

}  // namespace aerix::testing
