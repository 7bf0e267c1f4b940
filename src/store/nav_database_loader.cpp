#include "store/nav_database_loader.hpp"

#include <variant>
#include <vector>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "store/record_store.hpp"

namespace aerix {

namespace {

bool InsideArea(const NavDataState& nav, std::int32_t latitude, std::int32_t longitude) {
    return nav.AreaSouth <= latitude && latitude <= nav.AreaNorth && nav.AreaWest <= longitude &&
           longitude <= nav.AreaEast;
}

// Copies the six properties the displays need. A property the record lacks leaves the entry's
// field as it was, which for a reused slot is the dropped record's value.
// Texts longer than a field are cut to it rather than written past its end.
void CopyInto(const std::vector<platform::PropVal>& props, NavEntry& entry) {
    for (const platform::PropVal& p : props) {
        const auto* text = std::get_if<std::u16string>(&p.value);
        switch (p.propId) {
            case schema::kWptName:
                if (text)
                    entry.name.assign(*text);
                break;
            case schema::kWptIdent:
                if (text)
                    entry.ident.assign(*text);
                break;
            case schema::kWptLatitude:
                if (const auto* v = std::get_if<std::int32_t>(&p.value))
                    entry.latitude = *v;
                break;
            case schema::kWptLongitude:
                if (const auto* v = std::get_if<std::int32_t>(&p.value))
                    entry.longitude = *v;
                break;
            case schema::kWptType:
                if (const auto* v = std::get_if<std::int16_t>(&p.value))
                    entry.type = *v;
                break;
            case schema::kWptExtraText:
                if (text)
                    entry.extra.assign(*text);
                break;
            default:
                break;
        }
    }
}

}  // namespace

void LoadNavDatabase(const SettingsState& settings, NavDataState& nav) {
    MountNavVolume(settings, nav);  // a failure has been said; the open is tried all the same
    std::uint32_t records = 0;
    DbHandle h = OpenNavDatabase(nav, settings.NavDatabaseName.view(), schema::kWptName, &records);
    if (!h) {
        platform::ShowError("Could not open nav database. Error:");
        return;
    }
    platform::Ui& ui = *platform::Sys().ui;
    ui.SetWaitCursor(true);
    // One block sized from the record count; no growth while reading.
    nav.NavDatabase.assign(records, NavEntry{});
    std::size_t kept = 0;
    std::vector<platform::PropVal> props;
    // The block is full only when records were added after the count was taken.
    while (kept < nav.NavDatabase.size() && h.Read(props) != 0) {
        NavEntry& entry = nav.NavDatabase[kept];
        CopyInto(props, entry);
        if (InsideArea(nav, entry.latitude, entry.longitude))
            ++kept;  // an entry outside is overwritten by the next record
    }
    h.Close();
    UnmountNavVolume(nav);
    ui.SetWaitCursor(false);
    nav.NavEntryCount = static_cast<std::uint32_t>(kept);
    nav.NavDatabase.resize(kept);
    nav.NavDatabase.shrink_to_fit();
}

}  // namespace aerix
