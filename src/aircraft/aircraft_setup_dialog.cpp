// The "Setup A/c" list: choosing, adding, editing and deleting aircraft.
#include "aircraft/aircraft_setup_dialog.hpp"

#include <cmath>
#include <limits>

#include "aircraft/aircraft.hpp"
#include "aircraft/weight_balance.hpp"
#include "planning/sector_computation.hpp"
#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "store/record_store.hpp"
#include "utilities/entry_text.hpp"

namespace aerix {

void AircraftSetupDialog::Open() {
    platform::SetTitle(kTitle);
    Refresh();
}

void AircraftSetupDialog::Refresh() {
    lines_.clear();
    names_.clear();
    oids_.clear();
    DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
    ReadEach(h, ReadAircraft, [&](const AircraftRecord& r, platform::CeOid id) {
        bool current = r.Name == settings_.AircraftReg.view();
        lines_.push_back(Utf16ToUtf8(r.Name) + "  " + Utf16ToUtf8(r.TypeDesignator) +
                         (current ? "  *" : ""));
        names_.push_back(r.Name);
        oids_.push_back(id);
    });
    if (selected_ >= static_cast<int>(lines_.size()))
        selected_ = -1;
}

std::optional<AircraftEditDialog> AircraftSetupDialog::BeginEdit() const {
    if (selected_ < 0 || selected_ >= static_cast<int>(oids_.size()))
        return std::nullopt;
    return AircraftEditDialog::ForEdit(oids_[static_cast<std::size_t>(selected_)]);
}

bool AircraftSetupDialog::OfferActive(const std::u16string& registration) {
    if (!platform::AskWarning("make active a/c?"))
        return false;
    if (!MakeAircraftCurrent(settings_, aircraft_, registration))
        return false;
    RecomputePlan(settings_, plan_, 1);
    return true;
}

bool AircraftSetupDialog::Finish(AircraftEditDialog& edit, int result) {
    bool saved = result == platform::kIdOk && edit.Ok(settings_);
    if (saved) {
        if (edit.SavedName() == settings_.AircraftReg.view()) {
            // Already active: its new figures apply at once.
            LoadCurrentAircraft(settings_, aircraft_);
            RecomputePlan(settings_, plan_, 1);
        } else {
            OfferActive(edit.SavedName());
        }
    }
    Refresh();
    if (saved)
        for (std::size_t i = 0; i < names_.size(); ++i)
            if (names_[i] == edit.SavedName())
                selected_ = static_cast<int>(i);
    return saved;
}

bool AircraftSetupDialog::Choose() {
    if (selected_ < 0 || selected_ >= static_cast<int>(names_.size()))
        return false;
    bool made = OfferActive(names_[static_cast<std::size_t>(selected_)]);
    Refresh();
    return made;
}

bool AircraftSetupDialog::Delete() {
    if (selected_ < 0 || selected_ >= static_cast<int>(names_.size()))
        return false;
    std::u16string name = names_[static_cast<std::size_t>(selected_)];
    if (name == settings_.AircraftReg.view()) {
        platform::ShowError(
            "The current aircraft cannot be deleted - make another one active "
            "first");
        return false;
    }
    if (!platform::AskWarning("Delete aircraft " + Utf16ToUtf8(name) +
                              " with its stations and envelope?"))
        return false;
    auto stations = ReadStations(name);
    auto points = ReadEnvelopePoints(name);
    // The aircraft goes with its stations and envelope, or stays with them.
    RecordTransaction tx;
    if (!tx.Open())
        return false;
    // The list may be stale: delete by position only the aircraft it names.
    AircraftRecord there;
    DbHandle h = OpenDatabase(schema::kAircraftName, schema::kAcName);
    bool same = h && ReadAircraft(h, kByIndex, static_cast<std::uint32_t>(selected_), there) != 0 &&
                there.Name == name;
    h.Close();
    if (!same || !DeleteAircraft(static_cast<std::uint32_t>(selected_))) {
        Refresh();
        return false;
    }
    for (const StoredStation& s : stations)
        DeleteStation(s.Oid);
    for (const StoredEnvelopePoint& p : points)
        DeleteEnvelopePoint(p.Oid);
    bool kept = tx.Commit();
    selected_ = -1;
    Refresh();
    return kept;
}

int AircraftSetupDialog::Close(int code) {
    platform::SetTitle("Aerix");
    return code;
}

}  // namespace aerix
