// A navigation database volume mounted by name for one operation (import, a new database, the
// database dialogs), whether or not it is the active one.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/prop_val.hpp"
#include "store/nav_data_state.hpp"

namespace aerix {

// Mounts the volume "\My Documents\aerix\<name>.CDB" (created empty when missing) and makes it
// the nav volume the record store's nav operations use (nav.NavVolumeGuid) until the scope ends;
// then unmounts it and puts the previous nav volume back. A mount failure says "Could not create
// database volume".
class NavVolumeScope {
  public:
    NavVolumeScope(NavDataState& nav, std::u16string_view databaseName);
    // The volume in a given file (a volume being built under a temporary name).
    struct AtFile {
        std::filesystem::path file;
    };
    NavVolumeScope(NavDataState& nav, const AtFile& at);
    ~NavVolumeScope();
    NavVolumeScope(const NavVolumeScope&) = delete;
    NavVolumeScope& operator=(const NavVolumeScope&) = delete;

    bool Mounted() const { return guid_.value != 0; }

  private:
    void Mount(const std::filesystem::path& file);

    NavDataState& nav_;
    platform::VolumeGuid guid_{};
    std::uint32_t previous_ = 0;
};

}  // namespace aerix
