// The layers of the source tree: each folder includes only its own headers and those of the
// layers below it, only the front end includes Qt, and only the shell names the program-wide
// state. A change that breaks one of these fails here, naming the file and the line.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Lowest first; a folder may include a folder of its own rank or lower.
const std::map<std::string, int> kRank{
    {"platform", 0}, {"settings", 1}, {"store", 2},    {"utilities", 3},
    {"gps", 4},      {"planning", 5}, {"aircraft", 6}, {"views", 7},
    {"app", 8},      {"qt", 9},       {"tools", 10},
};
constexpr int kShell = 8;

struct Line {
    std::string file;  // relative to src/
    int number;
    std::string text;
};

fs::path SourceRoot() {
    const char* root = std::getenv("AERIX_SOURCE_DIR");
    return fs::path(root ? root : ".") / "src";
}

// Every line of every source file, with the folder it lies in.
std::vector<std::pair<std::string, Line>> SourceLines() {
    std::vector<std::pair<std::string, Line>> lines;
    const fs::path src = SourceRoot();
    for (const auto& entry : fs::recursive_directory_iterator(src)) {
        const std::string ext = entry.path().extension().string();
        if (!entry.is_regular_file() || (ext != ".cpp" && ext != ".hpp"))
            continue;
        const fs::path relative = fs::relative(entry.path(), src);
        const std::string folder = relative.begin()->string();
        std::ifstream in(entry.path());
        int number = 0;
        for (std::string text; std::getline(in, text);)
            lines.push_back({folder, {relative.string(), ++number, text}});
    }
    return lines;
}

std::string Where(const Line& l) {
    return l.file + ":" + std::to_string(l.number) + ": " + l.text + "\n";
}

TEST(Layers, IncludesPointDownwardsAndQtStaysInTheFrontEnd) {
    const auto lines = SourceLines();
    ASSERT_GT(lines.size(), 10000u) << "source tree not found under " << SourceRoot();
    static const std::regex local(R"(^\s*#\s*include\s+"([a-z_]+)/([^"]+)\")");
    static const std::regex qt(R"(^\s*#\s*include\s+<Q)");
    std::string upward, qtOutside;
    for (const auto& [folder, line] : lines) {
        auto from = kRank.find(folder);
        ASSERT_NE(from, kRank.end()) << "a folder without a layer: " << folder;
        std::smatch m;
        if (std::regex_search(line.text, m, local)) {
            auto to = kRank.find(m[1].str());
            // The command-line tool reaches the front end only for its headless canvas and images.
            bool headless =
                folder == "tools" && m[1] == "qt" && m[2].str().starts_with("graphics/");
            if (to != kRank.end() && to->second > from->second && !headless)
                upward += Where(line);
            if (folder == "tools" && m[1] == "qt" && !headless)
                upward += Where(line);
        }
        if (folder != "qt" && std::regex_search(line.text, qt))
            qtOutside += Where(line);
    }
    EXPECT_EQ(upward, "") << "includes of a higher layer";
    EXPECT_EQ(qtOutside, "") << "Qt headers outside src/qt";
}

TEST(Layers, OnlyTheShellNamesTheProgramState) {
    static const std::regex global(R"(\bg_app\b)");
    std::string named;
    for (const auto& [folder, line] : SourceLines())
        if (kRank.at(folder) < kShell && std::regex_search(line.text, global))
            named += Where(line);
    EXPECT_EQ(named, "") << "subsystems must be given the state groups they use";
}

}  // namespace
