#include "test_platform.hpp"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "app/app_state.hpp"

namespace aerix::testing {

namespace fs = std::filesystem;

TempDir::TempDir() {
    std::string pattern = (fs::temp_directory_path() / "aerix-test-XXXXXX").string();
    char* made = ::mkdtemp(pattern.data());
    path_ = made ? fs::path(made) : fs::temp_directory_path() / "aerix-test-fallback";
    fs::create_directories(path_);
}

TempDir::~TempDir() {
    std::error_code ec;
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(path_, ec);
}

TestPlatform::TestPlatform() : data_(dir_.Path()) {
    previous_ = platform::Sys();
    registry_ = std::make_unique<platform::RegistryHive>(dir_.Path() / "registry.reg");
    store_ = std::make_unique<platform::ObjectStore>(dir_.Path() / "objectstore.sqlite");
    Install();
    ResetAppState();
}

TestPlatform::~TestPlatform() {
    ResetAppState();
    platform::Sys() = previous_;
}

void TestPlatform::Restart() {
    registry_ = std::make_unique<platform::RegistryHive>(dir_.Path() / "registry.reg");
    store_.reset();
    store_ = std::make_unique<platform::ObjectStore>(dir_.Path() / "objectstore.sqlite");
    Install();
    ResetAppState();
}

void TestPlatform::Install() {
    platform::Sys() = platform::Services{.root = &data_,
                                         .registry = registry_.get(),
                                         .ui = &ui_,
                                         .clock = &clock_,
                                         .hotKeys = &keys_,
                                         .idleTimer = &idle_,
                                         .store = store_.get()};
}

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

void WriteFile(const fs::path& path, std::string_view bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace aerix::testing
