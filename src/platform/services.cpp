#include "platform/services.hpp"

namespace aerix::platform {

Services& Sys() {
    static Services services;
    return services;
}

Platform::Platform(std::filesystem::path root, Ui& ui) : root_(std::move(root)) {
    root_.Create();
    registry_ = std::make_unique<RegistryHive>(root_.Root() / "registry.reg");
    store_ = std::make_unique<ObjectStore>(root_.Root() / "objectstore.sqlite");
    previous_ = Sys();
    Sys() = Services{&root_, registry_.get(), &ui, &clock_, &hotKeys_, store_.get()};
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
