// The platform services the program reaches from anywhere, as the original reached its operating
// system: installed once at start (or by a test) and read through Sys().
#pragma once

#include <memory>
#include <optional>

#include "platform/canvas.hpp"
#include "platform/clock.hpp"
#include "platform/data_root.hpp"
#include "platform/hot_keys.hpp"
#include "platform/idle_timer.hpp"
#include "platform/memory_status.hpp"
#include "platform/object_store.hpp"
#include "platform/registry.hpp"
#include "platform/screen_awake.hpp"
#include "platform/ui.hpp"

namespace aerix::platform {

struct Services {
    DataRoot* root = nullptr;
    RegistryHive* registry = nullptr;
    Ui* ui = nullptr;
    Clock* clock = nullptr;
    HotKeys* hotKeys = nullptr;
    IdleTimer* idleTimer = nullptr;
    Graphics* graphics = nullptr;  // set by the front end that draws
    ObjectStore* store = nullptr;
    MemoryStatus* memory = nullptr;      // null: the start-up memory check passes
    ScreenAwake* screenAwake = nullptr;  // set by the front end; null: nothing to inhibit
};

// The installed services. Every pointer is set while a Platform (or a test's stand-in) lives.
Services& Sys();

// The real services for one data root: its hive file, its object store (objectstore.sqlite), the
// system clock, a hot-key table and the idle timer. The front end supplies the Ui (and the
// graphics, when it draws). Installs itself into Sys() for its lifetime.
class Platform {
  public:
    Platform(std::filesystem::path root, Ui& ui);
    ~Platform();
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    DataRoot& Root() { return root_; }
    RegistryHive& Registry() { return *registry_; }
    HotKeyTable& Keys() { return hotKeys_; }
    ObjectStore& Store() { return *store_; }

    // Shows the hive's one-time load notice, if any, through the Ui.
    void ReportLoadProblems();

  private:
    DataRoot root_;
    std::unique_ptr<RegistryHive> registry_;
    SystemClock clock_;
    HotKeyTable hotKeys_;
    IdleTimer idleTimer_;
    ProcMemoryStatus memory_;
    std::unique_ptr<ObjectStore> store_;
    Services previous_;
};

}  // namespace aerix::platform
