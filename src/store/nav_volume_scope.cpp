#include "store/nav_volume_scope.hpp"

#include "app/state/app_state.hpp"
#include "platform/message_box.hpp"
#include "platform/services.hpp"

namespace aerix {

std::u16string NavVolumePathOf(std::u16string_view databaseName) {
    return u"\\My Documents\\aerix\\" + std::u16string(databaseName) + u".CDB";
}

NavVolumeScope::NavVolumeScope(std::u16string_view databaseName) : previous_(g_app.nav.NavVolumeGuid) {
    Mount(platform::Sys().root->ResolveForWrite(NavVolumePathOf(databaseName)));
}

NavVolumeScope::NavVolumeScope(const AtFile& at) : previous_(g_app.nav.NavVolumeGuid) {
    Mount(at.file);
}

void NavVolumeScope::Mount(const std::filesystem::path& file) {
    platform::VolumeGuid guid;
    if (!platform::Sys().store->MountVolume(file, platform::kOpenAlways, guid)) {
        platform::ShowError("Could not create database volume");
        return;
    }
    guid_ = guid;
    g_app.nav.NavVolumeGuid = guid.value;
}

NavVolumeScope::~NavVolumeScope() {
    if (Mounted())
        platform::Sys().store->UnmountVolume(guid_);
    g_app.nav.NavVolumeGuid = previous_;
}

}  // namespace aerix
