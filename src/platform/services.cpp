#include "platform/services.hpp"

namespace aerix::platform {

Services& Sys() {
    static Services services;
    return services;
}

Platform::Platform(std::filesystem::path root, Ui& ui) : root_(std::move(root)) {
    root_.Create();
    // The program's own folder, spelled as the program names it; lookups ignore case.
    root_.ResolveForWrite("\\My Documents\\Aerix\\.");
    registry_ = std::make_unique<RegistryHive>(root_.Root() / "registry.reg");
    store_ = std::make_unique<ObjectStore>(root_.Root() / "objectstore.sqlite");
    previous_ = Sys();
    Sys() = Services{.root = &root_,
                     .registry = registry_.get(),
                     .ui = &ui,
                     .clock = &clock_,
                     .hotKeys = &hotKeys_,
                     .idleTimer = &idleTimer_,
                     .store = store_.get(),
                     .memory = &memory_};
}

Platform::~Platform() {
    Sys() = previous_;
}

void Platform::ReportLoadProblems() {
    if (auto notice = registry_->TakeLoadNotice()) {
        Sys().ui->MessageBox(*notice, "Aerix", kMbOk | kMbIconWarning);
    }
}

}  // namespace aerix::platform
