// A fresh data root in a temporary folder with the scripted Ui, a virtual clock, a hot-key table
// and an idle timer installed as the platform services, and g_app reset. One per test.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/scripted_ui.hpp"
#include "platform/services.hpp"

namespace aerix::testing {

class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

class TestPlatform {
  public:
    TestPlatform();
    ~TestPlatform();

    // A restart: the hive and the object store are opened again from their files and g_app is
    // reset.
    void Restart();

    const std::filesystem::path& Root() const { return dir_.Path(); }
    platform::DataRoot& Data() { return data_; }
    platform::RegistryHive& Registry() { return *registry_; }
    platform::ScriptedUi& Ui() { return ui_; }
    platform::VirtualClock& Clock() { return clock_; }
    platform::HotKeyTable& Keys() { return keys_; }
    platform::IdleTimer& Idle() { return idle_; }
    platform::ObjectStore& Store() { return *store_; }

  private:
    void Install();

    TempDir dir_;
    platform::DataRoot data_;
    std::unique_ptr<platform::RegistryHive> registry_;
    platform::ScriptedUi ui_;
    platform::VirtualClock clock_;
    platform::HotKeyTable keys_;
    platform::IdleTimer idle_;
    std::unique_ptr<platform::ObjectStore> store_;
    platform::Services previous_;
};

// Reads a whole file (empty when missing).
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace aerix::testing
