#include "store/nav_volume_scope.hpp"

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "store/record_store.hpp"

namespace aerix {

NavVolumeScope::NavVolumeScope(NavDataState& nav, std::u16string_view databaseName)
    : nav_(nav), previous_(nav.NavVolumeGuid) {
    Mount(platform::Sys().root->ResolveForWrite(NavVolumePath(databaseName)));
}

NavVolumeScope::NavVolumeScope(NavDataState& nav, const AtFile& at)
    : nav_(nav), previous_(nav.NavVolumeGuid) {
    Mount(at.file);
}

void NavVolumeScope::Mount(const std::filesystem::path& file) {
    platform::VolumeGuid guid;
    if (!platform::Sys().store->MountVolume(file, platform::kOpenAlways, guid)) {
        platform::ShowError("Could not create database volume");
        return;
    }
    guid_ = guid;
    nav_.NavVolumeGuid = guid.value;
}

NavVolumeScope::~NavVolumeScope() {
    if (Mounted())
        platform::Sys().store->UnmountVolume(guid_);
    nav_.NavVolumeGuid = previous_;
}

}  // namespace aerix
