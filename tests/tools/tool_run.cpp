#include "tool_run.hpp"

#include <sys/wait.h>

#include <cstdlib>

#include "support/test_platform.hpp"

namespace aerix::testing {

ToolRun RunTool(const std::string& args) {
    TempDir dir;
    auto out = dir.Path() / "out";
    auto err = dir.Path() / "err";
    std::string command = "env -u AERIX_HOME '" AERIX_TOOL_PATH "' " + args + " >'" + out.string() +
                          "' 2>'" + err.string() + "'";
    int raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFile(out), ReadFile(err)};
}

ToolRun RunToolAt(const std::filesystem::path& home, const std::string& args) {
    return RunTool("--home '" + home.string() + "' " + args);
}

}  // namespace aerix::testing
