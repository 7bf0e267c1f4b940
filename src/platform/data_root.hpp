// Where the program's data lives, and how the pocket computer's paths map onto it:
// "\My Documents\Aerix\World1.bmp" is <root>/My Documents/Aerix/World1.bmp. The old file system
// ignored letter case, so each path component is matched case-insensitively to what exists.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace aerix::platform {

class DataRoot {
  public:
    explicit DataRoot(std::filesystem::path root);

    // $AERIX_HOME, else the --home option, else $XDG_DATA_HOME/aerix (~/.local/share/aerix).
    static std::filesystem::path Choose(const std::optional<std::filesystem::path>& homeOption);

    const std::filesystem::path& Root() const { return root_; }

    // Maps a pocket-computer path (backslashes or slashes, leading separator optional) to the
    // file under the root. Components that exist in another letter case resolve to that entry.
    // Parts of the path come from typed names and data files, so a path that could lead out of
    // the root (see Refusal) maps to an empty path, which every file operation fails on, and the
    // reason goes to stderr.
    std::filesystem::path Resolve(std::u16string_view pocketPath) const;
    std::filesystem::path Resolve(std::string_view pocketPath) const;

    // Why a pocket path may not be mapped ("a \"..\" component", ...); empty when it may.
    static std::string Refusal(std::string_view pocketPath);

    // As Resolve, and creates the folders leading to the file.
    std::filesystem::path ResolveForWrite(std::u16string_view pocketPath) const;
    std::filesystem::path ResolveForWrite(std::string_view pocketPath) const;

    // Makes sure the root itself exists.
    bool Create() const;

  private:
    std::filesystem::path root_;
};

// Matches one component in a folder case-insensitively (ASCII and Latin-1 letters); returns the
// existing spelling, or the given name when nothing matches.
std::filesystem::path MatchComponent(const std::filesystem::path& folder, const std::string& name);

// A folder only this user can enter, for the single-instance socket: $XDG_RUNTIME_DIR when it is
// this user's and closed to others (mode 0700), else <dataRoot>/.runtime, made 0700. Empty when
// neither can be had; a folder of fixed name in /tmp would let another user take the name first.
std::filesystem::path PrivateRuntimeFolder(const std::filesystem::path& dataRoot);

// The program's read-only resources (magnetic model, map data, manual): $AERIX_RESOURCES, the
// source tree's resources/ when run from a build, else the installed share/aerix.
std::filesystem::path ResourcePath(std::string_view name);

}  // namespace aerix::platform
